#include "base/command_line.hpp"

#include "base/os.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

// The path of a program with a drive before it, up to its ".exe"; blanks within are its own.
std::string_view Path_With_Drive(std::string_view text) {
    const std::size_t end = text.size() > 2 && text[1] == ':' && text[2] == '\\' ? Lower(text).find(".exe") : std::string::npos;
    return end == std::string::npos ? std::string_view() : text.substr(0, end + 4);
}

}  // namespace

std::vector<std::string> Command_Words(std::string_view text) {
    if (const std::string_view path = Path_With_Drive(text); !path.empty()) {
        std::vector<std::string> words = Command_Words(text.substr(path.size()));
        words.insert(words.begin(), std::string(path));
        return words;
    }
    std::vector<std::string> words;
    bool quoted = false, open = false;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
            if (!open) words.emplace_back();
            open = true;
        } else if (c == ' ' && !quoted) {
            open = false;
        } else {
            if (!open) words.emplace_back();
            words.back() += c;
            open = true;
        }
    }
    std::string program;
    for (std::size_t i = 0; i < words.size(); ++i) {
        program += (i == 0 ? "" : " ") + words[i];
        if (!IOsFileExists(program)) continue;
        words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        words.insert(words.begin(), program);
        break;
    }
    return words;
}

void Command_Line::Tell(std::string_view text) {
    if (!line_.empty() && !text.empty()) line_ += ' ';
    line_ += text;
}

Command_Line& Command_Line::In(std::string_view directory) {
    directory_ = directory;
    return *this;
}

Command_Line& Command_Line::Program(std::string_view text) {
    const std::vector<std::string> words = Command_Words(Trim(text));
    if (words.empty()) return *this;
    programs_.push_back(words_.size());
    words_.insert(words_.end(), words.begin(), words.end());
    Tell(Trim(text));
    return *this;
}

Command_Line& Command_Line::Program_At(std::string_view path) {
    programs_.push_back(words_.size());
    return Word(path);
}

Command_Line& Command_Line::File(std::string_view name) {
    const std::string file = (name.starts_with('-') ? "./" : "") + std::string(name);
    return Word(file, Contains(file, " ") ? '"' + file + '"' : file);
}

Command_Line& Command_Line::Word(std::string_view word, std::string_view told) {
    words_.emplace_back(word);
    Tell(told);
    return *this;
}

}  // namespace vntl
