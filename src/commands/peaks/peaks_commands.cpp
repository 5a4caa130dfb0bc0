// Menus "Peak detection" and "Background": the two lists of a single profile.
#include "commands/families.hpp"

#include "base/os.hpp"
#include "commands/application.hpp"
#include "commands/calculation_mode.hpp"
#include "commands/external/start.hpp"
#include "commands/peaks/peaks_dialogs.hpp"
#include "commands/peaks/peaks_files.hpp"
#include "commands/peaks/search_dialogs.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"
#include "session/modes.hpp"

namespace vntl {

namespace {

void Peaks_On(Application& app) { Begin_Mode(app.session, Click_Mode::peaks); }
void Background_On(Application& app) { Begin_Mode(app.session, Click_Mode::background); }
void Mode_Off(Application& app) { End_Mode(app.session); }

template <Status (*search)(Session&)>
void Search(Application& app) {
    if (!Tell(app, search(app.session))) return;
    Plot_Redraw(app.session);
    Tell_Count(app.session, true);
}

template <class Mark>
void Clear(Session& session, std::vector<Mark>& list, std::string text) {
    Row_Change change(session, std::move(text));
    list.clear();
    change.Keep();
    Plot_Redraw(session);
    Tell_Count(session);
}
void Clear_Peaks(Application& app) { Clear(app.session, app.session.lists.peaks, "emptied list of peaks"); }
void Clear_Background(Application& app) { Clear(app.session, app.session.lists.background, "emptied list of background points"); }

template <List_Click click>
void Choose_Click(Application& app) {
    Enter_Mode(app.session, click);
}

void Toggle_Snap(Application& app) {
    bool& snap = app.session.desk.snap_to_maximum;
    snap = !snap;
    app.session.interface.Check(command::snap_to_maximum, snap);
}

// --- lists for other programs ------------------------------------------------------------------------------------------------------

// A program that takes a saved list, and how it is started with it.
struct List_Program {
    std::string_view format, name;
    Program_Role role;
    bool in_console = false;
};
constexpr List_Program dicvol = {"DicvolFormat", "DICVOL06", Program_Role::prg_dicvol};
constexpr List_Program treor = {"TreorFormat", "TREOR90", Program_Role::prg_treor};
constexpr List_Program ito = {"ItoFormat", "ITO15", Program_Role::prg_ito};
constexpr List_Program vecfind = {"Vecfind_Format", "Vecfind", Program_Role::prg_vecfind, true};

void Start_On(Application& app, const List_Program& program, const std::string& file) {
    const bool copied = program.role == Program_Role::prg_ito;
    if (copied && !Copy_For_Ito(app, file)) return;
    const Program_Suite suite = Suite_Of(app);
    Command_Line command = program.in_console ? suite.In_Console(program.role) : suite.By_Name(program.role);
    Start_Program(app, command.In(Directory_Of(file)).File(copied ? ito_input : file));
}

template <const List_Program& program>
void Save_For(Application& app) {
    std::string file;
    const Status status = Save_Peaks_File(app.session, app.ask, program.format, &file);
    Tell(app, status);
    if (status.failed) return;
    const std::string name(program.name);
    const Box_Answer answer =
        app.ask.Box({Box_Buttons::yes_no, Box_Icon::question, 1, "Do you want to run " + name + "?", "Running " + name});
    if (answer == Box_Answer::yes) Start_On(app, program, file);
}

void Save_Free_List(Application& app) { Tell(app, Save_Peaks_File(app.session, app.ask, "FreeFormat")); }
void Save_Background(Application& app) { Tell(app, Save_Background_File(app.session, app.ask)); }

std::vector<Dialog_Resource> Resources() {
    std::vector<Dialog_Resource> all = Search_Dialog_Resources();
    for (Dialog_Resource& dialog : Peaks_Dialog_Resources()) all.push_back(std::move(dialog));
    return all;
}

constexpr Command commands[] = {
    {command::peaks_menu, "Peak detection", "", Open_Popup, "", "", true},
    {command::peaks_on, "Enable", "peaks", Peaks_On, "", "Work on the list of peaks"},
    {command::peaks_off, "Disabled", "", Mode_Off, "", "Leave the list of peaks"},
    {command::search_peaks, "Auto detection", "", Search<Search_Peaks>, "", "Find the peaks"},
    {command::search_satellites, "Satellites detection", "", Search<Search_Satellites>, "",
     "Find the peaks that a refinement does not explain"},
    {command::insert_peak, "Insert peak", "", Choose_Click<List_Click::insert_peak>, "", "A click adds a peak"},
    {command::delete_peak, "Delete peak", "", Choose_Click<List_Click::delete_peak>, "", "A click takes a peak away"},
    {command::snap_to_maximum, "Snap to maximum", "", Toggle_Snap, "", "A click that inserts a peak takes the highest point near it", true},
    {command::clear_peaks, "Clear all", "", Clear_Peaks, "", "Empty the list of peaks"},
    {command::save_peaks_menu, "Save peaks", "", Open_Popup, "", ""},
    {command::save_peaks_free, "Free Format", "", Save_Free_List, "", "Write the peaks as a plain list"},
    {command::save_peaks_dicvol, "Dicvol Format", "", Save_For<dicvol>, "", "Write the peaks for Dicvol"},
    {command::save_peaks_treor, "Treor Format", "", Save_For<treor>, "", "Write the peaks for Treor"},
    {command::save_peaks_ito, "Ito Format", "", Save_For<ito>, "", "Write the peaks for Ito"},
    {command::save_peaks_vecfind, "Vecfind Format", "", Save_For<vecfind>, "", "Write the peaks for Vecfind"},
    {command::background_menu, "Background", "", Open_Popup, "", "", true},
    {command::background_on, "Enable", "background", Background_On, "", "Work on the list of background points"},
    {command::background_off, "Disabled", "", Mode_Off, "", "Leave the list of background points"},
    {command::search_background, "Auto detection", "", Search<Search_Background>, "", "Find background points"},
    {command::insert_background, "Insert point", "", Choose_Click<List_Click::insert_background>, "", "A click adds a background point"},
    {command::delete_background, "Delete point", "", Choose_Click<List_Click::delete_background>, "",
     "A click takes a background point away"},
    {command::clear_background, "Clear all", "", Clear_Background, "", "Empty the list of background points"},
    {command::save_background, "Save background", "", Save_Background, "", "Write the background points"},
};

}  // namespace

Command_Family Peaks_Commands() { return {commands, Resources}; }

}  // namespace vntl
