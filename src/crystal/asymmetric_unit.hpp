// A box of the cell that holds an asymmetric unit.
#pragma once

#include <array>
#include <span>

#include "crystal/seitz.hpp"

namespace vntl {

// Low and high bounds of x, y and z in 1/24 of the cell: the smallest box from the origin that holds a member of every orbit of points,
// with bounds that are multiples of the distances between centres, axes and mirrors. Where no such box is an asymmetric unit and one from
// other low bounds is, it is that one; a range that runs over the end of the cell begins below 0. Among equals it is the box with the
// smallest sum of edges. With an origin in odd twelfths boxes from the origin alone are tried. `operators`: all of a closed group, centring
// translations included.
std::array<std::array<int, 2>, 3> Asymmetric_Box(std::span<const Seitz> operators);

}  // namespace vntl
