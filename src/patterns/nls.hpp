// NLS: blocks of a line of ten intensities and a line of their standard deviations.
//
//   ! LaB6, 22 keV                           the first line is the title, even where it is the range line
//   ! any more comments
//     5.000  0.010  62.000                   xmin, step, xmax in free form
//      120.    118.    125.    121. ...      (10F8.0), ten intensities
//       11.     11.     11.     11. ...      (10F8.0), their standard deviations
//
// The last of the npts / 10 whole blocks, and the points that are left behind it, may be missing: the pattern ends where they do.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

Status Read_Nls(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
