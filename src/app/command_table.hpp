// Every command of the main window, collected from where it lives, and its place in menus and toolbars.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "commands/command.hpp"
#include "toolkit/window.hpp"

namespace vntl {

// What the folders of commands/ and the windows of views/ give.
std::vector<Command_Family> Families();
std::span<const Command> Command_Table();
const Command* Find_Command(int id);

Menu_Entry Menu_Entry_Of(int command);  // a separating line for 0

// The menu bar, made from the table and the places of its commands.
std::vector<Menu_Entry> Menu_Bar();

// The toolbars, by the numbers that the plot forms ask for.
std::vector<Toolbar_Resource> Toolbars();

// A label without '&' and key.
std::string Plain_Label(std::string_view label);

}  // namespace vntl
