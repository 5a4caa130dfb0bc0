// The main window: its messages, and the state that is carried to it.
#pragma once

#include <string>
#include <vector>

#include "commands/application.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

void Register_Main_Window(Application&);

// Carries the state of commands, status bar and cursor to the window, where it has changed.
void Carry_To_Window(Application&);

// Takes messages and passes them on, until the program is left.
void Message_Loop(Application&);

// What a drop, and several files of a command line, do: each file by the registry of readers, then the plot.
void Open_Dropped_Files(Application&, const std::vector<std::string>& names);

}  // namespace vntl
