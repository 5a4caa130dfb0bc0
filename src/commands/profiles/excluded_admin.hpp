// The excluded regions of every row in a tree, to be added to and deleted from.
#pragma once

#include "base/ask.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Admin_Excluded_Dialog_Resource();
void Excluded_Regions_Admin(Session&, Ask&);  // each change is drawn at once

}  // namespace vntl
