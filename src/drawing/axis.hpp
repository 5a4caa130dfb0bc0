// Where the ticks of an axis lie, which of them carry numbers, and how these are written.
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

// Ticks of an axis from `lo` to `hi`, in single precision. `third`: the third axis of a graph in space.
Axis_Ticks Ticks_Of_Axis(float lo, float hi, bool third = false);

inline constexpr double tick_length = 0.8;  // at first; 1 is the width of the plot box through the next number
inline constexpr double ticks_a_zone = 80;
inline constexpr double number_gap = 5;  // page units between a tick and its number

// Every 1st, 2nd, 5th, 10th ... tick gets its number: so that numbers which need `needed` stand apart when ticks do by `spacing`.
int Numbered_Every(double spacing, double needed);

// Whether a tick carries a number when only each `every`-th does: multiples of that many steps do.
bool Has_Number(float value, float step, int every);

// Text of a tick number of an axis of that decade: as many decimals as the decade needs, or with 0 to 9 `decimals` those.
std::string Tick_Text(float value, int exponent, int decimals = -1);

}  // namespace vntl
