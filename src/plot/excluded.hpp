// Stretches of a row that lie in its excluded regions and are drawn in a colour of their own.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "patterns/profile.hpp"
#include "session/plot_state.hpp"

namespace vntl {

struct Excluded_Stretch {
    std::size_t first, count;  // points of the row, first from 0
};

// The points of rising `x` with lo <= x <= hi; nothing for fewer than two of them.
std::optional<Excluded_Stretch> Stretch_Between(std::span<const float> x, float lo, float hi);

// The stretches of a row that the window shows part of, in the order of the regions.
std::vector<Excluded_Stretch> Excluded_Stretches(const PRF_Info_Add_Type& info, std::span<const float> x, const View& window);

}  // namespace vntl
