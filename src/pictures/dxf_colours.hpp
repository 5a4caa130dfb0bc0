// The 255 numbered colours of drawing programs.
//
//   1 to 6     red, yellow, green, cyan, blue, magenta
//   7          black or white, whichever differs from the ground
//   8, 9       greys
//   10 to 249  24 hues of 15 degrees from red on, ten numbers each: five brightnesses, and each of these full and half mixed with white
//   250 to 255 greys from dark to white
#pragma once

#include "base/colour.hpp"

namespace vntl {

inline constexpr int dxf_foreground = 7;

Colour Colour_Of_Index(int index);  // 1 to 255; white for 7

// A grey comes to a grey. Never 7, which a page of its own ground may hide.
int Nearest_Index(Colour colour);

}  // namespace vntl
