// The command of another program: the words that it gets, and the line that tells a user of them.
//
// The line is written from the words and is never parsed back, so that no letter of a file name means anything.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vntl {

// The words of a text of settings, parted by blanks, with what stands in double quotes kept together. A program's path may stand there
// without quotes: when the words up to one of them are together the name of a file, they are the first word, and so is a path with a
// drive up to its ".exe".
std::vector<std::string> Command_Words(std::string_view text);

class Command_Line {
public:
    // `suite`: directory in which a bare name is looked for that PATH does not know, blank: none.
    explicit Command_Line(std::string suite = {}) : suite_(std::move(suite)) {}

    // It runs in this directory, else in the present one.
    Command_Line& In(std::string_view directory);
    // A program as settings name it, with words of its own behind it; told as it stands. One may run another, "xterm -e": that follows.
    Command_Line& Program(std::string_view text);
    // A program by its path, which is one word and told as it stands.
    Command_Line& Program_At(std::string_view path);
    // A file: one word, told in double quotes where it holds a blank. One that begins with "-" gets "./": it is no option.
    Command_Line& File(std::string_view name);
    // A word that is no file, and how it is told where that is otherwise.
    Command_Line& Word(std::string_view word) { return Word(word, word); }
    Command_Line& Word(std::string_view word, std::string_view told);

    const std::string& suite() const { return suite_; }
    const std::string& directory() const { return directory_; }  // blank: the present one
    const std::string& line() const { return line_; }
    const std::vector<std::string>& words() const { return words_; }
    // The places among the words where programs stand.
    const std::vector<std::size_t>& programs() const { return programs_; }

private:
    void Tell(std::string_view text);

    std::string suite_, directory_, line_;
    std::vector<std::string> words_;
    std::vector<std::size_t> programs_;
};

}  // namespace vntl
