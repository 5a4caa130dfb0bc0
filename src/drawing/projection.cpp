#include "drawing/projection.hpp"

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

// Where right and up have no value: at the place that every ray goes through.
Space_Point Projection::Eye() const {
    const double away = -1 / (cos_rise_ * nearness_), upward = -away * sin_rise_ / cos_rise_;
    return {0.5 + away * cos_turn_, 0.5 + away * sin_turn_, 0.5 + upward};
}

// The corners go round on circles of half the floor's diagonal, r. On either one right is r cos t / (1 + m sin t) with m = r cos e / d, and
// r / sqrt(1 - m^2) at most. Up rises or falls all the way from the nearest point of a circle to the farthest one.
Rect Projection::Extent() const {
    constexpr double r = std::numbers::sqrt2 / 2;
    const double m = r * cos_rise_ * nearness_;
    const double widest = r / std::sqrt(1 - m * m);
    const std::array<double, 4> ends = {Look(0, r, 0.5).up, Look(0, -r, 0.5).up, Look(0, r, -0.5).up, Look(0, -r, -0.5).up};
    const auto [lowest, highest] = std::minmax_element(ends.begin(), ends.end());
    return {-widest, *lowest, widest, *highest};
}

Fitted_View::Fitted_View(const Projection& view, const Rect& box) : view_(view) {
    const Rect extent = view.Extent();
    x_scale_ = (box.x2 - box.x1) / (extent.x2 - extent.x1);
    y_scale_ = (box.y2 - box.y1) / (extent.y2 - extent.y1);
    x0_ = box.x1 - x_scale_ * extent.x1;
    y0_ = box.y1 - y_scale_ * extent.y1;
}

}  // namespace vntl
