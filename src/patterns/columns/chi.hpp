// CHI, the columns that area-detector programs write: a title, the labels of both axes, the number of rows, and rows of x and y.
//
//   lab6_001.tif
//   2-Theta Angle (Degrees)      or Q (Inverse Nanometres), Q (Inverse Angstroms), D-spacing (Angstroms), an azimuth, a radius; blank:
//   2theta Intensity
//          1455                  rows, and the number of curves where there are several: "1455 2"
//    1.0486433E-02  2.7862846E+01
//
// Rows are separated by blanks or commas. The number of rows may be larger than what follows, or smaller: the rows that are there count.
// More than two columns are as many curves over the same x; a third one where no number of curves is told holds standard deviations.
//
// A file may have lines of "#" in the place of that head, the last of which names the columns: "# chi_Q chi_I", Q in inverse angstroms.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one: labels with the words of an axis, or
// blank ones above rows of two numbers, and the line of the count in its place.
bool Is_Chi(std::string_view head);

// Reads the curves of a file: x in degrees, 1/angstrom ("q-space"), angstroms ("d-spacing") or what the label says, variances |y| or those
// of the third column. The title of one of several ends with its number. Fewer rows than told make `npts_claimed`.
Status Read_Chi(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
