#include "toolkit/window_service.hpp"

#include <algorithm>

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/dialog_window.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

// The window whose message it is: the record names the window, or one of its dialogs.
const Window_Service* Server_Of(int number) {
    const auto& services = The_Toolkit().services;
    if (const auto found = services.find(number); found != services.end()) return &found->second;
    const auto owner = std::find_if(services.begin(), services.end(), [number](const auto& entry) {
        const std::vector<int>& dialogs = entry.second.dialogs;
        return std::find(dialogs.begin(), dialogs.end(), number) != dialogs.end();
    });
    return owner == services.end() ? nullptr : &owner->second;
}

}  // namespace

void Register_Window(int window, Window_Service service) { The_Toolkit().services[window] = std::move(service); }

bool Serve_Message(const Message& message) {
    const Window_Service* service = Server_Of(message.record.win);
    if (service == nullptr || !service->message) return false;
    service->message(message);
    return true;
}

void Serve_Meanwhile(const Message& message) {
    const bool harmless =
        message.kind == Message_Kind::repaint || message.kind == Message_Kind::resize || message.kind == Message_Kind::timer;
    if (harmless) Serve_Message(message);
}

int Picture_Window() {
    const int front = Window_Of(WindowFront());
    return Service_Of(front).picture ? front : main_window;
}

int Window_Of(int number) {
    if (WindowIsOpen(number)) return number;
    const Dialog_Window* dialog = The_Toolkit().Dialog(number);
    for (const auto& [window, widget] : The_Toolkit().windows)
        if (dialog != nullptr && dialog->Owner() == widget.get()) return window;
    return main_window;
}

const Window_Service& Service_Of(int window) {
    static const Window_Service none;
    const auto& services = The_Toolkit().services;
    const auto found = services.find(window);
    return found == services.end() ? none : found->second;
}

bool Windows_May_Close() {
    const auto& services = The_Toolkit().services;
    return std::all_of(services.begin(), services.end(), [](const auto& entry) {
        const auto& [number, service] = entry;
        return !WindowIsOpen(number) || !service.may_close || service.may_close();
    });
}

}  // namespace vntl
