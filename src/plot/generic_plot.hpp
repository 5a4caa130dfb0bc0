// Plots of any columns, in the fonts and colours of the 2D graph and the twelve styles of profiles.
#pragma once

#include "charts/generic_plots.hpp"
#include "drawing/device.hpp"
#include "session/configuration.hpp"
#include "session/preferences.hpp"

namespace vntl {

// Lines and markers, histogram, polar plot or pie, by `plot_kind`; where nothing can be drawn a text says why.
void Draw_Generic_Plot(const Generic_Plots& plots, const Preferences& prefs, Device& device);

// The empty window.
void Draw_Generic_Welcome(const Configuration& config, Device& device);

}  // namespace vntl
