// Dialogs that ask for a number or two and change all rows by it: set them apart, bring their counts to one monitor.
#pragma once

#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Shift_Profiles_Dialog_Resource();
Dialog_Resource Normalize_Monitor_Dialog_Resource();

// Each is cancelled, or fails with the text for the user; the store is then as it was.
Status Shift_Profiles(Session&);
Status Normalize_Monitor(Session&);

}  // namespace vntl
