// RD and SD, the binary files of Philips diffractometers: "V3RD" and "V5RD", little endian.
//
//   85 u1 anode   90, 92 u2 kV, mA   94, 102, 110 f8 K-alpha 1, 2, ratio   126 u1 a continuous scan   138 file   146 sample
//   214, 222, 230 f8 step, start, stop   128, 130, 132 u2 the same in 200ths of a degree   250 (V3) or 810 (V5) u2 points
//
// A point holds ten times the root of its count. A continuous scan counts over each step: its points stand in the middle of the steps, and
// are one fewer than the ends of steps. Files of the same kind with peaks, a background or a second derivative ("V3DI", "V3BK", "V32D")
// are taken for what they are, and refused.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Philips_Rd(std::string_view head);

// Reads the pattern of a file. One cut within its points gives those that are there.
Status Read_Philips_Rd(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
