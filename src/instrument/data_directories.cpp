#include "instrument/data_directories.hpp"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

#include "base/answer.hpp"
#include "base/expand.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "instrument/instrument_names.hpp"
#include "instrument/numor_files.hpp"

namespace vntl {

namespace {

constexpr char separator = '/';
constexpr std::chrono::milliseconds patience(1000);  // with a directory that may lie on the net
constexpr int last_cycle = 7, first_year = 72;

bool Is_Blank(std::string_view text) { return Trim(text).empty(); }

std::string With_Separator(std::string directory) {
    if (directory.empty()) directory = ".";
    if (directory.back() != separator) directory += separator;
    return directory;
}

std::string_view Without_Separator(std::string_view directory) {
    while (directory.size() > 1 && directory.back() == separator) directory.remove_suffix(1);
    return directory;
}

Status Refuse_Directory(const std::string& kind, const std::string& directory, const std::string& reason) {
    return Status::Fail_File("The " + kind + " directory: '" + std::string(Without_Separator(directory)) + "' " + reason);
}

Status Does_Not_Answer(const std::string& kind, const std::string& directory) {
    return Refuse_Directory(kind, directory, "does not answer");
}

Status Look_For_Directory(const std::string& kind, const std::string& directory) {
    const std::optional<bool> there = Directory_Is_There(directory);
    if (!there) return Does_Not_Answer(kind, directory);
    return *there ? Status::Done() : Refuse_Directory(kind, directory, "doesn't exist");
}

std::string Data_Directory_Of_Environment() {
    const std::string told = IOsVariable("KVRDATA");
    return With_Separator(Is_Blank(told) ? IOsDirName() : told);
}

Status Look_For_Tree(Data_Directories& directories) {
    if (directories.KVR_data_directory.empty()) directories.KVR_data_directory = Data_Directory_Of_Environment();
    const Status status = Look_For_Directory("KVR", directories.KVR_data_directory);
    directories.KVR_data_found = status.ok();
    return status;
}

// --- the tree ----------------------------------------------------------------------------------------------------------------------

// These have measured more runs than a directory should hold.
bool Is_Split(std::string_view instrument) {
    constexpr std::string_view split[] = {"r3b", "r22", "r6", "r15", "r18", "r17"};
    return std::ranges::find(split, instrument) != std::end(split);
}

std::string Cycle_Text(const Reactor_Cycle& cycle) {
    return {static_cast<char>('0' + cycle.year / 10), static_cast<char>('0' + cycle.year % 10), static_cast<char>('0' + cycle.cycle)};
}

// The directories below the root in which a run may lie, the likeliest first.
std::vector<std::string> Cycles_To_Try(const std::optional<Reactor_Cycle>& cycle) {
    if (cycle) return {Cycle_Text(*cycle)};
    std::vector<std::string> names = {"data", "data-1"};
    for (int year = Present_Year();; year = year > 0 ? year - 1 : 99) {
        for (int number = last_cycle; number >= 1; --number) names.push_back(Cycle_Text({year, number}));
        if (year == first_year) return names;
    }
}

bool Is_Run(const std::string& file) {
    std::error_code error;
    return std::filesystem::is_regular_file(file, error);
}

// The name of a run or of its packed form, blank for neither; nothing where the tree does not answer.
std::optional<std::string> Run_There(const std::string& root, const std::string& file) {
    const auto found = std::make_shared<std::string>();
    const std::optional<bool> there = Answer_Within(patience, root, [found, file] {
        if (Is_Run(file))
            *found = file;
        else if (Is_Run(file + std::string(compressed_numor)))
            *found = file + std::string(compressed_numor);
        return true;
    });
    if (!there) return {};
    return *found;
}

Status Unpack_Run(Data_Directories& directories, const std::string& packed, const std::string& name, std::string& path) {
    std::string bytes;
    if (Status status = Read_Run_Bytes(packed, bytes); status.failed) return status;
    if (Status status = directories.Temporary_Directory(); status.failed) return status;
    const std::string file = directories.temporary.File(name);
    if (!Replace_File(file, bytes)) return Status::Fail_File("The file " + file + " cannot be written");
    path = file;
    return Status::Done();
}

Status Refuse_Question(int numor, std::string_view instrument, const std::optional<Reactor_Cycle>& cycle) {
    if (numor < 0 || numor > largest_numor)
        return Status::Fail("A run has a number from 0 to " + std::to_string(largest_numor) + ", not " + std::to_string(numor));
    if (Run_In_Tree(numor, instrument).empty()) return Status::Fail("No instrument has the name '" + std::string(instrument) + "'");
    if (cycle && (cycle->year < 0 || cycle->year > 99 || cycle->cycle < 0 || cycle->cycle > 9))
        return Status::Fail("A cycle is told by a year from 0 to 99 and a number from 0 to 9, not by " + std::to_string(cycle->year) +
                            " and " + std::to_string(cycle->cycle));
    return Status::Done();
}

// --- instruments in paths ----------------------------------------------------------------------------------------------------------

bool Is_Cycle_Directory(std::string_view name) {
    int cycle = 0;
    return name == "data" || name == "data-1" || (name.size() == 3 && Parse_Integer(name, cycle) && cycle > 0);
}

}  // namespace

// --- the directories ---------------------------------------------------------------------------------------------------------------

Status Data_Directories::Temporary_Directory() {
    if (KVR_temp_directory.empty()) Initialize_Temp_Directory(*this);
    if (KVR_temp_directory.empty()) return Status::Fail_File("No temporary directory was found in your system");
    return temporary.Make(KVR_temp_directory);
}

void Initialize_Data_Directory(Data_Directories& directories) {
    directories.KVR_data_directory = Data_Directory_Of_Environment();
    [[maybe_unused]] const Status status = Look_For_Tree(directories);
}

void Initialize_Temp_Directory(Data_Directories& directories) {
    std::string found;
    for (const char* name : {"TEMP", "TMP", "USERPROFILE", "TMPDIR"})
        if (const std::string told = IOsVariable(name); found.empty() && !Is_Blank(told)) found = told;
    if (found.empty() && IOsDirExists("/tmp")) found = "/tmp";
    directories.KVR_temp_directory = found.empty() ? found : With_Separator(found);
    directories.KVR_temp_found = !found.empty() && Directory_Is_There(directories.KVR_temp_directory).value_or(false);
}

std::optional<bool> Directory_Is_There(const std::string& directory) {
    return Answer_Within(patience, directory, [directory] { return IOsDirExists(directory); });
}

Status Look_For_Data_Directory(const std::string& path) { return Look_For_Directory("KVR", With_Separator(path)); }

Status Set_KVR_data_directory(Data_Directories& directories, const std::string& path) {
    if (Is_Blank(path)) return Refuse_Directory("KVR", path, "doesn't exist");
    const std::string directory = With_Separator(path);
    if (Status status = Look_For_Directory("KVR", directory); status.failed) return status;
    directories.KVR_data_directory = directory;
    directories.KVR_data_found = true;
    return Status::Done();
}

Status Set_Instrm_directory(Data_Directories& directories, std::optional<std::string> working_dir, std::string_view instrument) {
    if (!working_dir && Is_Blank(instrument)) return Status::Fail(" A working directory or an instrument name must be at least provided.");
    if (working_dir && Is_Blank(*working_dir)) return Status::Fail("Provided working directory string is empty");
    std::string directory;
    if (working_dir) {
        directory = With_Separator(*working_dir);
    } else {
        if (Status status = Look_For_Tree(directories); status.failed) return status;
        directory = directories.KVR_data_directory + "data" + separator + Lower(Trim(instrument)) + separator;
    }
    if (Status status = Look_For_Directory("INSTRM", directory); status.failed) return status;
    directories.instrm_directory = directory;
    directories.instrm_directory_found = true;
    return Status::Done();
}

Status Set_Instrm_Geometry_directory(Data_Directories& directories, const std::string& path) {
    const std::string directory = With_Separator(path);
    directories.instrm_geometry_found = !Is_Blank(path) && Directory_Is_There(directory).value_or(false);
    directories.instrm_geometry_directory = directories.instrm_geometry_found ? directory : With_Separator(IOsDirName());
    if (directories.instrm_geometry_found) return Status::Done();
    return Status::Fail_File(" The INSTRM Geometry directory doesn't exist, current directory assumed");
}

// --- runs --------------------------------------------------------------------------------------------------------------------------

int Present_Year() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    return localtime_r(&now, &local) != nullptr ? local.tm_year % 100 : 0;
}

