// Curves over the picture that follow the hand: where rows would come to stand, and the row under the pointer.
#pragma once

#include <span>
#include <vector>

#include "plot/plot.hpp"
#include "session/desk/ghosts.hpp"

namespace vntl {

// Ghosts of the rows that the mouse moves, or else the told ones, in a half-tone of their colours; then the pointed row once more, thicker
// and with a rim in the colour of the ground. Each costs a look at its points in view, and a stroke a pixel column. Nothing in a form that
// is no 2D graph.
void Draw_Following_Curves(const Scene&, Graphics&, const std::vector<Row_Ghost>& ghosts = {});

// The marks of the main window with ghosts, those of a dialog; they go with the next repaint.
void Repaint_With_Ghosts(const Session&, const std::vector<Row_Ghost>& ghosts);

// The points of a curve in the plot's view as a line that looks the same: of the points in a pixel column, `columns` of them across the
// view, the first, the lowest, the highest and the last one, and a point on either side. On the scale of the plot and raised by `offset`, a
// line for each stretch without a gap. x rises; `way` tells what becomes of a point before.
struct Thin_Line {
    std::vector<float> x, y;
};
std::vector<Thin_Line> Thin_Lines_Of(const Plot_State&, std::span<const float> x, std::span<const float> y, const Row_Ghost& way,
                                     float offset, int columns);

}  // namespace vntl
