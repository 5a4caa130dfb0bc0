// Variable time: each point was counted for a time of its own; the intensities are put on the mean time.
//
//   Quartz, slow at high angles                 title
//   Cu K alpha                                  dropped, and so are the next two
//   12-MAR-91
//   40 kV 30 mA
//     10.00  0.02  90.00                        xmin, step, xmax in free form
//      2.0       120.   2.0       118. ...      (5(F6.0,F10.0)): time, counts
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

Status Read_Time_Variable(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
