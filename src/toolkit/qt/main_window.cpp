#include "toolkit/qt/main_window.hpp"

#include <QCloseEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QScreen>
#include <QStatusBar>
#include <QUrl>
#include <array>

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"

namespace vntl {

namespace {

constexpr double page_units_x = 1200, page_units_y = 800;
constexpr int smallest_width = 240, smallest_height = 160;

int Button_Number(Qt::MouseButton button) { return button == Qt::LeftButton ? 1 : button == Qt::MiddleButton ? 2 : 3; }

struct Qt_Key {
    int qt, code;
};
constexpr std::array<Qt_Key, 14> keys = {{{Qt::Key_Escape, key_escape},
                                          {Qt::Key_Return, key_enter},
                                          {Qt::Key_Enter, key_enter},
                                          {Qt::Key_Tab, key_tab},
                                          {Qt::Key_Backspace, key_backspace},
                                          {Qt::Key_Delete, key_delete},
                                          {Qt::Key_Left, key_left},
                                          {Qt::Key_Right, key_right},
                                          {Qt::Key_Up, key_up},
                                          {Qt::Key_Down, key_down_arrow},
                                          {Qt::Key_Home, key_home},
                                          {Qt::Key_End, key_end},
                                          {Qt::Key_PageUp, key_page_up},
                                          {Qt::Key_PageDown, key_page_down}}};

int Code_Of(const QKeyEvent& event) {
    for (const Qt_Key& key : keys)
        if (key.qt == event.key()) return key.code;
    if (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F12) return key_f1 + event.key() - Qt::Key_F1;
    return event.text().isEmpty() ? 0 : event.text().at(0).unicode();
}

}  // namespace

// --- drawing area ------------------------------------------------------------------------------------------------------------

Drawing_Area::Drawing_Area(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Plot");
}

QSize Drawing_Area::Pixels() const {
    const double ratio = devicePixelRatioF();
    return {std::max(1, qRound(width() * ratio)), std::max(1, qRound(height() * ratio))};
}

void Drawing_Area::Put_Bitmap(QImage image) {
    picture_ = std::move(image);
    shown_ = {};
    update();
}

void Drawing_Area::Put_Overlay(const Recording_Device& overlay) {
    shown_ = {};
    if (!overlay.empty() && !picture_.isNull()) {
        shown_ = picture_.copy();
        overlay.Replay(*Make_Image_Device(shown_));
    }
    update();
}

void Drawing_Area::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QImage& image = shown_.isNull() ? picture_ : shown_;
    if (image.isNull())
        painter.fillRect(rect(), Qt::white);
    else
        painter.drawImage(rect(), image);
}

void Drawing_Area::resizeEvent(QResizeEvent*) { Post_Message({Message_Kind::resize, {}}); }

void Drawing_Area::Post_Mouse(Message_Kind kind, QPointF at, int value) {
    if (kind != Message_Kind::wheel && !The_Toolkit().Wants(main_window, kind)) return;
    WIN_MESSAGE record;
    record.value1 = value;
    record.x = at.x() / width() * page_units_x;
    record.y = (1 - at.y() / height()) * page_units_y;
    Post_Message({kind, record});
}

void Drawing_Area::mousePressEvent(QMouseEvent* event) {
    Post_Mouse(Message_Kind::mouse_down, event->position(), Button_Number(event->button()));
}
void Drawing_Area::mouseReleaseEvent(QMouseEvent* event) {
    Post_Mouse(Message_Kind::mouse_up, event->position(), Button_Number(event->button()));
}
void Drawing_Area::mouseMoveEvent(QMouseEvent* event) { Post_Mouse(Message_Kind::mouse_move, event->position(), 0); }
void Drawing_Area::wheelEvent(QWheelEvent* event) {
    if (event->angleDelta().y() != 0) Post_Mouse(Message_Kind::wheel, event->position(), event->angleDelta().y() > 0 ? 1 : -1);
}

// --- window ------------------------------------------------------------------------------------------------------------------

Main_Window::Main_Window(const std::string& title, const std::string& icon) : area_(new Drawing_Area(this)) {
    setWindowTitle(QString::fromStdString(title));
    setWindowIcon(Resource_Icon(icon));
    setCentralWidget(area_);
    setAcceptDrops(true);
    area_->setMinimumSize(smallest_width, smallest_height);
}

void Main_Window::Resize_Area(int width, int height) { resize(size() + QSize(width, height) - area_->size()); }

QAction* Main_Window::Action(int command) const {
    const auto found = actions_.find(command);
    return found == actions_.end() ? nullptr : found->second;
}

QMenu* Main_Window::Add_Popup(const Menu_Entry& entry) {
    auto* menu = new QMenu(QString::fromStdString(entry.label), this);
    if (entry.command != 0) {
        actions_[entry.command] = menu->menuAction();
        menu->menuAction()->setCheckable(entry.checkable);
    }
    Add_Entries(*menu, entry.entries);
    return menu;
}

void Main_Window::Add_Entries(QMenu& menu, std::span<const Menu_Entry> entries) {
    for (const Menu_Entry& entry : entries) {
        if (entry.popup) {
            menu.addMenu(Add_Popup(entry));
        } else if (entry.command == 0) {
            menu.addSeparator();
        } else {
            QAction* action = menu.addAction(QString::fromStdString(entry.label));
            if (!entry.shortcut.empty()) action->setShortcut(QKeySequence(QString::fromStdString(entry.shortcut)));
            action->setStatusTip(QString::fromStdString(entry.hint));
            action->setCheckable(entry.checkable);
            // A click turns a check mark over by itself; the program alone decides about it.
            connect(action, &QAction::triggered, this, [action, id = entry.command] {
                if (action->isCheckable()) action->setChecked(!action->isChecked());
                Post_Message({Message_Kind::command, {.value1 = id}});
            });
            actions_[entry.command] = action;
        }
    }
}

