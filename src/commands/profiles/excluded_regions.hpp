// Excluded regions: the dialog that gives one to the rows that the user picks.
#pragma once

#include "base/ask.hpp"
#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Insert_Excluded_Dialog_Resource();

// Cancelled, or fails with the text for the user. A row whose list is full is told in a box, and the others get the region.
Status Insert_Excluded_Region(Session&, Ask&, float x1 = 0, float x2 = 0);

}  // namespace vntl
