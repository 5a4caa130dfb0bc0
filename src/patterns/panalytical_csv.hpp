// Comma-separated export of a laboratory diffractometer: a header of keywords, then a point a line.
//
//   [Measurement conditions]
//   Title 1,Corundum plate              title; quotes around it are no part of it
//   K-Alpha1 wavelength,1.54060         conv(1)
//   K-Alpha2 wavelength,1.54443         conv(2)
//   Ratio K-Alpha2/K-Alpha1,0.50000     conv(3)
//   Data angle range,5.0100,89.9900     xmin, xmax
//   Scan step size,0.0200               step
//   No. of points,4250                  npts, at most; xmax is that of the last point where they are fewer
//   [Scan points]
//   Angle,Intensity                     dropped
//   5.0100,1234                         x, y; blanks serve as well as the comma
//
// The first line that is no point ends the data. A keyword stands at the beginning of its line, its value in the column behind the comma.
//
// Computers with a decimal comma write the same file in other ways, none of which is a point or a value above:
//   "Data angle range;5,0100;89,9900"   a semicolon or TAB behind a keyword: it separates, and commas are decimal points from there on
//   5,0100;1234                         so they are in any other point line with a semicolon
//   "5,0100","1234"                     and inside double quotes
// A header without the range or the step takes it from the points.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// Reads the text of a file into a fresh pattern.
Status Read_Panalytical_Csv(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
