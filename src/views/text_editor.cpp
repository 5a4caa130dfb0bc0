#include "views/text_editor.hpp"

#include <array>

#include "base/os.hpp"
#include "commands/select_files.hpp"

namespace vntl {

namespace {

constexpr std::string_view editor_title = "Vantrelo text editor";
constexpr int editor_toolbar = 30106;
constexpr int editor_width = 600, editor_height = 400;
constexpr std::string_view text_files = "Text files (*.txt;*.pcr;*.dat;*.ins)|*.txt;*.pcr;*.dat;*.ins|";

constexpr int find_dialog = 401;
constexpr int field_text = 1001, field_case = 1002, field_result = 1003;

enum Editor_Command : int {
    command_new = 40510,
    command_open,
    command_save,
    command_save_as,
    command_close,
    command_undo,
    command_redo,
    command_cut,
    command_copy,
    command_paste,
    command_select_all,
    command_find,
    command_find_next
};

struct Edit_Row {
    int command;
    Edit_Action action;
};
constexpr std::array<Edit_Row, 6> edit_rows = {{{command_undo, Edit_Action::undo},
                                                {command_redo, Edit_Action::redo},
                                                {command_cut, Edit_Action::cut},
                                                {command_copy, Edit_Action::copy},
                                                {command_paste, Edit_Action::paste},
                                                {command_select_all, Edit_Action::select_all}}};

const std::vector<Menu_Entry>& Menu() {
    static const std::vector<Menu_Entry> bar = {
        {0,
         "&File",
         "",
         "",
         "",
         {{command_new, "&New", "Ctrl+N", "Start an empty text", "", {}},
          {command_open, "&Open...", "Ctrl+O", "Open a text file", "open", {}},
          {},
          {command_save, "&Save", "Ctrl+S", "Write the text to its file", "save", {}},
          {command_save_as, "Save &as...", "Ctrl+Shift+S", "Write the text to another file", "", {}},
          {},
          {command_close, "&Close", "Ctrl+W", "Close this window", "", {}}},
         true},
        {0,
         "&Edit",
         "",
         "",
         "",
         {{command_undo, "&Undo", "Ctrl+Z", "Take the last change back", "undo", {}},
          {command_redo, "&Redo", "Ctrl+Y", "Make it again", "redo", {}},
          {},
          {command_cut, "Cu&t", "Ctrl+X", "Move the chosen text to the clipboard", "cut", {}},
          {command_copy, "&Copy", "Ctrl+C", "Copy the chosen text to the clipboard", "copy", {}},
          {command_paste, "&Paste", "Ctrl+V", "Insert what is on the clipboard", "paste", {}},
          {command_select_all, "Select &all", "Ctrl+A", "Choose the whole text", "", {}},
          {},
          {command_find, "&Find...", "Ctrl+F", "Look for a text", "find", {}},
          {command_find_next, "Find &next", "F3", "Look for it again", "", {}}},
         true}};
    return bar;
}

void Show_State() {
    WindowSelect(editor_window);
    const std::string name = WEditName();
    WindowTitle((WEditChanged() ? "*" : "") + (name.empty() ? std::string() : std::string(File_Part(name)) + " - ") +
                std::string(editor_title));
    WindowOutStatusBar(1, name.empty() ? "No file" : name);
    WindowOutStatusBar(2, WEditChanged() ? "changed" : "");
}

void Tell(Ask& ask, const Status& status) {
    if (status.failed) ask.Error(status.message);
}

// False when the text was not saved.
bool Save(Session& session, Ask& ask, std::string file) {
    WindowSelect(editor_window);
    if (file.empty()) {
        const auto chosen = Select_Files(session, Select_Kind::save, text_files, "Save text", "text.txt");
        if (chosen.empty()) return false;
        file = chosen.front();
    }
    WindowSelect(editor_window);
    const Status status = WEditSave(file);
    Tell(ask, status);
    Show_State();
    return status.ok();
}

// What becomes of a changed text before another one takes its place; false when nothing is to be done after all.
bool Settle_Changes(Session& session, Ask& ask) {
    WindowSelect(editor_window);
    if (!WEditChanged()) return true;
    const std::string name = WEditName();
    const Box_Answer answer = ask.Box(
        {Box_Buttons::yes_no_cancel, Box_Icon::question, 1,
         "The text " + (name.empty() ? std::string("without a file") : std::string(File_Part(name))) + " has been changed.\nSave it?",
         std::string(editor_title)});
    return answer == Box_Answer::no || (answer == Box_Answer::yes && Save(session, ask, name));
}

void Load(Session& session, Ask& ask, const std::string& file) {
    if (!Settle_Changes(session, ask)) return;
    WindowSelect(editor_window);
    Tell(ask, WEditFile(file));
    Show_State();
}

void Close(Session& session, Ask& ask) {
    if (Settle_Changes(session, ask)) WindowCloseChild(editor_window);
}

void Find_Next() {
    WDialogSelect(find_dialog);
    const std::string text = WDialogGetString(field_text);
    WindowSelect(editor_window);
    const bool found = text.empty() || WEditFind(text, WDialogGetCheckBox(field_case) == 1);
    WDialogPutString(field_result, found ? "" : "The text does not occur.");
}

void Open_Find_Dialog() {
    WindowSelect(editor_window);
    WDialogLoad(find_dialog);
    WDialogShow(field_text, Show_Kind::modeless);
}

void Do_Command(Session& session, Ask& ask, int command) {
    for (const Edit_Row& row : edit_rows)
        if (row.command == command) WEditDo(row.action);
    switch (command) {
        case command_new:
            return Load(session, ask, {});
        case command_open:
            if (const auto chosen = Select_Files(session, Select_Kind::open, text_files, "Open text"); !chosen.empty())
                Load(session, ask, chosen.front());
            return;
        case command_save:
        case command_save_as:
            Save(session, ask, command == command_save ? WEditName() : std::string());
            return;
        case command_close:
            return Close(session, ask);
        case command_find:
            return Open_Find_Dialog();
        case command_find_next:
            return WDialogLoaded(find_dialog) ? Find_Next() : Open_Find_Dialog();
        default:
            return Show_State();
    }
}

}  // namespace

Dialog_Resource Find_Dialog_Resource() {
    return {find_dialog,
            "Find",
            {{{field_text, Field_Kind::string, "&Text"}},
             {{field_case, Field_Kind::check_box, "&Match case"}},
             {{field_result, Field_Kind::label}},
             {{button_ok, Field_Kind::push_button, "&Find next"}, {button_cancel, Field_Kind::push_button, "Close"}}}};
}

bool Is_Text_Editor(int window) { return window == editor_window || window == find_dialog; }

void Open_Text_Editor(Session& session, Ask& ask, const std::string& file) {
    if (!WindowIsOpen(editor_window)) {
        WindowOpenChild(editor_window, std::string(editor_title), editor_width, editor_height, Child_Kind::editor);
        WMenu(Menu());
        WMenuToolbar(editor_toolbar, first_toolbar_row);
        WindowStatusBarParts(std::array{-1, 1200});
        WindowShow();
    }
    WindowToFront(editor_window);
    if (!file.empty())
        Load(session, ask, file);
    else
        Show_State();
}

void Text_Editor_Message(Session& session, Ask& ask, const Message& message) {
    const int pressed = message.record.value1;
    if (message.record.win == find_dialog) {
        if (message.kind != Message_Kind::push_button) return;
        if (pressed == button_ok) return Find_Next();
        WDialogSelect(find_dialog);
        WDialogUnload();
        return;
    }
    if (!WindowIsOpen(editor_window)) return;
    WindowSelect(editor_window);
    switch (message.kind) {
        case Message_Kind::command:
            return Do_Command(session, ask, pressed);
        case Message_Kind::close_request:
            return Close(session, ask);
        case Message_Kind::field_changed:
            return Show_State();
        default:
            return;
    }
}

bool Leave_Text_Editor(Session& session, Ask& ask) {
    if (!WindowIsOpen(editor_window)) return true;
    Close(session, ask);
    return !WindowIsOpen(editor_window);
}

}  // namespace vntl
