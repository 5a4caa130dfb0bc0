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

// Into a logarithmic form: the y window of the same intensities, from 1 on, where the form begins, with room for the overlay of a refined
// profile below; x stays.
void View_In_Logarithms(const Profile_Store&, Plot_State&);

// Out of a logarithmic form: the y window of the same intensities, x stays. A window that begins at 1, where the form ends, shows all
// below.
void View_In_Counts(const Profile_Store&, Plot_State&);

void Set_Range_X(const Profile_Store&, const PRF_Prefs&, Plot_State&);  // x_all_* and x_view_*
void Focus_Plot(const Profile_Store&, Plot_State&);  // y window from the points inside the present x window; in "multi_log" in ln units

}  // namespace vntl
