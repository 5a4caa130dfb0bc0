// A picture in other colours than those of the screen.
#pragma once

#include "pictures/hardcopy_options.hpp"

namespace vntl {

// How bright a colour is seen, 0 to 255 (ITU-R BT.601).
double Brightness(Colour colour);

// Draws on `device` with changed colours.
void Draw_Recoloured(Device& device, Colour_Change change, Colour_Use use, const Draw_Routine& draw);

// Draws with lines, texts and markers in black or white, whichever is not the ground's, and areas in the colours they have: what an image
// of two colours starts from, so that a yellow line is as whole as a blue one.
void Draw_In_Ink(Device& device, const Draw_Routine& draw);

}  // namespace vntl
