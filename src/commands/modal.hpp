// The loop of a modal dialog: it serves repaints, and what the windowing system asks of the main window is kept for its end.
#pragma once

#include <functional>

namespace vntl {

struct Session;

// Runs the shown dialog until one of its buttons is pressed; the number of the button. The dialog stays loaded. `command` is called with
// the commands of the main window that the dialog lets through.
int Run_Modal(Session&, int dialog, const std::function<void(int)>& command = {});

}  // namespace vntl
