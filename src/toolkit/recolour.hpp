// Two colours out of many, for a picture that is to be printed or stored without them.
#pragma once

#include "toolkit/hardcopy.hpp"

namespace vntl {

// How bright a colour is seen, 0 to 255 (ITU-R BT.601).
double Brightness(Colour colour);

// Draws with lines, texts and markers in black or white, whichever is not the ground's, and areas in the colours they have: what an image
// of two colours starts from, so that a yellow line is as whole as a blue one.
void Draw_In_Ink(Device& device, const Draw_Routine& draw);

}  // namespace vntl
