// How far the shown profiles stand above one another: a dialog beside the picture, which follows while the slider moves.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Waterfall_Dialog_Resource();

// Runs until it is closed; "Cancel" brings back what was there.
void Waterfall_Dialog(Session&);

}  // namespace vntl
