#include "base/extremes.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace vntl {

namespace {

// Infinities included, NaN ignored. Eight at a time, so that no comparison waits for the one before.
Extremes All_Extremes(std::span<const float> values) {
    constexpr std::size_t lanes = 8;
    std::array<float, lanes> low, high;
    low.fill(Extremes().low);
    high.fill(Extremes().high);
    const auto take = [&low, &high](std::size_t lane, float value) {
        low[lane] = value < low[lane] ? value : low[lane];
        high[lane] = value > high[lane] ? value : high[lane];
    };
    std::size_t i = 0;
    for (; i + lanes <= values.size(); i += lanes)
        for (std::size_t lane = 0; lane < lanes; ++lane) take(lane, values[i + lane]);
    for (; i < values.size(); ++i) take(0, values[i]);
    Extremes all;  // by comparisons of values: a search for the place of the least is all jumps, which a short array feels
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        all.low = std::min(all.low, low[lane]);
        all.high = std::max(all.high, high[lane]);
    }
    return all;
}

}  // namespace

Extremes Finite_Extremes(std::span<const float> values) {
    Extremes found = All_Extremes(values);
    if (std::isfinite(found.low) && std::isfinite(found.high)) return found;
    found = {};
    for (const float value : values) {
        if (!std::isfinite(value)) continue;
        found.low = std::min(found.low, value);
        found.high = std::max(found.high, value);
    }
    return found;
}

}  // namespace vntl
