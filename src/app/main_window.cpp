#include "app/main_window.hpp"

#include <cmath>
#include <optional>

#include "app/carry_list.hpp"
#include "app/command_table.hpp"
#include "commands/crystal/hkl_gen.hpp"
#include "commands/desk/pattern_list.hpp"
#include "commands/file/exit.hpp"
#include "commands/file/opened.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"
#include "session/file_kinds.hpp"
#include "session/load.hpp"
#include "session/view_history.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr int note_timer = 2;

void Do_Command(Application& app, int id) {
    const Command* command = Find_Command(id);
    if (command == nullptr || !command->built() || !app.session.interface.Enabled(id)) return;
    command->action(app);
}

void Do_Key(Application& app, int key) {
    if (key == key_escape) Cancel_Mouse(app.session);
    if (key == key_back) Do_Command(app, command::view_back);
    if (key == key_forward) Do_Command(app, command::view_forward);
    // The windowing system knows the keys of the menu; a script presses them here.
    for (const Command& command : Command_Table())
        if (!command.shortcut.empty() && command.shortcut == Key_Name(key)) return Do_Command(app, command.id);
}

bool Is_Deed(Message_Kind kind) {
    return kind == Message_Kind::command || kind == Message_Kind::mouse_down || kind == Message_Kind::key_down ||
           kind == Message_Kind::files_dropped || Is_Of_List(kind);
}

// Commands that a dialog in front holds back are void.
void Do_Message(Application& app, const Message& message) {
    switch (message.kind) {
        case Message_Kind::command:
            if (Modal_Loop_Serves(message.record.value1)) Do_Command(app, message.record.value1);
            break;
        case Message_Kind::repaint:
            Plot_Repaint(app.session);
            break;
        case Message_Kind::timer:
            if (message.record.value1 == note_timer && app.session.interface.note != 0) Forget_Note(app.session);
            break;
        case Message_Kind::resize:
            Plot_Redraw(app.session);
            break;
        case Message_Kind::close_request:
            Exit_Program(app);
            break;
        case Message_Kind::mouse_down:
        case Message_Kind::mouse_up:
        case Message_Kind::mouse_move:
        case Message_Kind::wheel:
            Do_Mouse(app.session, app.ask, message);
            break;
        case Message_Kind::key_down:
            Do_Key(app, message.record.value1);
            break;
        case Message_Kind::files_dropped:
            Open_Dropped_Files(app, message.record.files);
            break;
        default:
            if (Is_Of_List(message.kind)) Serve_List(app, message);
            break;
    }
}

// What was noted last stands for its time.
void Time_Note(unsigned& timed, const Interface_State& bar) {
    constexpr int note_ms = 6000;
    if (bar.note != timed) WMessageTimer(bar.note != 0 ? note_ms : 0, note_timer, false);
    timed = bar.note;
}

// Handler of every message of the main window and of its modeless dialogs.
void Ihand_WinRoot(Application& app, const Message& message) {
    WindowSelect(main_window);
    if (Is_Deed(message.kind)) Forget_Note(app.session);
    Is_Of_Hkl_Gen(message.record.win) ? Serve_Hkl_Gen(app, message) : Do_Message(app, message);
    Follow_Hkl_Gen(app.session);
    // A drag is one move from its begin to its end, and so are the steps of a turning wheel.
    if (!app.session.plot.drag.active) Remember_View(app.session, message.kind == Message_Kind::wheel);
    Show_Changes(app.session);
    Time_Note(app.note_timed, app.session.interface);
    Show_List_Commands(app.session);
}

// Bars that came or went have left the picture another height, a list another width.
void Carry_And_Fit(Application& app) {
    const auto bars = app.toolbars;
    const bool other_width = Carry_List(app);
    Carry_To_Window(app);
    if (app.toolbars != bars || other_width) Plot_Redraw(app.session);
}

std::optional<Point> Page_Of(const Plot_State& plot, Point data) {
    const Plot_State::Place at = plot.Page_At({data.x, data.y});
    if (!std::isfinite(at.x) || !std::isfinite(at.y)) return {};
    return Point{at.x, at.y};
}

bool Has_Own_Window(const std::string& name) {
    const File_Kind_Row* kind = File_Kind_Of(name);
    return kind != nullptr && (kind->kind == File_Kind::generic_plots || kind->kind == File_Kind::solid);
}

void Show_In_Own_Window(Application& app, const std::string& name) {
    File_Kind_Of(name)->kind == File_Kind::solid ? Show_W3d_File(app, name) : Show_Generic_File(app, name);
}

}  // namespace

void Register_Main_Window(Application& app) {
    Register_Window(main_window, {.dialogs = Hkl_Gen_Dialogs(),
                                  .message = [&app](const Message& message) { Ihand_WinRoot(app, message); },
                                  .picture = [&app](Device& device) { Draw_With_Marks(Scene_Of(app.session), device); },
                                  .page_at = [&app](Point data) { return Page_Of(app.session.plot, data); }});
}

// Rows first. What is shown in windows of their own, one after another as the user closes them, comes when the rows are settled.
void Open_Dropped_Files(Application& app, const std::vector<std::string>& names) {
    std::vector<std::string> of_rows, of_windows;
    for (const std::string& name : names) (Has_Own_Window(name) ? of_windows : of_rows).push_back(name);
    if (!of_rows.empty()) {
        Show_Opened(app, Open_Files(app.session, app.ask, of_rows));
        if (!of_windows.empty()) Post_Message({Message_Kind::files_dropped, {.files = of_windows}});
        return;
    }
    for (const std::string& name : of_windows)
        if (!app.leaving) Show_In_Own_Window(app, name);
}

void Carry_To_Window(Application& app) {
    const Interface_State& state = app.session.interface;
    WindowSelect(main_window);
    for (const Command& command : Command_Table()) {
        WMenuSetState(command.id, menu_enabled, command.built() && state.Enabled(command.id));
        if (command.checkable) WMenuSetState(command.id, menu_checked, state.Checked(command.id));
    }
    for (const auto& [command, label] : state.labels) WMenuSetString(command, label);
    WMenuGreyHint(Why_Grey(app.session));
    for (int part = 1; part <= status_parts; ++part) WindowOutStatusBar(part, state.status[static_cast<std::size_t>(part - 1)]);
    constexpr std::array<int, 2> rows = {first_toolbar_row, second_toolbar_row};
    for (std::size_t bar = 0; bar < rows.size(); ++bar)
        if (app.toolbars[bar] != state.toolbars[bar]) WMenuToolbar(state.toolbars[bar], rows[bar]);
    app.toolbars = state.toolbars;
    WCursorShape(static_cast<int>(state.cursor));
    WMessageEnable(main_window, Message_Kind::mouse_down, state.want_mouse_down);
    WMessageEnable(main_window, Message_Kind::mouse_up, state.want_mouse_up);
    WMessageEnable(main_window, Message_Kind::mouse_move, state.want_mouse_move);
    Count_Moves(main_window, state.count_moves);
}

void Message_Loop(Application& app) {
    Show_List_Commands(app.session);
    Carry_And_Fit(app);
    unsigned carried = app.session.interface.revision;
    while (!app.leaving) {
        const Message message = WMessage();
        Serve_Message(message);
        if (app.session.interface.revision == carried) {
            if (Carry_List(app, message.kind == Message_Kind::mouse_move)) Plot_Redraw(app.session);
            continue;
        }
        Carry_And_Fit(app);
        carried = app.session.interface.revision;
    }
}

}  // namespace vntl
