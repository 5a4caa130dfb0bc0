// The text editor: a window of its own in which a text file is opened, changed, searched and saved.
#pragma once

#include <string>
#include <vector>

#include "base/ask.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace vntl {

struct Session;

// Opens the window, or comes to the front with the file that is named; a text that was changed is asked about first. Blank: no file.
void Open_Text_Editor(Session&, Ask&, const std::string& file);

// A message of the editor's window or of its dialog for searching.
void Text_Editor_Message(Session&, Ask&, const Message&);
bool Is_Text_Editor(int window);

// Asks about a changed text; false when the user wants to stay.
bool Leave_Text_Editor(Session&, Ask&);

Dialog_Resource Find_Dialog_Resource();

}  // namespace vntl
