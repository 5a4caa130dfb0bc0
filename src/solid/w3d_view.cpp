#include "solid/w3d_view.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawing/mixed_colour.hpp"
#include "solid/vec3.hpp"

namespace vntl {

namespace {

constexpr double half_angle = 7.5 * std::numbers::pi / 180;
constexpr double nearest_share = 0.01;  // of the eye's distance: what is nearer to it is cut away

}  // namespace

Vec3 From_Polar(double elevation, double azimuth, double distance) {
    const double e = elevation * std::numbers::pi / 180, a = azimuth * std::numbers::pi / 180;
    return {static_cast<float>(distance * std::cos(e) * std::cos(a)), static_cast<float>(distance * std::sin(e)),
            static_cast<float>(distance * std::cos(e) * std::sin(a))};
}

W3d_Camera::W3d_Camera(const Vec3& eye, double width, double height)
    : width_(width), height_(height), scale_(0.5 * std::min(width, height) / std::tan(half_angle)) {
    using Direction = std::array<double, 3>;
    const double x = eye[0], y = eye[1], z = eye[2], distance = std::hypot(x, y, z), aside = std::hypot(x, z);
    nearest_ = distance > 0 ? nearest_share * distance : nearest_share;
    const Direction forward = distance > 0 ? Direction{-x / distance, -y / distance, -z / distance} : Direction{0, 0, 1};
    // Right is level; an eye straight above or below has the third axis pointing upward or downward on the page.
    const Direction right = aside > 0 ? Direction{-z / aside, 0, x / aside} : Direction{1, 0, 0};
    const Direction up = {forward[1] * right[2] - forward[2] * right[1], forward[2] * right[0] - forward[0] * right[2],
                          forward[0] * right[1] - forward[1] * right[0]};
    std::size_t row = 0;
    for (const Direction& axis : {right, up, forward})
        rows_[row++] = {axis[0], axis[1], axis[2], -(axis[0] * x + axis[1] * y + axis[2] * z)};
}

W3d_Camera::Seen W3d_Camera::See(const Vec3& point) const {
    const auto along = [&](const std::array<double, 4>& row) { return row[0] * point[0] + row[1] * point[1] + row[2] * point[2] + row[3]; };
    const double depth = along(rows_[2]), scale = depth > 0 ? scale_ / depth : 0;
    return {{0.5 * width_ + scale * along(rows_[0]), 0.5 * height_ + scale * along(rows_[1])}, depth};
}

std::array<float, 16> W3d_Camera::Matrix() const {
    std::array<float, 16> matrix{};
    for (std::size_t column = 0; column < 4; ++column) {
        const double depth = rows_[2][column];
        const std::array<double, 4> clip = {rows_[0][column] * 2 * scale_ / width_, rows_[1][column] * 2 * scale_ / height_,
                                            depth - (column == 3 ? 2 * nearest_ : 0), depth};
        for (std::size_t k = 0; k < 4; ++k) matrix[4 * column + k] = static_cast<float>(clip[k]);
    }
    return matrix;
}

float Lit(const Vec3& normal, const Vec3& at, const Vec3& light) {
    const Vec3 toward = Unit(Minus(light, at), {0, 1, 0}), facing = Unit(normal, toward);
    const float turned = 0.5f * (1 + std::clamp(Dot(facing, toward), -1.0f, 1.0f));
    return ambient_light + (1 - ambient_light) * turned * turned;
}

Colour Lit_Colour(Colour material, float share) { return Mixed(0, material, share); }

}  // namespace vntl
