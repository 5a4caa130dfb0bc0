// The loop of a modal dialog: it serves repaints, and what the windowing system asks of the main window is kept for its end.
#pragma once

namespace vntl {

struct Session;

// Runs the shown dialog until one of its buttons is pressed; the number of the button. The dialog stays loaded.
int Run_Modal(Session&, int dialog);

}  // namespace vntl
