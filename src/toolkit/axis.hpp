// Where the ticks of an axis lie and how their numbers are written.
#pragma once

#include <string>
#include <vector>

namespace vntl {

struct Axis_Ticks {
    std::vector<float> values;  // at most `max_axis_ticks`
    float step = 0;
    int exponent = 0;  // decade of the range, which decides how numbers are written
};

inline constexpr std::size_t max_axis_ticks = 1000;

// Ticks of an axis from `lo` to `hi`, in single precision. `third`: the depth axis of a 3D graph.
Axis_Ticks Ticks_Of_Axis(float lo, float hi, bool third = false);

// Text of a tick number of an axis of that decade: as many decimals as the decade needs, or with 0 to 9 `decimals` those.
std::string Tick_Text(float value, int exponent, int decimals = -1);

}  // namespace vntl
