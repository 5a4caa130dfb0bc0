// Cubic splines through many columns of values at the same points, as cells of a detector that moves as one are.
//
// Each is the spline of base/spline.hpp whose slope at both ends is that of the chord of its first or last interval. The elimination of the
// tridiagonal system depends on the points alone and is done once; all right-hand sides go through it together.
#pragma once

#include <cstddef>
#include <span>

namespace vntl {

// Second derivatives of all columns, as `y` a row of `columns` values for each point. x rises strictly; `scratch` has its length.
void Block_Spline(std::span<const double> x, std::span<const double> y, std::size_t columns, std::span<double> scratch,
                  std::span<double> derivatives);

// Where a value lies in an interval of a spline: its ends weigh `left` and `right`, the second derivatives there `bend_left`, `bend_right`.
struct Spline_Weights {
    double left, right, bend_left, bend_right;

    // At `part` (0 to 1) of an interval of length h.
    Spline_Weights(double part, double h) : left(1 - part), right(part) {
        const double sixth = h * h * (1.0 / 6);
        bend_left = (left * left - 1) * left * sixth;
        bend_right = (right * right - 1) * right * sixth;
    }
    double Value(double y_left, double y_right, double m_left, double m_right) const {
        return left * y_left + right * y_right + bend_left * m_left + bend_right * m_right;
    }
};

}  // namespace vntl
