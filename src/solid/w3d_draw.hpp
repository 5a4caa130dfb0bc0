// A solid projected on a drawable by our own hand: on paper, in files, and on screens without OpenGL.
#pragma once

#include "drawing/device.hpp"
#include "solid/w3d_view.hpp"

namespace vntl {

inline constexpr std::size_t max_drawn_facets = 100'000;  // of the sheets; a solid of more is thinned

// Clears the device and lays the facets one over the other, the farthest first; between the corners of a facet, which is of one colour, the
// smooth modes show the mean of the light at its corners. Edges are lines in the view's edge colour: alone in `wireframe`, over facets of
// the background's colour in `hidden_lines`, over those of the material in `unlit`.
//
// The order is right for one sheet, and for rods and texts beside, above or below it. What reaches into the box of a sheet is shown before
// it, and sheets are laid by the distance of their middles.
void Draw_W3d(const W3d& solid, const W3d_View& view, Device& device);

}  // namespace vntl
