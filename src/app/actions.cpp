#include "app/actions.hpp"

#include "app/application.hpp"
#include "commands/calc/profile_arithmetic.hpp"
#include "commands/calc/smoothing_dialog.hpp"
#include "commands/file/clipboard.hpp"
#include "commands/file/export_picture.hpp"
#include "commands/help/about.hpp"
#include "commands/help/gestures.hpp"
#include "commands/peaks/search_dialogs.hpp"
#include "commands/plot/mouse.hpp"
#include "commands/plot/spectral_lines.hpp"
#include "commands/profiles/excluded_admin.hpp"
#include "commands/profiles/excluded_regions.hpp"
#include "commands/profiles/move_rows.hpp"
#include "commands/profiles/show_profiles.hpp"
#include "plot/plot.hpp"
#include "session/load.hpp"
#include "session/open_prf.hpp"
#include "session/view_history.hpp"
#include "session/xspace.hpp"
#include "views/text_editor.hpp"

namespace vntl {

namespace {

// Shows what a command had to say; false where the user left its dialog, and nothing is to be drawn.
bool Tell(Application& app, const Status& status) {
    if (status.failed && status.message == "Cancelled") return false;
    if (status.failed) app.ask.Error(status.message);
    return true;
}

// The lists of a single profile go with its conversion; the status bar says so.
void Convert(Application& app, std::string_view target) {
    Session& session = app.session;
    const bool had_lists = !session.lists.peaks.empty() || !session.lists.background.empty();
    const Status status = Convert_Xspace(session, app.ask, target);
    if (status.failed) app.ask.Information(status.message);
    Plot_ReMake(session);
    if (had_lists && session.lists.peaks.empty() && session.lists.background.empty())
        session.interface.Status_Text(1, "The lists of peaks and background points have been emptied");
}

void Convert_To_Origin(Application& app, std::string_view target) {
    if (app.session.store.mixed_scat_var)
        app.ask.Error(std::string(mixed_scat_var_text));
    else
        Convert(app, target);
}

// A mode of the form "calculation" begins, or ends in the form of a single profile. An empty store has neither.
void Begin_Mode(Application& app, int mode, std::string_view hint) {
    if (app.session.store.nperfiles() == 0) return;
    Set_Calculation_Mode(app.session, mode);
    app.session.interface.Status_Text(1, std::string(hint));
    Plot_Redraw(app.session);
}
void End_Mode(Application& app) {
    Set_Calculation_Mode(app.session, 0);
    Set_Menu_Single(app.session, false);
    app.session.interface.Status_Text(1, "");
    Plot_Redraw(app.session);
}

void Smooth(Application& app, Status (*smooth)(Session&, Ask&)) {
    if (!Tell(app, smooth(app.session, app.ask))) return;
    if (app.session.store.nperfiles() > 1) Set_Menu_Graph(app.session, app.session.plot.plot_type == "multi_log");
    Plot_Redraw(app.session);
}

// A click inserts into a list, or deletes from it.
void Choose_Click(Application& app, bool& chosen, bool& other, std::string_view hint) {
    chosen = true;
    other = false;
    app.session.interface.cursor = Cursor_Shape::cross;
    app.session.interface.Status_Text(1, std::string(hint));
    ++app.session.interface.revision;
}

// A dialog that moves rows at once, or leaves it to the mouse.
void Move_Rows(Application& app, Status (*dialog)(Session&, Row_Choice&), int mode) {
    Row_Choice choice;
    const Status status = dialog(app.session, choice);
    if (!Tell(app, status)) return;
    Plot_Redraw(app.session);
    if (status.failed || !choice.by_mouse) return;
    if (mode == align_mode)
        Start_Align_Mode(app.session, choice.rows);
    else
        Start_Scaling_Mode(app.session, mode, choice.rows);
}

}  // namespace

void Command_Open_Pattern(Application& app) {
    app.failed |= Open_Pattern_File(app.session, app.ask).failed;
    Plot_ReMake(app.session);
}

void Command_Open_Prf(Application& app) {
    app.failed |= Open_Prf_File(app.session, app.ask).failed;
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

void Command_To_2theta(Application& app) { Convert_To_Origin(app, "2theta"); }
void Command_To_Tof(Application& app) { Convert_To_Origin(app, "TOF"); }
void Command_To_D(Application& app) { Convert(app, "d-space"); }
void Command_To_Q(Application& app) { Convert(app, "q-space"); }
void Command_To_S(Application& app) { Convert(app, "s-space"); }
void Command_Change_Wavelength(Application& app) { Tell(app, Change_Wavelength(app.session, app.ask)); }
void Command_Change_Dtt(Application& app) { Tell(app, Change_Dtt(app.session, app.ask)); }

void Command_Sum(Application& app) {
    if (Tell(app, Sum_Profiles(app.session, Sum_Mode::sum))) Plot_ReMake(app.session);
}
void Command_Average(Application& app) {
    if (Tell(app, Sum_Profiles(app.session, Sum_Mode::average))) Plot_Redraw(app.session);
}
void Command_Difference(Application& app) {
    if (Tell(app, Difference_Profiles(app.session))) Plot_ReMake(app.session);
}
void Command_Multiply(Application& app) {
    if (Tell(app, Multiply_Profiles(app.session))) Plot_Redraw(app.session);
}
void Command_Efficiency(Application& app) {
    if (Tell(app, Efficiency_Correction(app.session, app.ask))) Plot_Redraw(app.session);
}
void Command_Smooth_Fourier(Application& app) { Smooth(app, Smooth_Fourier); }
void Command_Smooth_Polynomial(Application& app) { Smooth(app, Smooth_Polynomial); }

void Command_Peaks_On(Application& app) { Begin_Mode(app, 2, "Peaks allocation: "); }
void Command_Peaks_Off(Application& app) { End_Mode(app); }
void Command_Background_On(Application& app) { Begin_Mode(app, 3, "Background allocation: "); }
void Command_Background_Off(Application& app) { End_Mode(app); }

void Command_Search_Peaks(Application& app) {
    if (Tell(app, Search_Peaks(app.session))) Plot_Redraw(app.session);
}
void Command_Search_Satellites(Application& app) {
    if (Tell(app, Search_Satellites(app.session))) Plot_Redraw(app.session);
}
void Command_Search_Background(Application& app) {
    if (Tell(app, Search_Background(app.session))) Plot_Redraw(app.session);
}
void Command_Clear_Peaks(Application& app) {
    app.session.lists.peaks.clear();
    Plot_Redraw(app.session);
}
void Command_Clear_Background(Application& app) {
    app.session.lists.background.clear();
    Plot_Redraw(app.session);
}

void Command_Insert_Peak(Application& app) {
    Plot_State& plot = app.session.plot;
    Choose_Click(app, plot.peak_insert, plot.peak_delete, "Peaks allocation: Insert peak");
}
void Command_Delete_Peak(Application& app) {
    Plot_State& plot = app.session.plot;
    Choose_Click(app, plot.peak_delete, plot.peak_insert, "Peaks allocation: Delete peak");
}
void Command_Insert_Background(Application& app) {
    Plot_State& plot = app.session.plot;
    Choose_Click(app, plot.bgr_insert, plot.bgr_delete, "Background allocation: Insert point");
}
void Command_Delete_Background(Application& app) {
    Plot_State& plot = app.session.plot;
    Choose_Click(app, plot.bgr_delete, plot.bgr_insert, "Background allocation: Delete point");
}

void Command_Fit_On(Application& app) { Begin_Mode(app, 1, "Select the range for fitting procedure on two Background points"); }
void Command_Fit_Off(Application& app) {
    Session& session = app.session;
    if (session.store.nperfiles() == 0) return;
    Set_Calculation_Mode(session, 0);
    Set_Menu_Single(session, true);
    session.lists.fit.done = false;
    session.store.prf_loaded = false;
    session.interface.Status_Text(1, "");
    Plot_Redraw(session);
}

void Command_Show(Application& app) {
    ShowProfile_Config(app.session);
    Plot_Redraw(app.session);
}
void Command_Insert_Excluded(Application& app) {
    if (!Tell(app, Insert_Excluded_Region(app.session, app.ask))) return;
    app.session.prefs.prf.excl_ignore_sides ? Plot_ReMake(app.session) : Plot_Redraw(app.session);
}
void Command_Admin_Excluded(Application& app) {
    Excluded_Regions_Admin(app.session, app.ask);
    Plot_ReMake(app.session);
}
void Command_Select_Excluded(Application& app) { Start_Exclude_Mode(app.session); }
void Command_Offset_Align(Application& app) { Move_Rows(app, Offset_Align_Dialog, align_mode); }
void Command_Scaling_X(Application& app) { Move_Rows(app, Scaling_X_Dialog, scale_x_mode); }
void Command_Scaling_Y(Application& app) { Move_Rows(app, Scaling_Y_Dialog, scale_y_mode); }

void Command_Lines_On(Application& app) { Spectral_Lines_On(app.session, app.ask); }
void Command_Lines_Off(Application& app) { Spectral_Lines_Off(app.session); }
void Command_Lines_Settings(Application& app) { Spectral_Lines_Dialog(app.session, app.ask); }
void Toggle_Line(Application& app, int line) { Toggle_Spectral_Line(app.session, line); }

void Move_And_Redraw(Application& app, View_Move move) {
    Move_View(app.session.plot, move);
    Plot_Redraw(app.session);
}

}  // namespace vntl
