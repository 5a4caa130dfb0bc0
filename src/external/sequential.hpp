// One refinement after the other, over data files that are numbered: the words that the refinement program takes, and the script that says
// the same to a shell.
//
//   seq fe3o4 data      1     40 Y N N N N -temp kelvin.txt
//
// The control file without its extension, what the names of all data files begin with, the first number and the last in six columns, what
// is kept of each refinement, and a file with the temperature of each.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/command_line.hpp"
#include "base/status.hpp"

namespace vntl {

inline constexpr int largest_sequential_number = 999999;  // that six columns hold
inline constexpr std::size_t sequential_marks = 5;

struct Sequential_Input {
    std::string control;    // file without its extension, as the program is to find it
    std::string data_code;  // may end in an extension
    int first = 1, last = 2;
    std::array<bool, sequential_marks> keeps{};  // PRF, HKL, MIC/SIZ/STR and DIS files; calculated patterns are made
    std::string temperatures;                    // file, blank for none
};

// Puts the words behind a program. Numbers are told in their columns, a name that is blank as two double quotes.
void Add_Sequential(Command_Line& command, const Sequential_Input& input);

// Name of the script for a control file without its extension: "_QXseq.bat" stands behind it on "WIND", "_QXseq.sh" elsewhere.
std::string Sequential_Script_Name(std::string_view control, std::string_view os_tag);

// The script: one line, which begins with "qx2k ". A name of other signs than letters, digits and ./_+- is quoted, so that the shell of the
// system gives it on as it is. Fails where that shell cannot: on "WIND" a double quote or a control character, which no file's name has
// there; `text` stays then.
Status Sequential_Script(const Sequential_Input& input, std::string_view os_tag, std::string& text);

// Whether a text is such a script, and nothing else stands in it.
bool Is_Sequential_Script(std::string_view text);

}  // namespace vntl
