// The grid of a series as a solid: a surface over a box of width 3, height 2.5 and depth 2, with rods and texts as axes.
#pragma once

#include <string_view>

#include "session/plot_grid.hpp"
#include "solid/w3d.hpp"

namespace vntl {

W3d Build_Model(const PlotGrid& grid, std::string_view x_title, Colour model_colour);

}  // namespace vntl
