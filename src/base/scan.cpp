// Fields, words and free-form numbers, see scan.hpp.
#include "base/scan.hpp"

#include <algorithm>
#include <cmath>

#include "base/real_parse.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

bool Is_Blank(char c) { return c == ' ' || c == '\t'; }
bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

const char* Skip_Blank(const char* p, const char* end) {
    while (p != end && Is_Blank(*p)) ++p;
    return p;
}

// Takes the field at p, which must end at a blank or at the end of the line.
bool Take_Real_Field(const char*& p, const char* end, float& value) {
    const char* const stop = Parse_Float(p, end, value);
    if (stop == p || (stop != end && !Is_Blank(*stop))) return false;
    p = stop;
    return true;
}

bool Take_Integer_Field(const char*& p, const char* end, int& value) { return Parse_Int(p, end, value) && (p == end || Is_Blank(*p)); }

// Takes the next word off the front of `line`. False, without a word, at the end or when a quote is not closed.
bool Take_Word(std::string_view& line, std::string_view& word, bool& balanced) {
    line = Trim_Left(line);
    balanced = true;
    if (line.empty()) return false;
    const bool quoted = line.front() == '"';
    if (quoted) line.remove_prefix(1);
    const std::size_t stop = quoted ? line.find('"') : line.find_first_of(" \t");
    balanced = !quoted || stop != std::string_view::npos;
    if (!balanced) return false;
    word = line.substr(0, stop);
    line.remove_prefix(word.size() + (quoted ? 1 : 0));
    return true;
}

}  // namespace

int Field_Reader::Find_Fields(std::string_view letters, Fields& fields) {
    std::string_view line;
    const char* p;
    const char* end;
    do {
        if (!lines_.Next(line)) return end_of_file;
        end = line.data() + line.size();
        p = Skip_Blank(line.data(), end);
    } while (p == end || *p == '!' || *p == '#');

    if (!letters.empty() && Is_Digit(letters.front())) {
        const std::size_t columns = static_cast<std::size_t>(letters.front() - '0');
        p = line.data() + std::min(columns, line.size());
        letters.remove_prefix(1);
    }
    for (std::size_t i = 0; i < letters.size() && i < fields.real.size(); ++i) {
        p = Skip_Blank(p, end);
        if (p == end) {
            fields.real[i] = 0;
            fields.integer[i] = 0;
        } else if (!(letters[i] == 'f' ? Take_Real_Field(p, end, fields.real[i]) : Take_Integer_Field(p, end, fields.integer[i]))) {
            return misfit;
        }
    }
    return 0;
}

Status Get_Words(std::string_view line, std::vector<std::string_view>& words, std::size_t most, std::size_t width) {
    words.clear();
    bool balanced = true;
    for (std::string_view word; Take_Word(line, word, balanced);) {
        if (words.size() == most) return Status::Fail("Dimension of DIRE exceeded");
        words.push_back(Cut(word, width));
    }
    return balanced ? Status::Done() : Status::Fail("Non balanced quotes!");
}

std::string_view Behind_Words(std::string_view line, std::size_t count) {
    std::string_view word;
    bool balanced = true;
    while (count > 0 && Take_Word(line, word, balanced)) --count;
    return count > 0 ? std::string_view{} : line;
}

int Get_Numbers(std::string_view text, std::vector<float>& reals, std::vector<int>& ints) {
    reals.clear();
    ints.clear();
    const char* const end = text.data() + text.size();
    for (const char* p = Skip_Blank(text.data(), end); p != end; p = Skip_Blank(p, end)) {
        float value = 0;
        if (!Take_Real_Field(p, end, value) || !std::isfinite(value)) break;
        reals.push_back(value);
        ints.push_back(std::fabs(value) < 2147483520.0f ? static_cast<int>(std::lround(value)) : 0);
    }
    return static_cast<int>(reals.size());
}

}  // namespace vntl
