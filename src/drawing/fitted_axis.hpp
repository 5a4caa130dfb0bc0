// Ticks of an axis that all have numbers, as many as keep apart, with smaller ticks between them.
//
// Places are in the units of the axis. One of logarithms (natural ones, counts below one at 0) or of square roots (of what is below zero:
// that of its amount, below zero) has its ticks at round counts.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vntl {

enum class Axis_Scale { even, logarithm, root };

struct Axis_Tick {
    double at;
    std::string text;
};
struct Fitted_Ticks {
    std::vector<Axis_Tick> major;
    std::vector<double> minor;
};

struct Axis_Room {
    std::function<double(std::string_view)> needs;  // of the axis, by a number and what sets it apart from the next
    double minor = 0;                               // between two small ticks at least
    double powers_from = 1e300;  // numbers as large as that are powers of ten, "2·10^5"; those of an even axis with one exponent
};

// From `lo` to `hi`, in either order; none where there is no room between two finite ends.
Fitted_Ticks Fit_Ticks(double lo, double hi, Axis_Scale, const Axis_Room&);

}  // namespace vntl
