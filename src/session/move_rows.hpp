// Rows moved and rescaled along an axis, as dialogs and mouse ask for it. Each fails, and changes nothing, where values of a row would
// leave the range of numbers.
#pragma once

#include <vector>

#include "base/status.hpp"

namespace vntl {

struct Session;

Status Offset_Rows(Session&, const std::vector<int>& rows, float dx, float dy);

// x, or y, becomes a * x + b.
Status Scale_X_Of_Rows(Session&, const std::vector<int>& rows, float a, float b);
Status Scale_Y_Of_Rows(Session&, const std::vector<int>& rows, float a, float b);

}  // namespace vntl
