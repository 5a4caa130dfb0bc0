// Windows of maps and surfaces: the grid is prepared for each of them.
#pragma once

#include "base/status.hpp"
#include "session/plot_state.hpp"

namespace vntl {

struct Session;

// The grid of a map for a window of x and of rows, as y, which becomes the view; logarithms as the present form has them, or as told.
// A refusal changes nothing.
Status Show_Rows_In_Grid(Session&, const View& window);
Status Show_Rows_In_Grid(Session&, const View& window, Intensities form);

// The grid of a surface, of all rows, for a window of x, which becomes the view.
Status Show_Surface_Grid(Session&, float x1, float x2);

// The grid of a model: x and rows that a map shows, else x of the view and all rows; logarithms where the picture shows them.
Status Prepare_Model_Grid(Session&);

}  // namespace vntl
