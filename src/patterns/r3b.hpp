// R3B: counts of a bank of detectors, averaged where detectors overlapped.
//
//   D1B  26-FEB-98                        dropped
//   Tb Fe2 at 40 K                        the title is this line, a blank and the next one
//   vanadium can, 8 mm
//     1500000.            10.000 ...  (F13.0,10X,F8.3,45X,4F9.3): monitor, xmin, step, set temperature, dropped, sample temperature
//    400                                  (I4): number of points
//    1    1021. 1     998. 1     1007.    (10(I2,F8.0)): detectors that saw the point, their mean count
//   -1000                                 one more line, whatever it holds
//
// The pattern ends at the last pair where the last line of them is short.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

Status Read_R3b(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
