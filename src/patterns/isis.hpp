// ISIS files: the banks of one time-of-flight measurement, each behind its own line.
//
//   Ni standard, 300 K                        title of all banks
//   fac_y 100.0                               lines of text; the factor of y and deviation may stand anywhere in them, else it is 1000
//   BANK 1 1850 RALF                          RALF on the first of these lines: all banks are histograms
//    1000.0   4.31   0.12                     time in microseconds, intensity, standard deviation
//   ! a comment, and so is a line with #
//    1010.0   4.52   0.12
//
// The records of a histogram are the left edges of its channels, the last one an edge alone; it ends at a blank line. A record of zeros is
// no point.
//
// Beyond that, blank lines between a bank that is no histogram and the next one or the end of the file do not matter.
#pragma once

#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

// All banks, at most `capacity` of them. Radiation, scattering variable and legends are set too. A bank without a point comes as a pattern
// without points. On failure there are no patterns.
Status Read_Isis(std::string_view text, int capacity, std::vector<Diffraction_Pattern_Type>& patterns);

}  // namespace vntl
