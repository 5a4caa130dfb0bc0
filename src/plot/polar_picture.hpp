// Where a light or an observer stands about the model: seen from above on the left, from the side on the right.
#pragma once

#include "drawing/graphics.hpp"

namespace vntl {

inline constexpr int polar_picture_width = 300, polar_picture_height = 100;

// Degrees. On a drawable of that size, or of its shape.
void Draw_Polar_Picture(Graphics&, float elevation, float azimuth, Colour model_colour);

}  // namespace vntl
