// The dialog "Preferences": colours, styles, texts and programs, applied to the plot, saved and loaded.
#pragma once

#include "base/ask.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Preferences_Dialog_Resource();

// Runs until "Exit", which takes nothing over that was not applied.
void Preferences_Main(Session&, Ask&);

// The same from the viewer of area detectors, which begins with what its maps look like: what is applied shows there, and ranges and
// picture of the main window stay as they are.
void Preferences_In_Viewer(Session&, Ask&);

}  // namespace vntl
