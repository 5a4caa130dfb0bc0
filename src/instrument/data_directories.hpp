// Where instruments keep their runs: the institute's tree, the directories that belong to it, and the way from a number to a file.
//
//   KVRDATA/data/r3a/123456          the present cycle           KVRDATA/data-1/...   the one before
//   KVRDATA/053/r22/r22_23/123456.Z  year 05, cycle 3; some instruments split theirs by hundreds of thousands
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/private_directory.hpp"
#include "base/status.hpp"

namespace vntl {

struct Data_Directories {
    std::string KVR_data_directory;  // root of the tree, with its final separator; blank before it is known
    std::string KVR_temp_directory;  // for temporary files, with its final separator; blank where the system has none
    std::string instrm_directory, instrm_geometry_directory;
    bool KVR_data_found = false, KVR_temp_found = false, instrm_directory_found = false, instrm_geometry_found = false;
    Private_Directory temporary;  // inside KVR_temp_directory, for what must be a file

    // The private directory, made at the first call: "No temporary directory was found in your system" where there is none to make it in.
    Status Temporary_Directory();
};

// Here and below a directory that may lie on the net is waited for no longer than a second; without an answer it is not there, which a
// failure tells. What is set stays as it was where that fails.

// The environment's KVRDATA, or the current directory where that is blank.
void Initialize_Data_Directory(Data_Directories& directories);
// The environment's TEMP, TMP, USERPROFILE, TMPDIR, the first that is not blank, or /tmp.
void Initialize_Temp_Directory(Data_Directories& directories);

// Whether a directory is there; nothing where it does not answer.
std::optional<bool> Directory_Is_There(const std::string& directory);

// Whether a directory of runs is there, and answers within a second.
Status Look_For_Data_Directory(const std::string& path);
Status Set_KVR_data_directory(Data_Directories& directories, const std::string& path);
// A working directory, or that of an instrument in the tree ("data", its name).
Status Set_Instrm_directory(Data_Directories& directories, std::optional<std::string> working_dir, std::string_view instrument = {});
// Falls back to the current directory, which the failure tells.
Status Set_Instrm_Geometry_directory(Data_Directories& directories, const std::string& path);

// A year of two digits and a cycle of one.
struct Reactor_Cycle {
    int year = 0, cycle = 0;
};

struct Found_Run {
    std::string path;         // of the plain file, which of a compressed run is a temporary one; blank where there is none
    std::string actual_path;  // in the tree
};

// Finds the file of a run, initialising directories that are not known yet. Without a cycle "data", "data-1" and then the cycles are tried,
// from the seventh of the present year back to the year 72 of the last century; in each the plain file goes before the one with ".Z". That
// is unpacked into the private directory, by the six digits of the run: another run of that number replaces it. `go_on` is asked between
// steps: false ends the search as the user's cancel. Fails where the number or the instrument's name cannot be one, the tree is not there
// or does not answer, or a file cannot be unpacked; nothing found is no failure.
Status Get_Absolute_Data_Path(Data_Directories& directories, int numor, std::string_view instrument, std::optional<Reactor_Cycle> cycle,
                              Found_Run& found, const std::function<bool()>& go_on = {});

// Where in the tree a run of an instrument lies, below the cycle: "r3a/123456", "r22/r22_23/123456". Blank for a number that has not six
// digits or less, and for what no directory is called by.
std::string Run_In_Tree(int numor, std::string_view instrument);

// The present year in two digits.
int Present_Year();

// Where a run lies of which a path at the root of the tree is told: there, of the present cycle, of the one before, in the other form where
// only that is there. The first of these where there is none. `root` ends in a separator. It waits for a root that does not answer.
std::string Actual_Numor_In_Tree(const std::string& root, const std::string& path, std::string_view instrument);

// The first `count` bytes of a run, or fewer, unpacked where they are compressed.
Status Read_Run_Head(const std::string& file, std::size_t count, std::string& head);

// The bytes of a run, unpacked where they are compressed, without a byte-order mark. The message names the file; `bytes` stays then.
Status Read_Run_Bytes(const std::string& file, std::string& bytes);

// The instrument that the directories of a path tell: the component behind "data", "data-1" or a cycle ("053"), where it is one that is
// known; in capital letters, at most four. Blank where none is.
std::string Instrument_Of_Path(std::string_view path, char separator = '/');

}  // namespace vntl
