#include "commands/modal.hpp"

#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

// Messages that are not the dialog's: commands that it lets through, and what no loop may hold back.
void Serve_Others(const Message& message) {
    if (message.kind != Message_Kind::command)
        Serve_Meanwhile(message);
    else if (message.record.win == main_window && Modal_Loop_Serves(message.record.value1))
        Serve_Message(message);
}

}  // namespace

int Run_Modal(int dialog, const Modal_Routines& routines) {
    if (routines.changed) WMessageEnable(dialog, Message_Kind::field_changed, true);
    int pressed = 0;
    while (pressed == 0) {
        const Message message = WMessage();
        const WIN_MESSAGE& record = message.record;
        if (message.kind == Message_Kind::push_button && record.win == dialog) {
            pressed = record.value1;
        } else if (message.kind == Message_Kind::field_changed && record.win == dialog && routines.changed) {
            routines.changed(record.value2);
        } else if (message.kind == Message_Kind::timer && record.win == main_window && routines.timer) {
            routines.timer(record.value1);
        } else {
            Serve_Others(message);  // what is not served is void
            WDialogSelect(dialog);  // the window of the message may have selected another one
        }
    }
    WDialogClearMarks(dialog);
    return pressed;
}

void Run_Window(int window, const bool& leaving) {
    while (WindowIsOpen(window) && !leaving) {
        const Message message = WMessage();
        const int of = Window_Of(message.record.win);
        if (of != main_window && (of == window || Service_Of(of).owner == window))
            Serve_Message(message);
        else
            Serve_Meanwhile(message);
    }
    WindowCloseChild(window);
}

void Error_Box(std::string text) { Error_Box(Status::Fail(text)); }

void Error_Box(const Status& status) {
    WMessageBox({Box_Buttons::ok, Box_Icon::exclamation, 1, status.message, std::string(error_title), status.of_file});
}

void Refuse_Field(int field, const std::string& text) {
    WDialogMarkField(field, text);
    Error_Box(text);
}

void Refuse_Cell(int grid, int column, int row, const std::string& text) {
    WGridMarkCell(grid, column, row, text);
    Error_Box(text);
}

std::optional<float> Number_In_Field(int field, std::string_view name) {
    const std::optional<float> value = WDialogGetReal(field);
    if (!value) Refuse_Field(field, std::string(name) + ": \"" + WDialogGetString(field) + "\" is not a number");
    return value;
}

}  // namespace vntl
