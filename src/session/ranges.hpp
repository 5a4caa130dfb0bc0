// Ranges of the axes from the rows, and the plot form and menu states that follow from them.
#pragma once

#include "session/plot_state.hpp"
#include "session/preferences.hpp"
#include "session/store.hpp"

namespace vntl {

struct Session;

// Before a plot is drawn from scratch: ranges, plot form, refined row and menu states from the rows. A form that cannot be made from
// scratch returns to the 2D graph; without rows the form is "none".
void Plot_Ranges(Session&);

// Of the view of all that one pattern has, above which stands the height of a waterfall.
float Top_Of_Whole(const Plot_State&);

// The ways back to the scattering variable of the files: as row 1 and its neighbours allow.
void Set_Origin_Commands(Session&);

// From counts to logarithms: the y window of the same intensities, from 1 on, where the scale begins, with room for the overlay of a
// refined profile below; x stays.
void View_In_Logarithms(const Profile_Store&, Plot_State&);

// From logarithms to counts: the y window of the same intensities, x stays. A window that begins at 1, where the scale ends, shows all
// below.
void View_In_Counts(const Profile_Store&, Plot_State&);

// The window on another scale: the same intensities, x stays. The overlay of a refined profile keeps its place in a window that goes to
// roots and back; the whole range becomes the whole range. `from`: the scale that the window has; `plot` is not asked for its own.
void View_On_Scale(const Profile_Store&, Plot_State&, Y_Scale from, Y_Scale to);

// A window that was found in counts, on the scale of the plot.
void Counts_On_Scale(const Profile_Store&, Plot_State&);

// The user chooses a scale for the graph on the screen: form, menu and window follow. Nothing happens in a form without such a scale.
void Choose_Scale(Session&, Y_Scale);

// All rows with a margin, as a running calculation shows them, on the scale of the plot.
View Whole_View(const Plot_State&);

void Set_Range_X(const Profile_Store&, const PRF_Prefs&, Plot_State&);  // x_all_* and x_view_*
void Focus_Plot(const Profile_Store&, Plot_State&);  // y window from the points inside the present x window; in units of the scale

}  // namespace vntl
