// Commands and dialogs register where they live: each folder of commands/, and each window of views/, gives one family.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "session/command_ids.hpp"
#include "toolkit/dialog.hpp"

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

struct Command_Family {
    std::span<const Command> commands;
    std::vector<Dialog_Resource> (*dialogs)() = nullptr;
};

// Popup menus with a number are commands too: enabled and checked, with nothing of their own to do.
inline void Open_Popup(Application&) {}

// Shows what a command had to say; false where the user left its dialog, and nothing is to be drawn.
bool Tell(Application&, const Status&);

}  // namespace vntl
