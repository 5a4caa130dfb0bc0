// Parallel lines that fill a shape.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

inline constexpr std::array<double, 4> hatch_distances = {20, 12, 7, 4};  // line units, by the fill density from 1 on

// The stretches inside `polygon` (closed by itself; of parts that cover one another every second one is inside) of the lines that lie a
// whole number of `distance` from the origin and rise by `degrees`, counter-clockwise from the x axis. Shapes side by side thus share
// their lines. Only lines that meet `within` are taken. A corner that is no finite number leaves the shape empty.
std::vector<std::array<Point, 2>> Hatch_Lines(std::span<const Point> polygon, double distance, double degrees, const Rect& within);

}  // namespace vntl
