// Menu "Profile fitting".
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/calculation_mode.hpp"

namespace vntl {

namespace {

void Fit_On(Application& app) { Begin_Mode(app.session, Click_Mode::fit); }

void Fit_Off(Application& app) {
    Session& session = app.session;
    if (session.store.nperfiles() == 0) return;
    session.lists.fit.done = false;
    session.store.prf_loaded = session.store.ProfilePRFactive != 0;
    End_Mode(session, true);
}

constexpr Command commands[] = {
    {command::fit_menu, "Profile fitting", "", Open_Popup, "", "", true},
    {command::fit_on, "Enable", "fit", Fit_On, "", "Fit peaks in a range that is chosen with the mouse"},
    {command::fit_off, "Disabled", "", Fit_Off, "", "Leave the fit"},
    {command::fit_auto_peaks, "Auto detection", "", nullptr, "", "Take the peaks of the list into the fit", true},
    {command::run_fit, "Start/Repeat Refinement", "", nullptr, "", "Run the fit, or run it again"},
    {command::clear_fit, "Clear all", "", nullptr, "", "Forget the peaks of the fit"},
    {command::load_pik, "Load PIK/NEW file", "", nullptr, "", "Read the peaks of a fit from a file"},
    {command::edit_pik, "Edit PIK-file", "", nullptr, "", "Change the file of a fit in the text editor"},
};

}  // namespace

Command_Family Fit_Commands() { return {commands}; }

}  // namespace vntl
