#include "toolkit/menu_hold.hpp"

#include <QMenuBar>
#include <QToolBar>

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

void Enable_Menus(bool on) {
    for (const auto& [number, window] : The_Toolkit().windows) {
        window->menuBar()->setEnabled(on);
        for (QToolBar* bar : window->findChildren<QToolBar*>()) bar->setEnabled(on);
    }
}

}  // namespace

Menu_Hold::Menu_Hold() { Enable_Menus(false); }
Menu_Hold::~Menu_Hold() { Enable_Menus(true); }

}  // namespace vntl
