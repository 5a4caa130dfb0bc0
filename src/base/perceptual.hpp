// Colours as they are seen: light that adds up, and lightness, chroma and hue.
//
// Light is linear in the primaries of a display (IEC 61966-2-1). Lightness, chroma and hue are the polar form of OKLab (B. Ottosson, "A
// perceptual color space for image processing", 2020): equal steps of them look about equal, and a hue stays the same when it grows darker.
#pragma once

#include "base/colour.hpp"

namespace vntl {

struct Light {
    double red = 0, green = 0, blue = 0;  // 0 to 1 where a display can show it
};

struct Perceived_Colour {
    double lightness = 0;  // 0 black to 1 white
    double chroma = 0;     // 0 grey, up to about 0.3
    double hue = 0;        // radians: 0.5 red, 1.9 yellow, 2.5 green, 3.4 cyan, 4.6 blue, 5.7 magenta
};

Light Light_Of(Colour);
Colour Colour_Of(const Light&);  // the nearest that a display shows
double Luminance(const Light&);  // 0 black to 1 white

Perceived_Colour Perceived(Colour);
Light Light_Of(const Perceived_Colour&);

// The same lightness and hue with as much of the chroma as a display can show.
Perceived_Colour Within_Display(Perceived_Colour);

}  // namespace vntl
