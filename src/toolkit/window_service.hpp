// The one registry of the program's windows: what each of them serves, told at the start, whether it is open or not.
//
// Who has a message, wants a picture or ends the program asks here, and need not know which windows there are.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "drawing/device.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

struct Window_Service {
    std::vector<int> dialogs = {};                // its modeless dialogs, whose messages are its own
    std::function<void(const Message&)> message;  // menu, mouse, keys, repaint, resize, timer, close
    std::function<void(Device&)> picture = {};    // draws what it shows, marks included; none: a window without a picture
    // Page units of a place in data units, nothing while there is no plot.
    std::function<std::optional<Point>(Point data)> page_at = {};
    std::function<bool()> may_close = {};  // the program ends: asks what must be asked; false when the user wants to stay
    int owner = main_window;               // the window whose loop serves it
};

void Register_Window(int window, Window_Service service);

// Passes a message to its window; false when no window serves it.
bool Serve_Message(const Message& message);

// The same for what no loop may hold back: repaints, resizes and timers.
void Serve_Meanwhile(const Message& message);

// The window in front, or that of the dialog in front; the main window where that one has no picture.
int Picture_Window();
// The window itself, or that of a dialog; the main window for a number that is neither.
int Window_Of(int number);
const Window_Service& Service_Of(int window);  // an empty one for a window that is not registered

bool Windows_May_Close();  // asks the open windows in the order of their numbers

}  // namespace vntl
