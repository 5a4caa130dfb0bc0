// A surface as facets from the back to the front.
//
// A cell is cut into two triangles by the diagonal whose ends differ less in height. The cells are laid in the order of Cells_Of_Axis.
#pragma once

#include <vector>

#include "drawing/device.hpp"
#include "drawing/surface_mesh.hpp"

namespace vntl {

inline constexpr int surface_levels = 10;  // bands of a surface coloured by levels

// Colours run from that of height 0 to that of height 1. Neither banded nor graduated: all cells have that of height 0.
struct Surface_Look {
    bool banded = false;     // a colour a band of heights
    bool graduated = false;  // a colour a cell, by the mean of its corners
    bool shaded = false;     // by the slope, which the mesh must have found: the light comes from the left above the viewer
    bool lattice = false;    // lines between the cells
    Colour least = 0, most = 0, lattice_colour = 0;
};

struct Surface_Facets {
    std::vector<Point> places;
    std::vector<Facet> facets;
};

// `view` is seen on the page as `page` tells.
Surface_Facets Facets_Of(const Surface_Mesh& mesh, const Surface_Look& look, const Projection& view, const Fitted_View& page);

}  // namespace vntl
