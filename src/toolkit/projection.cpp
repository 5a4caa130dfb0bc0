#include "toolkit/projection.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vntl {

namespace {

constexpr double degree = std::numbers::pi / 180;

}  // namespace

Projection::Projection(double rotation, double elevation, double distance)
    : cos_turn_(std::cos(rotation * degree)),
      sin_turn_(std::sin(rotation * degree)),
      cos_rise_(std::cos(elevation * degree)),
      sin_rise_(std::sin(elevation * degree)),
      nearness_(1 / distance) {}

Seen_Point Projection::See(const Space_Point& point) const {
    const double across = point[1] - 0.5, away = point[0] - 0.5;
    return Look(across * cos_turn_ - away * sin_turn_, across * sin_turn_ + away * cos_turn_, point[2] - 0.5);
}

Seen_Point Projection::Look(double across, double away, double upward) const {
    const double depth = away * cos_rise_ - upward * sin_rise_;
    const double shrunk = 1 / (1 + depth * nearness_);
    return {across * shrunk, (upward * cos_rise_ + away * sin_rise_) * shrunk, depth};
}

// The corners go round on circles of half the floor's diagonal, r. On the upper circle, which is the nearer, right is
// r cos t / (n - m sin t) with n = 1 - sin e / 2d and m = r cos e / d, and r / sqrt(n^2 - m^2) at most. Up rises or falls all the way from
// the nearest point of a circle to the farthest one.
Rect Projection::Extent() const {
    constexpr double r = std::numbers::sqrt2 / 2;
    const double n = 1 - 0.5 * sin_rise_ * nearness_, m = r * cos_rise_ * nearness_;
    const double widest = r / std::sqrt(n * n - m * m);
    const std::array<double, 4> ends = {Look(0, r, 0.5).up, Look(0, -r, 0.5).up, Look(0, r, -0.5).up, Look(0, -r, -0.5).up};
    const auto [lowest, highest] = std::minmax_element(ends.begin(), ends.end());
    return {-widest, *lowest, widest, *highest};
}

}  // namespace vntl
