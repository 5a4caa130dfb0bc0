// The settings file: every stored preference in a text of 59 lines with fixed columns, which the program alone writes.
//
// Which value stands in which columns is told by the rows of session/preference_table. Texts are UTF-8, their widths count characters; a
// file in Latin-1 is understood.
#pragma once

#include <string>

#include "base/status.hpp"

namespace vntl {

struct Configuration;
struct Preferences;

enum class Settings_Mode { global, local };

// Where `mode` saves: on Windows "local" the working directory, "global" the suite's directory or else the one of the start; elsewhere
// $HOME/.qxs for both. Empty without a home.
std::string Settings_File(const Configuration&, const Preferences&, Settings_Mode mode);

// Reads the whole file. A failure tells in which section it happened ("Error reading graphic 2D preferences values"); the preferences
// are then as they were. Numbers outside their range come to the nearest one of it.
Status Read_Preferences(Preferences&, const std::string& file);

// Writes the whole file in one step, its directory made when it is missing. Fails with "Unable to write setting file"; what was there
// stays.
Status Write_Preferences(const Preferences&, const Configuration&, Settings_Mode mode);

}  // namespace vntl
