// The row whose curve the pointer is on, which the picture marks while the list of patterns is open.
#pragma once

#include "session/plot_state.hpp"

namespace vntl {

struct Session;

// A move of the mouse: the row within some 6 pixels of the place becomes the pointed one, or none does. What stays the same is not drawn
// anew. Without the list nothing is searched, and no row is pointed at.
void Point_At_Row(Session&, Plot_State::Place page);

// Marks a row of the picture, or with 0 none.
void Set_Pointed_Row(Session&, int row);

}  // namespace vntl
