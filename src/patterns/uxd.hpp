// UXD, a laboratory diffractometer's text format: a header of keywords, then a section of numbers; a file may hold several ranges.
//
//   _SAMPLE='Corundum'
//   _WL1=1.540600            conv(1)
//   _WL2=1.544390            conv(2)
//   _WLRATIO=0.500000        conv(3)
//   ; (Data for Range number 1)
//   _STEPTIME=0.500000       seconds
//   _STEPSIZE=0.020000       step
//   _STEPCOUNT=4251          npts at most; without it points go up to 160 degrees
//   _START=5.000000          xmin, or _2THETA=5.000000; the last one counts
//   _COUNTS                  ends the header: intensities follow, any number a line
//       156      139     162
//
// The section is one of
//   _COUNTS         counts                        variances: the counts
//   _CPS            counts a second               variances: rate / step time; the rate itself without a step time
//   _2THETACOUNTS   2theta, counts                as _COUNTS
//   _2THETACPS      2theta, counts a second       as _CPS
// Its first line of numbers tells what separates them: a TAB, or else a semicolon, or else a comma, or else blanks. x follows from start
// and step, a 2theta in the lines plays no part. Reading ends at a line that is no line of numbers, and the pattern with it. Lines
// count up to column 132, keywords stand at their beginning. A section line with a "=" is followed by a line of text that is dropped,
// unless it is one of numbers. Lines with a "=" in front of the numbers are passed over, but not in _CPS.
//
// Beyond that:
//   - the text of _SAMPLE, in single quotes, is the title;
//   - a separator at the end of a line has no value behind it;
//   - several ranges: behind the numbers stands a header again, which changes what it names and leaves the rest (wavelengths) as it was. A
//     range without step count of its own then holds whatever its section holds.
#pragma once

#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

// Reads the first range of a file into a fresh pattern.
Status Read_Uxd(std::string_view text, Diffraction_Pattern_Type& pattern);

// Reads every range, in the order of the file, at most as many as the program has rows. The title of one of several ends with its number. A
// range without readable numbers is left out, a fault in a later header ends the reading; it fails when no range can be read.
Status Read_Uxd_Ranges(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns);

}  // namespace vntl
