// The statements of a session script, one function each.
#include <algorithm>
#include <array>
#include <ostream>

#include "app/carry_list.hpp"
#include "app/command_table.hpp"
#include "app/main_window.hpp"
#include "app/recorder.hpp"
#include "app/script.hpp"
#include "app/script_print.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "commands/desk/choose_style.hpp"
#include "commands/file/exit.hpp"
#include "commands/file/export_picture.hpp"
#include "commands/options/redraw.hpp"
#include "plot/plot.hpp"
#include "session/desk/waterfall.hpp"
#include "session/preference_table.hpp"
#include "session/ranges.hpp"
#include "session/view_history.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

Status Usage(std::string_view form) { return Status::Fail("usage: " + std::string(form)); }

// The command of the main window that a key with Ctrl or Alt stands for.
const Command* Command_Of_Key(std::string_view key) {
    for (const Command& command : Command_Table())
        if (!key.empty() && command.shortcut == key) return &command;
    return nullptr;
}

// The window that has the mouse: behind a dialog it is the one that the dialog belongs to.
int Window_In_Front() { return Window_Of(WindowFront()); }

Status Nothing_Left(const std::vector<std::string>& words, std::string_view form) {
    return words.size() == 1 ? Status::Done() : Usage(form);
}

}  // namespace

struct Script_Runner::Kind_Of_Statement {
    std::string_view name;
    Status (Script_Runner::*run)(const Words&);
};

const std::vector<Script_Runner::Kind_Of_Statement>& Script_Runner::Kinds() {
    static const std::vector<Kind_Of_Statement> kinds = {
        {"open", &Script_Runner::Open},
        {"files", &Script_Runner::Files},
        {"directory", &Script_Runner::Directory},
        {"colour", &Script_Runner::Colour_Choice},
        {"command", &Script_Runner::Command_Number},
        {"drop", &Script_Runner::Drop},
        {"set", &Script_Runner::Set},
        {"cell", &Script_Runner::Cell},
        {"select", &Script_Runner::Select_Item},
        {"press", &Script_Runner::Press},
        {"dialog", &Script_Runner::Front},
        {"main", &Script_Runner::Front},
        {"answer", &Script_Runner::Answer},
        {"mouse", &Script_Runner::Mouse},
        {"key", &Script_Runner::Key},
        {"resize", &Script_Runner::Resize},
        {"timer", &Script_Runner::Timer},
        {"close", &Script_Runner::Close},
        {"list", &Script_Runner::List},
        {"programs", &Script_Runner::Programs},
        {"pref", &Script_Runner::Pref},
        {"style", &Script_Runner::Style},
        {"waterfall", &Script_Runner::Set_Apart},
        {"os", &Script_Runner::Os},
        {"print", &Script_Runner::Print},
        {"export", &Script_Runner::Export},
        {"exit", &Script_Runner::Exit},
        {"quit", &Script_Runner::Quit},
    };
    return kinds;
}

bool Script_Runner::Is_Script(std::string_view text, std::string_view name) {
    const auto& kinds = Kinds();
    bool blank = true, statements = Equal_No_Case(Extension_Of(name), ".vns");
    Line_Cursor lines(text);
    for (std::string_view line; lines.Next(line);) {
        Words words;
        if (Parse_Statement(line, words).failed) return false;
        blank = blank && Trim(line).empty();
        if (words.empty()) continue;
        if (std::none_of(kinds.begin(), kinds.end(), [&](const auto& row) { return row.name == words.front(); })) return false;
        statements = true;
    }
    return blank || statements;
}

void Script_Runner::Run(const Statement& statement) {
    const auto& kinds = Kinds();
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const auto& row) { return row.name == statement.words.front(); });
    const Status status =
        kind == kinds.end() ? Status::Fail("unknown statement " + statement.words.front()) : (this->*kind->run)(statement.words);
    if (status.failed) Fail(statement.line, status.message);
}

Status Script_Runner::Post_Command(int id) {
    const int window = Window_In_Front();
    const std::string name = "command " + std::to_string(id);
    if (window != main_window) {
        WindowSelect(window);
        if (WMenuGetState(id, menu_enabled) < 0) return Status::Fail("the window in front has no " + name);
        if (WMenuGetState(id, menu_enabled) == 0) return Status::Fail(name + " is disabled");
        if (WDialogModal(WindowFront())) return Status::Fail(name + " is not served while a dialog is open");
        Post_Message({Message_Kind::command, {.win = window, .value1 = id}});
        return Status::Done();
    }
    const Command* command = Find_Command(id);
    if (command == nullptr) return Status::Fail("there is no " + name);
    if (!Modal_Loop_Serves(id)) return Status::Fail(name + " is not served while a dialog is open");
    if (!command->built() || !app_.session.interface.Enabled(id))
        return Status::Fail(name + " (" + Plain_Label(command->label) + ") is disabled");
    Post_Message({Message_Kind::command, {.value1 = id}});
    return Status::Done();
}

