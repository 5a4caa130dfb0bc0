// The files in which the first profile shown is saved: counts in equal steps, or columns of x, y and standard deviation.
#pragma once

#include "base/ask.hpp"
#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Save_Xys_Dialog_Resource();

// "Free Format File (.dat)" and "XY / XYS Data File (.xys)": the user chooses what is saved where. Nothing but the file changes.
Status Save_Dat_File(Session&, Ask&);
Status Save_Xys_File(Session&, Ask&);

}  // namespace vntl
