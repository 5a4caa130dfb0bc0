// The windows of their own: the commands that open them, and what they serve.
#pragma once

#include "commands/command.hpp"

namespace vntl {

Command_Family Text_Editor_Commands();
Command_Family Quick_View_Commands();
Command_Family Window_Commands();  // of windows still to come

void Register_Text_Editor(Application&);
void Register_Quick_View(Application&);

}  // namespace vntl
