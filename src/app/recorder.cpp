#include "app/recorder.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "app/carry_list.hpp"
#include "app/script.hpp"
#include "base/os.hpp"
#include "base/text_file.hpp"
#include "commands/application.hpp"
#include "session/file_kinds.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

namespace {

std::string Number(double value) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

// Also where one of them leads to the other.
bool Same_File(const std::string& a, const std::string& b) {
    std::error_code error;
    return !b.empty() && (std::filesystem::path(a).lexically_normal() == std::filesystem::path(b).lexically_normal() ||
                          std::filesystem::equivalent(a, b, error));
}

std::string Key_Of_Set(int dialog, int field) { return "set " + std::to_string(dialog) + ' ' + std::to_string(field); }

}  // namespace

Recorder::~Recorder() { Set_Witness(nullptr); }

Status May_Record(const std::string& file, const std::vector<std::string>& sources) {
    for (const std::string& source : sources)
        if (Same_File(file, source)) return Status::Fail("the script " + file + " would be written over a file that is to be read");
    if (!Can_Be_Written(file)) return Status::Fail("the script " + file + " cannot be written");
    if (!IOsFileExists(file)) return Status::Done();
    Text_File old;
    if (old.Open(file, max_script_size).failed || !Script_Runner::Is_Script(old.Text(), file))
        return Status::Fail("the file " + file + " is no session script, and stays as it is");
    return Status::Done();
}

Status Recorder::Open(const std::string& file) {
    return file_.Open(file).ok() ? Status::Done() : Status::Fail("the script " + file + " cannot be written");
}

void Recorder::Begin(const std::vector<std::string>& files) {
    Set_Witness(this);
    // Also what is as at the first start: where the script runs the desk may remember another choice.
    const Desk& desk = app_.session.desk;
    WindowSelect(main_window);
    const Words size = {"resize", std::to_string(WInfoWindow(1)), std::to_string(WInfoWindow(2))};
    Statement(size);
    Statement({"list", desk.list_open ? "open" : "close"});
    if (desk.list_open && desk.list_width > 0) Statement({"list", "width", std::to_string(desk.list_width)});
    Statement(size);  // of the picture, from which a list that came or went has taken
    Statement({"style", app_.session.style.name, desk.series_by_temperature ? "temperature" : "rows"});
    const File_Kind_Row* kind = files.size() == 1 ? Starts_With(files.front()) : nullptr;
    Words opening = {kind == nullptr ? "drop" : std::string(kind->statement)};
    for (const std::string& file : files) opening.push_back(In_Directory(app_.session.config.launch_dir, file));
    if (!files.empty()) Statement(std::move(opening));
}

void Recorder::Put_Waiting() {
    unsettled_ = kept_;
    for (const std::string& answer : answers_) unsettled_ += answer + '\n';
    if (!waiting_.empty()) unsettled_ += waiting_ + '\n';
    const Status status = file_.Write_From(settled_, unsettled_);
    on_disk_ = status.ok();
    if (on_disk_ || failed_) return;
    failed_ = true;
    app_.ask.Error(Status::Fail_File("The recording cannot be written.\n" + status.message +
                                     "\nWhat you do is kept, and written down as soon as that is possible."));
}

void Recorder::Settle() {
    if (on_disk_) settled_ += unsettled_.size();
    kept_ = on_disk_ ? std::string() : unsettled_;
    answers_.clear();
    waiting_.clear();
}

void Recorder::Statement(Words words, const std::string& key) {
    Settle();
    waiting_ = Statement_Line(words);
    waiting_key_ = key;
    Put_Waiting();
}

void Recorder::Replaceable(const std::string& key, Words words) {
    if (key != waiting_key_ || !answers_.empty()) return Statement(std::move(words), key);
    waiting_ = Statement_Line(words);
    Put_Waiting();
}

void Recorder::Answer(const Words& words) {
    answers_.push_back(Statement_Line(words));
    Put_Waiting();
}

void Recorder::Mouse(const Message& message) {
    constexpr std::array<std::string_view, 3> buttons = {"left", "middle", "right"};
    const WIN_MESSAGE& record = message.record;
    const std::string button(buttons[static_cast<std::size_t>(std::clamp(record.value1, 1, 3) - 1)]);
    const std::string x = Number(record.x), y = Number(record.y);
    switch (message.kind) {
        case Message_Kind::mouse_down:
            button_down_ = true;
            return Statement({"mouse", "down", button, x, y});
        case Message_Kind::mouse_up:
            button_down_ = false;
            return Statement({"mouse", "up", button, x, y});
        case Message_Kind::wheel:
            return Statement({"mouse", record.value1 > 0 ? "wheelup" : "wheeldown", x, y});
        default:
            // Of the moves of a free mouse only the last matters; under a button each does.
            return button_down_ ? Statement({"mouse", "move", x, y}) : Replaceable("move", {"mouse", "move", x, y});
    }
}

