// The text editor: a window of its own in which a text file is opened, changed, searched and saved.
#include <array>

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/application.hpp"
#include "commands/external/start.hpp"
#include "commands/select_files.hpp"
#include "toolkit/window_service.hpp"
#include "views/menu_entries.hpp"
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr std::string_view editor_title = "Vantrelo text editor";
constexpr int editor_toolbar = 30106;
constexpr int editor_width = 600, editor_height = 400;
constexpr std::string_view text_files = "Text files (*.txt;*.pcr;*.dat;*.ins)|*.txt;*.pcr;*.dat;*.ins|";

constexpr int find_dialog = 401;
constexpr int field_text = 1001, field_case = 1002, field_result = 1003;

struct Edit_Row {
    int command;
    Edit_Action action;
};
constexpr std::array<Edit_Row, 6> edit_rows = {{{command::editor_undo, Edit_Action::undo},
                                                {command::editor_redo, Edit_Action::redo},
                                                {command::editor_cut, Edit_Action::cut},
                                                {command::editor_copy, Edit_Action::copy},
                                                {command::editor_paste, Edit_Action::paste},
                                                {command::editor_select_all, Edit_Action::select_all}}};

const std::vector<Menu_Entry>& Menu() {
    using namespace command;
    static const std::vector<Menu_Entry> bar = {
        Popup("&File", {Entry(editor_new, "&New", "Start an empty text", "Ctrl+N"),
                        Entry(editor_open, "&Open...", "Open a text file", "Ctrl+O", "open"),
                        {},
                        Entry(editor_save, "&Save", "Write the text to its file", "Ctrl+S", "save"),
                        Entry(editor_save_as, "Save &as...", "Write the text to another file", "Ctrl+Shift+S"),
                        {},
                        Entry(editor_close, "&Close", "Close this window", "Ctrl+W")}),
        Popup("&Edit", {Entry(editor_undo, "&Undo", "Take the last change back", "Ctrl+Z", "undo"),
                        Entry(editor_redo, "&Redo", "Make it again", "Ctrl+Y", "redo"),
                        {},
                        Entry(editor_cut, "Cu&t", "Move the chosen text to the clipboard", "Ctrl+X", "cut"),
                        Entry(editor_copy, "&Copy", "Copy the chosen text to the clipboard", "Ctrl+C", "copy"),
                        Entry(editor_paste, "&Paste", "Insert what is on the clipboard", "Ctrl+V", "paste"),
                        Entry(editor_select_all, "Select &all", "Choose the whole text", "Ctrl+A"),
                        {},
                        Entry(editor_find, "&Find...", "Look for a text", "Ctrl+F", "find"),
                        Entry(editor_find_next, "Find &next", "Look for it again", "F3")})};
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
    if (status.failed) ask.Error(status);
}

// False where the file that another program has written meanwhile is to stay.
bool May_Write_Over(Ask& ask, const std::string& file) {
    if (!WEditChangedOnDisk(file)) return true;
    return ask.Box({Box_Buttons::yes_no, Box_Icon::exclamation, 2,
                    "The file " + std::string(File_Part(file)) + " has changed on disk since it was read.\nSave over it?",
                    std::string(editor_title)}) == Box_Answer::yes;
}

// False when the text was not saved.
bool Save(Configuration& config, Ask& ask, std::string file) {
    WindowSelect(editor_window);
    if (file.empty()) {
        const auto chosen = Select_Files(config, Select_Kind::save, text_files, "Save text", "text.txt");
        if (chosen.empty()) return false;
        file = chosen.front();
    }
    WindowSelect(editor_window);
    if (!May_Write_Over(ask, file)) return false;
    WindowSelect(editor_window);
    const Status status = WEditSave(file);
    Tell(ask, status);
    Show_State();
    return status.ok();
}

// What becomes of a changed text before another one takes its place; false when nothing is to be done after all.
bool Settle_Changes(Configuration& config, Ask& ask) {
    WindowSelect(editor_window);
    if (!WEditChanged()) return true;
    const std::string name = WEditName();
    const Box_Answer answer = ask.Box(
        {Box_Buttons::yes_no_cancel, Box_Icon::question, 1,
         "The text " + (name.empty() ? std::string("without a file") : std::string(File_Part(name))) + " has been changed.\nSave it?",
         std::string(editor_title)});
    return answer == Box_Answer::no || (answer == Box_Answer::yes && Save(config, ask, name));
}

void Load(Configuration& config, Ask& ask, const std::string& file) {
    if (!Settle_Changes(config, ask)) return;
    WindowSelect(editor_window);
    Tell(ask, WEditFile(file));
    Show_State();
}

