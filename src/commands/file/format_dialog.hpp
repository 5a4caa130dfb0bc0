// Dialog 104: the format of a data file whose extension does not tell it.
#pragma once

#include <optional>

#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Format_Dialog_Resource();

// The format code that the user chose, nothing on cancel. `proposed` is selected at first.
std::optional<int> Data_Format_Dialog(Session&, int proposed);

}  // namespace vntl
