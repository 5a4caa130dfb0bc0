// Hermann-Mauguin symbols: their grammar, and the symmetry elements that they claim.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/close_group.hpp"

namespace vntl {

// An axis and a plane across it; order 0: no axis, plane ' ': no plane.
struct HM_Direction {
    int order = 0;  // negative for an axis of rotation and inversion
    int screw = 0;
    char plane = ' ';
};

struct HM_Symbol {
    char lattice = 'P';
    std::vector<HM_Direction> directions;  // at most three
};

// A symbol in capitals, its directions apart by blanks ("P 21/N 21/M 21/A").
Status Parse_HM_Symbol(std::string_view text, HM_Symbol& symbol);

// The `place`-th direction (from 0) of the symbols of a crystal system; of a monoclinic one those of the symbol with three directions.
// `rhombohedral`: trigonal, with axes of equal length.
Hkl HM_Axis(std::string_view crystal_system, bool rhombohedral, std::size_t place);

// Is there an axis, or a plane across `axis`, of this kind in the group, anywhere in the cell?
bool Has_Axis(const Closed_Group& group, const Hkl& axis, int order, int screw);
bool Has_Plane(const Closed_Group& group, const Hkl& axis, char plane);

}  // namespace vntl
