// The viewer of area detectors: a window in which the frames of single-crystal runs are looked at, and the planes of reciprocal space that
// they cover. It holds the others back.
#include "views/viewer_2d.hpp"

#include <array>
#include <cstdio>

#include "commands/modal.hpp"
#include "commands/options/preferences_dialog.hpp"
#include "commands/options/redraw.hpp"
#include "commands/plot/mouse_tools.hpp"
#include "plot/plot.hpp"
#include "plot/viewer_picture.hpp"
#include "session/modes.hpp"
#include "toolkit/window_service.hpp"
#include "views/menu_entries.hpp"
#include "views/model_3d.hpp"
#include "views/viewer_sides.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr std::string_view window_title = "Graphics in 2D";
constexpr int window_width = 1000, window_height = 650, viewer_toolbar = 30108;
constexpr std::array<int, 1 + viewer_status_parts> status_widths = {-1, 1100, 1100, 1400, 4200, 2600};
constexpr int width_info = 1, height_info = 2;
constexpr double wheel_step = 0.8;  // of the width and height in view

const std::vector<Menu_Entry>& Menu() {
    using namespace command;
    static const std::vector<Menu_Entry> bar = {
        Popup("&File", {Entry(viewer_instrument, "&Set Current Instrument", "Say which instrument the runs come from", "Ctrl+I", "hkl"),
                        Entry(viewer_open, "&Open  Numor", "Show the frames of a run", "Ctrl+O", "open_numor"),
                        Entry(viewer_reload, "Re&load Information for plots", "Read the runs again", "F5", "reload"),
                        Entry(viewer_reset, "&Reset", "Forget the runs and begin anew", {}, "reset"),
                        {},
                        Entry(viewer_exit, "E&xit 2D Menu", "Close this window", "Ctrl+W", "exit")}),
        Popup("Plot&2D", {Marked_Entry(viewer_bitmap, "&BitMap", "Paint the picture cell by cell"),
                          Marked_Entry(viewer_contour, "&Contour Plot", "Draw the picture as the preferences of contours tell"),
                          {},
                          Marked_Entry(viewer_linear, "&Linear intensity scale", "Show counts", "scale_linear"),
                          Marked_Entry(viewer_root_square, "R&oot square intensity scale", "Show square roots of counts", "scale_root"),
                          Marked_Entry(viewer_logarithm, "Lo&garithimic intensity scale", "Show natural logarithms of counts", "scale_log"),
                          {},
                          Marked_Entry(viewer_rectangle, "&rectangle select", "The mouse draws a rectangle and zooms", "select_rectangle"),
                          Marked_Entry(viewer_line, "li&ne select", "The mouse draws the line of a cross section", "select_line"),
                          {},
                          Marked_Entry(viewer_section, "Cross &Section Plot", "Show the intensity along the line", "cross_section"),
                          Marked_Entry(viewer_omega, "O&mega Scan", "Show the counts of the run frame by frame", "omega_scan")}),
        Popup("Plot&3D", {Entry(viewer_surface, "Open &GL 3D Surface", "Show the part in view as a lit surface", {}, "surface_3d"),
                          Marked_Entry(viewer_zone, "&3D Plot", "Keep the part in view as a surface beside the picture", "model_3d")})};
    return bar;
}

// --- what the window shows -----------------------------------------------------------------------------------------------------------

void Show_Status(const Viewer2D& viewer) {
    WindowSelect(viewer_window);
    WindowOutStatusBar(1, viewer.hint.empty() ? viewer.message : viewer.hint);
    for (std::size_t part = 0; part < viewer_status_parts; ++part) WindowOutStatusBar(static_cast<int>(part) + 2, viewer.status[part]);
}

void Show_Marks(const Viewer2D& viewer) {
    WindowSelect(viewer_window);
    Recording_Device overlay(WInfoWindow(width_info), WInfoWindow(height_info));
    Draw_Viewer_Marks(viewer, overlay);
    WOverlayPut(overlay);
}

void Redraw(Application& app) {
    Viewer2D& viewer = app.viewer;
    WindowSelect(viewer_window);
    Bitmap bitmap(WInfoWindow(width_info), WInfoWindow(height_info));
    const Drawn drawn = Draw_Viewer(viewer, app.session.prefs, app.session.config, bitmap.Drawing());
    viewer.plot.drawn = drawn.window;
    viewer.plot.units = drawn.units;
    WBitmapPut(std::move(bitmap));
    Show_Marks(viewer);
}

