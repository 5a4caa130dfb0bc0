// The picture of the window that looks through profile files: the one in hand in the form of a refinement, simplified for a small window.
#pragma once

#include "drawing/graphics.hpp"
#include "session/preferences.hpp"
#include "session/quick_view.hpp"

namespace vntl {

// The profile in its view; an empty plot where the file could not be read.
void Plot_QuickView(const Quick_View&, const Preferences&, Graphics&);

// What there is to do while no directory is chosen.
void QuickView_Welcome(const Preferences&, Graphics&);

// The one or the other: what the window shows.
void Draw_Quick_View(const Quick_View&, const Preferences&, Device&);

}  // namespace vntl
