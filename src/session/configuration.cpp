// Where the program stands on each operating system, and the small files of directories that it shares with the suite:
//
//   tqx.set       lines of "NAME = value", "!" a comment; LASTD is the last working directory
//   vantrelo.dir  one line: the last working directory of this program
//   quendrix.dir  directory and name of the refinement input file, a line each
#include "session/configuration.hpp"

#include <array>
#include <cctype>
#include <iterator>
#include <optional>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/write_file.hpp"
#include "external/program_suite.hpp"
#include "session/preferences.hpp"

namespace vntl {
namespace {

constexpr int any_code = -1;
constexpr std::string_view unknown_system = "UNKN";
constexpr std::string_view select_file = "vantrelo.sel";

// Directories that a system may choose for its settings.
enum class Place { none, home, working, suite, start };
using Places = std::array<Place, 2>;  // in the order in which they are tried

struct System_Row {
    std::string_view tag;
    int family, sub_code;              // as the toolkit reports them
    Place directory_files;             // where those that are told above are looked for
    Places settings;                   // where settings are looked for: the first that has them
    Places saved_global, saved_local;  // where they are saved: the first that is there
};

constexpr System_Row systems[] = {
    {"WIND", 6, any_code, Place::suite, {Place::working, Place::suite}, {Place::suite, Place::start}, {Place::working}},
    {"LINU", 4, 14, Place::home, {Place::home}, {Place::home}, {Place::home}},
    {"MACO", 4, any_code, Place::home, {Place::home}, {Place::home}, {Place::home}},
};

// The programs that preferences name.
struct Program_Row {
    std::string Environment_Prefs::*program;
    Program_Role role;
};

constexpr Program_Row programs[] = {
    {&Environment_Prefs::cmd_editor, Program_Role::cmd_editor}, {&Environment_Prefs::cmd_browser, Program_Role::cmd_browser},
    {&Environment_Prefs::cmd_pdf, Program_Role::cmd_pdf},       {&Environment_Prefs::cmd_unzip, Program_Role::cmd_unzip},
    {&Environment_Prefs::cmd_run, Program_Role::cmd_run},       {&Environment_Prefs::prg_refine, Program_Role::prg_refine},
};

const System_Row* Find_System(std::string_view tag) {
    for (const System_Row& system : systems)
        if (system.tag == tag) return &system;
    return nullptr;
}

// $HOME/.qxs, blank without a home.
std::string Home_Settings(const Configuration& config) {
    const std::string home = IOsVariable("HOME");
    return Trim(home).empty() ? std::string() : config.Path(home, ".qxs");
}

// Blank where there is no such directory.
std::string Directory_Of(Place place, const Configuration& config, const std::string& quendrix_dir) {
    switch (place) {
        case Place::home:
            return Home_Settings(config);
        case Place::working:
            return IOsDirName();
        case Place::suite:
            return quendrix_dir;
        case Place::start:
            return config.start_dir;
        case Place::none:
            break;
    }
    return {};
}

std::string_view Without_Final_Separator(std::string_view directory, char separator) {
    if (!directory.empty() && directory.back() == separator) directory.remove_suffix(1);
    return directory;
}

std::string Line_Or_Blank(const std::vector<std::string>& lines, std::size_t i) {
    return i < lines.size() ? std::string(Trim(lines[i])) : std::string();
}

// Value of the first LASTD line, blank without one.
std::string Last_Directory_Of_Suite(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const std::string_view text = Trim_Left(line);
        if (text.empty() || text[0] == '!' || Upper(text.substr(0, 5)) != "LASTD") continue;
        const std::size_t equals = text.find('=');
        return equals == std::string_view::npos ? std::string() : std::string(Trim(text.substr(equals + 1)));
    }
    return {};
}

// False when a file that is there cannot be read: the rest of the search is then left.
bool Search_Last_Directory(Configuration& config) {
    const std::string suite_file = config.Path(config.config_dir, "tqx.set");
    const std::string own_file = config.Path(config.config_dir, "vantrelo.dir");
    const bool of_suite = IOsFileExists(suite_file);
    if (!of_suite && !IOsFileExists(own_file)) return true;
    const auto lines = Read_Text_Lines(of_suite ? suite_file : own_file);
    if (!lines) return false;
    config.last_dir = of_suite ? Last_Directory_Of_Suite(*lines) : Line_Or_Blank(*lines, 0);
    // Names of the command line stay in the directory at start, also where that has been removed.
    if (!config.last_dir.empty() && !config.start_dir.empty()) IOsDirChange(config.last_dir);
    return true;
}

void Search_Refinement_File(Configuration& config) {
    const std::string file = config.Path(config.config_dir, "quendrix.dir");
    if (!IOsFileExists(file)) return;
    const auto lines = Read_Text_Lines(file);
    if (!lines) return;
    const std::string directory = Line_Or_Blank(*lines, 0), name = Line_Or_Blank(*lines, 1);
    if (name.empty()) return;
    config.pcr_file = name.find(config.sep) == std::string::npos ? directory + config.sep + name : name;
}

}  // namespace

std::string Configuration::Path(std::string_view directory, std::string_view name) const {
    std::string path(directory);
    if (path.empty() || path.back() != sep) path += sep;
    return path.append(name);
}

std::string Configuration::Here(std::string_view name) const {
    const std::string directory = IOsDirName();
    return directory.empty() ? std::string(name) : Path(directory, name);
}

