// A sheet of a solid on the pile of facets, from the back to the front.
#pragma once

#include "solid/facet_pile.hpp"

namespace vntl {

// The facets are laid in the order of Cells_Of_Axis, lines between them in the modes that have such.
void Lay_Sheet(const W3d& solid, const W3d_Sheet& sheet, const W3d_View& view, Facet_Pile& pile);

}  // namespace vntl
