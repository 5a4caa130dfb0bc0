// Moving the visible window over the data.
#pragma once

#include "session/plot_state.hpp"

namespace vntl {

enum class View_Move { left, right, all_left, all_right, up, down, contract, expand };

// Left and right by a tenth of the width, up and down by a twentieth of the height; all_left and all_right to the ends of the data, the
// width kept; contract and expand widen and narrow the x window by a twentieth of its width on each side.
void Move_View(Plot_State&, View_Move);

// A step of the wheel: x by a fifth narrower about a place, or wider again. False where it would be too narrow.
bool Zoom_X(double about, bool closer, View& view);
// The same of y; narrower than single precision tells apart it does not become.
bool Zoom_Y(double about, bool closer, View& view);
// The same of x inside the range of all rows.
bool Zoom_X_Within_Rows(const Plot_State&, double about, bool closer, View& view);

}  // namespace vntl
