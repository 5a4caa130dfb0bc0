// Identity, operating system and directories of the program.
//
// Directories are texts; the system's tag chooses separator and places, so that the Windows and macOS branches run in tests on Linux.
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"

namespace vntl {

struct Environment_Prefs;
struct Program_Suite;

struct Configuration {
    std::string program_name = "Vantrelo-2006";
    std::string program_version = "Version: 0.50";
    std::string program_date = "June 2013";
    std::string program_line1 = "a Powder Diffraction graphic tool";
    std::string program_line2 = "for Windows, Linux and MacOS";

    std::string os_tag;  // "WIND", "LINU", "MACO" or "UNKN"
    char sep = '/';
    std::string start_dir;   // current directory at start; the recent-files list stands there
    std::string launch_dir;  // a relative path of the command line is taken from here
    std::string config_dir;  // where the files of directories are looked for
    std::string last_dir;
    std::string select_dir;  // where the user last chose a file, blank as long as nobody knows
    std::string pcr_file;
    std::string set_file;  // name of the preferences file
    std::string mru_file = "vantrelo.mlf";
    int threads = 0;            // files that are read at a time, 0: as many as there are cores
    bool files_allowed = true;  // false: recent-files and last-directory files are not written

    // `name` inside `directory`, with one separator between them.
    std::string Path(std::string_view directory, std::string_view name) const;
    std::string Here(std::string_view name) const;  // in the working directory; `name` alone where somebody has removed that
    std::string Recent_Files_Path() const { return start_dir.empty() ? std::string() : Path(start_dir, mru_file); }

    std::string_view Line_End() const { return os_tag == "WIND" ? "\r\n" : "\n"; }  // of texts for other programs
    std::string Window_Title() const { return program_name + ' ' + program_version + "-2012"; }
};

// Name of the preferences file for a version text: "Version: 0.50" gives "vntl050.set".
// Fails with "Fault: /vntl_initialize/init_configure/03 bad setfilename" for a text without a point that has a digit before it and two
// characters behind.
Status Preferences_File_Name(const std::string& program_version, std::string& name);

// Tag of a system by the family (4 Unix, 6 Windows) and the sub-code (14 Linux) that the toolkit reports, "UNKN" of any other.
std::string Os_Tag(int family, int sub_code);
bool Is_Os_Tag(std::string_view tag);

// Sets identity, tag, separator, start directory and file names.
Status Init_Configure(Configuration&, int os_family, int os_sub_code);

// The programs that the system has by itself.
void Set_Programs_Of_System(const Configuration&, Environment_Prefs&);

// The system becomes another one: programs that nobody chose are those of that system from here on.
void Change_System(Configuration&, Environment_Prefs&, std::string_view os_tag);

// The programs of the system, with those that the preferences name in their places.
Program_Suite Suite_In_Use(const Configuration&, const Environment_Prefs&);

// Finds the directories of the suite and of the settings, and changes to the last working directory. A suite's directory that is none is
// taken from the environment, and blank where that names none either.
void Search_Directories(Configuration&, std::string& quendrix_dir);

// Full path of the preferences file, empty when there is none.
std::string Find_Preferences_File(const Configuration&, const std::string& quendrix_dir);

// Where preferences are saved: on Windows "local" in the working directory, "global" with the suite or else where the program was
// started; elsewhere in $HOME/.qxs. Empty without such a place.
enum class Settings_Mode { global, local };
std::string Settings_Directory(const Configuration&, const std::string& quendrix_dir, Settings_Mode mode);

// Makes $HOME/.qxs where that is the place.
void Make_Home_Settings(const Configuration&);

// The directory where the user last chose a file, kept across runs in a file of the settings.
void Read_Select_Directory(Configuration&);
void Write_Select_Directory(const Configuration&);

// Writes the current directory into "vantrelo.dir" of the suite's directory. A failure, and a blank suite directory, are ignored.
void Write_Last_Directory(const Configuration&, const std::string& quendrix_dir);

}  // namespace vntl
