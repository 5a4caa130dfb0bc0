// Other programs: started without a shell, so that no letter of a file name means anything.
#pragma once

#include <array>
#include <chrono>
#include <csignal>
#include <memory>
#include <string>

#include "base/command_line.hpp"
#include "base/status.hpp"

namespace vntl {

// Signals that the program overhears: a reader that goes away and a file that may not grow are failures of the write, which is told.
inline constexpr std::array<int, 2> overheard_signals = {SIGPIPE, SIGXFSZ};

// What a program does first: overhears those signals, and fills a standard stream that is closed, so that no file takes its number. What
// is written to it then fails.
void Begin_Process();

// The path of a program that can be started: of a name without a directory the first one in PATH, or else in `suite`. Blank without one.
std::string Found_Program(const std::string& name, const std::string& suite = {});

// A program that was started; one that was not is at its end.
class Running_Program {
public:
    struct State;

    Running_Program() = default;
    explicit Running_Program(std::shared_ptr<State> state) : state_(std::move(state)) {}
    // Waits for its end, for that time at most.
    bool Ended_Within(std::chrono::milliseconds time) const;

private:
    std::shared_ptr<State> state_;
};

// Starts the program in its directory. It reads nothing, what it prints goes to standard error, it is the first of a session of its own and
// goes on when this one ends; what it gives back is not looked at. Fails where one of its programs is not found, which the message names,
// or cannot be started.
Status IOsCommand(const Command_Line& command, Running_Program* running = nullptr);

}  // namespace vntl
