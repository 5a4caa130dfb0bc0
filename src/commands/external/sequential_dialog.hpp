// "Sequential mode of Quendrix:": one refinement after the other, over data files that are numbered.
#pragma once

#include "base/command_line.hpp"
#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Application;

Dialog_Resource Sequential_Dialog_Resource();

// Asks for the series, writes the script for it where that is wanted, and fills `command`: the refinement program with its words, in the
// directory of the control file. The dialog stays open below what it refuses. Fails with "Cancelled" where the user leaves it; `command`
// stays as it is then.
Status Sequential_Dialog(Application& app, Command_Line& command);

}  // namespace vntl
