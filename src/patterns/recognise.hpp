// Which format the first lines of a file speak for.
//
//   keywords    XRDML, CSV, UDF and JCP, UXD, CIF, GSAS and ISIS bank lines, XYDATA, "#L r" of a pair-distribution function
//   layouts     fixed columns of the neutron instruments, each with the numbers of its head in agreement
//   lists       a line of start, step and end with as many counts as it tells (free format), columns with rising x (XYSIGMA)
//
// Where nothing speaks for one of them, as in prose, pictures or programs, it is none: a wrong guess is worse.
#pragma once

#include <cstddef>
#include <string_view>

namespace vntl {

// Bytes of a file that are looked at; a shorter text is the whole file.
inline constexpr std::size_t recognised_head = 64 << 10;

// The format whose mark a file begins with, which no other file has: whatever its name, it is one. 0 for none.
int Certain_Format(std::string_view head);

// The format whose words lines begin with, a mark counting too; 0 for none. Quick where most lines are numbers.
int Format_By_Words(std::string_view head);

// The format code that the beginning of a file speaks for; 0 when nothing speaks for one.
int Recognised_By_Content(std::string_view head);

// What a file of that format is recognised by, as a short phrase; blank for a code that is none.
std::string_view How_Recognised(int code);

}  // namespace vntl
