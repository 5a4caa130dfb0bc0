// The one place that holds the windowing system: application, queue, windows. Everything else under qt/ asks it.
#pragma once

#include <QApplication>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

class Window;
class Dialog_Window;
enum class OpenGL_Kind;

struct Toolkit {
    Toolkit(int& argc, char** argv);
    ~Toolkit();

    bool Wants(int window, Message_Kind kind) const { return wanted.contains({window, kind}); }
    Dialog_Window* Dialog(int number) const;  // null when it is not loaded
    Window* Find_Window(int number) const;    // null when it is not open
    QWidget* Owner() const;                   // of boxes and dialogs: the window selected last
    Window* Holding_Window() const;           // the window that holds all others back now: the one opened last, null for none
    bool Belongs_To(const QWidget* widget, const Window* window) const;  // it is the window, one that it owns, or a dialog of these
    void To_Front(int number);
    void Activated(int number);  // by the user
    int Front() const;           // number of the dialog or window in front; a modal dialog holds the others back

    QApplication application;
    std::deque<Message> queue;
    std::function<bool()> idle_source;
    std::function<bool()> wait_source;
    Stand_In* stand_in = nullptr;
    Witness* witness = nullptr;
    std::set<std::pair<int, Message_Kind>> wanted;
    std::set<int> counts_moves;
    std::map<int, Window_Service> services;
    std::map<int, std::unique_ptr<Window>> windows;  // 0 the main window
    std::vector<std::unique_ptr<Dialog_Window>> dialogs;
    std::vector<int> order;             // of windows and dialogs, the front one last
    std::optional<OpenGL_Kind> opengl;  // once somebody has asked
    int selected_dialog = 0, selected_window = main_window;
};

Toolkit& The_Toolkit();  // WInitialise was called

}  // namespace vntl
