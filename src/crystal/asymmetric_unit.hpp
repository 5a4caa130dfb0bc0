// A box of the cell that holds an asymmetric unit.
#pragma once

#include <array>
#include <span>

#include "crystal/seitz.hpp"

namespace vntl {

// Low and high bounds of x, y and z in 1/24 of the cell: the smallest box with such bounds that holds a member of every orbit of points.
// `operators`: all of a closed group, centring translations included.
std::array<std::array<int, 2>, 3> Asymmetric_Box(std::span<const Seitz> operators);

}  // namespace vntl
