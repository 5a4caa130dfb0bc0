// Sums and products of places and directions in space.
#pragma once

#include <cmath>

#include "solid/w3d.hpp"

namespace vntl {

inline Vec3 Minus(const Vec3& a, const Vec3& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
inline Vec3 Opposite(const Vec3& a) { return {-a[0], -a[1], -a[2]}; }
inline Vec3 Moved(const Vec3& from, float way, const Vec3& along) {
    return {from[0] + way * along[0], from[1] + way * along[1], from[2] + way * along[2]};
}
inline float Dot(const Vec3& a, const Vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline Vec3 Cross(const Vec3& a, const Vec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline float Length(const Vec3& a) { return std::sqrt(Dot(a, a)); }

// Of length 1; `otherwise` for one that has no direction.
inline Vec3 Unit(const Vec3& a, const Vec3& otherwise) {
    const float length = Length(a);
    return length > 0 && std::isfinite(length) ? Vec3{a[0] / length, a[1] / length, a[2] / length} : otherwise;
}

// To which side a triangle faces from which its corners are seen to run counter-clockwise: in a left-handed system the cross product of
// its sides with the second one first.
inline Vec3 Facing(const Vec3& a, const Vec3& b, const Vec3& c) { return Cross(Minus(c, a), Minus(b, a)); }

inline bool Finite(const Vec3& a) { return std::isfinite(a[0]) && std::isfinite(a[1]) && std::isfinite(a[2]); }

}  // namespace vntl
