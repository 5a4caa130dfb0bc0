// Vectors of whole numbers: directions, indices, rows of rotations.
#pragma once

#include <array>
#include <numeric>

#include "crystal/seitz.hpp"

namespace vntl {

using Whole_Vector = std::array<int, 3>;

inline int Product(const Whole_Vector& a, const Whole_Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

inline Whole_Vector Cross(const Whole_Vector& a, const Whole_Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// The column r v.
inline Whole_Vector operator*(const Rotation& r, const Whole_Vector& v) {
    return {r[0] * v[0] + r[1] * v[1] + r[2] * v[2], r[3] * v[0] + r[4] * v[1] + r[5] * v[2], r[6] * v[0] + r[7] * v[1] + r[8] * v[2]};
}

// The shortest vector along v or against it, its first number that is not 0 above 0; the zero vector as it is.
inline Whole_Vector Primitive(Whole_Vector v) {
    int divisor = std::gcd(std::gcd(v[0], v[1]), v[2]);
    if (divisor == 0) return v;
    if (v < Whole_Vector{}) divisor = -divisor;
    for (int& x : v) x /= divisor;
    return v;
}

}  // namespace vntl
