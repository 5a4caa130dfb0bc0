#include "commands/modal.hpp"

#include "plot/plot.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

int Run_Modal(Session& session, int dialog, const std::function<void(int)>& command) {
    bool resized = false;
    int pressed = 0;
    while (pressed == 0) {
        const Message message = WMessage();
        switch (message.kind) {
            case Message_Kind::repaint:
                Plot_Repaint(session);
                break;
            case Message_Kind::resize:
                resized = resized || message.record.win == main_window;
                break;
            case Message_Kind::push_button:
                if (message.record.win == dialog) pressed = message.record.value1;
                break;
            case Message_Kind::command:
                if (command && message.record.win == main_window && Modal_Loop_Serves(message.record.value1))
                    command(message.record.value1);
                break;
            default:
                break;  // everything else waits for the end of the dialog, and is void by then
        }
    }
    if (resized) Post_Message({Message_Kind::resize, {}});
    return pressed;
}

}  // namespace vntl
