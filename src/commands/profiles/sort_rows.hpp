// The dialog that puts profiles in order: by names, titles, temperatures, or numbers of the user's own.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Sort_Profiles_Dialog_Resource();

// Each "Apply" sorts and draws; the dialog stays.
void Sort_Profiles(Session&);

}  // namespace vntl
