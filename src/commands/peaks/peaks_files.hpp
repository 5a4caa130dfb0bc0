// The lists of the first row, saved for other programs. Nothing but the file changes.
#pragma once

#include <string>
#include <string_view>

#include "base/ask.hpp"
#include "base/status.hpp"

namespace vntl {

struct Session;

// The user chooses the values of the format, the file, and whether an old one is replaced. `format`: see Peaks_Format_Of. `name` gets the
// full path of what was written. Fails with "Cancelled" where the user leaves it; with "No peaks has been selected" before anything is
// asked; and with "File format unknow!" for any other word.
Status Save_Peaks_File(Session&, Ask&, std::string_view format, std::string* name = nullptr);

// The same for the points of the background: "No background points has been selected".
Status Save_Background_File(Session&, Ask&);

}  // namespace vntl