void Main_Window::Set_Menu(std::span<const Menu_Entry> bar) {
    menuBar()->clear();
    actions_.clear();
    for (const Menu_Entry& entry : bar) menuBar()->addMenu(Add_Popup(entry));
}

void Main_Window::Set_Status_Parts(std::span<const int> widths) {
    for (QLabel* part : parts_) delete part;
    parts_.clear();
    const int character = fontMetrics().averageCharWidth();
    for (const int width : widths) {
        auto* part = new QLabel(this);
        part->setTextFormat(Qt::PlainText);
        part->setMinimumWidth(0);
        part->setContentsMargins(4, 0, 4, 0);
        if (width >= 0) part->setFixedWidth(width * character / 100);
        statusBar()->addWidget(part, width < 0 ? 1 : 0);
        parts_.push_back(part);
    }
}

QLabel* Main_Window::Status_Part(int part) const {
    return part >= 1 && part <= static_cast<int>(parts_.size()) ? parts_[static_cast<std::size_t>(part - 1)] : nullptr;
}

void Main_Window::Set_Timer(int milliseconds, int number, bool repeat) {
    for (auto it = timers_.begin(); it != timers_.end();) {
        if (it->second.number == number) {
            killTimer(it->first);
            it = timers_.erase(it);
        } else {
            ++it;
        }
    }
    if (milliseconds > 0) timers_[startTimer(milliseconds)] = {number, repeat};
}

void Main_Window::timerEvent(QTimerEvent* event) {
    const auto found = timers_.find(event->timerId());
    if (found == timers_.end()) return;
    Post_Message({Message_Kind::timer, {.value1 = found->second.number}});
    if (found->second.repeat) return;
    killTimer(found->first);
    timers_.erase(found);
}

void Main_Window::closeEvent(QCloseEvent* event) {
    event->ignore();  // the program decides
    Post_Message({Message_Kind::close_request, {}});
}

void Main_Window::keyPressEvent(QKeyEvent* event) {
    if (const int code = Code_Of(*event); code != 0) Post_Message({Message_Kind::key_down, {.value1 = code}});
}

void Main_Window::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void Main_Window::dropEvent(QDropEvent* event) {
    WIN_MESSAGE record;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) record.files.push_back(url.toLocalFile().toStdString());
    if (record.files.empty()) return;
    event->acceptProposedAction();
    Post_Message({Message_Kind::files_dropped, std::move(record)});
}

// --- the operations ----------------------------------------------------------------------------------------------------------

void WindowOpen(int width, int height, const std::string& title, const std::string& icon) {
    Toolkit& toolkit = The_Toolkit();
    toolkit.main = std::make_unique<Main_Window>(title, icon);
    toolkit.main->resize(width, height);
}

void WindowShow() {
    Toolkit& toolkit = The_Toolkit();
    const QSize wanted = toolkit.main->size();  // of the drawing area, as WindowOpen was told
    toolkit.main->show();
    QCoreApplication::processEvents();
    toolkit.main->Resize_Area(wanted.width(), wanted.height());
    QCoreApplication::processEvents();
    toolkit.queue.clear();  // the first size is no change of it
}

void WindowTitle(const std::string& title) { The_Toolkit().main->setWindowTitle(QString::fromStdString(title)); }

void WindowStatusBarParts(std::span<const int> widths) { The_Toolkit().main->Set_Status_Parts(widths); }

void WindowOutStatusBar(int part, const std::string& text) {
    if (QLabel* label = The_Toolkit().main->Status_Part(part)) label->setText(QString::fromStdString(text));
}

std::string WindowStatusBarText(int part) {
    const QLabel* label = The_Toolkit().main->Status_Part(part);
    return label == nullptr ? std::string() : label->text().toStdString();
}

int WInfoWindow(int what) {
    const QSize pixels = The_Toolkit().main->area().Pixels();
    return what == 1 ? pixels.width() : pixels.height();
}

void WindowResize(int width, int height) {
    The_Toolkit().main->Resize_Area(width, height);
    QCoreApplication::processEvents();
    Post_Message({Message_Kind::resize, {}});
}

void WCursorShape(int shape) {
    The_Toolkit().main->area().setCursor(shape == 3 ? Qt::CrossCursor : shape == 6 ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void WMenu(std::span<const Menu_Entry> bar) { The_Toolkit().main->Set_Menu(bar); }

void WMenuSetState(int command, int what, int value) {
    QAction* action = The_Toolkit().main->Action(command);
    if (action == nullptr) return;
    if (what == menu_enabled)
        action->setEnabled(value != 0);
    else if (action->isCheckable())
        action->setChecked(value != 0);
}

int WMenuGetState(int command, int what) {
    const QAction* action = The_Toolkit().main->Action(command);
    if (action == nullptr) return -1;
    return what == menu_enabled ? action->isEnabled() : action->isChecked();
}

void WMenuSetString(int command, const std::string& text) {
    if (QAction* action = The_Toolkit().main->Action(command)) action->setText(QString::fromStdString(text));
}

std::string WMenuGetString(int command) {
    const QAction* action = The_Toolkit().main->Action(command);
    return action == nullptr ? std::string() : action->text().toStdString();
}

void WBitmapPut(Bitmap bitmap) {
    Bitmap::Implementation& picture = bitmap.implementation();
    picture.device.reset();
    The_Toolkit().main->area().Put_Bitmap(std::move(picture.image));
}

void WOverlayPut(const Recording_Device& overlay) { The_Toolkit().main->area().Put_Overlay(overlay); }

}  // namespace vntl
