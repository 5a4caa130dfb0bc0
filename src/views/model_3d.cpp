// The model: the grid of a series as a lit solid, in a window in which it is turned, stretched, coloured and smoothed.
#include "views/model_3d.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"
#include "commands/external/start.hpp"
#include "commands/file/save_graphic.hpp"
#include "commands/help/about.hpp"
#include "commands/modal.hpp"
#include "external/web_pages.hpp"
#include "plot/model.hpp"
#include "plot/plot.hpp"
#include "session/grid_view.hpp"
#include "session/modes.hpp"
#include "solid/w3d_draw.hpp"
#include "solid/w3d_file.hpp"
#include "toolkit/solid_view.hpp"
#include "toolkit/window_service.hpp"
#include "views/views.hpp"

namespace vntl {

W3d_View View_Of(const Model3D& model) {
    W3d_View view;
    view.eye = From_Polar(model.view.elevation, model.view.azimuth, model.view.distance);
    view.light = From_Polar(model.light.elevation, model.light.azimuth, model.light.distance);
    view.mode = static_cast<Render_Mode>(model.render_mode);
    view.edge_colour = model.edge_colour;
    view.background = model.background;
    return view;
}

void Draw_Model(const Model3D& model, bool turning) {
    WindowSelect(model.window);
    W3dShow(View_Of(model), turning);
}

void Take_Solid(Model3D& model, W3d solid) { model.solid = std::make_shared<const W3d>(std::move(solid)); }

void Show_Solid(Model3D& model) {
    const auto [x, y, z] = model.scale;
    const bool as_it_is = x == 1 && y == 1 && z == 1;
    model.shown = as_it_is ? model.solid : std::make_shared<const W3d>(Scaled(*model.solid, x, y, z));
    WindowSelect(model.window);
    W3dPut(model.shown);
    Show_View(model);
}

void Show_View(Model3D& model, bool turning) {
    Follow_In_Dialogs(model);
    Draw_Model(model, turning);
}

namespace {

constexpr int width = 800, height = 600;
constexpr std::array<int, 5> status_widths = {-1, 200, 200, 200, 1200};
constexpr int spin_timer = 1, spin_ms = 30;
constexpr int left_button = 1;

constexpr int modes[] = {command::model_wireframe, command::model_hidden_lines, command::model_unlit,
                         command::model_flat,      command::model_gouraud,      command::model_phong};

// --- what the commands do --------------------------------------------------------------------------------------------------------

void Show_Mode(const Model3D& model) {
    WindowSelect(model_window);
    for (std::size_t mode = 0; mode < std::size(modes); ++mode)
        WMenuSetState(modes[mode], menu_checked, static_cast<int>(mode) == model.render_mode);
}

template <Render_Mode mode>
void Choose_Mode(Application& app) {
    Model3D& model = app.model;
    model.render_mode = static_cast<int>(mode);
    Show_Mode(model);
    Draw_Model(model);
}

template <int degrees>
void Spin(Application& app) {
    Set_Spin_Speed(app.model, degrees);
    WMessageTimer(spin_ms, spin_timer, true);
}

template <bool clockwise>
void Choose_Direction(Application& app) {
    Set_Spin_Direction(app.model, clockwise);
}

void Stop_Spin(Application& app) {
    WMessageTimer(0, spin_timer, true);
    Draw_Model(app.model);
}

// The grid is that of the map or surface on the screen, too, which says so.
void Smooth(Application& app) {
    Plot_State& plot = app.session.plot;
    Smooth_PlotGrid(plot.grid);
    Show_Resting_Hint(app.session);
    Take_Solid(app.model, Build_Model(plot.grid, plot.xlabel_text, app.model.model_colour));
}

void Take_Own_Grid(Model3D& model) { Take_Solid(model, Build_Model(*model.own_grid, model.own_x_title, model.model_colour)); }

void Filter(Application& app) {
    if (!app.model.of_grid) return;
    if (app.model.own_grid) {
        Smooth_PlotGrid(*app.model.own_grid);
        Take_Own_Grid(app.model);
    } else {
        Smooth(app);
    }
    Show_Solid(app.model);
}

void Choose_Model_Colour(Application& app) {
    Model3D& model = app.model;
    const std::optional<Colour> chosen = WSelectColour(model.model_colour);
    if (!chosen) return;
    model.model_colour = *chosen;
    W3d solid = *model.solid;
    solid.materials.front() = *chosen;
    Take_Solid(model, std::move(solid));
    Show_Solid(model);
}

void Choose_Edge_Colour(Application& app) {
    Model3D& model = app.model;
    const std::optional<Colour> chosen = WSelectColour(model.edge_colour);
    if (!chosen) return;
    model.edge_colour = *chosen;
    Draw_Model(model);
}

void Save_As(Application& app) {
    app.ask.Box(
        {Box_Buttons::ok, Box_Icon::information, 1, "This option is not working presently, please use the W3D option. ", "Information"});
}

void Open_Web_Site(Application& app) { Open_With(app, Program_Role::cmd_browser, home_page); }
void Save(Application& app) { Save_W3d(app.session.config, app.ask, app.model); }
void Print(Application& app) { Tell(app, Print_Window(app.session.config, app.ask, model_window, true)); }
void Leave(Application&) { WindowCloseChild(model_window); }
void Move_Light(Application& app) { Open_Light_Dialog(app.model); }
void Move_Observer(Application& app) { Open_View_Dialog(app.model); }
void Scale(Application& app) { Scale_Dialog(app.model); }
void Show_Info(Application& app) { Info_Dialog(app.model); }
void Show_About(Application& app) { About_Dialog(app.session.config); }

constexpr struct {
    int command;
    void (*action)(Application&);
} actions[] = {{command::model_save_as, Save_As},
               {command::model_save_w3d, Save},
               {command::model_print, Print},
               {command::model_exit, Leave},
               {command::model_wireframe, Choose_Mode<Render_Mode::wireframe>},
               {command::model_hidden_lines, Choose_Mode<Render_Mode::hidden_lines>},
               {command::model_unlit, Choose_Mode<Render_Mode::unlit>},
               {command::model_flat, Choose_Mode<Render_Mode::flat>},
               {command::model_gouraud, Choose_Mode<Render_Mode::gouraud>},
               {command::model_phong, Choose_Mode<Render_Mode::phong>},
               {command::model_light, Move_Light},
               {command::model_view, Move_Observer},
               {command::model_scale, Scale},
               {command::model_filter, Filter},
               {command::model_colour, Choose_Model_Colour},
               {command::model_edge_colour, Choose_Edge_Colour},
               {command::model_spin_high, Spin<5>},
               {command::model_spin_medium, Spin<2>},
               {command::model_spin_low, Spin<1>},
               {command::model_clockwise, Choose_Direction<true>},
               {command::model_anti_clockwise, Choose_Direction<false>},
               {command::model_spin_stop, Stop_Spin},
               {command::model_web_site, Open_Web_Site},
               {command::model_info, Show_Info},
               {command::model_about, Show_About}};

void Do_Command(Application& app, int command) {
    if (WMenuGetState(command, menu_enabled) != 1) return;
    for (const auto& row : actions)
        if (row.command == command) return row.action(app);
}

// --- messages --------------------------------------------------------------------------------------------------------------------

void Take_In_Hand(Model3D& model, const WIN_MESSAGE& record, bool held) {
    model.dragging = held;
    model.hand_x = record.x, model.hand_y = record.y;
    for (const Message_Kind kind : {Message_Kind::mouse_up, Message_Kind::mouse_move}) WMessageEnable(model.window, kind, held);
    if (!held) Draw_Model(model);  // in full
}

void Do_Mouse(Model3D& model, const Message& message) {
    const WIN_MESSAGE& record = message.record;
    switch (message.kind) {
        case Message_Kind::mouse_down:
            if (record.value1 == left_button) Take_In_Hand(model, record, true);
            return;
        case Message_Kind::mouse_up:
            if (record.value1 == left_button && model.dragging) Take_In_Hand(model, record, false);
            return;
        case Message_Kind::mouse_move:
            if (!model.dragging) return;
            Turn_Model_To(model, record.x, record.y);
            return Show_View(model, true);
        default:  // the wheel
            Move_Eye(model, record.value1 > 0 ? 1 : -1);
            return Show_View(model);
    }
}

}  // namespace

void Serve_Model_View(Model3D& model, const Message& message) {
    switch (message.kind) {
        case Message_Kind::mouse_down:
        case Message_Kind::mouse_up:
        case Message_Kind::mouse_move:
        case Message_Kind::wheel:
            return Do_Mouse(model, message);
        case Message_Kind::repaint:
        case Message_Kind::resize:
            return Draw_Model(model);
        default:
            return;
    }
}

void Put_Model_On(const Model3D& model, Device& device) {
    if (model.shown != nullptr) Draw_W3d(*model.shown, View_Of(model), device);
}

void Tell_Lack_Of_OpenGL(Application& app) {
    if (W3dOpenGL()) return;
    app.lack_of_opengl_told = true;
    app.ask.Information("This display offers no OpenGL: the model is drawn without the graphics card, more slowly and with fewer facets.");
}

namespace {

void Serve(Application& app, const Message& message) {
    if (!WindowIsOpen(model_window)) return;
    Model3D& model = app.model;
    WindowSelect(model_window);
    if (message.record.win != model_window) return Serve_Position_Dialog(model, message);
    switch (message.kind) {
        case Message_Kind::command:
            return Do_Command(app, message.record.value1);
        case Message_Kind::timer:
            if (message.record.value1 != spin_timer) return;
            Spin_Model(model);
            return Show_View(model, true);
        case Message_Kind::close_request:
            return WindowCloseChild(model_window);
        default:
            return Serve_Model_View(model, message);
    }
}

// --- the window ------------------------------------------------------------------------------------------------------------------

void Open_Window(const Configuration& config, const Model3D& model, int owner) {
    WindowOpenChild(model_window, config.program_name + ' ' + config.program_version, width, height, Child_Kind::solid, true, owner);
    WMenu(Model_Menu());
    for (const int mode : {command::model_hidden_lines, command::model_phong}) WMenuSetState(mode, menu_enabled, 0);
    WMenuSetState(command::model_filter, menu_enabled, model.of_grid);
    WMenuSetState(command::model_web_site, menu_enabled, !home_page.empty());
    Show_Mode(model);
    WindowStatusBarParts(status_widths);
    WindowOutStatusBar(status_parts, "Model 3D");
    WMessageEnable(model_window, Message_Kind::mouse_down, true);
    WindowShow();
}

// Once a run of the program, and to nobody who would not see the model either.
void Tell_Lack_Of_OpenGL_Once(Application& app) {
    if (Display_Answers() && !app.lack_of_opengl_told) Tell_Lack_Of_OpenGL(app);
}

// Shows the solid of the state until the window is closed.
void Run(Application& app, int owner, void (*tell_lack_of_opengl)(Application&)) {
    Open_Window(app.session.config, app.model, owner);
    Show_Solid(app.model);
    tell_lack_of_opengl(app);
    Run_Window(model_window, app.leaving);
    app.model.solid = app.model.shown = nullptr;
    app.model.own_grid.reset();
}

void Run_Over_Main(Application& app) {
    Run(app, main_window, Tell_Lack_Of_OpenGL_Once);
    WindowSelect(main_window);
    if (!app.leaving) Plot_Redraw(app.session);
}

// More corners than a solid can have come of a series that nobody can see point by point.
Status Check_Size(const PlotGrid& grid) {
    const std::size_t points = grid.grid_z.size();
    if (points <= max_w3d_vertices) return Status::Done();
    return Status::Fail("The view holds " + std::to_string(points) + " points, and a model at most " + std::to_string(max_w3d_vertices) +
                        ".\nZoom in on fewer of them");
}

void Model3D_Main(Application& app) {
    Status status = Prepare_Model_Grid(app.session);
    if (!status.failed) status = Check_Size(app.session.plot.grid);
    if (status.failed) return app.ask.Error("ERROR: " + status.message);
    app.model = {};
    Smooth(app);
    Run_Over_Main(app);
}

constexpr Command commands[] = {
    {command::model_3d, "OpenGL 3D model", "model_3d", Model3D_Main, "", "Show the profiles as a model that turns"},
};

}  // namespace

void Show_W3d_File(Application& app, const std::string& file) {
    W3d solid;
    W3d_View view;
    if (const Status status = Read_W3d(file, solid, view); status.failed) return app.ask.Error(status);
    Model3D& model = app.model;
    model = {};
    model.of_grid = false;
    model.render_mode = static_cast<int>(view.mode);
    model.view = Polar_Of(view.eye, model.view);
    model.light = Polar_Of(view.light, model.light);
    model.view.elevation = std::clamp(model.view.elevation, -steepest_view, steepest_view);
    model.view.distance = std::clamp(model.view.distance, nearest_view, farthest_view);
    model.model_colour = solid.materials.front();
    model.edge_colour = view.edge_colour;
    model.background = view.background;
    Take_Solid(model, std::move(solid));
    Run_Over_Main(app);
}

void Show_Model_Of(Application& app, PlotGrid grid, std::string x_title, int owner) {
    if (const Status status = Check_Size(grid); status.failed) return app.ask.Error(status);
    Model3D& model = app.model;
    model = {};
    model.own_grid = std::move(grid);
    model.own_x_title = std::move(x_title);
    Take_Own_Grid(model);
    Run(app, owner, Tell_Lack_Of_OpenGL);
}

Command_Family Model_3D_Commands() { return {commands, Model_Dialogs}; }

void Register_Model_3D(Application& app) {
    Register_Window(model_window, {.dialogs = Position_Dialogs(),
                                   .message = [&app](const Message& message) { Serve(app, message); },
                                   .picture = [&app](Device& device) { Put_Model_On(app.model, device); }});
}

}  // namespace vntl
