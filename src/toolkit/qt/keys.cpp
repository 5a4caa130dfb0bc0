#include "toolkit/qt/keys.hpp"

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>
#include <array>

#include "base/text.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

namespace {

struct Named_Key {
    std::string_view name;
    int code;
    Qt::Key qt;
};
constexpr std::array<Named_Key, 17> named_keys = {{{"Escape", key_escape, Qt::Key_Escape},
                                                   {"Enter", key_enter, Qt::Key_Return},
                                                   {"Return", key_enter, Qt::Key_Enter},
                                                   {"Tab", key_tab, Qt::Key_Tab},
                                                   {"Backspace", key_backspace, Qt::Key_Backspace},
                                                   {"Delete", key_delete, Qt::Key_Delete},
                                                   {"Space", ' ', Qt::Key_Space},
                                                   {"Left", key_left, Qt::Key_Left},
                                                   {"Right", key_right, Qt::Key_Right},
                                                   {"Up", key_up, Qt::Key_Up},
                                                   {"Down", key_down_arrow, Qt::Key_Down},
                                                   {"Home", key_home, Qt::Key_Home},
                                                   {"End", key_end, Qt::Key_End},
                                                   {"PageUp", key_page_up, Qt::Key_PageUp},
                                                   {"PageDown", key_page_down, Qt::Key_PageDown},
                                                   {"Back", key_back, Qt::Key_Back},
                                                   {"Forward", key_forward, Qt::Key_Forward}}};
constexpr int function_keys = 12;

// A key that stands for itself: visible characters up to where the other keys' codes begin.
bool Is_Letter(int code) { return (code > ' ' && code < 127) || (code > 160 && code < key_left); }

constexpr std::string_view with_control = "Ctrl+";

}  // namespace

int Key_Code(std::string_view name) {
    if (name.starts_with(with_control)) {
        const int code = Key_Code(name.substr(with_control.size()));
        return code == 0 || code >= key_control ? 0 : code + key_control;
    }
    for (const Named_Key& key : named_keys)
        if (key.name == name) return key.code;
    if (const QString letter = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())); letter.size() == 1)
        return Is_Letter(letter[0].unicode()) ? letter[0].unicode() : 0;
    if (name.empty() || name[0] != 'F') return 0;
    int number = 0;
    return Parse_Integer(name.substr(1), number) && number >= 1 && number <= function_keys ? key_f1 + number - 1 : 0;
}

std::string Key_Name(int code) {
    if (code >= key_control) return std::string(with_control) + Key_Name(code - key_control);
    for (const Named_Key& key : named_keys)
        if (key.code == code) return std::string(key.name);
    if (code >= key_f1 && code < key_f1 + function_keys) return 'F' + std::to_string(code - key_f1 + 1);
    return Is_Letter(code) ? QString(QChar(code)).toStdString() : std::string();
}

int Code_Of(const QKeyEvent& event) {
    for (const Named_Key& key : named_keys)
        if (key.qt == event.key()) return key.code;
    if (event.key() >= Qt::Key_F1 && event.key() < Qt::Key_F1 + function_keys) return key_f1 + event.key() - Qt::Key_F1;
    const int code = event.text().isEmpty() ? 0 : event.text().at(0).unicode();
    return code < key_left ? code : 0;
}

void Send_Key(QWidget& widget, int code) {
    const bool control = code >= key_control;
    if (control) code -= key_control;
    int key = code < 128 ? QChar(code).toUpper().unicode() : 0;
    QString text = code == ' ' || Is_Letter(code) ? QString(QChar(code)) : QString();
    for (const Named_Key& named : named_keys)
        if (named.code == code) key = named.qt;
    if (code >= key_f1 && code < key_f1 + function_keys) key = Qt::Key_F1 + code - key_f1;
    if (code == key_enter) text = "\r";
    if (control) text.clear();
    QPointer<QWidget> target(&widget);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, control ? Qt::ControlModifier : Qt::NoModifier, text);
        if (target) QCoreApplication::sendEvent(target, &event);
    }
}

}  // namespace vntl
