// A symmetry operator in exact whole numbers: a rotation and a translation in twelfths of the cell.
//
// All operators of the 230 groups in the settings of the tables have translations in twelfths, so that products, inverses and comparisons
// are exact. A product is reduced: its translation lies in 0 to 11 twelfths.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

inline constexpr int twelfths = 12;

using Rotation = std::array<std::int8_t, 9>;       // row by row
using Translation12 = std::array<std::int8_t, 3>;  // twelfths, 0 to 11
using Hkl = std::array<int, 3>;

inline constexpr Rotation no_rotation = {1, 0, 0, 0, 1, 0, 0, 0, 1}, inversion = {-1, 0, 0, 0, -1, 0, 0, 0, -1};

struct Seitz {
    Rotation rot = no_rotation;
    Translation12 tr = {};
    auto operator<=>(const Seitz&) const = default;
};

Rotation operator*(const Rotation& a, const Rotation& b);
Rotation operator-(const Rotation& a);
Seitz operator*(const Seitz& a, const Seitz& b);  // first b, then a
Seitz Inverse(const Seitz& a);                    // the rotation must have determinant 1 or -1
int Trace(const Rotation& rot);
int Determinant(const Rotation& rot);

// 1, 2, 3, 4, 6, negative for an improper rotation (-2 a mirror), from trace and determinant; 0 for anything else.
int Rotation_Order(const Rotation& rot);

// The row vector hkl R: the indices of the reflection that an operator makes of hkl.
inline Hkl Image(const Hkl& hkl, const Rotation& r) {
    return {hkl[0] * r[0] + hkl[1] * r[3] + hkl[2] * r[6], hkl[0] * r[1] + hkl[1] * r[4] + hkl[2] * r[7],
            hkl[0] * r[2] + hkl[1] * r[5] + hkl[2] * r[8]};
}

}  // namespace vntl
