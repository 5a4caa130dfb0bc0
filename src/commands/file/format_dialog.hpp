// The dialog "Format of the data file" (104).
#pragma once

#include <optional>

#include "base/ask.hpp"

namespace vntl {

// What was recognised is named and selected, and so are the files; those that were recognised as different formats may be read each by its
// own. Files of several banks offer to open them all.
std::optional<Format_Choice> Data_Format_Dialog(const Format_Question& question);

}  // namespace vntl
