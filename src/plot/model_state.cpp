#include "plot/model_state.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/page.hpp"

namespace vntl {

void Spin_Model(Model3D& model) {
    float& azimuth = model.view.azimuth;
    azimuth += model.spin_step;
    if (azimuth > 180)
        azimuth = -180 + model.spin_step;
    else if (azimuth < -180)
        azimuth = 180 + model.spin_step;
}

void Move_Eye(Model3D& model, float step) { model.view.distance = std::clamp(model.view.distance + step, nearest_view, farthest_view); }

void Turn_Model_To(Model3D& model, double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    const double azimuth = model.view.azimuth + 180 * (model.hand_x - x) / page_width;
    const double elevation = model.view.elevation + 180 * (model.hand_y - y) / page_height;
    model.view.azimuth = static_cast<float>(std::fabs(azimuth) <= 180 ? azimuth : std::remainder(azimuth, 360.0));
    model.view.elevation = elevation >= 90 ? steepest_view : elevation <= -90 ? -steepest_view : static_cast<float>(elevation);
    model.hand_x = x, model.hand_y = y;
}

void Set_Spin_Speed(Model3D& model, float step) { model.spin_step = std::copysign(step, model.spin_step); }

void Set_Spin_Direction(Model3D& model, bool clockwise) {
    model.spin_step = clockwise ? std::fabs(model.spin_step) : -std::fabs(model.spin_step);
}

Polar_Place Polar_Of(const std::array<float, 3>& at, const Polar_Place& otherwise) {
    constexpr double degree = std::numbers::pi / 180;
    const double distance = std::hypot(at[0], at[1], at[2]);
    if (!std::isfinite(distance) || distance <= 0) return otherwise;
    return {static_cast<float>(std::asin(std::clamp(at[1] / distance, -1.0, 1.0)) / degree),
            static_cast<float>(std::atan2(at[2], at[0]) / degree), static_cast<float>(distance)};
}

}  // namespace vntl
