// Rectangles that texts keep clear of each other.
#pragma once

#include "drawing/device.hpp"

namespace vntl {

inline bool Touch(const Rect& a, const Rect& b) { return a.x1 < b.x2 && b.x1 < a.x2 && a.y1 < b.y2 && b.y1 < a.y2; }
inline Rect Grown(const Rect& rect, double x, double y) { return {rect.x1 - x, rect.y1 - y, rect.x2 + x, rect.y2 + y}; }

}  // namespace vntl
