#include "commands/modal.hpp"

#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

int Run_Modal(int dialog, const std::function<void(int)>& command, const std::function<void(int)>& changed) {
    if (changed) WMessageEnable(dialog, Message_Kind::field_changed, true);
    int pressed = 0;
    while (pressed == 0) {
        const Message message = WMessage();
        switch (message.kind) {
            case Message_Kind::push_button:
                if (message.record.win == dialog) pressed = message.record.value1;
                break;
            case Message_Kind::command:
                if (command && message.record.win == main_window && Modal_Loop_Serves(message.record.value1))
                    command(message.record.value1);
                break;
            case Message_Kind::field_changed:
                if (changed && message.record.win == dialog) changed(message.record.value2);
                break;
            default:
                Serve_Meanwhile(message);  // everything else is void
        }
    }
    WDialogClearMarks(dialog);
    return pressed;
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
