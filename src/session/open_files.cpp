// Commands that open pattern files: the selector, a name, a list, a recent file, the names of a command line.
//
// All of them decide on a format for each file; Load_All then makes rows of them.
#include <algorithm>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/file_kinds.hpp"
#include "session/load_all.hpp"
#include "session/open_numors.hpp"
#include "session/open_prf.hpp"
#include "session/read_files.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

Open_Result Nothing_Chosen() { return {.cancelled = true}; }

int Known_Code(int code) { return code >= 1 && code <= static_cast<int>(Pattern_Formats().size()) ? code : 1; }

// The name of a file says what is in it: nobody is asked about it.
bool Name_Tells(const std::string& file) {
    const File_Kind_Row* kind = File_Kind_Of(file);
    if (kind == nullptr && Is_Numor(file)) return true;
    return (kind != nullptr && kind->read != nullptr) || Format_Of_File(file) != 0;
}

// A file whose name does not tell its format, and what its first lines tell.
struct Undecided {
    std::string name;
    Recognition look;
};

// No format will do for a binary file, nor for one that is not there, so that there is nothing to ask about it. What is answered about as
// many files as the store takes holds for further ones of a list.
std::vector<Undecided> To_Ask_About(const std::vector<std::string>& files, char separator) {
    std::vector<Undecided> undecided;
    for (const std::string& file : files) {
        if (undecided.size() == max_profiles) break;
        if (Name_Tells(file) || !IOsFileExists(file)) continue;
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

// Files whose names do not tell their format are asked about, once for all of them.
Open_Result Open_Asking(Session& session, Ask& ask, const Files_To_Open& files) {
    const std::vector<Undecided> undecided = To_Ask_About(files.paths, session.config.sep);
    Format_Choice choice;
    if (!undecided.empty()) {
        const std::optional<Format_Choice> chosen = ask.Data_Format(Question_About(undecided));
        if (!chosen) return Nothing_Chosen();
        choice = *chosen;
        if (choice.code != 0) choice.code = Known_Code(choice.code);
    }
    return Load_All(session, ask, files, [choice](const std::string& file) {
        return Name_Tells(file) ? Read_Any_File(file, 0) : Read_Pattern_File(file, choice);
    });
}

// The name that a command was given, or those that the user selects.
std::vector<std::string> Named_Or_Selected(Ask& ask, const File_Kind_Row& kind, const std::string& name) {
    if (!Trim(name).empty()) return {name};
    return ask.Select_Files(kind.selector_title, Selector_Filter(kind));
}

}  // namespace

Open_Result Open_Pattern_File(Session& session, Ask& ask, const std::string& name) {
    std::vector<std::string> files = Named_Or_Selected(ask, Row_Of(File_Kind::pattern), name);
    if (files.empty()) return Nothing_Chosen();
    std::reverse(files.begin(), files.end());
    return Open_Asking(session, ask, Files_Behind(session.config, files));
}

Open_Result Open_Buffer_File(Session& session, Ask& ask, const std::string& name) {
    const std::vector<std::string> lists = Named_Or_Selected(ask, Row_Of(File_Kind::list_of_files), name);
    if (lists.empty()) return Nothing_Chosen();
    Files_To_Open files;
    for (const std::string& list : lists) Take_List(session.config, list, files);
    return Open_Asking(session, ask, files);
}

Open_Result Open_Prf_File(Session& session, Ask& ask, const std::string& name) {
    const std::vector<std::string> files = Named_Or_Selected(ask, Row_Of(File_Kind::refined_profile), name);
    if (files.size() > 1) ask.Error("Trying to select more than one file!");
    if (files.size() != 1) return Nothing_Chosen();
    return Load_All(session, ask, {.paths = files}, Read_Refined_File);
}

Open_Result Open_Raw_File(Session& session, Ask& ask, const std::string& name) {
    const std::vector<std::string> files = Named_Or_Selected(ask, Row_Of(File_Kind::raw_data), name);
    if (files.empty()) return Nothing_Chosen();
    const std::optional<bool> correct = ask.Efficiency_Correction();
    if (!correct) return Nothing_Chosen();
    return Load_All(session, ask, {.paths = files}, [correct](const std::string& file) { return Read_Raw_File(file, *correct); });
}

Status Open_File_By_Extension(Session& session, Ask& ask, const std::string& name, Open_Result& result) {
    const std::string_view text = Trim_Right(name);
    if (text.empty()) return Status::Fail("Bad name: len_trim=0");
    const File_Kind_Row* kind = Recent_As(text);
    if (kind == nullptr) return Status::Fail(Contains(text, ".") ? "Unknown file extension " : "Bad name: without extension");
    result = kind->open(session, ask, name);
    return Status::Done();
}

Open_Result Open_Files(Session& session, Ask& ask, const std::vector<std::string>& names, std::optional<int> format_code) {
    const int code = format_code ? Known_Code(*format_code) : 0;
    const Files_To_Open files = Files_Behind(session.config, names);
    if (code == 0 && !files.lists.empty()) return Open_Asking(session, ask, files);
    return Load_All(session, ask, files, [code](const std::string& file) { return Read_Any_File(file, code); });
}

}  // namespace vntl
