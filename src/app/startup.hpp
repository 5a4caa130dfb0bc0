// From the command line to the message loop.
#pragma once

#include "app/command_line.hpp"

namespace vntl {

// Runs the program as the command line says; its exit status. argc and argv are handed on to the toolkit.
int Run_Program(const Start_Options& line, int& argc, char** argv);

}  // namespace vntl
