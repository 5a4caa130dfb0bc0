#include "app/script.hpp"

#include <algorithm>
#include <array>
#include <ostream>

#include "app/script_print.hpp"
#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/application.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

namespace {

struct Named_Answer {
    std::string_view name;
    Box_Answer answer;
};
constexpr std::array<Named_Answer, 7> answer_names = {{{"ok", Box_Answer::ok},
                                                       {"cancel", Box_Answer::cancel},
                                                       {"retry", Box_Answer::retry},
                                                       {"yes", Box_Answer::yes},
                                                       {"no", Box_Answer::no},
                                                       {"abort", Box_Answer::abort},
                                                       {"ignore", Box_Answer::ignore}}};

// What a backslash and a letter stand for between double quotes.
struct Escape {
    char letter, meant;
};
constexpr std::array<Escape, 4> escapes = {{{'"', '"'}, {'\\', '\\'}, {'n', '\n'}, {'r', '\r'}}};

const Escape* Find_Escape(char c, char Escape::*part) {
    const auto found = std::find_if(escapes.begin(), escapes.end(), [&](const Escape& row) { return row.*part == c; });
    return found == escapes.end() ? nullptr : &*found;
}

constexpr std::array<std::string_view, 5> icon_names = {"none", "stop", "question", "exclamation", "information"};

}  // namespace

std::string_view Answer_Name(Box_Answer answer) {
    for (const Named_Answer& row : answer_names)
        if (row.answer == answer) return row.name;
    return "";
}

std::optional<Box_Answer> Answer_Of_Name(std::string_view name) {
    for (const Named_Answer& row : answer_names)
        if (row.name == name) return row.answer;
    return {};
}

Status Parse_Statement(std::string_view line, std::vector<std::string>& words) {
    words.clear();
    std::size_t i = 0;
    while (true) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) ++i;
        if (i == line.size() || line[i] == '#') return Status::Done();
        std::string word;
        bool quoted = false;
        for (; i < line.size(); ++i) {
            const char c = line[i];
            const Escape* escape = quoted && c == '\\' && i + 1 < line.size() ? Find_Escape(line[i + 1], &Escape::letter) : nullptr;
            if (escape != nullptr) {
                word += escape->meant;
                ++i;
            } else if (c == '"') {
                quoted = !quoted;
            } else if (!quoted && (c == ' ' || c == '\t' || c == '\r')) {
                break;
            } else {
                word += c;
            }
        }
        if (quoted) return Status::Fail("a double quote is not closed");
        words.push_back(std::move(word));
    }
}

std::string Statement_Line(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty()) line += ' ';
        if (!word.empty() && word.find_first_of(" \t\r\n\"\\#") == std::string::npos) {
            line += word;
            continue;
        }
        line += '"';
        for (const char c : word) {
            const Escape* escape = Find_Escape(c, &Escape::meant);
            line += escape == nullptr ? std::string(1, c) : std::string{'\\', escape->letter};
        }
        line += '"';
    }
    return line;
}

Script_Runner::Script_Runner(Application& app, std::string text, std::ostream& output, std::ostream& errors)
    : app_(app), output_(output), errors_(errors), start_directory_(IOsDirName()) {
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines_.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    app_.programs.Switch(false);
    app_.programs.Report_To([this](const Command_Line& command, bool waited) {
        const std::string directory = command.directory().empty() ? IOsDirName() : command.directory();
        Write_Json_Line(output_,
                        {{"started", command.line()}, {"arguments", command.words()}, {"directory", directory}, {"waited", waited}});
    });
    Set_Stand_In(this);
    Set_Idle_Source([this] { return Step(); }, [this] { return Step_In_Wait(); });
}

Script_Runner::~Script_Runner() {
    Set_Idle_Source({});
    Set_Stand_In(nullptr);
    app_.programs = vntl::Programs();
}

// No statement may leave a session that contradicts itself.
void Script_Runner::Check_Session() {
    const Status status = Check_Invariants(app_.session);
    if (status.failed) Fail(line_, "the session contradicts itself: " + status.message);
}

// While another program is waited for, keys and sizes alone go to the window; other statements want what it brings.
bool Script_Runner::Step_In_Wait() {
    Words words;
    std::size_t next = next_;
    while (next < lines_.size() && !Parse_Statement(lines_[next], words).failed && words.empty()) ++next;
    return !words.empty() && (words.front() == "key" || words.front() == "resize") && Step();
}

bool Script_Runner::Step() {
    Check_Session();
    while (next_ < lines_.size()) {
        Statement statement;
        statement.line = static_cast<int>(next_ + 1);
        const Status parsed = Parse_Statement(lines_[next_++], statement.words);
        line_ = statement.line;
        if (parsed.failed) Fail(line_, parsed.message);
        if (parsed.failed || statement.words.empty()) continue;
        Run(statement);
        return true;
    }
    At_End();
    return true;
}

void Script_Runner::At_End() {
    const int front = WindowFront();
    if (WDialogLoaded(front) && front != cancelled_) {
        Post_Message({Message_Kind::push_button, {.win = front, .value1 = button_cancel}});
        cancelled_ = front;
    } else {
        app_.leaving = true;  // also where a dialog does not mind
        cancelled_ = 0;       // the next one may have the same number
    }
    Post_Message({Message_Kind::repaint, {}});  // wakes the loop, which then sees that the program is being left
}

void Script_Runner::Fail(int line, const std::string& why) {
    failed_ = true;
    errors_ << "line " << line << ": " << why << std::endl;
}

Box_Answer Script_Runner::Answer_Box(const Message_Box& box) {
    Box_Answer answer = Box_Default(box);
    if (!answers_.empty()) {
        const Waiting_Answer waiting = answers_.front();
        answers_.pop_front();
        if (Box_Offers(box.buttons, waiting.answer))
            answer = waiting.answer;
        else
            Fail(waiting.line, "the box \"" + box.title + "\" does not offer the answer " + std::string(Answer_Name(waiting.answer)));
    }
    failed_ |= box.of_file;
    Json report;
    report["box"] = box.title;
    report["icon"] = icon_names[static_cast<std::size_t>(box.icon)];
    report["text"] = box.text;
    report["answer"] = Answer_Name(answer);
    Write_Json_Line(output_, report);
    return answer;
}

std::vector<std::string> Script_Runner::Answer_Select(Select_Kind) {
    if (selections_.empty()) {
        Fail(line_, "a file selector opened, and no files wait for it");
        return {};
    }
    auto files = std::move(selections_.front());
    selections_.pop_front();
    return files;
}

std::optional<std::string> Script_Runner::Answer_Directory() {
    if (directories_.empty()) {
        Fail(line_, "a directory selector opened, and no directory waits for it");
        return {};
    }
    std::string directory = std::move(directories_.front());
    directories_.pop_front();
    return directory;
}

std::optional<Colour> Script_Runner::Answer_Colour() {
    if (colours_.empty()) {
        Fail(line_, "a colour selector opened, and no colour waits for it");
        return {};
    }
    const Colour colour = colours_.front();
    colours_.pop_front();
    return colour;
}

std::string Script_Runner::Absolute(const std::string& name) const { return In_Directory(start_directory_, name); }

}  // namespace vntl