std::string Run_In_Tree(int numor, std::string_view instrument) {
    const std::string name = Lower(Trim(instrument));
    const bool is_name = !name.empty() && name.front() != '.' && name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
    if (!is_name || numor < 0 || numor > largest_numor) return {};
    const std::string digits = Numor_Name(numor);
    std::string path = name + separator;
    if (Is_Split(name)) path += name + '_' + digits.substr(1, 2) + separator;
    return path + digits;
}

Status Get_Absolute_Data_Path(Data_Directories& directories, int numor, std::string_view instrument, std::optional<Reactor_Cycle> cycle,
                              Found_Run& found, const std::function<bool()>& go_on) {
    found = {};
    if (Status status = Refuse_Question(numor, instrument, cycle); status.failed) return status;
    if (Status status = Look_For_Tree(directories); status.failed) return status;
    const std::string& root = directories.KVR_data_directory;
    const std::string run = Run_In_Tree(numor, instrument);
    for (const std::string& name : Cycles_To_Try(cycle)) {
        if (go_on && !go_on()) return Status::Cancel();
        const std::optional<std::string> there = Run_There(root, root + name + separator + run);
        if (!there) return Does_Not_Answer("KVR", root);
        if (there->empty()) continue;
        std::string path = *there;
        if (Is_Compressed_Name(*there))
            if (Status status = Unpack_Run(directories, *there, Numor_Name(numor), path); status.failed) return status;
        found = {path, *there};
        return Status::Done();
    }
    return Status::Done();
}

