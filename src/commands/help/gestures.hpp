// What the mouse and the keys do over the plot, told on a page.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

Dialog_Resource Gestures_Dialog_Resource();
void Gestures_Dialog();

}  // namespace vntl
