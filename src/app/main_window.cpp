// The main window's messages, and the state that is carried to it.
#include "app/application.hpp"
#include "app/command_table.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/view_history.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/window.hpp"
#include "views/text_editor.hpp"

namespace vntl {

namespace {

void Do_Command(Application& app, int id) {
    const Command* command = Find_Command(id);
    if (command == nullptr || !command->built() || !app.session.interface.Enabled(id)) return;
    command->action(app);
}

// What a mouse action means: by the plot form, and in a graph by `MoveMode`. A calculation has the mouse for itself.
void Do_Mouse(Application& app, const Message& message) {
    const Plot_State& plot = app.session.plot;
    if (!plot.Is_2D()) return;
    switch (plot.plot_type == "calculation" ? 0 : plot.MoveMode) {
        case 0:
            return MouseMovement_Main(app.session, app.ask, message);
        case drag_mode:
            return MouseMovement_DragPlot(app.session, message);
        case exclude_mode:
            return MouseMovement_SelExclReg(app.session, app.ask, message);
        case align_mode:
            return MouseMovement_OffsetAlign(app.session, app.ask, message);
        case scale_y_mode:
            return MouseMovement_ScalingY(app.session, app.ask, message);
        case scale_x_mode:
            return MouseMovement_ScalingX(app.session, app.ask, message);
        default:
            app.ask.Error("Fault: /vntl_win_root/Ihand_WinRoot/17 Unknown MoveMode ");
            app.session.plot.MoveMode = 0;
    }
}

void Do_Key(Application& app, int key) {
    if (key == key_escape) Cancel_Mouse(app.session);
    if (key == key_back) Do_Command(app, view_back_command);
    if (key == key_forward) Do_Command(app, view_forward_command);
    // The windowing system knows the keys of the menu; a script presses them here.
    for (const Command& command : Command_Table())
        if (!command.shortcut.empty() && command.shortcut == Key_Name(key)) return Do_Command(app, command.id);
}

}  // namespace

void Ihand_WinRoot(Application& app, const Message& message) {
    WindowSelect(main_window);
    switch (message.kind) {
        case Message_Kind::command:
            Do_Command(app, message.record.value1);
            break;
        case Message_Kind::repaint:
            Plot_Repaint(app.session);
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
            Do_Mouse(app, message);
            break;
        case Message_Kind::key_down:
            Do_Key(app, message.record.value1);
            break;
        case Message_Kind::files_dropped:
            Open_Dropped_Files(app, message.record.files);
            break;
        default:
            break;
    }
    // A drag is one move from its begin to its end, and so are the steps of a turning wheel.
    if (!app.session.plot.drag.active) Remember_View(app.session, message.kind == Message_Kind::wheel);
}

void Carry_To_Window(Application& app) {
    const Interface_State& state = app.session.interface;
    WindowSelect(main_window);
    for (const Command& command : Command_Table()) {
        WMenuSetState(command.id, menu_enabled, command.built() && state.Enabled(command.id));
        if (command.checkable) WMenuSetState(command.id, menu_checked, state.Checked(command.id));
    }
    for (std::size_t slot = 0; slot < recent_file_commands.size(); ++slot)
        if (!state.recent_labels[slot].empty()) WMenuSetString(recent_file_commands[slot], state.recent_labels[slot]);
    for (int part = 1; part <= status_parts; ++part) WindowOutStatusBar(part, state.status[static_cast<std::size_t>(part - 1)]);
    constexpr std::array<int, 2> rows = {first_toolbar_row, second_toolbar_row};
    for (std::size_t bar = 0; bar < rows.size(); ++bar)
        if (app.toolbars[bar] != state.toolbars[bar]) WMenuToolbar(state.toolbars[bar], rows[bar]);
    app.toolbars = state.toolbars;
    WCursorShape(static_cast<int>(state.cursor));
    WMessageEnable(main_window, Message_Kind::mouse_down, state.want_mouse_down);
    WMessageEnable(main_window, Message_Kind::mouse_up, state.want_mouse_up);
    WMessageEnable(main_window, Message_Kind::mouse_move, state.want_mouse_move);
}

void Message_Loop(Application& app) {
    Carry_To_Window(app);
    unsigned carried = app.session.interface.revision;
    while (!app.leaving) {
        const Message message = WMessage();
        if (message.record.win == main_window && (message.kind != Message_Kind::command || Modal_Loop_Serves(message.record.value1)))
            Ihand_WinRoot(app, message);
        else if (Is_Text_Editor(message.record.win))
            Text_Editor_Message(app.session, app.ask, message);
        if (app.session.interface.revision == carried) continue;
        Carry_To_Window(app);
        carried = app.session.interface.revision;
    }
}

void Exit_Program(Application& app) {
    if (!Leave_Text_Editor(app.session, app.ask)) return;
    Write_Exit_Files(app.session);
    app.leaving = true;
}

}  // namespace vntl
