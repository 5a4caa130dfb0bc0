// Lines of equal height on a grid of values.
//
// Between two neighbours of the grid a value changes evenly, so a line crosses the edge of a cell where
//
//   t = (level - z1) / (z2 - z1)
//
// of the way from one to the other. A cell has no crossing, two, which the line joins, or four, around a saddle. There the cell's bilinear
// surface decides: its saddle stands at (a c - b d) / (a + c - b - d), with a and c opposite corners, and those corners join that are on
// the same side of the level as the saddle. A line is followed from cell to cell until it comes back to its start, or to the border of the
// grid or to a cell with a gap, where it ends.
//
// A grid finer than the picture is thinned before: its points are gathered, and their mean stands for them. Afterwards a line keeps the
// points that it needs to be seen as it is.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "drawing/device.hpp"
#include "drawing/grid_data.hpp"

namespace vntl {

// Places of one axis of a grid in device units, or pixels: zero + scale * value. None where the axis neither rises nor falls, or leads to a
// place that is no finite number.
std::vector<double> Places_Of_Axis(std::span<const float> values, double zero, double scale);

// Points of an axis gathered to nodes.
struct Node_Axis {
    std::vector<double> places;        // of the nodes: the mean of those of their points
    std::vector<std::uint32_t> first;  // point of each node, and the end of the last one
};
// Of the points that reach into low .. high: a node holds those that follow one another within `step`. The outermost points stay alone, so
// that the border of the grid keeps its place.
Node_Axis Gather(std::span<const double> places, double low, double high, double step);

// Values at nodes, row by row: the mean of those that are finite, or a gap.
struct Node_Grid {
    std::vector<double> x, y;
    std::vector<float> z;
};
Node_Grid Thinned(const Grid_Data& grid, const Node_Axis& across, const Node_Axis& up);

// Calls `take` for each line, those of one level after those of the other. A closed line ends with the point that it began with; but for
// that no line holds a point twice. False, and nothing is taken, where the lines would go through more than `most_cells` cells: noise
// has so many that nothing could be told from them.
bool Trace_Contours(const Node_Grid& grid, std::span<const double> rising_levels, std::size_t most_cells,
                    const std::function<void(std::size_t level, std::span<const Point> line)>& take);

}  // namespace vntl
