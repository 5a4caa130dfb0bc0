// Shapes that follow the hand, over the picture and its marks.
#pragma once

#include <functional>
#include <optional>

#include "drawing/graphics.hpp"
#include "session/session.hpp"

namespace vntl {

// The rectangle, band or line that is being drawn, the pivot of a scaling, and the spectral lines at the pointer.
void Draw_Rubber(const Plot_State&, const Profile_Store&, Graphics&, Colour ink = 0);

// The shape that is being drawn alone, its line as wide as told; in the units of the page.
void Draw_Rubber_Shape(const Rubber_Shape&, const Plot_Zone&, float line_width, Graphics&);

// What `draw` draws, in yellow on a dark seam, so that it shows on light and on dark ground.
void Draw_On_Dark_Seam(Graphics&, float line_width, const std::function<void()>& draw);

// 2 theta, in degrees, at which a peak at `two_theta` would stand for another wavelength; nothing where no angle reaches it. `ratio`:
// that wavelength divided by the present one.
std::optional<float> Spectral_Angle(float two_theta, double ratio);

}  // namespace vntl
