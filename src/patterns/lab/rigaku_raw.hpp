// RAW, the files of Rigaku diffractometers, binary ones and old texts. Each holds one pattern.
//
//   "FI" NUL NUL   84 user   104 sample   1212, 1220, 1228 f8 K-alpha 1, 2, K-beta   1238 anode   2950, 2952 u2 kV, mA
//                  2962, 2966, 2970 f4 start, stop, step   3154 u4 points   3158 f4 counts; little endian
//   ".RAW"         a text of lines with CR at their ends and NULs among them, by their numbers from 0: 1 date, 2 time, 3 sample, 12 anode,
//                  15 unit (1: counts a second), 19 and 20 K-alpha 1 and 2, 22 start, 23 step, 24 points, 25 seconds a step, 31 the largest
//                  intensity, and from 38 on an intensity each
//
// Variances of counts a second are the rate over the time a step.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Rigaku_Raw(std::string_view head);

// Reads the pattern of a file. One cut within its points gives those that are there.
Status Read_Rigaku_Raw(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
