// Everything the program knows, in one place: the store, the view, the lists, the state of the window, preferences and paths.
#pragma once

#include "session/commands.hpp"
#include "session/configuration.hpp"
#include "session/lists.hpp"
#include "session/plot_state.hpp"
#include "session/preferences.hpp"
#include "session/recent_files.hpp"
#include "session/store.hpp"

namespace vntl {

struct Session {
    Profile_Store store;
    Plot_State plot;
    Calculation_Lists lists;
    Interface_State interface;
    Preferences prefs;
    Configuration config;
    Recent_Files recent;
};

// Empties the store and all plot state; runs at start and on "Reset".
void Reset_Profiles(Session&);

}  // namespace vntl
