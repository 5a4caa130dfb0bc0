// What the symmetry of a group leaves of a cell.
#pragma once

#include <array>
#include <cstddef>

#include "crystal/space_group.hpp"

namespace vntl {

enum Cell_Parameter : std::size_t { cell_a, cell_b, cell_c, cell_alpha, cell_beta, cell_gamma };
inline constexpr std::size_t cell_parameters = 6;
using Cell_Values = std::array<float, cell_parameters>;  // a, b, c in angstrom, alpha, beta, gamma in degrees

// What a symmetry leaves of a parameter: it is its own leader and free, or equal to its leader, or has one value.
struct Cell_Tie {
    std::size_t leader = cell_a;
    float fixed = 0;  // 0: not fixed
};
struct Cell_Ties : std::array<Cell_Tie, cell_parameters> {
    bool Free(std::size_t parameter) const { return (*this)[parameter].fixed == 0 && (*this)[parameter].leader == parameter; }
    Cell_Values Tied(Cell_Values cell) const;  // with what follows from the free parameters
};

// From the operators, so that any axes are served: other unique axes, rhombohedral ones.
Cell_Ties Ties_Of(const Space_Group_Type& group);

}  // namespace vntl
