// Menu "File": opening, saving, a new start and the end.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/file/exit.hpp"
#include "commands/file/opened.hpp"
#include "commands/file/raw_dialog.hpp"
#include "commands/file/save_graphic.hpp"
#include "commands/file/save_list.hpp"
#include "commands/file/save_pattern.hpp"
#include "commands/plot/mouse.hpp"
#include "commands/progress_dialog.hpp"
#include "plot/plot.hpp"
#include "session/load.hpp"
#include "session/open_prf.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

void Open_Pattern(Application& app) { Show_Opened(app, Open_Pattern_File(app.session, app.ask)); }

void Open_Buffer(Application& app) { Show_Opened(app, Open_Buffer_File(app.session, app.ask)); }

void Open_Prf(Application& app) { Show_Opened(app, Open_Prf_File(app.session, app.ask)); }

template <int slot>
void Open_Recent(Application& app) {
    Open_Result result;
    const Status status = Open_File_By_Extension(app.session, app.ask, app.session.recent.Slot(slot), result);
    if (status.failed) app.ask.Error(status.message);
    result.failed |= status.failed;
    Show_Opened(app, result);
}

void Save_Picture(Application& app) { Tell(app, Export_Plot(app.session, app.ask)); }
void Print(Application& app) { Tell(app, Print_Plot(app.session.config, app.ask)); }

void Save_Buffer(Application& app) { Tell(app, Save_Buffer_File(app.session, app.ask)); }
void Save_Dat(Application& app) { Tell(app, Save_Dat_File(app.session, app.ask)); }
void Save_Xys(Application& app) { Tell(app, Save_Xys_File(app.session, app.ask)); }

// A new start closes the other windows too; who keeps a text that is not saved yet keeps all.
void Reset(Application& app) {
    if (!Windows_May_Close()) return;
    app.session.lists.fit = {};
    Reset_Profiles(app.session);
    app.session.plot.y_scale = Y_Scale::linear;
    Set_Menu_Empty(app.session);
    Clear_Read_Outs(app.session);
    Plot_Redraw(app.session);
}

constexpr Command commands[] = {
    {command::open_pattern, "Open Pattern file (*.dat)", "open", Open_Pattern, "Ctrl+O", "Open measured patterns"},
    {command::open_prf, "Open Rietveld/Profile file (*.prf)", "open_prf", Open_Prf, "", "Open profile files of a Rietveld refinement"},
    {command::open_buffer, "Open Buffer file (*.buf)", "open_buffer", Open_Buffer, "", "Open the patterns that a buffer file names"},
    {command::save_free_format, "Free Format File (.dat)", "save", Save_Dat, "", "Write the first profile shown as counts in equal steps"},
    {command::save_xys, "XY / XYS Data File (.xys)", "", Save_Xys, "", "Write the first profile shown as columns of x, y and sigma"},
    {command::save_buffer, "Save Buffer file...", "", Save_Buffer, "", "Write the names of the measured patterns into one buffer file"},
    {command::save_picture, "Save Graphic into file...", "save_picture", Save_Picture, "Ctrl+E",
     "Write the picture as PNG, SVG, PDF, DXF or in another format"},
    {command::print, "Print...", "print", Print, "", "Print the picture, or write it as PostScript"},
    {command::reset, "Reset", "reset", Reset, "Ctrl+R", "Forget all profiles and start anew"},
    {command::recent_1, "1. <Empty>", "", Open_Recent<1>, "Alt+1", "Open this file again"},
    {command::recent_2, "2. <Empty>", "", Open_Recent<2>, "Alt+2", "Open this file again"},
    {command::recent_3, "3. <Empty>", "", Open_Recent<3>, "Alt+3", "Open this file again"},
    {command::recent_4, "4. <Empty>", "", Open_Recent<4>, "Alt+4", "Open this file again"},
    {command::recent_5, "5. <Empty>", "", Open_Recent<5>, "Alt+5", "Open this file again"},
    {command::exit, "E&xit", "exit", Exit_Program, "Ctrl+Q", "Leave the program"},
};

std::vector<Dialog_Resource> Dialogs() {
    std::vector<Dialog_Resource> dialogs = Save_Graphic_Resources();
    dialogs.insert(dialogs.end(), {Progress_Dialog_Resource(), Save_Xys_Dialog_Resource(), Raw_Dialog_Resource()});
    return dialogs;
}

}  // namespace

Command_Family File_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
