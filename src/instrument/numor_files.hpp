// Files of runs by their numbers: a run is called by its number in six digits, with ".Z" behind it where it was compressed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

inline constexpr int largest_numor = 999999;
inline constexpr std::string_view compressed_numor = ".Z";  // in capitals: what a name ends in

std::string Numor_Name(int numor);  // in six digits
bool Is_Compressed_Name(std::string_view name);

// The path of a run in a directory, as a compressed file or a plain one.
std::string Numor_Path(const std::string& directory, int numor, bool compressed);

// Where such a run lies: there, or in its other form where only that is there. It looks at files, and so may wait for a share of the net.
std::string Actual_Numor(const std::string& path);

// The least and the largest number among the runs of a directory, and whether all are compressed.
struct Numor_Range {
    int first = 0, last = 0;
    bool compressed = false;
};
inline constexpr int most_names = 90000;  // of a directory that are looked at

// Nothing where no name reads as a number. A directory that cannot be read, or does not answer within a second, is a failure.
Status Numors_In_Directory(const std::string& directory, std::optional<Numor_Range>& range);

// The runs of a directory, by rising numbers; of a number that stands there twice the plain file. A directory that cannot be read, or does
// not answer within a second, is a failure, and `runs` stays.
struct Run_In_Directory {
    int numor = 0;
    std::string file;  // in the directory as that was told
};
Status Runs_In_Directory(const std::string& directory, std::vector<Run_In_Directory>& runs);

}  // namespace vntl
