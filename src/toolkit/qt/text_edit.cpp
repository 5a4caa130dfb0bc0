#include "toolkit/qt/text_edit.hpp"

#include <QFontDatabase>
#include <QTextDocument>
#include <algorithm>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

constexpr std::size_t largest_text = 64u << 20;

Window* Selected_Editor_Window() {
    Window* window = The_Toolkit().Find_Window(The_Toolkit().selected_window);
    return window != nullptr && window->editor() != nullptr ? window : nullptr;
}

Text_Edit* Selected_Editor() {
    Window* window = Selected_Editor_Window();
    return window == nullptr ? nullptr : window->editor();
}

}  // namespace

Text_Edit::Text_Edit(int window) : window_(window) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setAccessibleName("Text");
}

Status Text_Edit::Load(const std::string& file) {
    std::string text;
    bool latin1 = false, crlf = false;
    if (!file.empty()) {
        Text_File source;
        if (const Status status = source.Open(file, largest_text); status.failed) return status;
        text = To_Utf8(source.Text());
        latin1 = text != source.Text();
        crlf = Contains(text, "\r\n");
    }
    setPlainText(QString::fromStdString(text));
    document()->setModified(false);
    file_ = file;
    latin1_ = latin1;
    crlf_ = crlf;
    return Status::Done();
}

Status Text_Edit::Save(const std::string& file) {
    QString text = toPlainText();
    if (crlf_) text.replace('\n', "\r\n");
    const bool narrow = latin1_ && std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 256; });
    const QByteArray bytes = narrow ? text.toLatin1() : text.toUtf8();
    if (!Replace_File(file, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()))))
        return Status::Fail("The file cannot be written: " + file);
    file_ = file;
    document()->setModified(false);
    return Status::Done();
}

bool Text_Edit::Find(const QString& text, bool match_case) {
    const QTextDocument::FindFlags flags = match_case ? QTextDocument::FindCaseSensitively : QTextDocument::FindFlags();
    if (find(text, flags)) return true;
    const QTextCursor from_start = document()->find(text, 0, flags);
    if (from_start.isNull()) return false;
    setTextCursor(from_start);
    return true;
}

void Text_Edit::keyPressEvent(QKeyEvent* event) {
    QPlainTextEdit::keyPressEvent(event);
    // The handler shows the place of the cursor and whether the text has changed.
    Post_Message({Message_Kind::field_changed, {.win = window_}});
}

// --- the operations ----------------------------------------------------------------------------------------------------------

Status WEditFile(const std::string& file) {
    Text_Edit* editor = Selected_Editor();
    return editor == nullptr ? Status::Fail("no editor is selected") : editor->Load(file);
}

Status WEditSave(const std::string& file) {
    Text_Edit* editor = Selected_Editor();
    return editor == nullptr ? Status::Fail("no editor is selected") : editor->Save(file);
}

std::string WEditName() { return Selected_Editor() == nullptr ? std::string() : Selected_Editor()->file(); }

bool WEditChanged() { return Selected_Editor() != nullptr && Selected_Editor()->document()->isModified(); }

std::string WEditText() { return Selected_Editor() == nullptr ? std::string() : Selected_Editor()->toPlainText().toStdString(); }

bool WEditFind(const std::string& text, bool match_case) {
    return Selected_Editor() != nullptr && Selected_Editor()->Find(QString::fromStdString(text), match_case);
}

void WEditDo(Edit_Action action) {
    Text_Edit* editor = Selected_Editor();
    if (editor == nullptr) return;
    switch (action) {
        case Edit_Action::undo:
            return editor->undo();
        case Edit_Action::redo:
            return editor->redo();
        case Edit_Action::cut:
            return editor->cut();
        case Edit_Action::copy:
            return editor->copy();
        case Edit_Action::paste:
            return editor->paste();
        case Edit_Action::select_all:
            return editor->selectAll();
    }
}

}  // namespace vntl
