#include "session/list_of_files.hpp"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <system_error>
#include <utility>

#include "base/os.hpp"
#include "base/text_file.hpp"
#include "patterns/binary_file.hpp"
#include "patterns/file_list.hpp"
#include "patterns/format_table.hpp"
#include "patterns/recognise.hpp"
#include "session/file_kinds.hpp"
#include "session/load.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

// Of a command. The store is full long before, but for files that its x space refuses.
constexpr std::size_t most_names = 10 * max_profiles, most_bytes = 16 << 20;

// The text of a list without a line that the limit cuts.
std::string_view Whole_Lines(std::string_view text) {
    const bool cut = text.size() + std::string_view("\xEF\xBB\xBF").size() >= most_bytes;
    const std::size_t end = text.find_last_of("\n\r");
    return cut && end != text.npos ? text.substr(0, end + 1) : text;
}

bool Is_List(const std::string& name) {
    const File_Kind_Row* const kind = File_Kind_Of(name);
    return kind != nullptr && kind->kind == File_Kind::list_of_files;
}

// A list names measurements: a list in a list might lead back to it, and what is a measurement itself names none.
Status Check_Names(const std::vector<std::string>& names, std::string_view text, const std::string& path) {
    const int look = IOsFileExists(names.front()) ? 0 : Recognised_By_Content(text.substr(0, recognised_head));
    if (look != 0) return Status::Fail("The contents look like the format " + std::string(Mode_Of_Code(look)));
    for (const std::string& name : names)
        if (Is_List(name) || name == path) return Status::Fail("It names a list of files: " + name);
    return Status::Done();
}

// The names become paths. `most`: files that the command can still take.
Status Read_List(const Configuration& config, const std::string& path, std::size_t most, File_List& list) {
    if (File_Kind_Of(path) != nullptr && !Is_List(path)) return Status::Fail("It is no list of files");
    Text_File file;
    if (Status status = file.Open(path, most_bytes); status.failed) return status;
    const std::string_view text = Whole_Lines(file.Text());
    if (const std::string binary = Binary_Refusal(text); !binary.empty()) return Status::Fail(binary);
    if (Status status = Read_File_List(text, most, list); status.failed) return status;
    if (list.names.empty()) return Status::Fail(most == 0 ? "There are too many files before it" : "It names no file");
    if (text.size() < file.Text().size() && list.first_left_out == 0) list.first_left_out = static_cast<int>(Count_Lines(text)) + 1;
    for (std::string& name : list.names) name = Absolute_Path(config, name, std::string(Directory_Part(path, config.sep)));
    return Check_Names(list.names, text, path);
}

Message_Box Refusal(std::string text, std::string_view title) {
    return {Box_Buttons::ok, Box_Icon::exclamation, 1, std::move(text), std::string(title), true};
}

}  // namespace

void Take_List(const Configuration& config, const std::string& name, Files_To_Open& files) {
    const std::string path = Absolute_Path(config, name);
    std::error_code error;
    if (!std::filesystem::exists(path, error) && !error) {
        files.refusals.push_back(Refusal("File doesn't exist\n" + path, "File doesn't exist..."));
        return;
    }
    File_List list;
    if (const Status status = Read_List(config, path, most_names - std::min(most_names, files.paths.size()), list); status.failed) {
        files.refusals.push_back(Refusal("Unable to read buffer file " + path + '\n' + status.message, error_title));
        return;
    }
    const std::size_t first = files.paths.size();
    files.paths.insert(files.paths.end(), std::make_move_iterator(list.names.begin()), std::make_move_iterator(list.names.end()));
    files.lists.push_back({path, list.title, list.comment, list.first_left_out, first, files.paths.size()});
}

Files_To_Open Files_Behind(const Configuration& config, const std::vector<std::string>& names) {
    Files_To_Open files;
    for (const std::string& name : names) {
        if (Is_List(name))
            Take_List(config, name, files);
        else
            files.paths.push_back(name);
    }
    return files;
}

void Settle_Listed_Rows(Profile_Store& store, const Opened_List& list, int rows_before) {
    for (int row = rows_before + 1; row <= store.nperfiles(); ++row) {
        if (!list.title.empty()) store.Pattern(row).title = list.title;
        if (store.Info(row).kind != Row_Kind::rietv) continue;
        store.Info(row).kind = Row_Kind::data;
        store.show_ycalc_of[static_cast<std::size_t>(row - 1)] = store.show_bgr_of[static_cast<std::size_t>(row - 1)] = false;
    }
}

Status List_Of_Rows(const Session& session, std::string& text) {
    std::vector<std::string> names;
    std::set<std::string> of_banks;
    for (int row = 1; row <= session.store.nperfiles(); ++row) {
        const PRF_Info_Add_Type& info = session.store.Info(row);
        if (info.kind != Row_Kind::data) continue;
        std::string name = info.directory + session.config.sep + info.file_name;
        if (!Can_Be_Listed(name)) return Status::Fail("A list cannot hold the name of row " + std::to_string(row));
        const bool first = session.store.Pattern(row).bank == 0 || of_banks.insert(name).second;
        if (first) names.push_back(std::move(name));
    }
    text = File_List_Text(names);
    return Status::Done();
}

}  // namespace vntl
