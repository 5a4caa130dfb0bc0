#include "crystal/cell.hpp"

#include <cmath>
#include <numbers>

namespace vntl {

namespace {

constexpr double degree = std::numbers::pi / 180;

// Exact where the axes of the usual lattices ask for it, so that spacings that are equal by symmetry come out equal.
double Cosine(double angle) {
    if (angle == 90) return 0;
    if (angle == 60) return 0.5;
    if (angle == 120) return -0.5;
    return std::cos(angle * degree);
}

// cos alpha, cos beta, cos gamma. Angles that are known to some 1e-5 degrees tell no smaller 1 - cos^2 .. + 2 cos cos cos from zero.
bool Encloses_A_Volume(const std::array<double, 3>& cosines, const std::array<float, 3>& ang) {
    constexpr double least = 1e-6;
    for (const float angle : ang)
        if (!(angle < 180)) return false;
    const auto& [a, b, g] = cosines;
    return 1 - a * a - b * b - g * g + 2 * a * b * g > least;
}

double Determinant(const Tensor3& t) {
    return t[0][0] * (t[1][1] * t[2][2] - t[1][2] * t[2][1]) - t[0][1] * (t[1][0] * t[2][2] - t[1][2] * t[2][0]) +
           t[0][2] * (t[1][0] * t[2][1] - t[1][1] * t[2][0]);
}

Tensor3 Inverse(const Tensor3& t, double determinant) {
    Tensor3 inverse;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) {
            const std::size_t i1 = (i + 1) % 3, i2 = (i + 2) % 3, j1 = (j + 1) % 3, j2 = (j + 2) % 3;
            inverse[i][j] = (t[i1][j1] * t[i2][j2] - t[i1][j2] * t[i2][j1]) / determinant;
        }
    return inverse;
}

}  // namespace

bool Lengths_And_Angles(const Tensor3& metric, std::array<double, 3>& lengths, std::array<double, 3>& angles) {
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
        lengths[i] = std::sqrt(metric[i][i]);
        angles[i] = std::acos(metric[j][k] / std::sqrt(metric[j][j] * metric[k][k])) / degree;
        if (!(lengths[i] > 0) || !std::isfinite(lengths[i]) || !std::isfinite(angles[i])) return false;
    }
    return true;
}

Status Set_Crystal_Cell(const std::array<float, 3>& cell, const std::array<float, 3>& ang, Crystal_Cell_Type& result) {
    constexpr float no_angle = 0.00001f;
    Crystal_Cell_Type made;
    made.cell = cell;
    made.ang = ang;
    for (float& angle : made.ang)
        if (angle < no_angle) angle = 90;
    for (const float length : cell)
        if (!(length > 0) || !std::isfinite(length)) return Status::Fail(bad_cell);
    const std::array<double, 3> cosines = {Cosine(made.ang[0]), Cosine(made.ang[1]), Cosine(made.ang[2])};
    if (!Encloses_A_Volume(cosines, made.ang)) return Status::Fail(bad_cell);

    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) made.GD[i][j] = (i == j ? 1 : cosines[3 - i - j]) * cell[i] * cell[j];
    const double volume_squared = Determinant(made.GD);
    made.CellVol = std::sqrt(volume_squared);
    made.GR = Inverse(made.GD, volume_squared);
    std::array<double, 3> lengths{}, angles{};
    if (!(made.CellVol > 0) || !Lengths_And_Angles(made.GR, lengths, angles)) return Status::Fail(bad_cell);
    for (std::size_t i = 0; i < 3; ++i) {
        made.rcell[i] = static_cast<float>(lengths[i]);
        if (!(made.rcell[i] > 0) || !std::isfinite(made.rcell[i])) return Status::Fail(bad_cell);
    }
    result = made;
    return Status::Done();
}

}  // namespace vntl
