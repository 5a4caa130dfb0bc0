// A grid as a map, whatever it is of: the map of a series, and the picture of an area detector.
#pragma once

#include <string>

#include "drawing/graphics.hpp"
#include "plot/plot.hpp"
#include "session/plot_grid.hpp"
#include "session/preferences.hpp"

namespace vntl {

struct Grid_Map {
    const PlotGrid& grid;
    const Plot_Zone& zone;
    std::string title, x_label, y_label;
    // Cell by cell, each about its point, in place of the contours; for this the axes rise evenly. So is drawn what has no two columns and
    // rows, too.
    bool cells = false;
    const Look* look = nullptr;  // that lays out the frame; none: as the preferences alone tell
    bool logarithms = false;     // the values are logarithms of counts
};

// The page, the map in the way of the preferences, and what stands around it. The units at the ends of the plot box: those of the outer
// points, of cells half a cell more; none for an empty grid, of which the page alone is drawn.
View Draw_Grid_Map(const Grid_Map&, const Preferences&, Graphics&);

// The plot box of the map of a scene, where its look lays it out.
Plot_Zone Zone_Of_Map(const Scene&, Graphics&);

}  // namespace vntl
