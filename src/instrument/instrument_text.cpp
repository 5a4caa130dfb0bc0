#include "instrument/instrument_text.hpp"

#include <algorithm>
#include <array>

#include "base/conversions.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

constexpr std::string_view blanks = " \t", separators = " \t,";

struct Geometry_Word {
    std::string_view word;
    int code;
};
// The first one that the text holds counts. "high-ch" is what a field of 15 characters keeps of "4C-Diff High-Chi".
constexpr std::array<Geometry_Word, 6> geometry_words = {
    {{"laue", 3}, {"normal", 3}, {"lifting", 3}, {"high-ch", 2}, {"4c", 1}, {"eulerian", 1}}};

}  // namespace

Status Open_Description(const std::string& filename, Text_File& file) {
    const std::string fault = "Error opening the file: " + filename;
    if (file.Open(filename, largest_description + 1).failed) return Status::Fail_File(fault);
    if (file.Text().empty()) return Status::Fail_File(fault + " => ZERO lines found!");
    return file.Text().size() <= largest_description ? Status::Done() : Status::Fail_File(fault + ", which is larger than 512 MB");
}

Keyword_Line Split_Keyword(std::string_view line) {
    line = Trim(line);
    const std::size_t end = std::min(line.find_first_of(blanks), line.size());
    return {Upper(line.substr(0, end)), Trim(line.substr(end))};
}

bool Is_Passed_Over(std::string_view line) {
    line = Trim_Left(line);
    return line.empty() || line.front() == '!' || line.front() == '#';
}

bool Is_Number_Line(std::string_view line) {
    line = Trim_Left(line);
    if (line.empty()) return false;
    if (std::string_view("0123456789+-.*").find(line.front()) != std::string_view::npos) return true;
    const std::string word = Lower(line.substr(0, line.find_first_of(separators)));
    return word == "nan" || word == "inf" || word == "infinity";
}

bool Take_Word(std::string_view& line, std::string& word) {
    line = Trim_Left(line);
    if (line.empty()) return false;
    std::size_t end = 0;
    if (const char quote = line.front(); quote == '\'' || quote == '"') {
        word.clear();
        for (end = 1;; ++end) {
            const std::size_t close = line.find(quote, end);
            if (close == std::string_view::npos) return false;
            word += line.substr(end, close - end);
            end = close + 1;
            if (end == line.size() || line[end] != quote) break;
            word += quote;
        }
    } else {
        end = std::min(line.find_first_of(separators), line.size());
        word = line.substr(0, end);
    }
    line = Trim_Left(line.substr(end));
    if (line.starts_with(',')) line.remove_prefix(1);
    return true;
}

std::string Word_Text(const std::string& word) {
    const bool plain = !word.empty() && word.find_first_of(separators) == word.npos && std::string_view("'\"!#").find(word[0]) == word.npos;
    return plain ? word : '\'' + Replace_All(word, "'", "''") + '\'';
}

int Geometry_Code(std::string_view geom) {
    const std::string text = Lower(geom);
    const auto held = std::ranges::find_if(geometry_words, [&](const Geometry_Word& row) { return Contains(text, row.word); });
    return held == geometry_words.end() ? 0 : held->code;
}

std::string Number_Column(float value, std::size_t width) {
    const std::string digits = IRealToString(value);
    return std::string(digits.size() < width ? width - digits.size() : 1, ' ') + digits;
}

std::string In_One_Line(std::string_view text) {
    std::string line(text);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return line;
}

}  // namespace vntl
