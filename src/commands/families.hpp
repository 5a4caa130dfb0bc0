// The folders of commands/, one family each.
#pragma once

#include "commands/command.hpp"

namespace vntl {

Command_Family File_Commands();
Command_Family Edit_Commands();
Command_Family Profiles_Commands();
Command_Family Xspace_Commands();
Command_Family Calc_Commands();
Command_Family Peaks_Commands();
Command_Family Fit_Commands();
Command_Family Crystal_Commands();
Command_Family Instrument_Commands();
Command_Family Plot_Commands();
Command_Family Options_Commands();
Command_Family External_Commands();
Command_Family Help_Commands();

}  // namespace vntl
