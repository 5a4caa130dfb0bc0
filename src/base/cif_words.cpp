#include "base/cif_words.hpp"

#include <algorithm>

#include "base/text.hpp"

namespace vntl {

namespace {

bool Begins(std::string_view word, std::string_view keyword) { return Equal_No_Case(word.substr(0, keyword.size()), keyword); }

Cif_Kind Kind_Of(std::string_view word) {
    if (word.empty()) return Cif_Kind::value;
    if (word.front() == '_') return Cif_Kind::item;
    if (std::string_view("lLdDsSgG").find(word.front()) == std::string_view::npos) return Cif_Kind::value;
    if (Equal_No_Case(word, "loop_")) return Cif_Kind::loop;
    if (Begins(word, "data_")) return Cif_Kind::data;
    const bool other = Begins(word, "save_") || Equal_No_Case(word, "stop_") || Equal_No_Case(word, "global_");
    return other ? Cif_Kind::other : Cif_Kind::value;
}

}  // namespace

bool Take_Cif_Word(std::string_view& line, std::string_view& word, bool* bare) {
    line = Trim_Left(line);
    if (line.empty() || line.front() == '#') return false;
    const bool quoted = line.front() == '\'' || line.front() == '"';
    const char quote = line.front();
    std::size_t end = quoted ? line.find(quote, 1) : line.find_first_of(" \t");
    while (quoted && end != std::string_view::npos && end + 1 < line.size() && line[end + 1] != ' ' && line[end + 1] != '\t')
        end = line.find(quote, end + 1);
    end = std::min(end, line.size());
    word = quoted ? line.substr(1, end - 1) : line.substr(0, end);
    line.remove_prefix(std::min(line.size(), end + (quoted ? 1 : 0)));
    if (bare != nullptr) *bare = !quoted;
    return true;
}

bool Cif_Value_Known(std::string_view value) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = value.find_first_not_of(blanks);
    if (first == std::string_view::npos) return false;
    value = value.substr(first, value.find_last_not_of(blanks) + 1 - first);
    return value != "?" && value != ".";
}

Cif_Word Cif_Words::Next() {
    std::string_view word, line;
    for (bool bare = true;; rest_ = line) {
        if (Take_Cif_Word(rest_, word, &bare)) return {bare ? Kind_Of(word) : Cif_Kind::value, word};
        if (!lines_.Next(line)) return {};
        if (line.starts_with(';')) return Take_Text(line);
    }
}

std::string_view Cif_Words::Rest() const {
    const std::string_view lines = lines_.Rest();
    const char* const begin = rest_.data() == nullptr ? lines.data() : rest_.data();
    return {begin, static_cast<std::size_t>(lines.data() + lines.size() - begin)};
}

// From the semicolon that begins `line` to the end of the line before the next one that begins so.
Cif_Word Cif_Words::Take_Text(std::string_view line) {
    const char* const first = line.data() + 1;
    const char* last = line.data() + line.size();
    const int begin = lines_.Number();
    while (lines_.Next(line)) {
        if (line.starts_with(';')) {
            rest_ = line.substr(1);
            return {Cif_Kind::value, {first, static_cast<std::size_t>(last - first)}};
        }
        last = line.data() + line.size();
    }
    unclosed_ = begin;
    return {Cif_Kind::value, {first, static_cast<std::size_t>(last - first)}};
}

}  // namespace vntl
