// Commands that open pattern files: the selector, a name, a recent file, the names of a command line.
//
// All of them decide on a format for each file; Load_All then makes rows of them.
#include <algorithm>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/file_kinds.hpp"
#include "session/load_all.hpp"
#include "session/open_prf.hpp"
#include "session/read_files.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

int Known_Code(int code) { return code >= 1 && code <= static_cast<int>(Pattern_Formats().size()) ? code : 1; }

// The name of a file says what is in it: nobody is asked about it.
bool Name_Tells(const std::string& file) {
    const File_Kind_Row* kind = File_Kind_Of(file);
    return (kind != nullptr && (kind->read != nullptr || !kind->refusal.empty())) || Format_Of_File(file) != 0;
}

// A file whose name does not tell its format, and what its first lines tell.
struct Undecided {
    std::string name;
    Recognition look;
};

// No format will do for a binary file, so that there is nothing to ask about it.
std::vector<Undecided> To_Ask_About(const std::vector<std::string>& files, char separator) {
    std::vector<Undecided> undecided;
    for (const std::string& file : files) {
        if (Name_Tells(file)) continue;
        Recognition look = Recognise_Format(file);
        if (look.binary.empty()) undecided.push_back({std::string(File_Part(file, separator)), std::move(look)});
    }
    return undecided;
}

// The one question about all of them.
Format_Question Question_About(const std::vector<Undecided>& files) {
    const Recognition& first = files.front().look;
    Format_Question question{.proposed = first.code, .banks = 0};
    bool one_look = first.by_content != 0;
    for (const auto& [name, look] : files) {
        question.differ = question.differ || look.code != first.code;
        one_look = one_look && look.by_content == first.by_content;
        question.banks += look.banks;
    }
    if (question.banks == static_cast<int>(files.size())) question.banks = 1;  // none of them has more than one
    if (question.differ) question.proposed = 0;
    if (one_look) question.looks_like = Mode_Of_Code(first.by_content);
    for (const auto& [name, look] : files)
        question.files.push_back(question.differ ? name + " (" + std::string(Mode_Of_Code(look.code)) + ')' : name);
    return question;
}

}  // namespace

Open_Result Open_Pattern_File(Session& session, Ask& ask, const std::string& name) {
    const File_Kind_Row& kind = Row_Of(File_Kind::pattern);
    Open_Result nothing;
    nothing.cancelled = true;
    std::vector<std::string> files;
    if (Trim(name).empty())
        files = ask.Select_Files(kind.selector_title, Selector_Filter(kind));
    else
        files = {name};
    if (files.empty()) return nothing;

    std::reverse(files.begin(), files.end());
    const std::vector<Undecided> undecided = To_Ask_About(files, session.config.sep);
    Format_Choice choice;
    if (!undecided.empty()) {
        const std::optional<Format_Choice> chosen = ask.Data_Format(Question_About(undecided));
        if (!chosen) return nothing;
        choice = *chosen;
        if (choice.code != 0) choice.code = Known_Code(choice.code);
    }
    return Load_All(session, ask, files, [choice](const std::string& file) {
        return Name_Tells(file) ? Read_Any_File(file, 0) : Read_Pattern_File(file, choice);
    });
}

Open_Result Open_Prf_File(Session& session, Ask& ask, const std::string& name) {
    const File_Kind_Row& kind = Row_Of(File_Kind::refined_profile);
    Open_Result nothing;
    nothing.cancelled = true;
    std::vector<std::string> files = {name};
    if (Trim(name).empty()) files = ask.Select_Files(kind.selector_title, Selector_Filter(kind));
    if (files.size() > 1) ask.Error("Trying to select more than one file!");
    if (files.size() != 1) return nothing;
    return Load_All(session, ask, files, Read_Refined_File);
}

Status Open_File_By_Extension(Session& session, Ask& ask, const std::string& name, Open_Result& result) {
    const std::string_view text = Trim_Right(name);
    if (text.empty()) return Status::Fail("Bad name: len_trim=0");
    const File_Kind_Row* kind = Recent_As(text);
    if (kind == nullptr) return Status::Fail(Contains(text, ".") ? "Unknown file extension " : "Bad name: without extension");
    if (!kind->refusal.empty()) return Status::Fail(kind->refusal);
    result = kind->open(session, ask, name);
    return Status::Done();
}

Open_Result Open_Files(Session& session, Ask& ask, const std::vector<std::string>& names, std::optional<int> format_code) {
    const int code = format_code ? Known_Code(*format_code) : 0;
    return Load_All(session, ask, names, [code](const std::string& file) { return Read_Any_File(file, code); });
}

}  // namespace vntl
