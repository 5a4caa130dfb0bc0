// The listing of what a run tells of itself.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Application;

Dialog_Resource Numor_Header_Dialog_Resource();

// Shows the listing of the run that the user selects.
void View_Numor_Header(Application&);

}  // namespace vntl
