// Menu "Plot": forms, views, and what lies over the plot.
#include "commands/families.hpp"

#include <array>

#include "commands/application.hpp"
#include "commands/desk/choose_style.hpp"
#include "commands/plot/focus_profile.hpp"
#include "commands/plot/mouse.hpp"
#include "commands/plot/spectral_lines.hpp"
#include "commands/plot/view.hpp"
#include "commands/plot/waterfall.hpp"
#include "plot/plot.hpp"
#include "session/grid_view.hpp"
#include "session/ranges.hpp"
#include "session/view_history.hpp"

namespace vntl {

namespace {

void Focus(Application& app) {
    Focus_Plot(app.session.store, app.session.plot);
    if (app.session.plot.Is_2D()) Plot_Redraw(app.session);
}

void Focus_On_Values(Application& app) {
    if (Tell(app, Focus_Profile(app.session))) Plot_Redraw(app.session);
}

template <bool log>
void Graph_2D(Application& app) {
    app.session.plot.y_scale = Y_Scale::linear;
    Set_Menu_Graph(app.session, log);
    Plot_ReMake(app.session);
}

// The same window on another scale.
void Show_On_Scale(Application& app, Y_Scale scale) {
    Choose_Scale(app.session, scale);
    Plot_Redraw(app.session);
}

template <Y_Scale scale>
void On_The_Scale(Application& app) {
    Show_On_Scale(app, scale);
}

void Toggle_Logarithms(Application& app) {
    Show_On_Scale(app, app.session.plot.Scale() == Y_Scale::logarithm ? Y_Scale::linear : Y_Scale::logarithm);
}

void Next_Scale(Application& app) {
    constexpr std::array<Y_Scale, 3> next = {Y_Scale::logarithm, Y_Scale::root, Y_Scale::linear};  // of each scale
    Show_On_Scale(app, next[static_cast<std::size_t>(app.session.plot.Scale())]);
}

// The form stays as it is where the rows make no grid.
bool Has_Grid(Application& app, const Status& status) {
    if (status.failed) app.ask.Error("ERROR: " + status.message);
    return status.ok();
}

void Set_Apart(Application& app) { Waterfall_Dialog(app.session); }

template <bool log>
void Contour(Application& app) {
    Session& session = app.session;
    const Intensities form = log ? Intensities::logarithms : Intensities::counts;
    if (!Has_Grid(app, Show_Rows_In_Grid(session, session.plot.Map_View(), form))) return;
    log ? Set_Menu_Contour_Log(session) : Set_Menu_Contour(session);
    Plot_Redraw(session);
}

constexpr float first_rotation = 0, first_elevation = 22;

void Graph_3D(Application& app) {
    Set_Menu_3D(app.session);
    Turn_To(app.session, first_rotation, first_elevation);
    Plot_Redraw(app.session);
}

void Surface_3D(Application& app) {
    Session& session = app.session;
    if (!Has_Grid(app, Show_Surface_Grid(session, session.plot.x_view_min, session.plot.x_view_max))) return;
    Set_Menu_3D_Surface(session);
    Turn_To(session, first_rotation, first_elevation);
    Plot_Redraw(session);
}

void Toggle_Target(Application& app) {
    Session& session = app.session;
    session.plot.show_target = !session.plot.show_target;
    session.interface.Check(command::target, session.plot.show_target);
    Plot_Redraw(session);
}

template <View_Move move>
void Move(Application& app) {
    Move_View(app.session.plot, move);
    Plot_Redraw(app.session);
}

void Go_Back(Application& app) {
    if (View_Back(app.session)) Plot_Redraw(app.session);
}
void Go_Forward(Application& app) {
    if (View_Forward(app.session)) Plot_Redraw(app.session);
}

template <std::size_t style>
void In_Style(Application& app) {
    Tell(app, Show_In_Style(app, Style_Names()[style]));
}

void Start_Drag(Application& app) { Start_Drag_Mode(app.session); }
void End_Drag(Application& app) { End_Drag_Mode(app.session); }

void Lines_On(Application& app) { Spectral_Lines_On(app.session); }
void Lines_Off(Application& app) { Spectral_Lines_Off(app.session); }
void Lines_Settings(Application& app) { Spectral_Lines_Dialog(app.session); }

template <int line>
void Toggle_Line(Application& app) {
    Toggle_Spectral_Line(app.session, line);
}

constexpr Command commands[] = {
    {command::lines_menu, "Spectral Lines", "", Open_Popup, "", "", true},
    {command::lines_on, "Enable", "spectral_lines", Lines_On, "", "Show where the other lines of the tube fall"},
    {command::lines_off, "Disabled", "", Lines_Off, "", "Show no lines of the tube"},
    {command::line_1, "K-alpha1", "", Toggle_Line<0>, "", "Show K-alpha1", true},
    {command::line_2, "K-alpha2", "", Toggle_Line<1>, "", "Show K-alpha2", true},
    {command::line_3, "K-beta", "", Toggle_Line<2>, "", "Show K-beta", true},
    {command::line_4, "L-alpha1 (W)", "", Toggle_Line<3>, "", "Show L-alpha1 of tungsten", true},
    {command::lines_settings, "Settings", "", Lines_Settings, "", "Enter the wavelengths of the tube"},
    {command::graph_2d, "Graph 2D", "graph_2d", Graph_2D<false>, "", "Show the profiles on a linear scale"},
    {command::graph_2d_log, "Graph 2D (Log-Scale)", "graph_2d_log", Graph_2D<true>, "", "Show the profiles on a logarithmic scale"},
    {command::linear_intensities, "Linear intensities", "", On_The_Scale<Y_Scale::linear>, "", "Show counts in the same window", true},
    {command::logarithms, "Logarithmic intensities", "", Toggle_Logarithms, "", "Show logarithms of the same window, and counts again",
     true},
    {command::root_intensities, "Square root of intensities", "", On_The_Scale<Y_Scale::root>, "", "Show square roots of the same window",
     true},
    {command::next_scale, "Next scale", "", Next_Scale, "Ctrl+L", "Step through counts, logarithms and square roots"},
    {command::waterfall, "Waterfall...", "", Set_Apart, "", "Set the shown profiles apart in the picture"},
    {command::style_default, "Default", "", In_Style<0>, "", "The picture that the preferences tell", true},
    {command::style_paper, "Paper", "", In_Style<1>, "", "For print: white page, thin lines, letters large enough", true},
    {command::style_screen, "Screen", "", In_Style<2>, "", "For daily looks", true},
    {command::style_dark, "Dark", "", In_Style<3>, "", "Light curves on a dark ground", true},
    {command::series_by_temperature, "Colour series by temperature", "", Toggle_Series_By_Temperature, "",
     "Colours of more than 12 profiles run along their temperatures", true},
    {command::contour, "Graph 2D Contour", "contour", Contour<false>, "", "Show the profiles as a map"},
    {command::contour_log, "Graph 2D Contour (Log-Scale)", "contour_log", Contour<true>, "", "Show the profiles as a map of logarithms"},
    {command::graph_3d, "Graph 3D", "graph_3d", Graph_3D, "", "Show the profiles one behind another"},
    {command::surface_3d, "Graph 3D Surface", "surface_3d", Surface_3D, "", "Show the profiles as a surface"},
    {command::focus, "Focus", "focus", Focus, "Ctrl+F", "Fit the y window to the visible points"},
    {command::focus_profile, "Focus Profile", "", Focus_On_Values, "", "Enter the limits of the window"},
    {command::target, "View target at centre", "target", Toggle_Target, "Ctrl+T", "Show a target at the centre of the plot", true},
    {command::move_left, "Left", "move_left", Move<View_Move::left>, "Ctrl+Left", "Move the view left by a tenth of its width"},
    {command::move_right, "Right", "move_right", Move<View_Move::right>, "Ctrl+Right", "Move the view right by a tenth of its width"},
    {command::all_left, "All left", "all_left", Move<View_Move::all_left>, "Ctrl+Home", "Move the view to the first point"},
    {command::all_right, "Right", "all_right", Move<View_Move::all_right>, "Ctrl+End", "Move the view to the last point"},
    {command::move_up, "Go Up", "move_up", Move<View_Move::up>, "Ctrl+Up", "Move the view by a twentieth of its height: the curves go up"},
    {command::move_down, "Go Down", "move_down", Move<View_Move::down>, "Ctrl+Down",
     "Move the view by a twentieth of its height: the curves go down"},
    {command::contract, "Contract graph", "contract", Move<View_Move::contract>, "Ctrl+-", "Show a wider range of x"},
    {command::expand, "Expand graph", "expand", Move<View_Move::expand>, "Ctrl+=", "Show a narrower range of x"},
    {command::view_back, "Previous view", "view_back", Go_Back, "Alt+Left", "Back to the view before"},
    {command::view_forward, "Next view", "view_forward", Go_Forward, "Alt+Right", "Forward to the view that was left"},
    {command::drag, "Shift all profiles graphically", "hand", Start_Drag, "Ctrl+G", "The plot follows the mouse"},
    {command::drag_end, "End of shift", "hand_off", End_Drag, "", "The mouse zooms again"},
};

std::vector<Dialog_Resource> Dialogs() {
    return {Spectral_Lines_Dialog_Resource(), Focus_Profile_Dialog_Resource(), Waterfall_Dialog_Resource()};
}

}  // namespace

Command_Family Plot_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
