#include "toolkit/qt/text_edit.hpp"

#include <QFontDatabase>
#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>
#include <array>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/keys.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

constexpr std::size_t largest_text = 16u << 20;  // a widget of text takes seconds for more
constexpr int line_ends = 3;
constexpr std::array<const char*, line_ends> ends = {"\n", "\r\n", "\r"};
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

// Kinds of the line ends of a text, in order.
std::vector<int> Line_Ends(const QString& text) {
    std::vector<int> kinds;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') kinds.push_back(0);
        if (text[i] != '\r') continue;
        const bool pair = i + 1 < text.size() && text[i + 1] == '\n';
        kinds.push_back(pair ? 1 : 2);
        i += pair ? 1 : 0;
    }
    return kinds;
}

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
    Text_File source;
    if (!file.empty()) {
        if (const Status status = source.Open(file, largest_text + byte_order_mark.size() + 1); status.failed) return status;
        if (source.Text().size() > largest_text) return Status::Fail("Too large for the editor: " + file);
    }
    const std::string utf8 = To_Utf8(source.Text());
    const QString text = QString::fromStdString(utf8);
    setPlainText(text);
    document()->setModified(false);
    file_ = file;
    latin1_ = utf8 != source.Text();
    marked_ = source.Marked();
    // Each line remembers its own end; lines that come get the end that most have.
    std::array<int, line_ends> counts{};
    QTextBlock block = document()->begin();
    for (const int kind : Line_Ends(text)) {
        ++counts[static_cast<std::size_t>(kind)];
        block.setUserState(kind);
        block = block.next();
    }
    usual_end_ = static_cast<int>(std::max_element(counts.begin(), counts.end()) - counts.begin());
    return Status::Done();
}

Status Text_Edit::Save(const std::string& file) {
    QString text;  // as it stands: the widget's own plain text has blanks for hard blanks
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        text += block.text();
        if (!block.next().isValid()) break;
        text += QLatin1String(ends[static_cast<std::size_t>(block.userState() < 0 ? usual_end_ : block.userState())]);
    }
    const bool narrow = latin1_ && std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 256; });
    QByteArray bytes = narrow ? text.toLatin1() : text.toUtf8();
    if (marked_) bytes.prepend(byte_order_mark.data(), static_cast<qsizetype>(byte_order_mark.size()));
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
    if (const int code = Code_Of(*event); code != 0) Post_Message({Message_Kind::key_down, {.win = window_, .value1 = code}});
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
            if (editor->canPaste()) editor->paste();
            return;
        case Edit_Action::select_all:
            return editor->selectAll();
    }
}

}  // namespace vntl
