// What a refinement adds to the plot of its profile: calculated curve, difference, background, and a row of reflections a phase.
#pragma once

#include "drawing/presentation.hpp"
#include "plot/plot.hpp"

namespace vntl {

// Draws the overlay of row ProfilePRFactive in a window of a graph. `log`: the observed points are drawn as logarithms, and so are the
// curves.
void Draw_PRF_Overlay(const Scene&, Presentation&, const View& window, bool log);

}  // namespace vntl
