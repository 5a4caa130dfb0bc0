// The dialog "Format of the data file" (104).
#pragma once

#include <optional>

#include "base/ask.hpp"

namespace vntl {

// What was recognised is named and selected; a file of several banks offers to open them all.
std::optional<Format_Choice> Data_Format_Dialog(const Format_Question& question);

}  // namespace vntl
