#include "toolkit/qt/text_edit.hpp"

#include <QFontDatabase>
#include <QTextBlock>
#include <QTextDocument>
#include <vector>

#include "base/os.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/keys.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::size_t largest_text = 16u << 20;  // a widget of text takes seconds for more
// All bytes of a file; of one that is larger than the limit, some more than it allows.
Status Read_Bytes(const std::string& file, std::size_t limit, std::string& bytes) {
    Text_File source;
    if (Status status = source.Open(file, limit + byte_order_mark.size() + 1); status.failed) return status;
    bytes = source.Marked() ? byte_order_mark : "";
    bytes += source.Text();
    return Status::Done();
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
    std::string bytes;
    if (!file.empty()) {
        if (Status status = Read_Bytes(file, largest_text, bytes); status.failed) return status;
        if (bytes.size() > largest_text) return Status::Fail_File("Too large for the editor: " + file);
    }
    source_ = Source_Text(std::move(bytes));
    file_ = file;
    std::string text;  // behind a line end, for the conversion drops a byte-order mark at its beginning
    for (const std::string& line : source_.Lines()) text.append("\n").append(line);
    setPlainText(QString::fromStdString(text).mid(1));
    document()->setModified(false);
    return Status::Done();
}

Status Text_Edit::Save(const std::string& file) {
    std::vector<std::string> lines;  // as they stand: the widget's own plain text has blanks for hard blanks
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) lines.push_back(block.text().toStdString());
    std::string bytes = source_.Bytes_Of(lines);
    if (!Replace_File(file, bytes)) return Status::Fail_File("The file cannot be written: " + file);
    source_ = Source_Text(std::move(bytes));
    file_ = file;
    document()->setModified(false);
    return Status::Done();
}

bool Text_Edit::Changed_On_Disk(const std::string& file) const {
    if (file != file_ || !IOsFileExists(file)) return false;
    std::string bytes;
    return Read_Bytes(file, source_.Bytes().size(), bytes).failed || bytes != source_.Bytes();
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

bool WEditChangedOnDisk(const std::string& file) { return Selected_Editor() != nullptr && Selected_Editor()->Changed_On_Disk(file); }

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