Status Preferences_File_Name(const std::string& program_version, std::string& name) {
    for (std::size_t point = program_version.find('.'); point != std::string::npos; point = program_version.find('.', point + 1)) {
        const bool digit_before = point > 0 && std::isdigit(static_cast<unsigned char>(program_version[point - 1])) != 0;
        if (!digit_before || program_version.size() < point + 3) continue;
        name = "vntl" + program_version.substr(point - 1, 1) + program_version.substr(point + 1, 2) + ".set";
        return Status::Done();
    }
    return Status::Fail("Fault: /vntl_initialize/init_configure/03 bad setfilename");
}

std::string Os_Tag(int family, int sub_code) {
    for (const System_Row& system : systems)
        if (system.family == family && (system.sub_code == any_code || system.sub_code == sub_code)) return std::string(system.tag);
    return std::string(unknown_system);
}

bool Is_Os_Tag(std::string_view tag) { return tag == unknown_system || Find_System(tag) != nullptr; }

Status Init_Configure(Configuration& config, int os_family, int os_sub_code) {
    const bool files_allowed = config.files_allowed;
    config = Configuration();
    config.files_allowed = files_allowed;
    config.os_tag = Os_Tag(os_family, os_sub_code);
    if (Find_System(config.os_tag) == nullptr) return Status::Fail("Fault: Unknown Operating System ");
    config.sep = Separator_Of(config.os_tag);
    config.start_dir = config.launch_dir = IOsDirName();
    return Preferences_File_Name(config.program_version, config.set_file);
}

void Set_Programs_Of_System(const Configuration& config, Environment_Prefs& environment) {
    if (!Has_Programs(config.os_tag)) return;
    for (const Program_Row& row : programs) environment.*row.program = Program_Of_System(row.role, config.os_tag);
}

void Change_System(Configuration& config, Environment_Prefs& environment, std::string_view os_tag) {
    for (const Program_Row& row : programs)
        if (environment.*row.program == Program_Of_System(row.role, config.os_tag))
            environment.*row.program = Program_Of_System(row.role, os_tag);
    config.os_tag = os_tag;
}

Program_Suite Suite_In_Use(const Configuration& config, const Environment_Prefs& environment) {
    Program_Suite suite = Suite_Of_System(config.os_tag);
    for (const Program_Row& row : programs) suite.programs[static_cast<std::size_t>(row.role)] = environment.*row.program;
    suite.quendrix_dir = environment.quendrix_dir;
    return suite;
}

void Make_Home_Settings(const Configuration& config) {
    const System_Row* system = Find_System(config.os_tag);
    const std::string directory = Home_Settings(config);
    if (system != nullptr && system->directory_files == Place::home && !directory.empty()) IOsDirMake(directory);
}

void Search_Directories(Configuration& config, std::string& quendrix_dir) {
    if (!IOsDirExists(quendrix_dir)) quendrix_dir = IOsVariable("QUENDRIX");
    if (!IOsDirExists(quendrix_dir)) quendrix_dir.clear();
    const System_Row* system = Find_System(config.os_tag);
    Make_Home_Settings(config);
    config.config_dir = system == nullptr ? std::string() : Directory_Of(system->directory_files, config, quendrix_dir);
    config.pcr_file.clear();
    config.last_dir.clear();
    if (quendrix_dir.empty()) return;

    quendrix_dir = Without_Final_Separator(quendrix_dir, config.sep);
    config.config_dir = Without_Final_Separator(config.config_dir, config.sep);
    if (config.config_dir.empty()) return;
    if (Search_Last_Directory(config)) Search_Refinement_File(config);
}

std::string Find_Preferences_File(const Configuration& config, const std::string& quendrix_dir) {
    const System_Row* system = Find_System(config.os_tag);
    for (const Place place : system == nullptr ? Places{} : system->settings) {
        const std::string directory = Directory_Of(place, config, quendrix_dir);
        if (!directory.empty() && IOsFileExists(config.Path(directory, config.set_file))) return config.Path(directory, config.set_file);
    }
    return {};
}

std::string Settings_Directory(const Configuration& config, const std::string& quendrix_dir, Settings_Mode mode) {
    const System_Row* system = Find_System(config.os_tag);
    if (system == nullptr) return {};
    for (const Place place : mode == Settings_Mode::local ? system->saved_local : system->saved_global)
        if (const std::string directory = Directory_Of(place, config, quendrix_dir); !directory.empty()) return directory;
    return {};
}

void Read_Select_Directory(Configuration& config) {
    if (config.config_dir.empty()) return;
    const auto lines = Read_Text_Lines(config.Path(config.config_dir, select_file));
    if (lines && !lines->empty() && IOsDirExists(lines->front())) config.select_dir = lines->front();
}

void Write_Select_Directory(const Configuration& config) {
    if (!config.config_dir.empty() && !config.select_dir.empty())
        Write_Text_Lines(config.Path(config.config_dir, select_file), {config.select_dir});
}

void Write_Last_Directory(const Configuration& config, const std::string& quendrix_dir) {
    const std::string directory = IOsDirName();
    if (!config.files_allowed || quendrix_dir.empty() || directory.empty()) return;
    Write_Text_Lines(config.Path(quendrix_dir, "vantrelo.dir"), {directory});
}

}  // namespace vntl
