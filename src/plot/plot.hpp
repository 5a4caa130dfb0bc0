// Every picture of the main window: what it shows follows from the session alone.
//
// `Plot_ReMake` starts a plot from scratch, `Plot_Redraw` draws the present form with the present window, `Plot_Repaint` puts the stored
// bitmap back with the marks over it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.hpp"
#include "toolkit/graphics.hpp"
#include "toolkit/recording.hpp"

namespace vntl {

// Ranges, plot form and menu states from the store, then the picture. A form that cannot be made from scratch returns to the 2D graph
// first.
void Plot_ReMake(Session&);
void Plot_Redraw(Session&);
void Plot_Repaint(Session&);

// The first half of Plot_ReMake: ranges, plot form and menu states, nothing drawn. An empty store changes nothing.
void Plot_Ranges(Session&);
void Set_Range_X(Session&);  // x_all_* and x_view_* from the rows
void Focus_Plot(Session&);   // y window from the points inside the present x window; in "multi_log" in ln units

// The drawing itself, on any device. `mode` "log" selects the logarithmic form. Sets drawn_* of the plot state.
void plot_graph2d(Session&, Graphics&, int n, float x1, float x2, float y1, float y2, std::string_view mode = {});
void Plot_Welcome(const Session&, Graphics&);

// What is drawn for the present `plot_type`, without the marks; what a window, a file and a test look at.
void Draw_Picture(Session&, Device&);

// The marks of the form "calculation", drawn over the picture.
void Draw_Marks(const Session&, Graphics&);
void Draw_With_Marks(Session&, Device&);  // both: what a user sees, as a file or the clipboard takes it

// Selected reflections of the refined profile (red) or of the generated list (magenta), over the picture. Entries count from 1.
void Draw_Picks(const Session&, Graphics&, const std::vector<int>& entries, bool generated);

// The read-out box at a page position, wide enough for its longest line: the first line is the lowest.
void Draw_Readout_Box(Graphics&, float x, float y, const std::vector<std::string>& lines);

}  // namespace vntl