Status Script_Runner::Open(const Words& words) {
    if (words.size() < 2) return Usage("open A B ...");
    const Status status = Post_Command(command::open_pattern);
    if (status.failed) return status;
    std::vector<std::string> files;
    for (std::size_t i = 1; i < words.size(); ++i) files.push_back(Absolute(words[i]));
    selections_.push_front(std::move(files));
    return status;
}

Status Script_Runner::Files(const Words& words) {
    if (words.size() < 2) return Usage("files A B ... | cancel");
    std::vector<std::string> files;
    const bool cancel = words.size() == 2 && words[1] == "cancel";
    for (std::size_t i = 1; i < words.size() && !cancel; ++i) files.push_back(Absolute(words[i]));
    selections_.push_back(std::move(files));
    return Status::Done();
}

Status Script_Runner::Directory(const Words& words) {
    if (words.size() != 2) return Usage("directory D");
    directories_.push_back(Absolute(words[1]));
    return Status::Done();
}

Status Script_Runner::Colour_Choice(const Words& words) {
    std::array<int, 3> parts{};
    const bool numbers =
        words.size() == 4 && Parse_Integer(words[1], parts[0]) && Parse_Integer(words[2], parts[1]) && Parse_Integer(words[3], parts[2]);
    if (!numbers || std::any_of(parts.begin(), parts.end(), [](int part) { return part < 0 || part > 255; })) return Usage("colour R G B");
    colours_.push_back(WRGB(parts[0], parts[1], parts[2]));
    return Status::Done();
}

Status Script_Runner::Command_Number(const Words& words) {
    int id = 0;
    if (words.size() != 2 || !Parse_Integer(words[1], id)) return Usage("command N");
    return Post_Command(id);
}

Status Script_Runner::Drop(const Words& words) {
    if (words.size() < 2) return Usage("drop A B ...");
    WIN_MESSAGE record;
    for (std::size_t i = 1; i < words.size(); ++i) record.files.push_back(Absolute(words[i]));
    Post_Message({Message_Kind::files_dropped, std::move(record)});
    return Status::Done();
}

Status Script_Runner::Field_Number(const std::string& name, int& number) const {
    const int dialog = WindowFront();
    if (!WDialogLoaded(dialog)) return Status::Fail("no dialog is open");
    if (Parse_Integer(name, number)) return Status::Done();
    return Field_By_Label(dialog, name, number);
}

Status Script_Runner::Set(const Words& words) {
    if (words.size() != 3) return Usage("set FIELD VALUE");
    int field = 0;
    const Status found = Field_Number(words[1], field);
    return found.failed ? found : Act_Set_Field(WindowFront(), field, words[2]);
}

Status Script_Runner::Cell(const Words& words) {
    int field = 0, row = 0;
    if (words.size() != 5 || !Parse_Integer(words[3], row)) return Usage("cell FIELD COLUMN ROW VALUE");
    const Status found = Field_Number(words[1], field);
    return found.failed ? found : Act_Set_Cell(WindowFront(), field, words[2], row, words[4]);
}

Status Script_Runner::Select_Item(const Words& words) {
    int field = 0;
    if (words.size() != 3) return Usage("select FIELD PATH");
    const Status found = Field_Number(words[1], field);
    return found.failed ? found : Act_Select(WindowFront(), field, words[2]);
}

Status Script_Runner::Press(const Words& words) {
    if (words.size() != 2) return Usage("press FIELD");
    int field = 0;
    const Status found = Field_Number(words[1], field);
    return found.failed ? found : Act_Press(WindowFront(), field);
}

Status Script_Runner::Front(const Words& words) {
    int number = main_window;
    if (words.front() == "main") {
        if (const Status extra = Nothing_Left(words, "main"); extra.failed) return extra;
    } else if (words.size() != 2 || !Parse_Integer(words[1], number)) {
        return Usage("dialog NUMBER | main");
    }
    return Act_Front(number);
}

