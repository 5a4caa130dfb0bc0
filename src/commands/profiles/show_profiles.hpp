// Dialog "GRAPH SHOW": which rows are drawn, and which parts of a refined profile.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Show_Profiles_Dialog_Resource();
void ShowProfile_Config(Session&);

}  // namespace vntl
