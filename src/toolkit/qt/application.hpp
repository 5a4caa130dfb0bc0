// The one place that holds the windowing system: application, queue, windows. Everything else under qt/ asks it.
#pragma once

#include <QApplication>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace vntl {

class Main_Window;
class Dialog_Window;

struct Toolkit {
    Toolkit(int& argc, char** argv);
    ~Toolkit();

    bool Wants(int window, Message_Kind kind) const { return wanted.contains({window, kind}); }
    Dialog_Window* Dialog(int number) const;

    QApplication application;
    std::deque<Message> queue;
    std::function<bool()> idle_source;
    Stand_In* stand_in = nullptr;
    std::set<std::pair<int, Message_Kind>> wanted;
    std::map<int, int> timers;  // number of the program to that of the windowing system
    std::unique_ptr<Main_Window> main;
    std::vector<std::unique_ptr<Dialog_Window>> dialogs;  // loaded, the one shown last at the end
    int selected_dialog = 0;
};

Toolkit& The_Toolkit();  // WInitialise was called

// A picture of the resources by its name ("vantrelo"), sharp at every size.
QIcon Resource_Icon(const std::string& name);

}  // namespace vntl
