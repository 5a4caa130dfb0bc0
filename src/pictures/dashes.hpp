// The dashes of a line as lines of their own, for formats whose viewers do not agree on dashes.
#pragma once

#include <functional>
#include <span>

#include "drawing/device.hpp"

namespace vntl {

// Calls `take` with one dash after another, corners of the line included. `pattern` holds lengths of dash and gap in turn. At each end a
// dash is left out by `shortening`, as far as one of length `least` remains about its middle: pens with round ends reach that much further.
// So many dashes that nobody can tell them apart end in a solid line.
void For_Each_Dash(std::span<const Point> line, std::span<const double> pattern, double shortening, double least,
                   const std::function<void(std::span<const Point>)>& take);

}  // namespace vntl
