#include "plot/excluded.hpp"

#include <algorithm>

namespace vntl {

std::optional<Excluded_Stretch> Stretch_Between(std::span<const float> x, float lo, float hi) {
    const auto first = std::lower_bound(x.begin(), x.end(), lo);
    const auto end = std::upper_bound(first, x.end(), hi);
    if (end - first < 2) return {};
    return Excluded_Stretch{static_cast<std::size_t>(first - x.begin()), static_cast<std::size_t>(end - first)};
}

std::vector<Excluded_Stretch> Excluded_Stretches(const PRF_Info_Add_Type& info, std::span<const float> x, const View& window) {
    std::vector<Excluded_Stretch> stretches;
    const auto regions = static_cast<std::size_t>(std::clamp(info.nexcl, 0, max_excluded_regions));
    for (std::size_t j = 0; j < regions; ++j) {
        const float lo = info.excl_min[j], hi = info.excl_max[j];
        const bool in_window = lo <= hi && lo < window.x2 && hi > window.x1;
        if (!in_window) continue;
        if (const auto stretch = Stretch_Between(x, lo, hi)) stretches.push_back(*stretch);
    }
    return stretches;
}

}  // namespace vntl
