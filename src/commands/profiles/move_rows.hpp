// Dialogs that move and rescale rows: by numbers at once, or later by the mouse.
#pragma once

#include <vector>

#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

std::vector<Dialog_Resource> Move_Rows_Dialog_Resources();

// What the user asked for: the change is made already, or waits for the mouse.
struct Row_Choice {
    bool by_mouse = false;
    std::vector<int> rows;  // marked rows, from 1
};

// Each is cancelled, or fails with the text for the user; the store is then as it was.
Status Offset_Align_Dialog(Session&, Row_Choice& choice);
Status Scaling_X_Dialog(Session&, Row_Choice& choice);
Status Scaling_Y_Dialog(Session&, Row_Choice& choice);

}  // namespace vntl
