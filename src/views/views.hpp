// The windows of their own: the commands that open them, and what they serve.
#pragma once

#include <string>

#include "commands/command.hpp"

namespace vntl {

Command_Family Text_Editor_Commands();
Command_Family Quick_View_Commands();
Command_Family Generic_Graphics_Commands();
Command_Family Window_Commands();  // of windows still to come

void Register_Text_Editor(Application&);
void Register_Quick_View(Application&);
void Register_Generic_Graphics(Application&);

// Opens the window of generic graphics with a file of it, and comes back when the window is closed.
void Show_Generic_File(Application&, const std::string& file);

}  // namespace vntl
