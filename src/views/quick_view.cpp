// Quick View: a small window in which the user looks through the profile files of a directory, and hands one over to the main window.
#include <array>

#include "commands/application.hpp"
#include "commands/file/opened.hpp"
#include "commands/plot/view.hpp"
#include "commands/select_files.hpp"
#include "plot/quick_view_picture.hpp"
#include "plot/rubber.hpp"
#include "session/desk/own_settings.hpp"
#include "session/load.hpp"
#include "toolkit/window_service.hpp"
#include "views/menu_entries.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr std::string_view window_title = "Quick View PRF Window", selector_title = "Select Directory to Search";
constexpr int window_width = 400, window_height = 300;
constexpr int quick_view_toolbar = 30105;
constexpr std::array<int, quick_status_parts> status_widths = {-1, 800, 1000, 1000};
constexpr int left_button = 1, right_button = 3;
constexpr int width_info = 1, height_info = 2;

const std::vector<Menu_Entry>& Menu() {
    using namespace command;
    static const std::vector<Menu_Entry> bar = {
        Popup("&File",
              {Entry(quick_view_directory, "Choose &directory...", "Look through the profile files of a directory", "Ctrl+O", "directory"),
               {},
               Entry(quick_view_to_main, "&Set PRF file to Main Window", "Take this profile over", "Ctrl+M", "to_main"),
               {},
               Entry(quick_view_close, "&Close QuickView PRF window", "Close this window", "Ctrl+W", "close")}),
        Popup("&Profile", {Entry(quick_view_previous, "&Previous", "Show the file before this one", "PgUp", "previous"),
                           Entry(quick_view_next, "&Next", "Show the file behind this one", "PgDown", "next")})};
    return bar;
}

// --- what the window shows ---------------------------------------------------------------------------------------------------------

void Show_Status(const Quick_View& quick) {
    WindowSelect(quick_view_window);
    for (std::size_t part = 0; part < quick_status_parts; ++part) WindowOutStatusBar(static_cast<int>(part) + 1, quick.status[part]);
}

void Show_Rubber(const Session& session) {
    WindowSelect(quick_view_window);
    Recording_Device overlay(WInfoWindow(width_info), WInfoWindow(height_info));
    Graphics marks(overlay);
    Draw_Rubber(session.quick_view.plot, session.store, marks);
    WOverlayPut(overlay);
}

void Redraw(const Session& session) {
    WindowSelect(quick_view_window);
    Bitmap bitmap(WInfoWindow(width_info), WInfoWindow(height_info));
    Draw_Quick_View(session.quick_view, Settings_On_White(session), bitmap.Drawing());
    WBitmapPut(std::move(bitmap));
    if (session.quick_view.plot.rubber.active) Show_Rubber(session);
}

// Another file, or none.
void Show_File(const Session& session) {
    const Quick_View& quick = session.quick_view;
    WindowSelect(quick_view_window);
    WMenuSetState(command::quick_view_previous, menu_enabled, quick.index > 1);
    WMenuSetState(command::quick_view_next, menu_enabled, quick.index < quick.Count());
    WMenuSetState(command::quick_view_to_main, menu_enabled, quick.Holds_Profile());
    Show_Status(quick);
    Redraw(session);
}

// --- the commands ------------------------------------------------------------------------------------------------------------------

void Choose_Directory(Application& app) {
    const std::optional<std::string> directory = Select_Directory(app.session.config, selector_title);
    if (!directory || !Look_Through(app.session, app.ask, *directory)) return;
    Show_File(app.session);
}

void Step(Application& app, int step) {
    const Quick_View& quick = app.session.quick_view;
    const int index = quick.index + step;
    if (index < 1 || index > quick.Count()) return;
    const Status status = Show_Quick_File(app.session, index);
    Show_File(app.session);
    if (status.failed) app.ask.Error(status);
}

// The main window remembers its new view, and that there is nothing to undo, with its next message.
void Set_To_Main(Application& app) {
    if (!app.session.quick_view.Holds_Profile()) return;
    const Open_Result result = Hand_Over(app.session, app.ask);
    if (!result.opened) {
        app.failed |= result.failed;
        return;
    }
    Show_Opened(app, result);
    Post_Message({Message_Kind::repaint, {.win = main_window}});
}

void Close(Session& session) {
    WindowCloseChild(quick_view_window);
    session.quick_view = {};
    session.interface.Enable(command::quick_view, true);
}

void Do_Command(Application& app, int command) {
    switch (command) {
        case command::quick_view_directory:
            return Choose_Directory(app);
        case command::quick_view_previous:
            return Step(app, -1);
        case command::quick_view_next:
            return Step(app, 1);
        case command::quick_view_to_main:
            return Set_To_Main(app);
        case command::quick_view_close:
            return Close(app.session);
        default:
            return;
    }
}

