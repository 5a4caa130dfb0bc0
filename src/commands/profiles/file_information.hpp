// The dialog "File information": all that is known of the file of a profile, as a table that can be copied.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource File_Information_Dialog_Resource();

// Shows the first profile on the screen, and any other that is chosen.
void File_Information_Dialog(const Session& session);

}  // namespace vntl
