#include "plot/axis_limits.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "drawing/axis.hpp"

namespace vntl {

double Largest(std::span<const float> values) {
    const Extremes found = Finite_Extremes(values);
    return found.Found() ? std::max(std::fabs(static_cast<double>(found.low)), std::fabs(static_cast<double>(found.high))) : 0;
}

float Limit(double value) {
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -most, most));
}

Extremes With_Extent(Extremes limits) {
    constexpr double flat_margin = 0.05;  // share of the only value that is shown above and below it
    if (Ticks_Of_Axis(limits.low, limits.high).values.size() > 1 || limits.high - limits.low > 1) return limits;
    const double room =
        std::max(Largest(std::array{limits.low, limits.high}) * flat_margin, static_cast<double>(std::numeric_limits<float>::min()));
    const double by = limits.low == 0 && limits.high == 0 ? 1 : room;
    return {Limit(limits.low - by), Limit(limits.high + by)};
}

}  // namespace vntl