std::string Actual_Numor_In_Tree(const std::string& root, const std::string& path, std::string_view instrument) {
    constexpr std::size_t digits = 6;
    const std::string at_root = Actual_Numor(path);
    int numor = 0;
    if (IOsFileExists(at_root) || !Parse_Integer(File_Part(path).substr(0, digits), numor)) return at_root;
    for (const char* cycle : {"data/", "data-1/"}) {
        const std::string there = root + cycle + Run_In_Tree(numor, instrument);
        const std::string actual = Actual_Numor(Is_Compressed_Name(path) ? there + std::string(compressed_numor) : there);
        if (IOsFileExists(actual)) return actual;
    }
    return at_root;
}

Status Read_Run_Head(const std::string& file, std::size_t count, std::string& head) {
    constexpr std::size_t least_packed = 4096;
    Text_File text;
    if (Status status = text.Open(file, std::max(count, least_packed)); status.failed) return status;
    head = Unpacked_Head(text.Text(), count);
    return Status::Done();
}

Status Read_Run_Bytes(const std::string& file, std::string& bytes) {
    Text_File text;
    if (Status status = text.Open(file, most_unpacked + 1); status.failed) return status;
    if (text.Text().size() > most_unpacked) return Status::Fail_File("Too large: " + file);
    std::string plain;
    if (const Status status = Unpack(text.Text(), plain); status.failed) return Status::Fail_File(status.message + ": " + file);
    if (const std::size_t mark = plain.size() - Without_Mark(plain).size(); mark > 0) plain.erase(0, mark);
    bytes = std::move(plain);
    return Status::Done();
}

std::string Instrument_Of_Path(std::string_view path, char directory_separator) {
    constexpr std::size_t kept = 4;
    bool behind_cycle = false;
    while (!path.empty()) {
        const std::string_view name = path.substr(0, path.find(directory_separator));
        const std::string_view instrument = name.substr(0, kept);
        if (behind_cycle && Is_Known_Instrument(instrument)) return Upper(Trim(instrument));
        behind_cycle = Is_Cycle_Directory(name);
        path.remove_prefix(std::min(path.size(), name.size() + 1));
    }
    return {};
}

}  // namespace vntl
