// Other programs: started without a shell, so that no letter of a file name means anything.
#pragma once

#include <array>
#include <csignal>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// Signals that the program overhears: a reader that goes away and a file that may not grow are failures of the write, which is told.
inline constexpr std::array<int, 2> overheard_signals = {SIGPIPE, SIGXFSZ};

// What a program does first: overhears those signals, and fills a standard stream that is closed, so that no file takes its number. What
// is written to it then fails.
void Begin_Process();

// A file name as an argument of a command line: in double quotes when it holds a blank.
std::string Quoted_Argument(std::string_view file);

// The words of a command line, parted by blanks, with what stands in double quotes kept together. A program's path is never quoted: when
// the words up to one of them are together the name of a file, they are the first word.
std::vector<std::string> Command_Words(std::string_view command);

enum Command_Flags { command_waits = 0, command_goes_on = 2 };

// Runs the command line; the program is found by its path or in PATH. With `command_goes_on` it runs on by itself, else its end is waited
// for. Fails when there is no program to start; what a program that was started gives back is not looked at.
Status IOsCommand(std::string_view command, int flags);

}  // namespace vntl
