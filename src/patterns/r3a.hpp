// R3A: a scan of 18 degrees by a bank of detectors, ended by a marker, and its older form without title.
//
//   Nb3Sn, 6 K                                  title
//                      .050                     (16X,F8.3): step
//      6.000                                    (F8.3): xmin
//     20000.  10000.                            (2F8.0): monitor, monitor of a normalised point
//    1  1021 1   998 2  1007 ...                (10(I2,F6.0)): detectors that saw the point, their mean count
//     -1000                                     marker
//
// The marker line and the line above it are not part of the pattern; a file whose marker comes at once has no points, which is no
// failure. Without a marker the scan has a line fewer than 18 degrees hold, or ends at the last pair of a file that holds fewer.
//
//   10.0 0.1 99.9                               old form: xmin, step, xmax in free form
//    1  1021 1   998 2  1007 ...                pairs as above, up to the last one of a last line that is short
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

Status Read_R3a(std::string_view text, Diffraction_Pattern_Type& pattern);
Status Read_R3a_Old(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
