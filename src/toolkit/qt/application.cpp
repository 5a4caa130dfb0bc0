#include "toolkit/qt/application.hpp"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "toolkit/qt/dialog_window.hpp"
#include "toolkit/qt/main_window.hpp"

static void Load_Resources() { Q_INIT_RESOURCE(toolkit); }  // outside the namespace, as the macro asks

namespace vntl {

namespace {

std::unique_ptr<Toolkit> the_toolkit;

// Messages of which only the last of a run in the queue matters.
bool Merges(Message_Kind kind) { return kind == Message_Kind::mouse_move || kind == Message_Kind::repaint || kind == Message_Kind::resize; }

bool Has_Display() {
    const auto set = [](const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return set("DISPLAY") || set("WAYLAND_DISPLAY");
}

// What the windowing system remarks on by itself is no news for a user; what stops the program is.
void Tell_Faults_Alone(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

struct Named_Key {
    std::string_view name;
    int code;
};
constexpr std::array<Named_Key, 16> key_names = {{{"Escape", key_escape},
                                                  {"Enter", key_enter},
                                                  {"Return", key_enter},
                                                  {"Tab", key_tab},
                                                  {"Backspace", key_backspace},
                                                  {"Delete", key_delete},
                                                  {"Space", ' '},
                                                  {"Left", key_left},
                                                  {"Right", key_right},
                                                  {"Up", key_up},
                                                  {"Down", key_down_arrow},
                                                  {"Home", key_home},
                                                  {"End", key_end},
                                                  {"PageUp", key_page_up},
                                                  {"PageDown", key_page_down},
                                                  {"F1", key_f1}}};

}  // namespace

Toolkit::Toolkit(int& argc, char** argv) : application(argc, argv) {}
Toolkit::~Toolkit() = default;

Dialog_Window* Toolkit::Dialog(int number) const {
    for (const auto& dialog : dialogs)
        if (dialog->number() == number) return dialog.get();
    return nullptr;
}

Toolkit& The_Toolkit() { return *the_toolkit; }

void WInitialise(int& argc, char** argv, bool offscreen) {
    if (offscreen && !Has_Display() && std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    qInstallMessageHandler(Tell_Faults_Alone);
    Load_Resources();
    the_toolkit = std::make_unique<Toolkit>(argc, argv);
    QApplication::setApplicationName("vantrelo");
    QApplication::setApplicationDisplayName("Vantrelo");
    QApplication::setDesktopFileName("vantrelo");
    QApplication::setWindowIcon(Resource_Icon("vantrelo"));
    QApplication::setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_NUMERIC, "C");
}

void WTerminate() { the_toolkit.reset(); }

int Key_Code(std::string_view name) {
    for (const Named_Key& key : key_names)
        if (key.name == name) return key.code;
    if (name.size() == 1) return static_cast<unsigned char>(name[0]);
    if (name.size() < 2 || name.size() > 3 || name[0] != 'F') return 0;
    const int number = std::atoi(std::string(name.substr(1)).c_str());
    return number >= 1 && number <= 12 ? key_f1 + number - 1 : 0;
}

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
    auto& queue = The_Toolkit().queue;
    if (Merges(message.kind) && !queue.empty() && queue.back().kind == message.kind && queue.back().record.win == message.record.win)
        queue.back() = std::move(message);
    else
        queue.push_back(std::move(message));
}

Message WMessage() {
    Toolkit& toolkit = The_Toolkit();
    while (true) {
        if (toolkit.queue.empty()) QCoreApplication::processEvents();
        if (!toolkit.queue.empty()) {
            Message message = std::move(toolkit.queue.front());
            toolkit.queue.pop_front();
            return message;
        }
        if (toolkit.idle_source && toolkit.idle_source()) continue;
        if (toolkit.queue.empty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void Set_Idle_Source(std::function<bool()> source) { The_Toolkit().idle_source = std::move(source); }

void Set_Stand_In(Stand_In* stand_in) { The_Toolkit().stand_in = stand_in; }

void WMessageEnable(int window, Message_Kind kind, bool on) {
    auto& wanted = The_Toolkit().wanted;
    if (on)
        wanted.insert({window, kind});
    else
        wanted.erase({window, kind});
}

void WMessageTimer(int milliseconds, int number, bool repeat) {
    Toolkit& toolkit = The_Toolkit();
    if (toolkit.main) toolkit.main->Set_Timer(milliseconds, number, repeat);
}

QIcon Resource_Icon(const std::string& name) {
    QSvgRenderer picture(":/icons/" + QString::fromStdString(name) + ".svg");
    QIcon icon;
    if (!picture.isValid()) return icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        picture.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace vntl
