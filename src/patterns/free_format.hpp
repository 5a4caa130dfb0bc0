// Free format: a header of comments and titles, a line with start, step and end, then the intensities in free order.
//
//   ! Scattering variable: 2theta
//   Corundum, laboratory
//   10.00  0.02  120.00
//     104   98  110  101   99  ...
//
// A line that begins with BANK may stand for the range line (points in columns 5 to 41, start and step in columns 47 to 90).
//
// In a ".MDI" file the first line that is no comment is the title, which may begin with a date, and the second one the head:
//
//   03/14/08 DIF corundum
//   10.0 0.02 1.0 CU 1.54056 120.0 5501       start, step, seconds a step, anode, wavelength, end, points
//     104   98  110 ...                       8 a line; -1 may mark the end
//
// The intensities that are there are its points then; without the number of points there are as many as start, step and end tell.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// Reads the text of a file into a fresh pattern. `mdi`: the file's extension is ".MDI". Variances are the counts. A header's claim
// reserves nothing that the text could not hold.
Status Read_Free_Format(std::string_view text, bool mdi, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
