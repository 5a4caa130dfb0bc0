// A solid as triangles: what a graphics card takes.
#pragma once

#include <cstdint>
#include <vector>

#include "solid/w3d.hpp"

namespace vntl {

struct W3d_Vertex {
    Vec3 at, normal;
    Colour colour;
};

struct W3d_Mesh {
    std::vector<W3d_Vertex> vertices;
    std::vector<std::uint32_t> triangles;  // three corners each, counter-clockwise as seen from the side to which their normals point
    std::vector<std::uint32_t> edges;      // two ends each: lines between the facets of the sheets, about a hundred either way
    std::size_t sheet_triangles = 0;       // corners of the sheets, which come first in `triangles`
};

// Normals of a sheet are those of the surface at its vertices, so that it looks smooth.
W3d_Mesh Mesh_Of(const W3d& solid);

}  // namespace vntl
