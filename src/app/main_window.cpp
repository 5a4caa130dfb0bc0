// The main window's messages, and the state that is carried to it.
#include "app/application.hpp"
#include "app/command_table.hpp"
#include "commands/plot/mouse.hpp"
#include "plot/plot.hpp"
#include "session/load.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

void Do_Command(Application& app, int id) {
    const Command* command = Find_Command(id);
    if (command == nullptr || !command->built() || !app.session.interface.Enabled(id)) return;
    command->action(app);
}

}  // namespace

void Ihand_WinRoot(Application& app, const Message& message) {
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
            MouseMovement_Main(app.session, message);
            break;
        case Message_Kind::key_down:
            if (message.record.value1 == key_escape) Cancel_Rubber(app.session);
            break;
        case Message_Kind::files_dropped:
            Open_Dropped_Files(app, message.record.files);
            break;
        default:
            break;
    }
}

void Carry_To_Window(Application& app) {
    Interface_State& state = app.session.interface;
    for (const Command& command : Command_Table()) {
        WMenuSetState(command.id, menu_enabled, command.built() && state.Enabled(command.id));
        if (command.checkable) WMenuSetState(command.id, menu_checked, state.Checked(command.id));
    }
    for (std::size_t slot = 0; slot < recent_file_commands.size(); ++slot)
        if (!state.recent_labels[slot].empty()) WMenuSetString(recent_file_commands[slot], state.recent_labels[slot]);
    for (int part = 1; part <= status_parts; ++part) WindowOutStatusBar(part, state.status[static_cast<std::size_t>(part - 1)]);
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
        if (message.record.win == main_window) Ihand_WinRoot(app, message);
        if (app.session.interface.revision == carried) continue;
        Carry_To_Window(app);
        carried = app.session.interface.revision;
    }
}

void Exit_Program(Application& app) {
    Write_Exit_Files(app.session);
    app.leaving = true;
}

}  // namespace vntl
