#include "external/sequential.hpp"

#include <algorithm>
#include <vector>

#include "base/os.hpp"
#include "base/text.hpp"
#include "external/program_suite.hpp"

namespace vntl {

namespace {

constexpr std::string_view script_program = "qx2k", script_start = "qx2k seq ";

struct Sequential_Word {
    std::string text;
    bool is_name = false;
    std::size_t columns = 0;  // at the right end of which it stands
};

std::vector<Sequential_Word> Words_Of(const Sequential_Input& input) {
    constexpr std::size_t columns = 6;
    const auto name = [](const std::string& text) { return Sequential_Word{(text.starts_with('-') ? "./" : "") + text, true}; };
    std::vector<Sequential_Word> words = {{"seq"},
                                          name(input.control),
                                          name(input.data_code),
                                          {std::to_string(input.first), false, columns},
                                          {std::to_string(input.last), false, columns}};
    for (const bool kept : input.keeps) words.push_back({kept ? "Y" : "N"});
    if (input.temperatures.empty()) return words;
    words.push_back({"-temp"});
    words.push_back(name(input.temperatures));
    return words;
}

std::string In_Columns(const Sequential_Word& word) {
    return std::string(word.columns - std::min(word.columns, word.text.size()), ' ') + word.text;
}

// --- shells ------------------------------------------------------------------------------------------------------------------------

bool Is_Plain(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || Contains("./_+-", std::string_view(&c, 1));
}

bool Needs_Quotes(std::string_view name) { return name.empty() || !std::all_of(name.begin(), name.end(), Is_Plain); }

std::string Quoted_For_Sh(std::string_view name) { return '\'' + Replace_All(name, "'", "'\\''") + '\''; }

bool Fits_Cmd(std::string_view name) {
    return std::none_of(name.begin(), name.end(), [](char c) { return c == '"' || (c >= '\0' && c < ' '); });
}

// Between double quotes a percent sign alone means something. The program that takes the word apart reads \" as a quote within it, and so
// backslashes before the last one stand twice.
std::string Quoted_For_Cmd(std::string_view name) {
    const std::size_t last = name.find_last_not_of('\\');
    const std::size_t backslashes = name.size() - (last == std::string_view::npos ? 0 : last + 1);
    return '"' + Replace_All(name, "%", "%%") + std::string(backslashes, '\\') + '"';
}

}  // namespace

void Add_Sequential(Command_Line& command, const Sequential_Input& input) {
    for (const Sequential_Word& word : Words_Of(input)) {
        if (!word.is_name)
            command.Word(word.text, In_Columns(word));
        else if (word.text.empty())
            command.Word("", "\"\"");
        else
            command.File(word.text);
    }
}

std::string Sequential_Script_Name(std::string_view control, std::string_view os_tag) {
    return std::string(control) + (os_tag == "WIND" ? "_QXseq.bat" : "_QXseq.sh");
}

Status Sequential_Script(const Sequential_Input& input, std::string_view os_tag, std::string& text) {
    const bool cmd = os_tag == "WIND";
    std::string line(script_program);
    for (const Sequential_Word& word : Words_Of(input)) {
        const bool quoted = word.is_name && Needs_Quotes(word.text);
        if (cmd && quoted && !Fits_Cmd(word.text)) return Status::Fail("A script of this system cannot hold the name " + word.text);
        line += ' ';
        line += !quoted ? In_Columns(word) : cmd ? Quoted_For_Cmd(word.text) : Quoted_For_Sh(word.text);
    }
    text = line + (cmd ? "\r\n" : "\n");
    return Status::Done();
}

bool Is_Sequential_Script(std::string_view text) {
    const std::size_t end = text.find_first_of("\r\n");
    if (!text.starts_with(script_start) || end == std::string_view::npos) return false;
    const std::string_view rest = text.substr(end);
    return rest == "\n" || rest == "\r\n";
}

}  // namespace vntl
