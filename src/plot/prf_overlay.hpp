// What a refinement adds to the plot of its profile: calculated curve, difference, background, and a row of reflections a phase.
#pragma once

#include "drawing/presentation.hpp"
#include "plot/plot.hpp"

namespace vntl {

// Draws the overlay of row ProfilePRFactive in a window of a graph, its curves on the scale of the observed points. Where the look pins
// the difference, it and the reflections lie in a band of their own over the foot of the data.
void Draw_PRF_Overlay(const Scene&, Presentation&, const View& window, Y_Scale scale);

}  // namespace vntl
