// Vectors and matrices of three dimensions, in double precision.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace vntl {

using Vector3d = std::array<double, 3>;
using Matrix3d = std::array<Vector3d, 3>;  // rows

inline constexpr double degree = std::numbers::pi / 180;  // radians

inline double Dot(const Vector3d& a, const Vector3d& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline double Length(const Vector3d& a) { return std::sqrt(Dot(a, a)); }
inline Vector3d operator*(const Matrix3d& m, const Vector3d& v) { return {Dot(m[0], v), Dot(m[1], v), Dot(m[2], v)}; }
inline Matrix3d operator*(const Matrix3d& a, const Matrix3d& b) {
    Matrix3d product{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k) product[i][k] = a[i][0] * b[0][k] + a[i][1] * b[1][k] + a[i][2] * b[2][k];
    return product;
}

}  // namespace vntl
