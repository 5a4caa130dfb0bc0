// Menu "X space": all rows from one abscissa to another, and the constants of the way.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/xspace/bank_dialog.hpp"
#include "commands/xspace/constants_dialogs.hpp"
#include "plot/plot.hpp"
#include "session/row_constants.hpp"
#include "session/xspace.hpp"

namespace vntl {

namespace {

// The lists of a single profile go with its conversion; the status bar says so.
void Convert(Application& app, X_Space target) {
    Session& session = app.session;
    const bool had_lists = !session.lists.peaks.empty() || !session.lists.background.empty();
    const Status status = Convert_Xspace(session, app.ask, target);
    if (status.failed) app.ask.Information(status.message);
    Plot_ReMake(session);
    if (had_lists && session.lists.peaks.empty() && session.lists.background.empty())
        session.interface.Status_Text(1, "The lists of peaks and background points have been emptied");
}

template <X_Space target>
void To_Scale(Application& app) {
    Convert(app, target);
}

// Back to what the files were measured in.
template <X_Space target>
void To_Origin(Application& app) {
    if (app.session.store.mixed_scat_var)
        app.ask.Error(std::string(mixed_scat_var_text));
    else
        Convert(app, target);
}

void Edit_Wavelength(Application& app) { Tell(app, Change_Wavelength(app.session, app.ask)); }
void Edit_Dtt(Application& app) { Tell(app, Change_Dtt(app.session, app.ask)); }

void Take_From_File(Application& app) {
    std::string notice;
    Tell(app, Constants_From_File(app.session, app.ask, {}, notice));
    if (!notice.empty()) app.session.interface.Passing_Text(notice);
}

std::vector<Dialog_Resource> Dialogs() {
    std::vector<Dialog_Resource> dialogs = Constants_Dialog_Resources();
    dialogs.push_back(Bank_Dialog_Resource());
    return dialogs;
}

constexpr Command commands[] = {
    {command::xspace_menu, "&X space", "", Open_Popup, "", ""},
    {command::to_two_theta, "2theta", "", To_Origin<X_Space::two_theta>, "", "Show the profiles over the scattering angle", true},
    {command::to_tof, "Time (TOF)", "", To_Origin<X_Space::tof>, "", "Show the profiles over the time of flight", true},
    {command::to_d, "d-space", "", To_Scale<X_Space::d_space>, "", "Show the profiles over the spacing d", true},
    {command::to_q, "Q-space", "", To_Scale<X_Space::q_space>, "", "Show the profiles over Q = 2 pi / d", true},
    {command::to_s, "s-space", "", To_Scale<X_Space::s_space>, "", "Show the profiles over s = 1 / d", true},
    {command::change_wavelength, "Change wavelength", "", Edit_Wavelength, "", "Enter another wavelength for profiles"},
    {command::change_dtt, "Change ddt1/dtt2", "", Edit_Dtt, "", "Enter other constants of the time of flight for profiles"},
    {command::constants_from_file, "Constants from an instrument file...", "", Take_From_File, "",
     "Take wavelengths, or dtt1 and dtt2, of an instrument parameter file for profiles"},
};

}  // namespace

Command_Family Xspace_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
