// Cubic spline through given points: on each interval a cubic, with continuous first and second derivative at the points.
//
// With M(i) the second derivative at point i and h(i) = x(i+1) - x(i), continuity of the slope gives for each inner point
//     h(i-1) M(i-1) + 2 (h(i-1) + h(i)) M(i) + h(i) M(i+1) = 6 [ (y(i+1) - y(i)) / h(i) - (y(i) - y(i-1)) / h(i-1) ],
// a tridiagonal system closed by the two ends: a given slope there, or M = 0, the natural end (de Boor, A Practical Guide to
// Splines, 1978).
#pragma once

#include <span>
#include <vector>

namespace vntl {

// Any end slope above this limit asks for a natural end.
inline constexpr double natural_end_limit = 1e30;
inline constexpr double natural_end = 9.9e32;

// Second derivatives at the points. x rises strictly; x and y are of one length. Fewer than two points give zeros.
std::vector<double> Spline(std::span<const double> x, std::span<const double> y, double first_slope = natural_end,
                           double last_slope = natural_end);

// Value at `at` of the spline with second derivatives `m`; the end cubics go on outside. Fewer than two points give y(1), or 0.
double Splint(std::span<const double> x, std::span<const double> y, std::span<const double> m, double at);

}  // namespace vntl
