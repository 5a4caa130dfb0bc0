// Least and greatest value of many.
#pragma once

#include <limits>
#include <span>

namespace vntl {

struct Extremes {
    float low = std::numeric_limits<float>::max(), high = -low;
    bool Found() const { return low <= high; }
};

// Of the finite values; without one, the largest number as `low` and its negative as `high`.
Extremes Finite_Extremes(std::span<const float> values);

}  // namespace vntl
