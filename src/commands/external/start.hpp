// How commands start other programs.
#pragma once

#include <string_view>

#include "external/program_suite.hpp"

namespace vntl {

struct Application;
struct Configuration;

Program_Suite Suite_Of(const Application&);

// The current refinement file with its full path; blank where there is none.
std::string Refinement_File(const Configuration&);

// The one file that the user selects; blank on cancel.
std::string Choose_File(Application&, std::string_view title, std::string_view filter);

// Ito reads a file of this name in its directory. The copy takes the place of an older one; a failure is told. True where it is `file`
// itself.
inline constexpr std::string_view ito_input = "ito_inp.dat";
bool Copy_For_Ito(Application&, const std::string& file);

inline constexpr std::string_view no_program = "The preferences name no program for this.";  // in the status bar

// Starts the program, which goes on by itself. One that is not found, or cannot be started, is named in the status bar; false then.
bool Start_Program(Application&, const Command_Line& command);

// Starts the program and waits for its end. The status bar names it; windows are repainted meanwhile; Escape leaves it running and stops
// the wait, and so does who closes the window. False where it was not started or the wait was stopped.
bool Run_Program(Application&, const Command_Line& command, std::string_view name);

// Opens a file with the program of a role, blank: starts the program alone. Where the user chose none and the system's own is not
// installed the desktop's opener takes its place; that of files opens the present directory.
void Open_With(Application&, Program_Role role, std::string_view file = {});

}  // namespace vntl
