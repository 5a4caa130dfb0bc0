// How well two colours can be told apart by their brightness: the contrast ratio of the Web Content Accessibility Guidelines 2, section
// 1.4.3. It is 1 of a colour to itself, 21 of black to white; small texts are read well from 4.5 on, lines are seen well from 3 on.
#pragma once

#include "base/colour.hpp"

namespace vntl {

double Contrast(Colour, Colour);

// The colour, or the one of its hue next to it in lightness whose contrast to the ground is `least`: darker, or lighter where only lighter
// ones reach it. Black or white, whichever is further from the ground, where none does.
Colour Readable(Colour colour, Colour ground, double least);

}  // namespace vntl
