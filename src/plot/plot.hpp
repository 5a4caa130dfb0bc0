// Every picture of a plot window: what it shows follows from a `Scene` alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/graphics.hpp"
#include "drawing/recording.hpp"
#include "session/session.hpp"

namespace vntl {

// What a picture is drawn from: rows, the state of their plot, the lists of a calculation, preferences, and the program's name for the
// empty screen. The main window shows the session's; another window may show rows and a state of its own.
struct Scene {
    const Profile_Store& store;
    const Plot_State& plot;
    const Calculation_Lists& lists;
    const Preferences& prefs;
    const Configuration& config;
    const Look& look;
    const Desk& desk;
    Plot_Zone zone;  // the plot box; `Draw_Picture` lays it out where the look says so
};
inline Scene Scene_Of(const Session& s) { return {s.store, s.plot, s.lists, s.prefs, s.config, s.look, s.desk, s.plot.zone}; }

// What drawing has found: the window that was drawn, the units of the plot box, and the title of the y axis, which row 1 may give.
struct Drawn {
    View window, units;
    std::string y_title;
    Plot_Zone zone = {};  // the plot box
};

// The picture of the present `plot_type`, without the marks.
Drawn Draw_Picture(const Scene&, Device&);

// One 2D graph of the first `n` rows in a window, which is in units of the scale.
Drawn plot_graph2d(const Scene&, Graphics&, int n, const View& window, Y_Scale scale = Y_Scale::linear);

// A map of the grid, rows `first` to `last` between x1 and x2, in the way of the preferences.
Drawn Plot_Contour(const Scene&, Graphics&, float x1, float x2, int first, int last);

// The first `n` rows one behind another, in a window of x and intensity; degrees.
Drawn Plot_3D_Lines(const Scene&, Graphics&, int n, const View& window, float rotation, float elevation);

// The grid as a surface.
Drawn Plot_3D_Surface(const Scene&, Graphics&, float rotation, float elevation);

void Plot_Welcome(Colour ground, Colour letters, const Configuration&, Graphics&);

// The marks of the form "calculation", drawn over the picture.
void Draw_Marks(const Scene&, Graphics&);
void Draw_With_Marks(const Scene&, Device&);  // both: what a user sees, as a file or the clipboard takes it

// Name and version of the program in the lower right corner of the page: for paper and the files of "Save Graphic into file...", not for
// the screen.
void Stamp_Plot(const Configuration&, Graphics&);

// Selected reflections of the refined profile (red) or of the generated list (magenta), over the picture. Entries count from 1.
void Draw_Picks(const Scene&, Graphics&, const std::vector<int>& entries, bool generated);

// The read-out box at a page position, wide enough for its longest line: the first line is the lowest. It stays inside `room`, fractions of
// the page, where it fits there.
void Draw_Readout_Box(Graphics&, const Plot_Zone& room, float x, float y, const std::vector<std::string>& lines);

// --- a window's picture on the screen: a bitmap, and the marks that lie over it ---------------------------------------------------

Drawn Show_Picture(int window, const Scene&);  // draws the bitmap
void Show_Marks(int window, const Scene&);     // marks of a calculation, reflections under the pointer, rubber shapes

// The main window: from scratch, with ranges, form and menu states found anew; the present form with the present view; the marks alone.
void Plot_ReMake(Session&);
void Plot_Redraw(Session&);
void Plot_Repaint(const Session&);

}  // namespace vntl