void Show_Menu_State(const Viewer2D& viewer) {
    using namespace command;
    WindowSelect(viewer_window);
    const std::pair<int, bool> marks[] = {{viewer_bitmap, viewer.bitmap},
                                          {viewer_contour, !viewer.bitmap},
                                          {viewer_linear, viewer.intensity_scale == Intensity_Scale::linear},
                                          {viewer_root_square, viewer.intensity_scale == Intensity_Scale::root_square},
                                          {viewer_logarithm, viewer.intensity_scale == Intensity_Scale::logarithm},
                                          {viewer_rectangle, viewer.select_kind == select_rectangle},
                                          {viewer_line, viewer.select_kind == select_line},
                                          {viewer_section, viewer.side_plot == side_section},
                                          {viewer_omega, viewer.plot_kind == 1},
                                          {viewer_zone, viewer.side_plot == side_surface}};
    for (const auto& [entry, on] : marks) WMenuSetState(entry, menu_checked, on);
    for (const int entry : {viewer_reload, viewer_section, viewer_omega, viewer_surface, viewer_zone})
        WMenuSetState(entry, menu_enabled, viewer.Holds_Run());
}

// What hangs on the picture in view alone: a zoom, a scale.
void Show_Picture(Application& app) {
    app.viewer.hint.clear();
    Redraw(app);
    Show_Beside(app);
    Show_Status(app.viewer);
}

}  // namespace

void Show_Viewer(Application& app) {
    if (!WindowIsOpen(viewer_window)) return;
    app.viewer.status = {};
    Show_Menu_State(app.viewer);
    Show_In_Panel(app);
    Show_Picture(app);
}

void Choose_Side_Plot(Application& app, int side) {
    app.viewer.side_plot = side;
    app.viewer.hint.clear();
    Show_Menu_State(app.viewer);
    Show_Beside(app);
    Show_Marks(app.viewer);
    Show_Status(app.viewer);
}

void Choose_Plot_Kind(Application& app, int kind) {
    app.viewer.plot_kind = kind;
    Show_Menu_State(app.viewer);
    Show_Beside(app);
}

