// Dialogs for the constants that carry x to d: of one file while it is loaded, and of all rows in a table.
#pragma once

#include <vector>

#include "base/ask.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

std::vector<Dialog_Resource> Constants_Dialog_Resources();

// False on cancel; the constants are then as they were.
bool File_Constants_Dialog(Constants_Kind kind, Conversion_Constants& file, const Constants_Check& check);
bool Row_Constants_Dialog(Constants_Kind kind, std::vector<Conversion_Constants>& rows, const Constants_Check& check);

}  // namespace vntl
