#include "app/actions.hpp"

#include "app/application.hpp"
#include "commands/file/clipboard.hpp"
#include "commands/file/export_picture.hpp"
#include "commands/help/about.hpp"
#include "commands/help/gestures.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/load.hpp"
#include "session/view_history.hpp"
#include "views/text_editor.hpp"

namespace vntl {

void Command_Open_Pattern(Application& app) {
    app.failed |= Open_Pattern_File(app.session, app.ask).failed;
    Plot_ReMake(app.session);
}

void Open_Recent_File(Application& app, int slot) {
    Open_Result result;
    const Status status = Open_File_By_Extension(app.session, app.ask, app.session.recent.Slot(slot), result);
    if (status.failed) app.ask.Error(status.message);
    app.failed |= status.failed || result.failed;
    Plot_ReMake(app.session);
}

void Open_Dropped_Files(Application& app, const std::vector<std::string>& names) {
    app.failed |= Open_Files(app.session, app.ask, names).failed;
    Plot_ReMake(app.session);
}

void Command_Export(Application& app) { app.failed |= Export_Plot(app.session, app.ask).failed; }

void Command_Reset(Application& app) {
    app.session.lists.fit = {};
    Reset_Profiles(app.session);
    Set_Menu_Empty(app.session);
    Clear_Read_Outs(app.session);
    Plot_Redraw(app.session);
}

void Command_Exit(Application& app) { Exit_Program(app); }

void Command_Focus(Application& app) {
    Focus_Plot(app.session);
    if (app.session.plot.Is_2D()) Plot_Redraw(app.session);
}

void Show_Graph_2D(Application& app, bool log) {
    app.session.plot.log_scale = log;
    Set_Menu_Graph(app.session, log);
    Plot_ReMake(app.session);
}

void Command_Target(Application& app) {
    Session& session = app.session;
    session.plot.show_target = !session.plot.show_target;
    session.interface.Check(target_command, session.plot.show_target);
    Plot_Redraw(session);
}

void Command_About(Application& app) { About_Dialog(app.session); }

void Command_Gestures(Application& app) { Gestures_Dialog(app.session); }

void Command_Copy_Picture(Application& app) { Copy_Picture(app.session); }

void Command_Copy_Data(Application& app) {
    if (const Status status = Copy_Data(app.session); status.failed) app.ask.Error(status.message);
}

void Command_View_Back(Application& app) {
    if (View_Back(app.session)) Plot_Redraw(app.session);
}

void Command_View_Forward(Application& app) {
    if (View_Forward(app.session)) Plot_Redraw(app.session);
}

void Command_Start_Drag(Application& app) { Start_Drag_Mode(app.session); }
void Command_End_Drag(Application& app) { End_Drag_Mode(app.session); }

void Command_Text_Editor(Application& app) { Open_Text_Editor(app.session, app.ask, {}); }
void Command_Edit_Control_File(Application& app) { Open_Text_Editor(app.session, app.ask, app.session.config.pcr_file); }

void Move_And_Redraw(Application& app, View_Move move) {
    Move_View(app.session.plot, move);
    Plot_Redraw(app.session);
}

}  // namespace vntl
