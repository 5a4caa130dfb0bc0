// State of single commands and of the status bar.
#include "session/commands.hpp"

#include <utility>

namespace vntl {

void Interface_State::Enable(int command, bool on) {
    Command_State& state = commands[command];
    if (state.enabled != on) ++revision;
    state.enabled = on;
}

void Interface_State::Check(int command, bool on) {
    Command_State& state = commands[command];
    if (state.checked != on) ++revision;
    state.checked = on;
}

bool Interface_State::Enabled(int command) const {
    const auto found = commands.find(command);
    return found == commands.end() || found->second.enabled;
}

bool Interface_State::Checked(int command) const {
    const auto found = commands.find(command);
    return found != commands.end() && found->second.checked;
}

void Interface_State::Label(int command, std::string text) {
    std::string& label = labels[command];
    if (label == text) return;
    label = std::move(text);
    ++revision;
}

void Interface_State::Status_Text(int part, std::string text) {
    if (part < 1 || part > status_parts) return;
    if (part == 1) passing = false, note = 0;
    std::string& present = status[static_cast<std::size_t>(part - 1)];
    if (present == text) return;
    present = std::move(text);
    ++revision;
}

void Interface_State::Passing_Text(std::string text) {
    Status_Text(1, std::move(text));
    passing = true;
}

void Interface_State::Note(std::string text) {
    Status_Text(1, std::move(text));
    note = ++notes;
    ++revision;
}

void Interface_State::Hint(std::string text) {
    if (!text.empty())
        Status_Text(1, text);
    else if (!hint.empty() && status.front() == hint)
        Status_Text(1, "");
    hint = std::move(text);
}

}  // namespace vntl
