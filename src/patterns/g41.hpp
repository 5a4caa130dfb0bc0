// G41: everything in free form under three lines of text.
//
//   CeO2, furnace                      title
//   2.42 A, 14-JUL-95                  dropped, and so is the next
//   collimation 20'
//   ! any comments
//   400 1.5 2.0 1 100000. 100000.      points, sample and set temperature, kind of variances, monitor, monitor before normalisation
//   10.0 0.1 49.9                      xmin, step, xmax
//   1021 998 1007 ...                  intensities
//   31.9 31.6 31.7 ...                 their standard deviations, when the kind of variances is not 0
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

Status Read_G41(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
