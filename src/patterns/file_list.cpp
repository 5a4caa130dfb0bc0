#include "patterns/file_list.hpp"

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

namespace {

constexpr std::string_view comment_word = "COMMENT", title_word = "TITLE";
constexpr std::size_t longest_name = 4096;  // that a system takes

// "TITLE x", "TITLE: x" and "TITLE" alone begin with the word, a file "TITLE1.xye" does not.
bool Begins_With(std::string_view line, std::string_view word) {
    return line.starts_with(word) && (line.size() == word.size() || std::string_view(" \t:=").find(line[word.size()]) != line.npos);
}

std::string Behind(std::string_view line, std::string_view word) {
    line = Trim_Left(line.substr(word.size()));
    if (line.starts_with(':') || line.starts_with('=')) line = Trim_Left(line.substr(1));
    return Kept_Text(line, title_width);
}

// Takes a line that tells of the list; false where it is none.
bool Take_Opening(std::string_view line, File_List& list) {
    for (const auto& [word, place] : {std::pair(comment_word, &list.comment), std::pair(title_word, &list.title)}) {
        if (!Begins_With(line, word)) continue;
        *place = Behind(line, word);
        return true;
    }
    return false;
}

bool Is_Quoted(std::string_view text) { return text.size() > 1 && text.front() == '"' && text.back() == '"'; }

}  // namespace

bool Can_Be_Listed(std::string_view name) {
    return !Trim(name).empty() && name.size() <= longest_name && name.find_first_of(std::string_view("\0\n\r", 3)) == name.npos;
}

Status Read_File_List(std::string_view text, std::size_t most_names, File_List& list) {
    list = {};
    Line_Cursor lines(Without_End_Mark(text));
    std::string_view line;
    for (bool opening = true; lines.Next(line);) {
        std::string_view name = Trim(line);
        opening = opening && (name.empty() || Take_Opening(name, list));
        if (opening || name.empty()) continue;
        if (Is_Quoted(name)) name = name.substr(1, name.size() - 2);
        if (!Can_Be_Listed(name)) return Status::Fail("Line " + std::to_string(lines.Number()) + " is no name of a file");
        if (list.names.size() == most_names) {
            list.first_left_out = lines.Number();
            break;
        }
        list.names.emplace_back(name);
    }
    return Status::Done();
}

std::string File_List_Text(std::span<const std::string> names) {
    std::string text;
    for (const std::string& name : names) {
        const bool mistaken = name != Trim(name) || name.front() == '"' || Begins_With(name, comment_word) || Begins_With(name, title_word);
        text += mistaken ? '"' + name + "\"\n" : name + '\n';
    }
    return text;
}

}  // namespace vntl
