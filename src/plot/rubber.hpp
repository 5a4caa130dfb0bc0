// Shapes that follow the hand, over the picture and its marks.
#pragma once

#include <optional>

#include "drawing/graphics.hpp"
#include "session/session.hpp"

namespace vntl {

// The rectangle, band or line that is being drawn, the pivot of a scaling, and the spectral lines at the pointer.
void Draw_Rubber(const Plot_State&, const Profile_Store&, Graphics&);

// 2 theta, in degrees, at which a peak at `two_theta` would stand for another wavelength; nothing where no angle reaches it. `ratio`:
// that wavelength divided by the present one.
std::optional<float> Spectral_Angle(float two_theta, double ratio);

}  // namespace vntl
