// The pictures of the viewer of area detectors.
#pragma once

#include "drawing/device.hpp"
#include "plot/plot.hpp"
#include "session/viewer_2d.hpp"

namespace vntl {

// The map of the viewer's grid as contours in the way of the preferences, or cell by cell; the welcome without a run. What it gives back
// belongs into the viewer's plot.
Drawn Draw_Viewer(const Viewer2D&, const Preferences&, const Configuration&, Device&);

// The line of a section, and where it lies: an overlay.
void Draw_Viewer_Marks(const Viewer2D&, Device&);

// In small windows of their own; without points a text says what to do.
void Draw_Cross_Section(const Line_Plot& section, const Preferences&, Device&);
void Draw_Omega_Scan(const Line_Plot& scan, const Preferences&, Device&);

}  // namespace vntl
