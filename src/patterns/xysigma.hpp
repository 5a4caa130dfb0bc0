// XYSIGMA: a point a line, x y sigma and perhaps a calculated y, under a header of either kind.
//
//   XYDATA                                        Lactose at 300 K, any first line is the title
//   INTER  1.0 1.0 0 0.0   factors, grid, step    # Legend_X  2theta(degrees)
//   TEMP   300.0                                   3.000  297  13.2
//   ! three more lines                             3.005  296  13.2
//     10.00  104  10.2
//
// Columns stand apart by blanks, TABs or commas. A head may be of any lines, those of any comment mark (! # ' % ; * //) included; such
// lines are passed over among the records too. Where a file cannot be read so, its columns are taken as separated by semicolons, in which a
// comma is a decimal one: "10,02; 105; 10,2".
//
// A file that this program wrote (see write_xys.hpp) has each line of its head in its place, and every record is a point.
//
// A ".gr" file is a pair-distribution function: a header up to a line "#L r ...", then r, G(r), dr, dG(r). Without such a line it has a
// head as any other file, or none, and a third column that is the last one is dG(r).
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// Reads the text of a file into a fresh pattern. `gr`: the file's extension is ".gr". The record counted last, a terminator of
// zeros or the last line of the file, is not part of the pattern, but where this program wrote it.
Status Read_Xysigma(std::string_view text, bool gr, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
