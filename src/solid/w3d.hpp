// Bodies in space, as a list that is kept and drawn again from every side: vertices, facets between them, rods and texts, each of a
// material.
//
// The first coordinate runs to the right, the second upward, the third away from who stands in front: a left-handed system, in which an eye
// at a negative third coordinate sees the first axis run from left to right.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/colour.hpp"

namespace vntl {

using Vec3 = std::array<float, 3>;

inline constexpr int w3d_materials = 6;  // counted from 1
inline constexpr std::size_t max_w3d_vertices = 50'000'000;

// Facets between vertices that stand in columns and rows: facet (i, k) has the corners (i, k), (i+1, k), (i+1, k+1), (i, k+1). Seen from
// above, columns and rows stand on straight lines parallel to the first and the third axis, and rise or fall from one to the next. A height
// that is no number is a gap: facets with such a corner are left out. Sheets share no vertices.
struct W3d_Sheet {
    std::size_t first = 0;  // vertex of column 0 and row 0; the columns of a row follow one another
    int columns = 0, rows = 0;
    int material = 1;

    std::size_t Facets() const {
        return columns < 2 || rows < 2 ? 0 : static_cast<std::size_t>(columns - 1) * static_cast<std::size_t>(rows - 1);
    }
};

// A body of revolution about the line between two points, whose radius runs evenly from that of the first to that of the second one.
struct W3d_Rod {
    Vec3 from{}, to{};
    float radius_from = 0, radius_to = 0;
    int sections = 20, sides = 8;  // along the line, and around it
    int material = 6;
};

// Letters that lie in a plane, with some depth.
struct W3d_Text {
    std::string text;                      // UTF-8
    int font = 102;                        // 101 Courier, 102 Helvetica, 103 Times, 104 Symbol
    Vec3 at{};                             // middle of the base line
    Vec3 along{1, 0, 0}, upward{0, 0, 1};  // of length 1: the way that the text runs, and that its letters stand
    float width = 0.05f, height = 0.12f;   // of the character cell
    float depth = 0.02f;                   // deeper letters hide one another where they lie on the floor
    int material = 6;
};

struct W3d {
    std::vector<Vec3> vertices;
    std::vector<W3d_Sheet> sheets;
    std::vector<W3d_Rod> rods;
    std::vector<W3d_Text> texts;
    std::array<Colour, w3d_materials> materials{};  // material 1 first

    Colour Material(int number) const { return materials[static_cast<std::size_t>(number - 1)]; }
    std::size_t Facets() const;  // of the sheets
};

// The same bodies farther apart, or nearer: every place is multiplied, the letters and the radii keep their sizes.
W3d Scaled(const W3d& solid, float x, float y, float z);

// Every n-th column and every m-th row of each sheet, and the last ones, the longer side first: at most `facets` of them, but one a sheet.
W3d Thinned(const W3d& solid, std::size_t facets);

}  // namespace vntl
