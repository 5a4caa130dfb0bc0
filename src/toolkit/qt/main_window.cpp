#include "toolkit/qt/main_window.hpp"

#include <QCloseEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLayout>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>
#include <algorithm>

#include "toolkit/access_letters.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/icons.hpp"
#include "toolkit/qt/keys.hpp"
#include "toolkit/qt/panel_column.hpp"
#include "toolkit/qt/row_list.hpp"

namespace vntl {

namespace {

// A part of the status bar: as wide as it was told, wider once a text needs it, and then it stays so, lest its neighbours jump about.
// Where the window is too narrow they give way, the first, for hints, down to nothing, the others to what was told: no text widens the
// window. The name of a file stays longer than the path before it, of which the middle goes first.
class Status_Label : public QLabel {
public:
    Status_Label(int width, bool gives_way) : told_(gives_way ? 0 : width), width_(width), gives_way_(gives_way) {
        setTextFormat(Qt::PlainText);
        setContentsMargins(4, 0, 4, 0);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    }
    QSize sizeHint() const override {
        const int needed = QLabel::sizeHint().width();
        if (gives_way_) return {std::max(width_, needed), QLabel::sizeHint().height()};
        width_ = std::max(width_, needed);
        return {width_, QLabel::sizeHint().height()};
    }
    QSize minimumSizeHint() const override { return {told_, QLabel::sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override {
        const QRect room = contentsRect();
        if (!gives_way_ || fontMetrics().horizontalAdvance(text()) <= room.width()) return QLabel::paintEvent(event);
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, Shortened(room.width()));
    }

private:
    QString Shortened(int room) const {
        const qsizetype name = text().lastIndexOf('/') + 1;
        const QString path = text().left(name), rest = text().mid(name);
        const int room_of_path = room - fontMetrics().horizontalAdvance(rest);
        const QString shorter = fontMetrics().elidedText(path, Qt::ElideMiddle, room_of_path);
        return fontMetrics().elidedText((room_of_path > 0 ? shorter : QString()) + rest, Qt::ElideRight, room);
    }

    int told_;
    mutable int width_;
    bool gives_way_;
};

// Whether nothing in it can be chosen: then its popups are, too.
bool Hint_If_Grey(QAction& popup, const QString& why) {
    bool grey = true;
    for (QAction* action : popup.menu()->actions())
        if (action->menu() != nullptr)
            grey = Hint_If_Grey(*action, why) && grey;
        else if (!action->isSeparator() && action->isEnabled())
            grey = false;
    grey = grey || !popup.isEnabled();
    popup.setStatusTip(grey ? why : QString());
    return grey;
}

}  // namespace

Window::Window(int number, const std::string& title, Child_Kind kind, QWidget* parent) : QMainWindow(parent), number_(number) {
    setWindowTitle(QString::fromStdString(title));
    setAcceptDrops(number == main_window);
    setCentralWidget(new QWidget);
    room_ = new QHBoxLayout(centralWidget());
    room_->setContentsMargins({});
    room_->setSpacing(0);
    if (kind == Child_Kind::editor)
        Show_Content(editor_ = new Text_Edit(number));
    else if (kind == Child_Kind::solid)
        Show_Content(solid_ = new Solid_Pane(number));
    else
        Split(1, true);
}

void Window::Show_Content(QWidget* content) {
    if (content_ != nullptr) {
        content_->hide();
        content_->deleteLater();
        room_->removeWidget(content_);
    }
    content_ = content;
    room_->addWidget(content, 1);
}

void Window::Split(int panes, bool side_by_side) {
    areas_.clear();
    auto* splitter = new QSplitter(side_by_side ? Qt::Horizontal : Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    for (int pane = 1; pane <= panes; ++pane) {
        areas_.push_back(new Drawing_Area(number_, pane));
        splitter->addWidget(areas_.back());
    }
    const QSize size = content_ != nullptr ? content_->size() : QSize();
    Show_Content(splitter);
    if (!size.isValid()) return;
    // The panes have their sizes at once, for who draws on them before the windowing system has its turn.
    splitter->resize(size);
    if (isVisible()) {
        splitter->show();
        layout()->activate();
        room_->activate();
    }
}

Drawing_Area* Window::Area(int pane) const {
    return pane >= 1 && pane <= static_cast<int>(areas_.size()) ? areas_[static_cast<std::size_t>(pane - 1)] : nullptr;
}

QWidget* Window::Surface(int pane) const { return solid_ != nullptr && pane == 1 ? &solid_->area() : Area(pane); }

void Window::Resize_Area(int width, int height) { resize(size() + QSize(width, height) - content_->size()); }
// The list stands at the left of the central widget, and nothing else beside it.
void Window::Resize_Room(int width, int height) {
    const QSize room = centralWidget()->size() + QSize(centralWidget()->x(), 0);
    resize(size() + QSize(width, height) - room);
}

QAction* Window::Action(int command) const {
    const auto found = actions_.find(command);
    return found == actions_.end() ? nullptr : found->second;
}

std::vector<int> Window::Commands() const {
    std::vector<int> commands;
    for (const auto& [command, action] : actions_) commands.push_back(command);
    return commands;
}

void Window::Hold_Others() {
    static int holders = 0;
    holds_since_ = ++holders;
    setWindowModality(Qt::ApplicationModal);
}

QMenu* Window::Add_Popup(const Menu_Entry& entry) {
    auto* menu = new QMenu(QString::fromStdString(entry.label), this);
    if (entry.command != 0) {
        actions_[entry.command] = menu->menuAction();
        menu->menuAction()->setCheckable(entry.checkable);
    }
    Add_Entries(*menu, entry.entries);
    return menu;
}

void Window::Add_Entries(QMenu& menu, std::span<const Menu_Entry> entries) {
    for (const Menu_Entry& entry : entries) {
        if (entry.popup) {
            menu.addMenu(Add_Popup(entry));
        } else if (entry.command == 0) {
            menu.addSeparator();
        } else {
            QAction* action = menu.addAction(QString::fromStdString(entry.label));
            if (!entry.shortcut.empty()) action->setShortcut(QKeySequence(QString::fromStdString(entry.shortcut)));
            if (!entry.icon.empty()) action->setIcon(Resource_Icon("toolbar/" + entry.icon));
            const QString hint = QString::fromStdString(entry.hint), key = QString::fromStdString(entry.shortcut);
            action->setStatusTip(hint);
            QString tip = action->text().remove('&');
            if (!key.isEmpty()) tip += "  (" + key + ')';
            if (!hint.isEmpty()) tip += '\n' + hint;
            action->setToolTip(tip);
            action->setCheckable(entry.checkable);
            // A click turns a check mark over by itself; the program alone decides about it.
            connect(action, &QAction::triggered, this, [this, action, id = entry.command] {
                if (action->isCheckable()) action->setChecked(!action->isChecked());
                Post_Message({Message_Kind::command, {.win = number_, .value1 = id}});
            });
            actions_[entry.command] = action;
        }
    }
}

void Window::Add_To(QMenu& menu, std::span<const Menu_Entry> entries) {
    for (const Menu_Entry& entry : entries) {
        if (QAction* standing = Action(entry.command); standing != nullptr && entry.command != 0)
            menu.addAction(standing);
        else
            Add_Entries(menu, std::span(&entry, 1));
    }
}

void Window::Set_Menu(std::span<const Menu_Entry> bar) {
    menuBar()->clear();
    actions_.clear();
    std::vector<Menu_Entry> entries(bar.begin(), bar.end());
    Give_Access_Letters(entries);
    for (const Menu_Entry& entry : entries) menuBar()->addMenu(Add_Popup(entry));
    auto* into_bar = new QAction(menuBar());
    into_bar->setShortcut(Qt::Key_F10);
    addAction(into_bar);
    connect(into_bar, &QAction::triggered, this, [this] {
        if (!menuBar()->actions().isEmpty()) menuBar()->setActiveAction(menuBar()->actions().front());
    });
}

void Window::Hint_At_Grey_Menus(const QString& why) {
    for (QAction* action : menuBar()->actions()) Hint_If_Grey(*action, why);
}

// A bar or panel that comes or goes changes the size of the picture and not that of the window. Who sets it knows, and draws the picture
// anew: no message tells of it.
template <class Change>
void Window::Without_Resize_Message(const Change& change) {
    auto& queue = The_Toolkit().queue;
    const auto resize = [this](const Message& m) { return m.kind == Message_Kind::resize && m.record.win == number_; };
    const bool resized = std::any_of(queue.begin(), queue.end(), resize);  // before, and not told yet
    change();
    if (!isVisible()) return;
    layout()->activate();
    room_->activate();
    if (!resized) std::erase_if(queue, resize);
}

void Window::Set_Toolbar(const Toolbar_Resource* table, int row) {
    Without_Resize_Message([&] {
        if (const auto standing = toolbars_.find(row); standing != toolbars_.end()) {
            removeToolBar(standing->second);
            delete standing->second;
            toolbars_.erase(standing);
        }
        if (table != nullptr) Add_Toolbar(*table, row);
    });
}

void Window::Put_Panel(QWidget* panel) {
    Without_Resize_Message([&] {
        if (panel_ != nullptr) panel_->Let_Go();
        delete panel_;
        panel_ = nullptr;
        if (panel == nullptr) return;
        room_->insertWidget(0, panel_ = new Panel_Column(panel));
        panel_->show();
    });
}

void Window::Open_List(const Row_List_Resource& resource, int width) {
    Focus_Content();
    Without_Resize_Message([&] {
        if (list_ == nullptr) {
            setDockOptions({});
            const Row_List_Host host{this, number_, [this](QMenu& menu, std::span<const Menu_Entry> entries) { Add_To(menu, entries); },
                                     [this] { Focus_Content(); }};
            addDockWidget(Qt::LeftDockWidgetArea, list_ = new Row_List(host, resource));
        }
        list_->show();
        list_->Set_Width(width);
    });
}

void Window::Close_List() {
    if (list_ == nullptr || list_->isHidden()) return;
    if (list_->isAncestorOf(focusWidget())) Focus_Content();
    Without_Resize_Message([&] { list_->hide(); });
}

void Window::Focus_Content() {
    if (QWidget* surface = Surface(1)) surface->setFocus();
}

void Window::Add_Toolbar(const Toolbar_Resource& table, int row) {
    auto* bar = new QToolBar(this);
    bar->setMovable(false);
    bar->setWindowTitle("Toolbar " + QString::number(row));
    // The pictures grow with the desktop's font.
    const int text = bar->fontMetrics().height();
    bar->setIconSize({std::max(table.button_width, text), std::max(table.button_height, text)});
    for (const int command : table.commands) {
        if (command == 0)
            bar->addSeparator();
        else if (QAction* action = Action(command))
            bar->addAction(action);
    }
    const auto below = toolbars_.upper_bound(row);
    if (below != toolbars_.end()) {
        insertToolBar(below->second, bar);
        insertToolBarBreak(below->second);
    } else {
        if (!toolbars_.empty()) addToolBarBreak();
        addToolBar(bar);
    }
    bar->show();
    toolbars_[row] = bar;
}

void Window::Set_Status_Parts(std::span<const int> widths) {
    for (QLabel* part : parts_) delete part;
    parts_.clear();
    const int character = fontMetrics().averageCharWidth();
    for (const int width : widths) {
        parts_.push_back(new Status_Label(std::max(0, width * character / 100), parts_.empty()));
        statusBar()->addWidget(parts_.back(), width < 0 ? 1 : 0);
    }
}

QLabel* Window::Status_Part(int part) const {
    return part >= 1 && part <= static_cast<int>(parts_.size()) ? parts_[static_cast<std::size_t>(part - 1)] : nullptr;
}

void Window::Set_Timer(int milliseconds, int number, bool repeat) {
    for (auto it = timers_.begin(); it != timers_.end();) {
        if (it->second.number == number) {
            killTimer(it->first);
            it = timers_.erase(it);
        } else {
            ++it;
        }
    }
    std::erase_if(The_Toolkit().queue, [&](const Message& message) {
        return message.kind == Message_Kind::timer && message.record.win == number_ && message.record.value1 == number;
    });
    if (milliseconds > 0) timers_[startTimer(milliseconds)] = {number, milliseconds, repeat};
}

std::vector<Timer_View> Window::Timers() const {
    std::vector<Timer_View> all;
    for (const auto& [id, timer] : timers_) all.push_back({number_, timer.number, timer.milliseconds, timer.repeat});
    std::sort(all.begin(), all.end(), [](const Timer_View& a, const Timer_View& b) { return a.number < b.number; });
    return all;
}

void Window::timerEvent(QTimerEvent* event) {
    const auto found = timers_.find(event->timerId());
    if (found == timers_.end()) return;
    // In a script no timer fires by itself. Who is slower than a timer hears it once, and not of all the times that went by.
    const std::deque<Message>& queue = The_Toolkit().queue;
    const bool waits = std::any_of(queue.begin(), queue.end(), [&](const Message& message) {
        return message.kind == Message_Kind::timer && message.record.win == number_ && message.record.value1 == found->second.number;
    });
    if (The_Toolkit().stand_in == nullptr && !waits) Post_Message({Message_Kind::timer, {.win = number_, .value1 = found->second.number}});
    if (found->second.repeat) return;
    killTimer(found->first);
    timers_.erase(found);
}

bool Window::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) The_Toolkit().Activated(number_);
    return QMainWindow::event(event);
}

void Window::closeEvent(QCloseEvent* event) {
    event->ignore();  // the program decides
    Post_Message({Message_Kind::close_request, {.win = number_}});
}

void Window::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F6 && list_ != nullptr && list_->isVisible()) return list_->Take_Focus();
    if (const int code = Code_Of(*event); code != 0) Post_Message({Message_Kind::key_down, {.win = number_, .value1 = code}});
}

void Window::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void Window::dropEvent(QDropEvent* event) {
    WIN_MESSAGE record;
    record.win = number_;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) record.files.push_back(url.toLocalFile().toStdString());
    if (record.files.empty()) return;
    event->acceptProposedAction();
    Post_Message({Message_Kind::files_dropped, std::move(record)});
}

}  // namespace vntl