void Close(Configuration& config, Ask& ask) {
    if (Settle_Changes(config, ask)) WindowCloseChild(editor_window);
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

void Do_Command(Configuration& config, Ask& ask, int command) {
    for (const Edit_Row& row : edit_rows)
        if (row.command == command) WEditDo(row.action);
    switch (command) {
        case command::editor_new:
            return Load(config, ask, {});
        case command::editor_open:
            if (const auto chosen = Select_Files(config, Select_Kind::open, text_files, "Open text"); !chosen.empty())
                Load(config, ask, chosen.front());
            return;
        case command::editor_save:
        case command::editor_save_as:
            Save(config, ask, command == command::editor_save ? WEditName() : std::string());
            return;
        case command::editor_close:
            return Close(config, ask);
        case command::editor_find:
            return Open_Find_Dialog();
        case command::editor_find_next:
            return WDialogLoaded(find_dialog) ? Find_Next() : Open_Find_Dialog();
        default:
            return Show_State();
    }
}

Dialog_Resource Find_Dialog_Resource() {
    return {find_dialog,
            "Find",
            {{{field_text, Field_Kind::string, "&Text"}},
             {{field_case, Field_Kind::check_box, "&Match case"}},
             {{field_result, Field_Kind::label}},
             {{button_ok, Field_Kind::push_button, "&Find next"}, {button_cancel, Field_Kind::push_button, "Close"}}}};
}
std::vector<Dialog_Resource> Dialogs() { return {Find_Dialog_Resource()}; }

// --- the window ------------------------------------------------------------------------------------------------------------------

// Opens it, or comes to the front with the file that is named; a text that was changed is asked about first. Blank: no file.
void Open_Text_Editor(Configuration& config, Ask& ask, const std::string& file) {
    if (!WindowIsOpen(editor_window)) {
        WindowOpenChild(editor_window, std::string(editor_title), editor_width, editor_height, Child_Kind::editor);
        WMenu(Menu());
        WMenuToolbar(editor_toolbar, first_toolbar_row);
        WindowStatusBarParts(std::array{-1, 1200});
        WindowShow();
    }
    WindowToFront(editor_window);
    if (!file.empty())
        Load(config, ask, file);
    else
        Show_State();
}

void Serve_Find_Dialog(const Message& message) {
    if (message.kind != Message_Kind::push_button) return;
    if (message.record.value1 == button_ok) return Find_Next();
    WDialogSelect(find_dialog);
    WDialogUnload();
}

void Serve(Configuration& config, Ask& ask, const Message& message) {
    if (message.record.win == find_dialog) return Serve_Find_Dialog(message);
    if (!WindowIsOpen(editor_window)) return;
    WindowSelect(editor_window);
    switch (message.kind) {
        case Message_Kind::command:
            return Do_Command(config, ask, message.record.value1);
        case Message_Kind::close_request:
            return Close(config, ask);
        case Message_Kind::field_changed:
            return Show_State();
        default:
            return;
    }
}

bool May_Close(Configuration& config, Ask& ask) {
    Close(config, ask);
    return !WindowIsOpen(editor_window);
}

// In the program's own window, or in the editor of the preferences.
void Edit(Application& app, const std::string& file) {
    if (app.session.prefs.environment.use_internal_editor) return Open_Text_Editor(app.session.config, app.ask, file);
    Open_With(app, Program_Role::cmd_editor, file);
}

void Open_Empty(Application& app) { Edit(app, {}); }
void Open_Control_File(Application& app) { Edit(app, app.session.config.pcr_file); }

template <const char* const& name>
void Open_Document(Application& app) {
    Edit(app, Suite_Of(app).Document(name));
}
constexpr const char *guide = "quendrix.ins", *news = "qx2k.inf", *program_news = "vantrelo-2006_news.txt";

void Open_Pik_File(Application& app) {
    const std::vector<std::string> chosen =
        app.ask.Select_Files("Select PIK/NEW file to open", "Edit PIK/NEW File (*.pik,*.new)|*.pik;*.new|");
    if (!chosen.empty()) Edit(app, chosen.front());
}

constexpr Command commands[] = {
    {command::edit_pik, "Edit PIK-file", "", Open_Pik_File, "", "Change the file of a fit in the text editor"},
    {command::edit_pcr, "Edit a PCR file", "edit_pcr", Open_Control_File, "", "Open the control file in the text editor"},
    {command::text_editor, "Text editor", "editor", Open_Empty, "", "Open the text editor"},
    {command::guide_ascii, "Quendrix user's guide (ASCII)", "", Open_Document<guide>, "", "Open the guide of the suite"},
    {command::news_text, "QXnews Text Editor", "", Open_Document<news>, "", "Read the news of the suite"},
    {command::program_news, "Vantrelo-2006 news?", "", Open_Document<program_news>, "", "Read the news of the program"},
};

}  // namespace

Command_Family Text_Editor_Commands() { return {commands, Dialogs}; }

void Register_Text_Editor(Application& app) {
    Register_Window(editor_window, {.dialogs = {find_dialog},
                                    .message = [&app](const Message& message) { Serve(app.session.config, app.ask, message); },
                                    .may_close = [&app] { return May_Close(app.session.config, app.ask); }});
}

}  // namespace vntl
