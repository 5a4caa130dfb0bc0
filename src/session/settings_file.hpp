// The settings file: every stored preference in a text of 59 lines with fixed columns, which the program alone writes.
//
// Which value stands in which columns is told by the rows of session/preference_table. Texts are UTF-8, their widths count characters; a
// file in Latin-1 is understood. Behind these lines stand those of a look of pictures (session/desk/look.hpp), a name and a value each,
// when it is another one than that of the start; other lines there are passed over.
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"
#include "session/configuration.hpp"
#include "session/desk/look.hpp"

namespace vntl {

struct Preferences;

// The file where `mode` saves, in its Settings_Directory. Empty without such a place.
std::string Settings_File(const Configuration&, const Preferences&, Settings_Mode mode);

// Reads the whole file. A failure tells in which section it happened ("Error reading graphic 2D preferences values"); the preferences
// and the look are then as they were. Numbers outside their range come to the nearest one of it. Without a line of the look it becomes
// that of the start.
Status Read_Preferences(Preferences&, const std::string& file, Look* look = nullptr);
Status Read_Settings_Text(Preferences&, std::string_view text, Look* look = nullptr);

// Writes the whole file in one step, its directory made when it is missing. Fails with "Unable to write setting file" and the file's
// name; what was there stays.
Status Write_Preferences(const Preferences&, const Configuration&, Settings_Mode mode, const Look& look = {});
std::string Settings_Text(const Preferences&, const Configuration&, const Look& look = {});

}  // namespace vntl