namespace {

// --- the commands --------------------------------------------------------------------------------------------------------------------

template <bool bitmap>
void Choose_Form(Application& app) {
    app.viewer.bitmap = bitmap;
    app.viewer.plot_kind = 0;
    Show_Menu_State(app.viewer);
    Show_Picture(app);
}

template <Intensity_Scale scale>
void Choose_Scale(Application& app) {
    Viewer2D& viewer = app.viewer;
    viewer.intensity_scale = scale;
    Rescale(viewer, Saturation_Of(app));
    Show_Menu_State(viewer);
    Show_Picture(app);
}

template <Select_Kind_2D kind>
void Choose_Selection(Application& app) {
    app.viewer.select_kind = kind;
    app.viewer.plot.rubber = {};
    WindowSelect(viewer_window);
    WCursorShape(static_cast<int>(kind == select_line ? Cursor_Shape::cross : Cursor_Shape::arrow));
    Show_Menu_State(app.viewer);
    Show_Marks(app.viewer);
}

template <int side>
void Switch_Side(Application& app) {
    Viewer2D& viewer = app.viewer;
    PlotGrid zone;
    if (side == side_surface && viewer.side_plot != side_surface) {
        if (const Status status = Zone_Grid(viewer, zone); status.failed) return app.ask.Information(status.message);
    }
    Choose_Side_Plot(app, viewer.side_plot == side ? side_none : side);
    if (viewer.side_plot != side_surface) return;
    WindowSelect(zone_window);
    Tell_Lack_Of_OpenGL(app);
}

void Switch_Omega(Application& app) { Choose_Plot_Kind(app, app.viewer.plot_kind == 0 ? 1 : 0); }

void Show_Surface(Application& app) {
    PlotGrid zone;
    if (const Status status = Zone_Grid(app.viewer, zone); status.failed) return app.ask.Information(status.message);
    Show_Model_Of(app, std::move(zone), app.viewer.x_label);
    if (!app.leaving) Show_Viewer(app);
}

void Reset(Application& app) {
    app.viewer = Viewer2D();
    WindowSelect(viewer_window);
    WCursorShape(static_cast<int>(Cursor_Shape::arrow));
    Show_Viewer(app);
}

void Leave(Application&) { WindowCloseChild(viewer_window); }

constexpr struct {
    int command;
    void (*action)(Application&);
} actions[] = {{command::viewer_instrument, Set_Current_Instrument},
               {command::viewer_open, Open_Numor_File},
               {command::viewer_reload, Reload_Runs},
               {command::viewer_reset, Reset},
               {command::viewer_exit, Leave},
               {command::viewer_bitmap, Choose_Form<true>},
               {command::viewer_contour, Choose_Form<false>},
               {command::viewer_linear, Choose_Scale<Intensity_Scale::linear>},
               {command::viewer_root_square, Choose_Scale<Intensity_Scale::root_square>},
               {command::viewer_logarithm, Choose_Scale<Intensity_Scale::logarithm>},
               {command::viewer_rectangle, Choose_Selection<select_rectangle>},
               {command::viewer_line, Choose_Selection<select_line>},
               {command::viewer_section, Switch_Side<side_section>},
               {command::viewer_omega, Switch_Omega},
               {command::viewer_surface, Show_Surface},
               {command::viewer_zone, Switch_Side<side_surface>}};

void Do_Command(Application& app, int command) {
    if (WMenuGetState(command, menu_enabled) != 1) return;
    for (const auto& row : actions)
        if (row.command == command) return row.action(app);
}

// --- the mouse -----------------------------------------------------------------------------------------------------------------------

void Press(Application& app, const WIN_MESSAGE& record) {
    Viewer2D& viewer = app.viewer;
    if (!viewer.Holds_Run()) return;
    Rubber_Shape& rubber = viewer.plot.rubber;
    if (record.value1 == left_button) {
        const Rubber_Kind kind = viewer.select_kind == select_line ? Rubber_Kind::line : Rubber_Kind::rectangle;
        rubber = {true, record.x, record.y, record.x, record.y, kind};
    }
    if (record.value1 != right_button) return;
    rubber = {};
    Show_Whole(viewer, Saturation_Of(app));
    Show_Picture(app);
}

void Move(Viewer2D& viewer, const WIN_MESSAGE& record) {
    Read_Out(viewer, {record.x, record.y});
    Show_Status(viewer);
    if (!viewer.plot.rubber.active) return;
    viewer.plot.rubber.x1 = record.x;
    viewer.plot.rubber.y1 = record.y;
    Show_Marks(viewer);
}

void Take_Line(Application& app, Plot_State::Place from, Plot_State::Place to) {
    Viewer2D& viewer = app.viewer;
    viewer.hint.clear();
    viewer.section_known = true;
    viewer.section_x = {static_cast<float>(from.x), static_cast<float>(to.x)};
    viewer.section_y = {static_cast<float>(from.y), static_cast<float>(to.y)};
    if (viewer.side_plot != side_section) viewer.hint = "\"Cross Section Plot\" shows the intensity along the line";
    Show_Marks(viewer);
    Show_Beside(app);
    Show_Status(viewer);
}

void Release(Application& app, const WIN_MESSAGE& record) {
    Viewer2D& viewer = app.viewer;
    Rubber_Shape rubber = viewer.plot.rubber;
    if (record.value1 != left_button || !rubber.active) return;
    viewer.plot.rubber = {};
    const Plot_State::Place from = viewer.plot.Data_At({rubber.x0, rubber.y0}), to = viewer.plot.Data_At({record.x, record.y});
    if (rubber.kind == Rubber_Kind::line) return Take_Line(app, from, to);
    rubber.x1 = record.x;
    rubber.y1 = record.y;
    WindowSelect(viewer_window);
    const View window{static_cast<float>(std::min(from.x, to.x)), static_cast<float>(std::max(from.x, to.x)),
                      static_cast<float>(std::min(from.y, to.y)), static_cast<float>(std::max(from.y, to.y))};
    if (Is_Click(rubber) || !Zoom_To(viewer, window, Saturation_Of(app))) return Show_Marks(viewer);
    Show_Picture(app);
}

// About the pointer.
void Turn_Wheel(Application& app, const WIN_MESSAGE& record) {
    Viewer2D& viewer = app.viewer;
    const View view = viewer.plot.Shown_View();
    if (!viewer.Holds_Run() || viewer.plot.rubber.active || !view.Drawable()) return;
    const Plot_State::Place at = viewer.plot.Data_At({record.x, record.y});
    const double factor = record.value1 > 0 ? wheel_step : 1 / wheel_step;
    const auto about = [factor](double centre, float end) { return static_cast<float>(centre + factor * (end - centre)); };
    const View wanted{about(at.x, view.x1), about(at.x, view.x2), about(at.y, view.y1), about(at.y, view.y2)};
    if (Zoom_To(viewer, wanted, Saturation_Of(app))) Show_Picture(app);
}

void Cancel_Rubber(Viewer2D& viewer) {
    viewer.plot.rubber = {};
    Show_Marks(viewer);
}

// --- the window ----------------------------------------------------------------------------------------------------------------------

void Serve(Application& app, const Message& message) {
    if (!WindowIsOpen(viewer_window)) return;
    if (message.record.win == viewer_panel) return Handle_Panel(app, message);
    WindowSelect(viewer_window);
    switch (message.kind) {
        case Message_Kind::command:
            return Do_Command(app, message.record.value1);
        case Message_Kind::mouse_down:
            return Press(app, message.record);
        case Message_Kind::mouse_move:
            return Move(app.viewer, message.record);
        case Message_Kind::mouse_up:
            return Release(app, message.record);
        case Message_Kind::wheel:
            return Turn_Wheel(app, message.record);
        case Message_Kind::key_down:
            if (message.record.value1 == key_escape) Cancel_Rubber(app.viewer);
            return;
        case Message_Kind::repaint:  // preferences have changed
            Fill_Grid(app.viewer, Saturation_Of(app));
            return Show_Picture(app);
        case Message_Kind::resize:
            return Redraw(app);
        case Message_Kind::close_request:
            return Leave(app);
        default:
            return;
    }
}

void Open_Window(Application& app) {
    WindowOpenChild(viewer_window, std::string(window_title), window_width, window_height, Child_Kind::plot, true);
    WMenu(Menu());
    WMenuToolbar(viewer_toolbar, first_toolbar_row);
    WindowStatusBarParts(status_widths);
    for (const Message_Kind kind : {Message_Kind::mouse_down, Message_Kind::mouse_move, Message_Kind::mouse_up})
        WMessageEnable(viewer_window, kind, true);
    Open_Panel(app);
    WindowSelect(viewer_window);
    WindowShow();
    WindowToFront(viewer_window);
}

// The main window's plot is untouched, but for preferences that were changed here.
void Viewer2D_Main(Application& app) {
    app.viewer = Viewer2D();
    Open_Window(app);
    Show_Viewer(app);
    Run_Window(viewer_window, app.leaving);
    const bool preferences_changed = app.viewer.preferences_changed;
    app.viewer = Viewer2D();
    app.zone_model = {};
    std::fputs(" Leaving 2D mode\n", stderr);
    WindowSelect(main_window);
    if (app.leaving) return;
    preferences_changed ? Show_Present_View(app.session, app.ask) : Plot_Redraw(app.session);
}

std::optional<Point> Page_Of(const Viewer2D& viewer, Point data) {
    if (!viewer.Holds_Run() || !viewer.plot.units.Drawable()) return {};
    const Plot_State::Place at = viewer.plot.Page_At({data.x, data.y});
    return Point{at.x, at.y};
}

void Draw_With_Marks_On(const Application& app, Device& device) {
    (void)Draw_Viewer(app.viewer, app.session.prefs, app.session.config, device);
    Draw_Viewer_Marks(app.viewer, device);
}

constexpr Command commands[] = {
    {command::viewer_2d, "Vantrelo 2D", "viewer_2d", Viewer2D_Main, "", "Look at the pictures of area detectors"},
};

}  // namespace

void Edit_Viewer_Preferences(Application& app) {
    WindowSelect(viewer_window);
    Preferences_In_Viewer(app.session, app.ask);
    app.viewer.preferences_changed = true;
    Fill_Grid(app.viewer, Saturation_Of(app));
    Show_Viewer(app);
}

Command_Family Viewer_2D_Commands() { return {commands, Viewer_Dialogs}; }

void Register_Viewer_2D(Application& app) {
    Register_Window(viewer_window, {.dialogs = {viewer_panel},
                                    .message = [&app](const Message& message) { Serve(app, message); },
                                    .picture = [&app](Device& device) { Draw_With_Marks_On(app, device); },
                                    .page_at = [&app](Point data) { return Page_Of(app.viewer, data); }});
    Register_Viewer_Sides(app);
}

}  // namespace vntl
