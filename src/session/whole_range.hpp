// The whole range of the intensities.
#pragma once

#include "session/plot_state.hpp"
#include "session/store.hpp"

namespace vntl {

// On a scale, with the margins and the room for a refined profile that a graph drawn from scratch has; without a waterfall. x is that of
// the view.
View Whole_On_Scale(const Profile_Store&, const Plot_State&, Y_Scale);

}  // namespace vntl
