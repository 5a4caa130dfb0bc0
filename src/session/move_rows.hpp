// Rows moved and rescaled along an axis, as dialogs and mouse ask for it. Each fails, and changes nothing, where values of a row would
// leave the range of numbers.
#pragma once

#include <vector>

#include "base/status.hpp"
#include "session/change_history.hpp"

namespace vntl {

struct Session;

Status Offset_Rows(Session&, const std::vector<int>& rows, float dx, float dy);

// x, or y, becomes a * x + b.
Status Scale_X_Of_Rows(Session&, const std::vector<int>& rows, float a, float b);
Status Scale_Y_Of_Rows(Session&, const std::vector<int>& rows, float a, float b);

// Sets the rows apart: row i stands by (i - 1) times the shift from where it came, and row 1 stays. What was given last is taken back by
// it. Fails where a profile of a refinement is loaded.
Status Shift_Permitted(const Session&);
Status Shift_Rows(Session&, Row_Shift shift);

// Counts as they would be at one monitor; each row's own monitor stays, so that a second time scales again. A monitor below 1 gives way to
// the average of the rows. Fails where a profile of a refinement is loaded, the rows did not come together, or a monitor is below 1.
Status Normalization_Permitted(const Session&);
float Average_Monitor(const Session&);  // at least 1
Status Normalize_Rows(Session&, float monitor);

}  // namespace vntl
