// The operations on windows, menus and toolbars.
#include <QStatusBar>
#include <algorithm>

#include "toolkit/access_letters.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"
#include "toolkit/qt/dialog_window.hpp"
#include "toolkit/qt/icons.hpp"
#include "toolkit/qt/main_window.hpp"
#include "toolkit/qt/place_beside.hpp"

namespace vntl {

namespace {

std::vector<Toolbar_Resource>& Toolbars() {
    static std::vector<Toolbar_Resource> tables;
    return tables;
}

Window* Selected() { return The_Toolkit().Find_Window(The_Toolkit().selected_window); }

QAction* Selected_Action(int command) { return Selected() == nullptr ? nullptr : Selected()->Action(command); }

QLabel* Selected_Part(int part) { return Selected() == nullptr ? nullptr : Selected()->Status_Part(part); }

Drawing_Area* Selected_Area(int pane) { return Selected() == nullptr ? nullptr : Selected()->Area(pane); }

QWidget* Selected_Surface(int pane) { return Selected() == nullptr ? nullptr : Selected()->Surface(pane); }

void Open(int number, const std::string& title, int width, int height, Child_Kind kind, QWidget* parent) {
    Toolkit& toolkit = The_Toolkit();
    auto window = std::make_unique<Window>(number, title, kind, parent);
    window->resize(width, height);
    toolkit.windows[number] = std::move(window);
    toolkit.selected_window = number;
    toolkit.To_Front(number);
}

}  // namespace

void WindowOpen(int width, int height, const std::string& title, const std::string& icon) {
    Open(main_window, title, width, height, Child_Kind::plot, nullptr);
    Selected()->setWindowIcon(Resource_Icon(icon));
}

void WindowOpenChild(int number, const std::string& title, int width, int height, Child_Kind kind, bool holds_others, int owner) {
    if (WindowIsOpen(number)) {
        WindowSelect(number);
        WindowToFront(number);
        return;
    }
    Open(number, title, width, height, kind, owner == main_window ? nullptr : The_Toolkit().Find_Window(owner));
    if (holds_others) Selected()->Hold_Others();
}

void WindowCloseChild(int number) {
    Toolkit& toolkit = The_Toolkit();
    if (number == main_window || !WindowIsOpen(number)) return;
    std::vector<int> own;
    for (const auto& [owned, window] : toolkit.windows)
        if (window->parentWidget() == toolkit.Find_Window(number)) own.push_back(owned);
    for (const int owned : own) WindowCloseChild(owned);
    own.clear();
    for (const auto& dialog : toolkit.dialogs)
        if (dialog->Owner() == toolkit.Find_Window(number)) own.push_back(dialog->number());
    for (const int dialog : own) {
        WDialogSelect(dialog);
        WDialogUnload();
    }
    std::erase(toolkit.order, number);
    std::erase_if(toolkit.queue, [number](const Message& message) { return message.record.win == number; });
    std::erase_if(toolkit.wanted, [number](const auto& wish) { return wish.first == number; });
    toolkit.counts_moves.erase(number);
    toolkit.windows.erase(number);
    if (toolkit.selected_window == number) toolkit.selected_window = main_window;
}

bool WindowIsOpen(int number) { return The_Toolkit().Find_Window(number) != nullptr; }

void WindowShow() {
    Toolkit& toolkit = The_Toolkit();
    Window* window = Selected();
    const QSize wanted = window->size();  // of the drawing area, and a panel beside it, as it was opened
    const QWidget* const owner = window->parentWidget();
    if (owner != nullptr) window->move(Place_Beside(*window, *owner));
    window->show();
    QCoreApplication::processEvents();
    window->Resize_Room(wanted.width(), wanted.height());
    QCoreApplication::processEvents();
    // The first size is no change of it.
    std::erase_if(toolkit.queue,
                  [&](const Message& m) { return m.record.win == toolkit.selected_window && m.kind == Message_Kind::resize; });
}

void WindowSelect(int number) {
    if (WindowIsOpen(number)) The_Toolkit().selected_window = number;
}

void WindowTitle(const std::string& title) {
    if (Window* window = Selected()) window->setWindowTitle(QString::fromStdString(title));
}

void WindowSplit(int panes, bool side_by_side) {
    if (Window* window = Selected(); window != nullptr && window->Area() != nullptr) window->Split(std::clamp(panes, 1, 4), side_by_side);
}

void WindowStatusBarParts(std::span<const int> widths) {
    if (Window* window = Selected()) window->Set_Status_Parts(widths);
}

void WindowOutStatusBar(int part, const std::string& text) {
    QLabel* label = Selected_Part(part);
    const QString shown = QString::fromStdString(text);
    if (label == nullptr || label->text() == shown) return;
    label->setText(shown);
    // The hand rests on the button that it has pressed, whose hint lies over what there is to tell since.
    if (!shown.isEmpty()) Selected()->statusBar()->clearMessage();
}

std::string WindowStatusBarText(int part) {
    const QLabel* label = Selected_Part(part);
    return label == nullptr ? std::string() : label->text().toStdString();
}

int WInfoWindow(int what, int pane) {
    const QWidget* surface = Selected_Surface(pane);
    if (surface == nullptr) return 0;
    if (what == 3) return qRound(96 * surface->devicePixelRatioF());
    const QSize pixels = Pixels_Of(*surface);
    return what == 1 ? pixels.width() : pixels.height();
}

void WindowResize(int width, int height) {
    Window* window = Selected();
    if (window == nullptr) return;
    window->Resize_Area(width, height);
    QCoreApplication::processEvents();
    Post_Message({Message_Kind::resize, {.win = The_Toolkit().selected_window, .value4 = 1}});
}

void WCursorShape(int shape) {
    if (QWidget* surface = Selected_Surface(1))
        surface->setCursor(shape == 3 ? Qt::CrossCursor : shape == 6 ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

int WindowFront() { return The_Toolkit().Front(); }

bool WindowToFront(int number) {
    Toolkit& toolkit = The_Toolkit();
    Window* const window = toolkit.Find_Window(number);
    QWidget* const widget = window != nullptr ? static_cast<QWidget*>(window) : toolkit.Dialog(number);
    if (widget == nullptr) return false;
    const Dialog_Window *front = toolkit.Dialog(toolkit.Front()), *wanted = toolkit.Dialog(number);
    if (front != nullptr && wanted != nullptr && front != wanted && front->Holds_Others() && wanted->Holds_Others())
        return true;  // it waits for the end of the one in front
    const Window* holder = toolkit.Holding_Window();
    if (holder != nullptr && !toolkit.Belongs_To(widget, holder)) return true;
    toolkit.To_Front(number);
    for (const auto& dialog : toolkit.dialogs)
        if (dialog->Owner() == widget) dialog->Leave_Panel();
    widget->window()->raise();
    for (const auto& [owned, beside] : toolkit.windows)  // not every windowing system keeps them above it
        if (beside->parentWidget() == widget) beside->raise();
    widget->activateWindow();
    return true;
}

void WMenu(std::span<const Menu_Entry> bar) {
    if (Window* window = Selected()) window->Set_Menu(bar);
}

void WMenuSetState(int command, int what, int value) {
    QAction* action = Selected_Action(command);
    if (action == nullptr) return;
    if (what == menu_enabled)
        action->setEnabled(value != 0);
    else if (action->isCheckable())
        action->setChecked(value != 0);
}

void WMenuGreyHint(const std::string& why) {
    if (Window* window = Selected()) window->Hint_At_Grey_Menus(QString::fromStdString(why));
}

int WMenuGetState(int command, int what) {
    const QAction* action = Selected_Action(command);
    if (action == nullptr) return -1;
    return what == menu_enabled ? action->isEnabled() : action->isChecked();
}

void WMenuSetString(int command, const std::string& text) {
    QAction* action = Selected_Action(command);
    if (action == nullptr) return;
    const std::string label = With_Letter(text, Letter_Of(action->text().toStdString()));
    if (action->text().toStdString() != label) action->setText(QString::fromStdString(label));
}

std::vector<int> WMenuCommands() { return Selected() == nullptr ? std::vector<int>() : Selected()->Commands(); }

std::string WMenuGetString(int command) {
    const QAction* action = Selected_Action(command);
    return action == nullptr ? std::string() : action->text().toStdString();
}

void Register_Toolbars(std::span<const Toolbar_Resource> tables) { Toolbars().assign(tables.begin(), tables.end()); }

void WMenuToolbar(int table, int row) {
    const auto found = std::find_if(Toolbars().begin(), Toolbars().end(), [&](const auto& entry) { return entry.number == table; });
    if (Window* window = Selected()) window->Set_Toolbar(found == Toolbars().end() ? nullptr : &*found, row);
}

void WBitmapPut(Bitmap bitmap, int pane) {
    Bitmap::Implementation& picture = bitmap.implementation();
    picture.device.reset();
    if (Drawing_Area* area = Selected_Area(pane)) area->Put_Bitmap(std::move(picture.image));
}

void WOverlayPut(const Recording_Device& overlay, int pane) {
    if (Drawing_Area* area = Selected_Area(pane)) area->Put_Overlay(overlay);
}

}  // namespace vntl
