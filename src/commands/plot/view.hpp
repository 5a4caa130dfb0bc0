// Moving the visible window over the data.
#pragma once

#include "session/plot_state.hpp"

namespace vntl {

enum class View_Move { left, right, all_left, all_right, up, down, contract, expand };

// Left and right by a tenth of the width, up and down by a twentieth of the height; all_left and all_right to the ends of the data, the
// width kept; contract and expand widen and narrow the x window by a twentieth of its width on each side.
void Move_View(Plot_State&, View_Move);

}  // namespace vntl