void Recorder::Saw_Message(const Message& message) {
    const WIN_MESSAGE& record = message.record;
    switch (message.kind) {
        case Message_Kind::command: {
            // A recent file stands elsewhere in the list when the script runs.
            const auto slot = std::find(recent_file_commands.begin(), recent_file_commands.end(), record.value1);
            if (slot != recent_file_commands.end()) {
                const std::string& file = app_.session.recent.Slot(static_cast<int>(slot - recent_file_commands.begin()) + 1);
                const File_Kind_Row* kind = Recent_As(file);
                if (kind != nullptr && !kind->statement.empty()) return Statement({std::string(kind->statement), file});
            }
            return Statement({"command", std::to_string(record.value1)});
        }
        case Message_Kind::push_button:
            return Statement({"press", std::to_string(record.value1)});
        case Message_Kind::field_changed:  // what was typed in a panel counts once the user leaves it
            if (WDialogIsPanel(record.win) && record.value1 != record.value2 && waiting_key_ == Key_Of_Set(record.win, record.value1))
                Statement({"key", Key_Name(key_tab)});
            return;
        case Message_Kind::mouse_down:
        case Message_Kind::mouse_up:
        case Message_Kind::mouse_move:
        case Message_Kind::wheel:
            return Mouse(message);
        case Message_Kind::resize:
            WindowSelect(record.win);
            if (WInfoWindow(1) < 1) return;  // a window without a picture
            return Replaceable("resize", {"resize", std::to_string(WInfoWindow(1)), std::to_string(WInfoWindow(2))});
        case Message_Kind::close_request:  // of a window that may never have been in front
            if (record.win != WindowFront()) Saw_Front(record.win);
            return Statement({"close"});
        case Message_Kind::key_down:
            if (const std::string name = Key_Name(record.value1); !name.empty()) Statement({"key", name});
            return;
        case Message_Kind::files_dropped: {
            Words words = {"drop"};
            words.insert(words.end(), record.files.begin(), record.files.end());
            return Statement(std::move(words));
        }
        case Message_Kind::timer:
            return Statement({"timer", std::to_string(record.value1)});
        default:
            return List(message);
    }
}

// Of rows that are chosen or pointed at one after another only the last ones matter.
void Recorder::List(const Message& message) {
    const Words words = List_Words(message);
    if (words.empty()) return;
    const bool passing = message.kind == Message_Kind::list_chosen || message.kind == Message_Kind::list_pointed;
    passing ? Replaceable(words[0] + ' ' + words[1], words) : Statement(words);
}

void Recorder::Saw_Field(int dialog, int field, const std::string& value) {
    Replaceable(Key_Of_Set(dialog, field), {"set", std::to_string(field), value});
}

void Recorder::Saw_Cell(int dialog, int field, int column, int row, const std::string& value) {
    const Words place = {"cell", std::to_string(field), std::to_string(column), std::to_string(row)};
    Words words = place;
    words.push_back(value);
    Replaceable(std::to_string(dialog) + ' ' + Statement_Line(place), std::move(words));
}

void Recorder::Saw_Item(int dialog, int field, const std::string& path) {
    Replaceable("select " + std::to_string(dialog), {"select", std::to_string(field), path});
}

void Recorder::Saw_Front(int window) {
    if (window == main_window)
        Replaceable("front", {"main"});
    else
        Replaceable("front", {"dialog", std::to_string(window)});
}

void Recorder::Saw_Answer(const Message_Box& box, Box_Answer answer) {
    if (box.buttons != Box_Buttons::ok) Answer({"answer", std::string(Answer_Name(answer))});
}

void Recorder::Saw_Files(const std::vector<std::string>& files) {
    Words words = {"files"};
    words.insert(words.end(), files.begin(), files.end());
    if (files.empty()) words.push_back("cancel");
    Answer(words);
}

void Recorder::Saw_Directory(const std::optional<std::string>& directory) {
    if (directory) Answer({"directory", *directory});
}

void Recorder::Saw_Colour(const std::optional<Colour>& colour) {
    if (colour) Answer({"colour", std::to_string(Red(*colour)), std::to_string(Green(*colour)), std::to_string(Blue(*colour))});
}

}  // namespace vntl