Status Script_Runner::Answer(const Words& words) {
    const std::optional<Box_Answer> answer = words.size() == 2 ? Answer_Of_Name(words[1]) : std::nullopt;
    if (!answer) return Usage("answer yes|no|ok|cancel|retry|abort|ignore");
    answers_.push_back({line_, *answer});
    return Status::Done();
}

Status Script_Runner::Mouse(const Words& words) {
    constexpr std::string_view form = "mouse [data] down|up|move|wheelup|wheeldown [left|middle|right] X Y";
    Words rest(words.begin() + 1, words.end());
    const bool data = !rest.empty() && rest.front() == "data";
    if (data) rest.erase(rest.begin());
    if (rest.size() < 3 || rest.size() > 4) return Usage(form);
    constexpr std::array<std::string_view, 5> actions = {"down", "up", "move", "wheelup", "wheeldown"};
    constexpr std::array<std::string_view, 3> buttons = {"left", "middle", "right"};
    const auto action = std::find(actions.begin(), actions.end(), rest.front()) - actions.begin();
    const auto button = rest.size() == 4 ? std::find(buttons.begin(), buttons.end(), rest[1]) - buttons.begin() : 0;
    WIN_MESSAGE record;
    if (action == static_cast<long>(actions.size()) || button == static_cast<long>(buttons.size()) ||
        !Parse_Real(rest[rest.size() - 2], record.x) || !Parse_Real(rest.back(), record.y))
        return Usage(form);
    record.win = Window_In_Front();
    if (data) {
        const auto& page_at = Service_Of(record.win).page_at;
        const std::optional<Point> at = page_at ? page_at({record.x, record.y}) : std::nullopt;
        if (!at) return Status::Fail("there is no plot to point at");
        record.x = at->x;
        record.y = at->y;
    }
    record.value4 = 1;
    constexpr std::array<Message_Kind, 5> kinds = {Message_Kind::mouse_down, Message_Kind::mouse_up, Message_Kind::mouse_move,
                                                   Message_Kind::wheel, Message_Kind::wheel};
    const Message_Kind kind = kinds[static_cast<std::size_t>(action)];
    record.value1 = kind == Message_Kind::wheel ? (action == 3 ? 1 : -1) : static_cast<int>(button) + 1;
    Post_Message({kind, std::move(record)});
    return Status::Done();
}

Status Script_Runner::Key(const Words& words) {
    const int code = words.size() == 2 ? Key_Code(words[1]) : 0;
    const Command* command = code == 0 && words.size() == 2 ? Command_Of_Key(words[1]) : nullptr;
    if (command != nullptr && WindowFront() == main_window) return Post_Command(command->id);
    if (code == 0) return Usage("key NAME");
    if (WindowFront() != main_window && Act_Key(WindowFront(), code).ok()) return Status::Done();
    Post_Message({Message_Kind::key_down, {.win = WindowFront(), .value1 = code}});
    return Status::Done();
}

Status Script_Runner::Resize(const Words& words) {
    int width = 0, height = 0;
    if (words.size() != 3 || !Parse_Integer(words[1], width) || !Parse_Integer(words[2], height)) return Usage("resize W H");
    if (width < 1 || height < 1 || std::max(width, height) > largest_window_side) return Status::Fail("a window cannot have that size");
    WindowSelect(Window_In_Front());
    WindowResize(width, height);
    return Status::Done();
}

Status Script_Runner::Timer(const Words& words) {
    int number = 0;
    if (words.size() != 2 || !Parse_Integer(words[1], number)) return Usage("timer N");
    Post_Message({Message_Kind::timer, {.win = Window_In_Front(), .value1 = number}});
    return Status::Done();
}

Status Script_Runner::Close(const Words& words) {
    if (const Status extra = Nothing_Left(words, "close"); extra.failed) return extra;
    if (const int front = WindowFront(); WDialogLoaded(front) && !WDialogIsPanel(front)) return Act_Key(front, key_escape);
    Post_Message({Message_Kind::close_request, {.win = Window_In_Front()}});
    return Status::Done();
}

Status Script_Runner::List(const Words& words) {
    const bool open = app_.session.desk.list_open;
    if (words.size() == 2 && (words[1] == "open" || words[1] == "close"))
        return open == (words[1] == "open") ? Status::Done() : Post_Command(command::pattern_list);
    if (!open) return Status::Fail("the list of patterns is not open");
    if (Window_In_Front() != main_window || WDialogModal(WindowFront()))
        return Status::Fail("the list is not served while a dialog is open");
    Message message{};
    const Status status = List_Message(app_.session, words, message);
    if (status.ok()) Post_Message(std::move(message));
    return status;
}

