// Menus "Peak detection" and "Background": the conditions of the searches, and their start.
#pragma once

#include <vector>

#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

std::vector<Dialog_Resource> Search_Dialog_Resources();

// Cancelled when the user left the dialog.
Status Search_Peaks(Session&);
Status Search_Satellites(Session&);
Status Search_Background(Session&);

}  // namespace vntl
