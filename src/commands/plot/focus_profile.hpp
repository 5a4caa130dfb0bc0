// The dialog in which the user types the limits of the window.
#pragma once

#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Focus_Profile_Dialog_Resource();

// In the units of the window: in a logarithmic form y is the logarithm of the intensity. Cancelled where the user leaves the dialog.
Status Focus_Profile(Session&);

}  // namespace vntl
