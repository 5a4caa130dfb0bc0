#include "toolkit/qt/application.hpp"

#include <QThreadPool>
#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "base/text.hpp"
#include "toolkit/qt/dialog_window.hpp"
#include "toolkit/qt/icons.hpp"
#include "toolkit/qt/main_window.hpp"

static void Load_Resources() { Q_INIT_RESOURCE(toolkit); }  // outside the namespace, as the macro asks

namespace vntl {

namespace {

std::unique_ptr<Toolkit> the_toolkit;

constexpr const char* platform_variable = "QT_QPA_PLATFORM";
constexpr std::string_view in_memory = "offscreen";

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

// The windowing systems that are tried one after the other, as the desktop prefers them; drawing in memory comes last, and the program
// learns from it that no display has answered.
std::string Platforms(const std::string& wanted) {
    if (Contains(wanted, in_memory)) return wanted;
    std::vector<std::string> names;
    if (!wanted.empty()) names.push_back(wanted);
    if (wanted.empty() && !Variable("DISPLAY").empty()) names.push_back("xcb");
    if (wanted.empty() && !Variable("WAYLAND_DISPLAY").empty()) {
        const bool first = Variable("XDG_SESSION_TYPE") == "wayland" && !Contains(Lower(Variable("XDG_CURRENT_DESKTOP")), "gnome");
        names.insert(first ? names.begin() : names.end(), "wayland");
    }
    std::string list;
    for (const std::string& name : names) list += name + ';';
    return list.append(in_memory);
}

// The last of several in a row tells all.
bool Tells_What_Is_Now(Message_Kind kind) {
    return kind == Message_Kind::mouse_move || kind == Message_Kind::list_chosen || kind == Message_Kind::list_pointed ||
           kind == Message_Kind::list_width;
}

// What the windowing system remarks on by itself is no news for a user; what stops the program is.
void Tell_Faults_Alone(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

}  // namespace

Toolkit::Toolkit(int& argc, char** argv) : application(argc, argv) {}

// Threads that the library has kept for images end here, long before the program does: a checker of memory that looks at the very end finds
// none of them half gone.
Toolkit::~Toolkit() {
    QThreadPool::globalInstance()->waitForDone();
    dialogs.clear();
    // What stands in another window's care goes before it.
    while (!windows.empty()) {
        const auto owns_none = [this](const auto& entry) {
            return std::none_of(windows.begin(), windows.end(),
                                [&](const auto& other) { return other.second->parentWidget() == entry.second.get(); });
        };
        windows.erase(std::find_if(windows.begin(), windows.end(), owns_none));
    }
}

bool Toolkit::Belongs_To(const QWidget* widget, const Window* window) const {
    while (widget != nullptr && widget != window) {
        const auto* dialog = dynamic_cast<const Dialog_Window*>(widget);
        widget = dialog != nullptr ? dialog->Owner() : widget->parentWidget();
    }
    return widget != nullptr;
}

Dialog_Window* Toolkit::Dialog(int number) const {
    for (const auto& dialog : dialogs)
        if (dialog->number() == number) return dialog.get();
    return nullptr;
}

Window* Toolkit::Find_Window(int number) const {
    const auto found = windows.find(number);
    return found == windows.end() ? nullptr : found->second.get();
}

QWidget* Toolkit::Owner() const { return Find_Window(selected_window); }

Window* Toolkit::Holding_Window() const {
    Window* innermost = nullptr;
    for (const auto& [number, window] : windows)
        if (window->Holds_Since() > (innermost == nullptr ? 0 : innermost->Holds_Since())) innermost = window.get();
    return innermost;
}

void Toolkit::To_Front(int number) {
    std::erase(order, number);
    order.push_back(number);
}

void Toolkit::Activated(int number) {
    // In a script the statements alone decide what is in front.
    if (stand_in != nullptr || Front() == number) return;
    To_Front(number);
    if (witness != nullptr && Front() == number) witness->Saw_Front(number);
}

int Toolkit::Front() const {
    for (const bool modal : {true, false})
        for (auto number = order.rbegin(); number != order.rend(); ++number) {
            const Dialog_Window* dialog = Dialog(*number);
            if (dialog != nullptr ? dialog->isVisible() && (!modal || dialog->Holds_Others()) : !modal && Find_Window(*number) != nullptr)
                return *number;
        }
    return main_window;
}

Toolkit& The_Toolkit() { return *the_toolkit; }

bool WInitialise(int& argc, char** argv, bool offscreen) {
    qInstallMessageHandler(Tell_Faults_Alone);
    Load_Resources();
    const std::string wanted = Variable(platform_variable);
    setenv(platform_variable, Platforms(wanted).c_str(), 1);
    the_toolkit = std::make_unique<Toolkit>(argc, argv);
    wanted.empty() ? unsetenv(platform_variable) : setenv(platform_variable, wanted.c_str(), 1);  // for programs that this one starts
    if (!offscreen && QGuiApplication::platformName().toStdString() == in_memory && !Contains(wanted, in_memory)) {
        the_toolkit.reset();
        return false;
    }
    QApplication::setApplicationName("vantrelo");
    QApplication::setDesktopFileName("vantrelo");
    QApplication::setWindowIcon(Resource_Icon("vantrelo"));
    QApplication::setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_NUMERIC, "C");
    return true;
}

void WTerminate() { the_toolkit.reset(); }

bool Display_Answers() { return QGuiApplication::platformName().toStdString() != in_memory; }

int InfoOpSystem(int what) {
#if defined(Q_OS_WIN)
    return what == 1 ? 6 : 0;
#elif defined(Q_OS_MACOS)
    return what == 1 ? 4 : 0;
#else
    return what == 1 ? 4 : what == 19 ? 14 : 0;
#endif
}

void Post_Message(Message message) {
    Toolkit& toolkit = The_Toolkit();
    auto& queue = toolkit.queue;
    const WIN_MESSAGE& record = message.record;
    const bool counted = message.kind == Message_Kind::mouse_move && toolkit.counts_moves.contains(record.win);
    const auto same = [&](const Message& waiting) {
        return waiting.kind == message.kind && waiting.record.win == record.win && waiting.record.value4 == record.value4;
    };
    if (message.kind == Message_Kind::repaint || message.kind == Message_Kind::resize)
        std::erase_if(queue, same);  // wherever it waits; a move stays before the button that was pressed after it
    else if (Tells_What_Is_Now(message.kind) && !counted && !queue.empty() && same(queue.back()))
        queue.pop_back();
    queue.push_back(std::move(message));
}

void Count_Moves(int window, bool on) {
    auto& counting = The_Toolkit().counts_moves;
    on ? static_cast<void>(counting.insert(window)) : static_cast<void>(counting.erase(window));
}

std::optional<Message> WMessagePeek() {
    Toolkit& toolkit = The_Toolkit();
    if (toolkit.queue.empty()) QCoreApplication::processEvents();
    if (toolkit.queue.empty()) return {};
    Message message = std::move(toolkit.queue.front());
    toolkit.queue.pop_front();
    if (toolkit.witness != nullptr) toolkit.witness->Saw_Message(message);
    return message;
}

Message WMessage() {
    Toolkit& toolkit = The_Toolkit();
    while (true) {
        if (std::optional<Message> message = WMessagePeek()) return std::move(*message);
        if (toolkit.idle_source && toolkit.idle_source()) continue;
        if (toolkit.queue.empty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

std::optional<Message> WMessageInWait() {
    const Toolkit& toolkit = The_Toolkit();
    std::optional<Message> message = WMessagePeek();
    return message || !toolkit.wait_source || !toolkit.wait_source() ? message : WMessagePeek();
}

void Set_Idle_Source(std::function<bool()> idle, std::function<bool()> in_wait) {
    The_Toolkit().idle_source = std::move(idle);
    The_Toolkit().wait_source = std::move(in_wait);
}

void Set_Stand_In(Stand_In* stand_in) { The_Toolkit().stand_in = stand_in; }
void Set_Witness(Witness* witness) { The_Toolkit().witness = witness; }

void WMessageEnable(int window, Message_Kind kind, bool on) {
    auto& wanted = The_Toolkit().wanted;
    if (on)
        wanted.insert({window, kind});
    else
        wanted.erase({window, kind});
}

void WMessageTimer(int milliseconds, int number, bool repeat) {
    if (Window* window = The_Toolkit().Find_Window(The_Toolkit().selected_window)) window->Set_Timer(milliseconds, number, repeat);
}

std::vector<Timer_View> Running_Timers() {
    std::vector<Timer_View> all;
    for (const auto& [number, window] : The_Toolkit().windows) {
        const std::vector<Timer_View> own = window->Timers();
        all.insert(all.end(), own.begin(), own.end());
    }
    return all;
}

}  // namespace vntl