Status Script_Runner::Programs(const Words& words) {
    if (words.size() != 2 || (words[1] != "on" && words[1] != "off")) return Usage("programs on|off");
    app_.programs.Switch(words[1] == "on");
    return Status::Done();
}

// It shows at once. The view stays, unless the range of x became another one.
Status Script_Runner::Pref(const Words& words) {
    if (words.size() != 3) return Usage("pref NAME VALUE");
    Session& session = app_.session;
    const bool sides_ignored = session.prefs.prf.excl_ignore_sides;
    if (const Status status = Set_Preference(session.prefs, words[1], words[2]); status.failed) return status;
    if (session.prefs.prf.excl_ignore_sides != sides_ignored) Set_Range_X(session.store, session.prefs.prf, session.plot);
    Plot_Redraw(session);
    Show_Other_Windows(session);
    if (recorder_ != nullptr) recorder_->Saw_Preference(words[1], words[2]);
    return Status::Done();
}

// A style of the program, or a settings file, and what the colours of a series run along.
Status Script_Runner::Style(const Words& words) {
    const bool by_temperature = words.size() == 3 && words[2] == "temperature";
    if (words.size() != 2 && !by_temperature && !(words.size() == 3 && words[2] == "rows")) return Usage("style NAME [temperature|rows]");
    if (!Modal_Loop_Serves(command::style_default)) return Status::Fail("style is not served while a dialog is open");
    const std::string known = Style_Name(words[1]);
    const auto& names = Style_Names();
    const std::string name = std::find(names.begin(), names.end(), known) != names.end() || known.empty() ? words[1] : Absolute(known);
    if (const Status status = Show_In_Style(app_, name); status.failed) return status;
    if (words.size() == 3 && by_temperature != app_.session.desk.series_by_temperature) Toggle_Series_By_Temperature(app_);
    Words done = words;
    done[1] = app_.session.style.name;
    if (recorder_ != nullptr) recorder_->Saw_Statement(done);
    return Status::Done();
}

// It shows at once. Without a word behind the offset the rows stand evenly, and hide nothing.
Status Script_Runner::Set_Apart(const Words& words) {
    constexpr std::string_view form = "waterfall OFFSET [temperature] [hidden]";
    double offset = 0;
    if (words.size() < 2 || !Parse_Real(words[1], offset)) return Usage(form);
    if (!Modal_Loop_Serves(command::waterfall)) return Status::Fail("waterfall is not served while a dialog is open");
    Waterfall waterfall{.offset = static_cast<float>(offset)};
    if (!(offset >= 0 && offset <= 1)) return Status::Fail("the offset is between 0 and 1");
    for (std::size_t i = 2; i < words.size(); ++i) {
        if (words[i] != "temperature" && words[i] != "hidden") return Usage(form);
        (words[i] == "hidden" ? waterfall.hidden_lines : waterfall.by_temperature) = true;
    }
    Session& session = app_.session;
    Set_Waterfall(session.store, session.plot, waterfall, session.look);
    if (session.plot.Is_2D()) Plot_Redraw(session);
    Remember_View(session, false);
    if (recorder_ != nullptr) recorder_->Saw_Statement(words);
    return Status::Done();
}

// What depends on the system takes the other one's way from here on. Names of files keep the separator of the machine.
Status Script_Runner::Os(const Words& words) {
    if (words.size() != 2 || !Is_Os_Tag(words[1])) return Usage("os WIND|LINU|MACO|UNKN");
    Change_System(app_.session.config, app_.session.prefs.environment, words[1]);
    return Status::Done();
}

Status Script_Runner::Print(const Words& words) { return Print_State(app_, start_directory_, output_, vntl::Words(words).subspan(1)); }

Status Script_Runner::Export(const Words& words) {
    if (words.size() != 2) return Usage("export FILE");
    return Export_Window(Absolute(words[1]));
}

Status Script_Runner::Exit(const Words& words) {
    if (const Status extra = Nothing_Left(words, "exit"); extra.failed) return extra;
    app_.session.config.files_allowed = true;
    Exit_Program(app_);
    if (app_.leaving) return Quit(words);
    app_.session.config.files_allowed = false;  // a changed text keeps the program; the script goes on
    return Status::Done();
}

Status Script_Runner::Quit(const Words& words) {
    if (const Status extra = Nothing_Left(words, "quit"); extra.failed) return extra;
    next_ = lines_.size();
    return Status::Done();
}

}  // namespace vntl
