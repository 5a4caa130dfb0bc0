#include "instrument/numor_blocks.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/digit_word.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr std::size_t shortest_marker = 10, longest_marker = 80, least_letters = 5, line_width = 80;
constexpr std::string_view no_line = " Impossible to read a line for this block!";

// Printers' form feeds open lines, and blanks end them.
std::string_view Plain_Line(std::string_view line) {
    while (!line.empty() && line.front() == '\f') line.remove_prefix(1);
    while (!line.empty() && (line.back() == ' ' || line.back() == '\t' || line.back() == '\f')) line.remove_suffix(1);
    return line;
}

struct Letters {
    char letter = ' ';
    std::size_t count = 0;  // of equal ones at the front
    bool alone = false;
};

Letters Letters_Of(std::string_view line) {
    if (line.empty() || line[0] == ' ') return {};  // hardly a line of numbers gets further
    line = Plain_Line(line);
    if (line.size() < least_letters || line[0] != line[1] || block_letters.find(line[0]) == std::string_view::npos) return {};
    const std::size_t count = std::min(line.find_first_not_of(line[0]), line.size());
    return {line[0], count, count == line.size()};
}

bool Is_Marker(const Letters& letters) { return letters.alone && letters.count >= shortest_marker && letters.count <= longest_marker; }

// A marker that lost some letters, has too many of them, or has something behind them: what stands below tells it from a text.
bool Might_Be_Marker(const Letters& letters) { return letters.count >= (letters.alone ? least_letters : shortest_marker); }

bool Whole_Integer(std::string_view column, int& value) {
    column = Trim(column);
    const char* at = column.data();
    const char* const end = at + column.size();
    value = 0;
    return column.empty() || (Parse_Int(at, end, value) && at == end);
}

bool Whole_Real(std::string_view column, float& value) {
    column = Trim(column);
    value = 0;
    if (column.empty()) return true;
    const char* const end = column.data() + column.size();
    return Parse_Float(column.data(), end, value) == end && std::isfinite(value);
}

// Numbers between blanks, as writers put them who do not count columns.
template <class Number, class Whole>
int Free_Numbers(std::string_view line, Number* values, int most, Whole whole) {
    int count = 0;
    for (line = Trim(line); !line.empty() && count < most; line = Trim_Left(line)) {
        const std::size_t size = std::min(line.find_first_of(" \t"), line.size());
        if (!whole(line.substr(0, size), values[count])) return -1;
        ++count;
        line.remove_prefix(size);
    }
    return count;
}

// Blanks and then digits, or blanks alone, in eight columns.
inline bool Plain_Eight(const char* columns, int& value) {
    if constexpr (!has_digit_words) return false;
    constexpr std::uint64_t blanks = 0x1010101010101010u;  // a blank ^ a zero
    std::uint64_t word;
    std::memcpy(&word, columns, word_digits);
    word ^= zero_digits;
    const std::uint64_t others = word ^ blanks;
    value = 0;
    if (others == 0) return true;
    word &= ~std::uint64_t{0} << (8 * Bytes_Before(others));
    if (No_Digits(word) != 0) return false;
    value = static_cast<int>(Eight_Digits(word));
    return true;
}

template <int width>
bool Plain_Integers(std::string_view line, int* values, int count) {
    static_assert(width >= word_digits);
    const char* at = line.data();
    for (int i = 0; i < count; ++i, at += width) {
        for (int blank = 0; blank < width - word_digits; ++blank)
            if (at[blank] != ' ') return false;
        if (!Plain_Eight(at + width - word_digits, values[i])) return false;
    }
    return true;
}

struct Columns {
    int count = 0;
    bool bad = false;  // the column behind them is no number
};

// The columns of a line that holds more than blanks and digits, or ends within a column.
template <class Number, class Whole>
Columns Careful_Columns(std::string_view line, int width, int count, int most, Number* values, Whole whole) {
    int good = 0;
    if (line.find('\t') == std::string_view::npos)
        while (good < count && whole(line.substr(static_cast<std::size_t>(good * width), static_cast<std::size_t>(width)), values[good]))
            ++good;
    if (good == count) return {count};
    Number free[10];
    const int any = Free_Numbers(line, free, most, whole);
    if (any < 0) return {good, true};
    std::copy(free, free + any, values);
    return {any};
}

template <int width>
Columns Line_Columns(std::string_view line, int most, int* values) {
    const int count = std::min((static_cast<int>(line.size()) + width - 1) / width, most);
    if (static_cast<int>(line.size()) >= count * width && Plain_Integers<width>(line, values, count)) return {count};
    return Careful_Columns(line, width, count, most, values, Whole_Integer);
}

template <int width>
Columns Line_Columns(std::string_view line, int most, float* values) {
    const int count = std::min((static_cast<int>(line.size()) + width - 1) / width, most);
    return Careful_Columns(line, width, count, most, values, Whole_Real);
}

