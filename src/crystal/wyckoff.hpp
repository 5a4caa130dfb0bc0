// The Wyckoff positions of a group, derived from its operators.
#pragma once

#include <span>
#include <vector>

#include "crystal/space_group.hpp"

namespace vntl {

// `operators`: all of a closed group, centring translations included; `lattice`: its centring vectors in twelfths, the zero vector first.
// From the lowest multiplicity to the general position; those of one multiplicity by the dimension of their freedom (points, lines,
// planes), then by their first representative. None for an operator that is no rotation of a lattice.
std::vector<Wyckoff_Orbit> Wyckoff_Positions(std::span<const Seitz> operators, std::span<const Translation12> lattice);

}  // namespace vntl
