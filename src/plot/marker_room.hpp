// Markers of a curve in a look that has them only where its points are apart.
#pragma once

#include "plot/plot.hpp"

namespace vntl {

// Width of the markers of a row in a window, by that of its style: 0 none, 1 the style's own, less where its points are so close that whole
// markers would touch. Points that are drawn without a line have markers wherever they are; those of a refined profile are smaller where
// they lie close, and not thinner than the line through them. `a_unit`: pixels of 1/96 inch of a page unit.
float Marker_Share(const Scene&, int row, const ProfileStyle&, const View& window, double a_unit);

}  // namespace vntl
