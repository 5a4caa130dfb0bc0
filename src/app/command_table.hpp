// Every command of the main window: its number, label, place in the menus, keys, and what it does.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "toolkit/window.hpp"

namespace vntl {

struct Application;

struct Command {
    int id = 0;
    std::string_view label;                  // '&' before the mnemonic letter
    std::string_view icon;                   // of the toolbars, empty for none
    void (*action)(Application&) = nullptr;  // none: a command still to come, disabled whatever its state says
    std::string_view shortcut = {};
    std::string_view hint = {};
    bool checkable = false;

    bool built() const { return action != nullptr; }
};

std::span<const Command> Command_Table();
const Command* Find_Command(int id);

// The menu bar, made from the table and the places of its commands.
std::vector<Menu_Entry> Menu_Bar();

// The toolbars, by the numbers that the plot forms ask for.
std::vector<Toolbar_Resource> Toolbars();

// A label without '&' and key.
std::string Plain_Label(std::string_view label);

}  // namespace vntl
