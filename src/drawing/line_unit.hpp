// Device units of a line unit where a device's pixels are finer than 1/96 inch: those of a page of its size on paper, so that a picture of
// many dots an inch has the lines that a drawing of its size has.
#pragma once

#include <algorithm>

#include "drawing/device.hpp"

namespace vntl {

inline double Line_Unit(double width, double height, double pixel) { return pixel * Line_Unit(width / pixel, height / pixel); }

inline double Line_Unit(const Device& device) { return Line_Unit(device.Width(), device.Height(), std::max(1.0, device.Pixel())); }

}  // namespace vntl
