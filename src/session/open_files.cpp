// Commands that open pattern files: the selector, a name, a list, a recent file, the names of a command line.
//
// All of them decide on a format for each file; Load_All then makes rows of them.
#include <algorithm>
#include <set>
#include <utility>

#include "base/os.hpp"
#include "base/text.hpp"
#include "patterns/read_pattern.hpp"
#include "session/file_kinds.hpp"
#include "session/load_all.hpp"
#include "session/offer_constants.hpp"
#include "session/open_numors.hpp"
#include "session/open_prf.hpp"
#include "session/read_files.hpp"
#include "session/row_constants.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

Open_Result Nothing_Chosen() { return {.cancelled = true}; }

int Known_Code(int code) { return code >= 1 && code <= static_cast<int>(Pattern_Formats().size()) ? code : 1; }

// A file of a kind that has a reader of its own.
bool Is_No_Pattern_File(const std::string& file) {
    const File_Kind_Row* kind = File_Kind_Of(file);
    return kind == nullptr ? Is_Numor(file) : kind->read != nullptr;
}

// The name of a file, or a mark in it, says what is in it: nobody is asked about it.
bool Name_Tells(const std::string& file) { return Is_No_Pattern_File(file) || Format_Of_File(file) != 0; }

// A file that is asked about: its name does not tell its format, or it has ranges that may be merged. What its first lines tell.
struct Undecided {
    std::string path, name;
    Recognition look;
    int ranges = 0;
};

// No format will do for a binary file, nor for one that is not there, so that there is nothing to ask about it. What is answered about as
// many files as the store takes holds for further ones of a list.
std::vector<Undecided> To_Ask_About(const std::vector<std::string>& files, char separator) {
    constexpr std::size_t most_looked_through = 20;  // for ranges: the files are read for it
    std::vector<Undecided> undecided;
    for (const std::string& file : files) {
        if (undecided.size() == max_profiles) break;
        const bool told = Name_Tells(file);
        if ((told && files.size() > most_looked_through) || Is_No_Pattern_File(file) || !IOsFileExists(file)) continue;
        Recognition look = Recognise_Format(file);
        const int ranges = files.size() > most_looked_through ? 0 : Ranges_To_Merge(file, look.code);
        if ((!told && look.binary.empty()) || ranges > 1)
            undecided.push_back({file, std::string(File_Part(file, separator)), std::move(look), ranges});
    }
    return undecided;
}

// The one question about all of them.
Format_Question Question_About(const std::vector<Undecided>& files) {
    const Recognition& first = files.front().look;
    Format_Question question{.proposed = first.code, .banks = 0};
    bool one_look = first.by_content != 0;
    for (const Undecided& file : files) {
        question.differ = question.differ || file.look.code != first.code;
        one_look = one_look && file.look.by_content == first.by_content;
        question.banks += file.look.banks;
        question.ranges += file.ranges;
    }
    if (question.banks == static_cast<int>(files.size())) question.banks = 1;  // none of them has more than one
    if (question.differ) question.proposed = 0;
    if (one_look) question.looks_like = Mode_Of_Code(first.by_content);
    for (const Undecided& file : files)
        question.files.push_back(question.differ ? file.name + " (" + std::string(Mode_Of_Code(file.look.code)) + ')' : file.name);
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
    std::set<std::string> asked;
    for (const Undecided& file : undecided) asked.insert(file.path);
    return Load_All(session, ask, files, [choice, asked](const std::string& file) {
        return asked.count(file) == 0 && Name_Tells(file) ? Read_Any_File(file, 0) : Read_Pattern_File(file, choice);
    });
}

// The name that a command was given, or those that the user selects.
std::vector<std::string> Named_Or_Selected(Ask& ask, const File_Kind_Row& kind, const std::string& name) {
    if (!Trim(name).empty()) return {name};
    return ask.Select_Files(kind.selector_title, Selector_Filter(kind));
}

bool Is_Instrument_File(const std::string& name) {
    const File_Kind_Row* const kind = File_Kind_Of(name);
    return kind != nullptr && kind->kind == File_Kind::constants;
}

// Instrument files give constants to rows: they wait until the rows are there. Without one those that lie beside the patterns are offered.
template <class Load>
Open_Result Open_Then_Give(Session& session, Ask& ask, std::vector<std::string> names, Load load) {
    const auto waiting =
        std::stable_partition(names.begin(), names.end(), [](const std::string& name) { return !Is_Instrument_File(name); });
    const std::vector<std::string> instruments(waiting, names.end());
    names.erase(waiting, names.end());
    Open_Result result;
    if (!names.empty() || instruments.empty()) result = load(Files_Behind(session.config, names));
    if (instruments.empty()) return Offer_Constants(session, ask, std::move(result));
    for (const std::string& name : instruments) {
        if (result.cancelled) break;
        const Open_Result given = Open_Constants_File(session, ask, name);
        result.failed = result.failed || given.failed;
        result.cancelled = given.cancelled && !result.opened;
        if (!result.notice.empty() && !given.notice.empty()) result.notice += "; ";
        result.notice += given.notice;
    }
    return result;
}

}  // namespace

Open_Result Open_Pattern_File(Session& session, Ask& ask, const std::string& name) {
    std::vector<std::string> files = Named_Or_Selected(ask, Row_Of(File_Kind::pattern), name);
    if (files.empty()) return Nothing_Chosen();
    std::reverse(files.begin(), files.end());
    return Open_Then_Give(session, ask, files, [&](const Files_To_Open& patterns) { return Open_Asking(session, ask, patterns); });
}

Open_Result Open_Buffer_File(Session& session, Ask& ask, const std::string& name) {
    const std::vector<std::string> lists = Named_Or_Selected(ask, Row_Of(File_Kind::list_of_files), name);
    if (lists.empty()) return Nothing_Chosen();
    Files_To_Open files;
    for (const std::string& list : lists) Take_List(session.config, list, files);
    return Offer_Constants(session, ask, Open_Asking(session, ask, files));
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
    return Open_Then_Give(session, ask, names, [&](const Files_To_Open& files) {
        if (code == 0 && !files.lists.empty()) return Open_Asking(session, ask, files);
        return Load_All(session, ask, files, [code](const std::string& file) { return Read_Any_File(file, code); });
    });
}

}  // namespace vntl
