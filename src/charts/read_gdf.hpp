// Generic data files: a hand-written text of keywords and blocks of columns, one block a curve.
//
//   TITLE Lattice parameter
//   N_PLOTS 1
//   LEGEND_X Temperature (K)
//   LEGEND_Y a (angstroms)
//   PLOT_TYPE polyline        or scatter, histogram, polar, piechart
//   {/ first curve            the legend of the curve
//   N_POINTS 2
//   300 4.1569 0.0002         x, y, sigma; of a pie x, y and the text of the slice
//   310 4.1572
//   errbar                    or marker, scatter, legend: options, on any line of the block
//   /}
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"
#include "charts/generic_plots.hpp"

namespace vntl {

// Texts and kind of `plots` are replaced as the file gives them, its curves and slices in any case; after a failure there are none.
// The failure's message is that of the format, with the file's name on a second line.
Status Read_GDF(const std::string& file, Generic_Plots& plots);

// The same of a text; `file` names it.
Status Read_GDF_Text(std::string_view text, const std::string& file, Generic_Plots& plots);

}  // namespace vntl
