// Free format: a header of comments and titles, a line with start, step and end, then the intensities in free order.
//
//   ! Scattering variable: 2theta
//   Corundum, laboratory
//   10.00  0.02  120.00
//     104   98  110  101   99  ...
//
// A line that begins with BANK may stand for the range line (points in columns 5 to 41, start and step in columns 47 to 90); in a
// ".MDI" file the second line that is no comment holds the range as words 1, 2 and 6,
// and the wavelength as word 5.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// Reads the text of a file into a fresh pattern. `mdi`: the file's extension is ".MDI". Variances are the counts. A header's claim
// reserves nothing that the text could not hold.
Status Read_Free_Format(std::string_view text, bool mdi, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
