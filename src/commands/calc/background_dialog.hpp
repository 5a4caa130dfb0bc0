// "Subtract background": the first shown row less its background, as a new row.
#pragma once

#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Background_Dialog_Resource();

// Asks which background: the line through the points of the list, the curve that the row brings, or points that are searched over the whole
// row; the picture shows it meanwhile. Cancelled when the user left the dialog. Fails, before it asks, without a shown row, on integrated
// intensities, and when the table is full.
Status Subtract_Background_Of_Row(Session&);

}  // namespace vntl
