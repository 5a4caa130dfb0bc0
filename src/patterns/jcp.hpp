// JCP, a laboratory diffractometer's variety of JCAMP: a title, keywords, then rows of a position and five intensities.
//
//   ##TITLE= Corundum plate                            the title, the whole line
//   ##$WAVELENGTH ALPHA1= 1.54060                      conv(1)
//   ##$WAVELENGTH ALPHA2= 1.54439                      conv(2)
//   ##$INTENSITY RATIO ALPHA2/ALPHA1= 0.50000          conv(3)
//   ## FIRSTX= 5.000                                   xmin
//   ## LASTX= 90.000                                   xmax
//   ## DELTAX= 0.020                                   step
//   ## NPOINTS= 4251                                   npts
//   ## XYDATA= X++<Y..Y>
//       5.000    1234.000   1198.000   1240.000 ...    (F9.3,1X,5F11.3)
//   ## END=
//
// A keyword stands at the beginning of its line; blanks in its name and around the "=" do not matter. Rows are read while the first
// point of the next one is among the points told, and of the last row only the first point is part of the pattern: of 4253 points told 4251
// are read.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// Reads the text of a file into a fresh pattern.
Status Read_Jcp(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
