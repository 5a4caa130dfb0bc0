// What stands around the curves of a 2D graph: title, scales, axis labels, target, frame and legend. Page units are in force.
#pragma once

#include "plot/window_of_plot.hpp"
#include "session/session.hpp"
#include "toolkit/graphics.hpp"

namespace vntl {

void Draw_Title(const Session&, Graphics&, int n);
void Draw_Scales(const Session&, Graphics&, const Plot_Window&);  // with the numbers under zero of a refined profile hidden
void Draw_Axis_Labels(Session&, Graphics&);                       // row 1 may give the y axis its label
void Draw_Target(const Plot_State&, Graphics&);
void Draw_Frame(Graphics&);
void Draw_Legend(const Session&, Graphics&, int n);

}  // namespace vntl
