// The reflections under the pointer: of the refined profile, or of the generated list.
#pragma once

#include <vector>

#include "session/desk/look.hpp"
#include "session/lists.hpp"
#include "session/plot_state.hpp"
#include "session/store.hpp"

namespace vntl {

inline constexpr int most_reflections_shown = 28;

// Looks for reflections at a place in data units and keeps them in `plot.hits`; true when what is shown has to change. A move that finds
// what the last one found costs no drawing. A generated reflection is hit below the top of its line.
bool Search_PRF_Refl(const Profile_Store&, Plot_State&, float x, float y, const Look& = {});
bool Search_HKLGen_Refl(const std::vector<Reflection_Mark>&, Plot_State&, float x, float y);

}  // namespace vntl
