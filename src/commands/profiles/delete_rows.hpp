// The dialog in which the user marks profiles that are to go.
#pragma once

#include "base/ask.hpp"
#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Delete_Profiles_Dialog_Resource();

// Cancelled where nothing has gone.
Status Delete_Profiles(Session&, Ask&);

}  // namespace vntl