bool Skip_Lines(Line_Cursor& lines, int count) {
    std::string_view line;
    for (; count > 0; --count)
        if (!lines.Next(line)) return false;
    return true;
}

template <int width, class Number>
Status Read_Columns(const Numor_Block& block, std::vector<Number>& values) {
    constexpr int a_line = static_cast<int>(line_width) / width;
    values.clear();
    Line_Cursor lines(block.body);
    if (!Skip_Lines(lines, block.words[1])) return Status::Fail(no_line);
    const auto told = static_cast<std::size_t>(std::max(block.words[0], 0));
    values.reserve(std::min(told, lines.Rest().size() / width + 1));
    Number columns[10];
    for (std::string_view line; values.size() < told && lines.Next(line);) {
        const auto most = static_cast<int>(std::min<std::size_t>(a_line, told - values.size()));
        const Columns read = Line_Columns<width>(Plain_Line(line).substr(0, line_width), most, columns);
        values.insert(values.end(), columns, columns + read.count);
        if (read.bad) return Status::Fail(Bad_Block(block.letter));
    }
    return Status::Done();
}

// The integer record below a marker; at least its first word.
bool Read_Words(std::string_view line, std::array<int, 10>& words) {
    line = Plain_Line(line).substr(0, line_width);
    words.fill(0);
    return !Trim(line).empty() && Line_Columns<8>(line, static_cast<int>(words.size()), words.data()).count > 0;
}

bool A_Block_Follows(Line_Cursor lines) {
    std::string_view next;
    std::array<int, 10> words;
    return lines.Next(next) && (Is_Marker(Letters_Of(next)) || Read_Words(next, words));
}

}  // namespace

const Numor_Block* Numor_Blocks::Find(char letter, std::size_t number) const {
    for (const Numor_Block& block : blocks)
        if (block.letter == letter && --number == 0) return &block;
    return nullptr;
}

char Marker_Letter(std::string_view line) {
    const Letters letters = Letters_Of(line);
    return Is_Marker(letters) ? letters.letter : ' ';
}

std::string Bad_Block(char letter) { return std::string(" A bad Block ") + letter + "-Type has been found"; }

Status Find_Blocks(std::string_view text, Numor_Blocks& found) {
    found = {};
    Line_Cursor lines(Without_End_Mark(Without_Mark(text)));
    const auto close = [&](const char* end) {
        if (found.blocks.empty()) return;
        std::string_view& body = found.blocks.back().body;
        body = {body.data(), static_cast<std::size_t>(end - body.data())};
    };
    for (std::string_view line; lines.Next(line);) {
        const Letters letters = Letters_Of(line);
        const bool marker = Is_Marker(letters);
        if (!marker && (!Might_Be_Marker(letters) || !A_Block_Follows(lines))) continue;
        close(line.data());
        Numor_Block block{letters.letter, lines.Number()};
        if (!marker) return Status::Fail(Bad_Block(block.letter));
        if (block.letter != 'V' && (!lines.Next(line) || !Read_Words(line, block.words))) return Status::Fail(Bad_Block(block.letter));
        block.body = {lines.Rest().data(), 0};
        found.blocks.push_back(block);
    }
    close(lines.Rest().data());
    if (found.blocks.empty() || found.blocks.back().letter != 'R') return Status::Done();
    Line_Cursor last(found.blocks.back().body);
    return Skip_Lines(last, found.blocks.back().words[1]) ? Status::Done() : Status::Fail(' ' + std::string(no_line));
}

Status Block_Text(const Numor_Block& block, std::string& text) {
    text.clear();
    const auto told = static_cast<std::size_t>(std::max(block.words[1], 0)), held = Count_Lines(block.body);
    if (held == 0 || held < told) return Status::Fail(no_line);
    const auto wanted = static_cast<std::size_t>(std::max(block.words[0], 0));
    Line_Cursor lines(block.body);
    if (held > told) Skip_Lines(lines, block.words[1]);
    std::size_t size = 0;
    for (std::string_view line; lines.Next(line) && (wanted == 0 || size < wanted); size += line_width) {
        const std::string kept = Kept_Text(Plain_Line(line), line_width);
        text += kept;
        text.append(line_width - std::min(Characters(kept), line_width), ' ');
    }
    if (wanted > 0) text = Cut(text, wanted);
    return Status::Done();
}

Status Block_Reals(const Numor_Block& block, std::vector<float>& values) { return Read_Columns<16>(block, values); }

Status Block_Integers(const Numor_Block& block, std::vector<int>& values) {
    return block.letter == 'J' ? Read_Columns<10>(block, values) : Read_Columns<8>(block, values);
}

}  // namespace vntl
