// The running program: the session, the way to ask the user, and how it ends.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "commands/ask_user.hpp"
#include "session/session.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

struct Application {
    Session session;
    Ask_User ask{session};
    bool failed = false;                // a reader or a check failed: exit status 1
    bool leaving = false;               // the message loop ends
    std::array<int, 2> toolbars{0, 0};  // on the window now

    Application() = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
};

// Handler of every message of the main window.
void Ihand_WinRoot(Application&, const Message&);

// Carries the state of commands, status bar and cursor to the window, where it has changed.
void Carry_To_Window(Application&);

// Takes messages and passes them on, until the program is left.
void Message_Loop(Application&);

// What a drop, and several files of a command line, do: each file by the registry of readers, then the plot.
void Open_Dropped_Files(Application&, const std::vector<std::string>& names);

// The exit sequence: a changed text is asked about, last directory and recent files are written where that is allowed, and the loop ends.
void Exit_Program(Application&);

}  // namespace vntl
