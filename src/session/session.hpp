// Everything the program knows, in one place: the store, the view, the lists, the state of the window, preferences and paths.
#pragma once

#include "base/status.hpp"
#include "calc/search.hpp"
#include "session/commands.hpp"
#include "session/configuration.hpp"
#include "session/desk/desk.hpp"
#include "session/desk/look.hpp"
#include "session/desk/styles.hpp"
#include "session/hkl_gen.hpp"
#include "session/lists.hpp"
#include "session/plot_state.hpp"
#include "session/preferences.hpp"
#include "session/quick_view.hpp"
#include "session/recent_files.hpp"
#include "session/store.hpp"

namespace vntl {

struct Session {
    Profile_Store store;
    Plot_State plot;
    Calculation_Lists lists;
    Search_Parameters search;
    Hkl_Gen_State hkl_gen;
    Quick_View quick_view;
    Interface_State interface;
    Preferences prefs;
    Look look;  // of the style in force
    Style_State style;
    Desk desk;
    Configuration config;
    Recent_Files recent;
    Row_Shift shift;      // given last in "Shift profiles"; a new start leaves it
    int format_code = 1;  // data-file format chosen last, 1 to 15
};

// Empties the store and all plot state but the plot form, which Set_Menu_Empty sets; runs at start and on "Reset".
void Reset_Profiles(Session&);

// The exit sequence's files: the current directory and the recent files. Nothing is written where `files_allowed` is false.
void Write_Exit_Files(const Session&);

// Fails, naming what is wrong, when the parts of the session contradict each other. No command may leave such a state.
Status Check_Invariants(const Session&);

}  // namespace vntl