// --- the mouse ---------------------------------------------------------------------------------------------------------------------

// The rectangle goes, and the view is what it held where `zoom` says so.
void End_Rectangle(Session& session, bool zoom) {
    Rubber_Shape& rubber = session.quick_view.plot.rubber;
    if (!rubber.active) return;
    rubber.active = false;
    if (zoom) Zoom_To(session.quick_view, rubber);
    Redraw(session);
}

void Press(Session& session, const WIN_MESSAGE& record) {
    Quick_View& quick = session.quick_view;
    if (!quick.Holds_Profile()) return;
    if (record.value1 == left_button) quick.plot.rubber = {true, record.x, record.y, record.x, record.y};
    if (record.value1 != right_button) return;
    quick.plot.rubber = {};
    Show_Whole(quick);
    Redraw(session);
}

void Move(Session& session, const WIN_MESSAGE& record) {
    Quick_View& quick = session.quick_view;
    Read_Out(quick, {record.x, record.y});
    Show_Status(quick);
    if (!quick.plot.rubber.active) return;
    quick.plot.rubber.x1 = record.x;
    quick.plot.rubber.y1 = record.y;
    Show_Rubber(session);
}

void Release(Session& session, const WIN_MESSAGE& record) {
    if (record.value1 != left_button) return;
    session.quick_view.plot.rubber.x1 = record.x;
    session.quick_view.plot.rubber.y1 = record.y;
    End_Rectangle(session, true);
}

// As in the main window: x narrower about the pointer, or wider again up to the whole range.
void Turn_Wheel(Session& session, const WIN_MESSAGE& record) {
    Quick_View& quick = session.quick_view;
    const Plot_State& plot = quick.plot;
    View view = plot.Shown_View();
    if (!view.Drawable() || plot.rubber.active) return;
    const double x = plot.Data_At({record.x, record.y}).x;
    if (!(x >= view.x1 && x <= view.x2) || !Zoom_X_Within_Rows(plot, x, record.value1 > 0, view)) return;
    Show_View(quick, view);
    Redraw(session);
}

// --- the window --------------------------------------------------------------------------------------------------------------------

void Open_QuickView(Application& app) {
    Session& session = app.session;
    session.quick_view = {};
    session.quick_view.open = true;
    session.interface.Enable(command::quick_view, false);
    WindowOpenChild(quick_view_window, std::string(window_title), window_width, window_height, Child_Kind::plot);
    WMenu(Menu());
    WMenuToolbar(quick_view_toolbar, first_toolbar_row);
    WindowStatusBarParts(status_widths);
    for (const Message_Kind kind : {Message_Kind::mouse_down, Message_Kind::mouse_move}) WMessageEnable(quick_view_window, kind, true);
    WindowShow();
    Show_File(session);
}

void Serve(Application& app, const Message& message) {
    if (!WindowIsOpen(quick_view_window)) return;
    switch (message.kind) {
        case Message_Kind::command:
            return Do_Command(app, message.record.value1);
        case Message_Kind::mouse_down:
            return Press(app.session, message.record);
        case Message_Kind::mouse_move:
            return Move(app.session, message.record);
        case Message_Kind::mouse_up:
            return Release(app.session, message.record);
        case Message_Kind::wheel:
            return Turn_Wheel(app.session, message.record);
        case Message_Kind::key_down:
            if (message.record.value1 == key_escape) End_Rectangle(app.session, false);
            return;
        case Message_Kind::repaint:  // preferences have changed
        case Message_Kind::resize:
            return Redraw(app.session);
        case Message_Kind::close_request:
            return Close(app.session);
        default:
            return;
    }
}

std::optional<Point> Page_Of(const Quick_View& quick, Point data) {
    if (!quick.plot.Shown_View().Drawable()) return {};
    const Plot_State::Place at = quick.plot.Page_At({data.x, data.y});
    return Point{at.x, at.y};
}

constexpr Command commands[] = {
    {command::quick_view, "Quick View PRF", "quick_view", Open_QuickView, "", "Look through profile files one by one"},
};

}  // namespace

Command_Family Quick_View_Commands() { return {commands}; }

void Register_Quick_View(Application& app) {
    const Session& session = app.session;
    Register_Window(quick_view_window,
                    {.message = [&app](const Message& message) { Serve(app, message); },
                     .picture = [&session](Device& device) { Draw_Quick_View(session.quick_view, Settings_On_White(session), device); },
                     .page_at = [&session](Point data) { return Page_Of(session.quick_view, data); }});
}

}  // namespace vntl
