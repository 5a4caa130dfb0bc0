// A grid of values as a surface in the cube, no finer than it can be seen.
//
// Of the points of a grid finer than the picture those that lie within a step of it share a line of the mesh, whose height is the greatest
// of theirs: a narrow reflection never falls between two lines. The cost is one pass over the grid.
#pragma once

#include <vector>

#include "drawing/grid_data.hpp"
#include "drawing/projection.hpp"

namespace vntl {

// A line of the mesh: its place on an axis of the cube, 0 to 1, and the points of the grid that it stands for.
struct Mesh_Line {
    double at;
    std::size_t first, end;
};

class Surface_Mesh {
public:
    struct Limits {
        Space_Point lower, upper;                    // of the cube, in the units of the data
        std::size_t most_across = 0, most_away = 0;  // lines
    };
    // What lies beyond the limits along an axis of the floor is left out; heights end at theirs, and where these are equal they are in the
    // middle.
    Surface_Mesh(const Grid_Data& grid, const Limits& limits);

    bool Shows() const { return across_.size() > 1 && away_.size() > 1; }
    const std::vector<Mesh_Line>& Across() const { return across_; }  // along the second axis of the cube, in rising order
    const std::vector<Mesh_Line>& Away() const { return away_; }      // along the first one
    std::size_t Number(std::size_t i, std::size_t j) const { return j * across_.size() + i; }
    double Height(std::size_t i, std::size_t j) const { return heights_[Number(i, j)]; }  // at Across()[i], Away()[j]; no number in a gap
    Space_Point At(std::size_t i, std::size_t j) const { return {away_[j].at, across_[i].at, Height(i, j)}; }
    bool Has_Cell(std::size_t i, std::size_t j) const;  // from those lines to the next ones; false too beyond the last

    // Rise along either axis, in cubes a cube: at the points of the mesh from their neighbours, and between them interpolated.
    struct Slope {
        float across = 0, away = 0;
    };
    Slope Slope_At(std::size_t number) const { return slopes_[number]; }  // of a point
    void Find_Slopes();
    // The same surface with its slopes, and lines between those that lie apart by more than a part of so many of an axis: bilinear between
    // the four points of a cell.
    Surface_Mesh Finer(double parts_across, double parts_away) const;

private:
    Surface_Mesh() = default;
    float Rise(std::size_t at, std::size_t line, const std::vector<Mesh_Line>& lines, std::size_t stride) const;

    std::vector<Mesh_Line> across_, away_;
    std::vector<float> heights_;
    std::vector<Slope> slopes_;
};

}  // namespace vntl
