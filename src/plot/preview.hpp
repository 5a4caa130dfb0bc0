// Curves that show what an open dialog would make of rows, over the picture and its marks.
#pragma once

#include <span>
#include <vector>

#include "plot/plot.hpp"

namespace vntl {

// The curves of the plot's preview, in graphs alone.
void Draw_Preview(const Scene&, Graphics&);

// The points of a curve that a picture of so many columns of pixels between x1 and x2 shows: first, lowest, highest and last of each
// column, and one point beyond either side. x rises; what is no number is left out.
struct Thinned_Curve {
    std::vector<float> x, y;
};
Thinned_Curve Thin_Curve(std::span<const float> x, std::span<const float> y, float x1, float x2, int columns);

}  // namespace vntl
