// Menu "Profile fitting".
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/calculation_mode.hpp"
#include "commands/fit/fit_dialogs.hpp"
#include "commands/fit/fit_files.hpp"
#include "commands/fit/fit_series.hpp"
#include "commands/fit/run_fit.hpp"
#include "commands/peaks/search_dialogs.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"
#include "session/fit.hpp"
#include "session/modes.hpp"

namespace vntl {

namespace {

constexpr std::string_view change_peaks = "Insert or delete peaks can be done before fitting procedure";

void Fit_On(Application& app) {
    Session& session = app.session;
    if (session.lists.fit.range_pending) session.lists.fit = {};
    Begin_Mode(session, Click_Mode::fit);
}

void Fit_Off(Application& app) {
    Session& session = app.session;
    if (session.store.nperfiles() == 0) return;
    session.interface.Check(command::fit_auto_peaks, false);
    session.lists.fit.done = false;
    Set_Fit_Overlay(session);
    End_Mode(session, true);
}

// Everything chosen so far is forgotten, and the range is chosen anew.
void Clear(Application& app) {
    Session& session = app.session;
    session.interface.Check(command::fit_auto_peaks, false);
    {
        Row_Change change(session, "emptied fit");
        Clear_Fit(session);
        change.Keep();
    }
    Leave_Mode(session);  // back to the hint of the mode
    Plot_Redraw(session);
}

void Build(Application& app) {
    Session& session = app.session;
    Row_Change change(session, "peaks of the fit");
    Set_Fit_Window(session);
    Build_Fit_Peaks(session, app.ask);
    session.lists.fit.pik_loaded = session.lists.fit.peaks_ready = true;
    change.Keep();
}

// The peaks of the list, or those that a search finds, become the peaks of the fit.
void Take_Peaks(Application& app) {
    Session& session = app.session;
    if (session.store.nperfiles() == 0) return;
    if (session.lists.peaks.empty()) {
        const Status status = Search_Peaks(session);
        if (status.to_tell()) app.ask.Information(status.message);
        if (status.failed) return;
    }
    session.interface.Check(command::fit_auto_peaks, true);
    session.interface.Hint(std::string(change_peaks));
    Build(app);
    Set_Fit_Overlay(session);
    Plot_Redraw(session);
}

void Run_By_Variable(Application& app) {
    if (const std::optional<Fit_Kind> kind = Kind_Of_Fit(app.session))
        Fit_With_Dialog(app, *kind);
    else
        app.ask.Information(std::string(fit_not_available));
}

void Run(Application& app) {
    Session& session = app.session;
    if (session.store.nperfiles() == 0) return;
    const Calculation_Lists& lists = session.lists;
    if (!lists.fit.pik_loaded && lists.background.size() >= 2 && !lists.peaks.empty()) Build(app);
    Run_By_Variable(app);
}

void Load(Application& app) {
    Session& session = app.session;
    const std::string chosen = Select_Pik_File(app.ask);
    if (chosen.empty() || session.store.nperfiles() == 0) return;
    {
        Row_Change change(session, "peaks of a file");
        if (const Status status = change.Keep(Load_Pik(session, chosen)); status.failed) return Tell_Bad_Pik(app.ask, status);
    }
    Set_Fit_Overlay(session);
    Plot_Redraw(session);
    Run_By_Variable(app);
}

constexpr Command commands[] = {
    {command::fit_menu, "Profile fitting", "", Open_Popup, "", "", true},
    {command::fit_on, "Enable", "fit", Fit_On, "", "Fit peaks in a range that is chosen with the mouse"},
    {command::fit_off, "Disabled", "", Fit_Off, "", "Leave the fit"},
    {command::fit_auto_peaks, "Auto detection", "", Take_Peaks, "", "Take the peaks of the list into the fit", true},
    {command::run_fit, "Start/Repeat Refinement", "", Run, "", "Run the fit, or run it again"},
    {command::clear_fit, "Clear all", "", Clear, "", "Forget the peaks of the fit"},
    {command::load_pik, "Load PIK/NEW file", "", Load, "", "Read the peaks of a fit from a file"},
    {command::fit_series, "Fit series...", "", Fit_Shown_Rows, "", "Fit the model to every profile that is shown, into one table"},
};

std::vector<Dialog_Resource> Dialogs() {
    std::vector<Dialog_Resource> dialogs = Fit_Dialog_Resources();
    dialogs.push_back(Fit_Series_Dialog_Resource());
    return dialogs;
}

}  // namespace

Command_Family Fit_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
