// Each value is parsed where it stands in the text; a repeated one is kept as its text and parsed for the kind that asks for it.
#include "base/free_form.hpp"

#include <algorithm>
#include <type_traits>

#include "base/real_parse.hpp"

namespace vntl {
namespace {

bool Is_Blank(char c) { return c == ' ' || c == '\t'; }
bool Is_Line_End(char c) { return c == '\n' || c == '\r'; }
bool Is_Separator(char c) { return c == ' ' || c == '\n' || c == ',' || c == '\t' || c == '\r' || c == '/'; }
bool At_Separator(const char* p, const char* last) { return p == last || Is_Separator(*p); }

// Each gives the end of the value at `first`, `first` when none stands there.
const char* Parse(const char* first, const char* last, float& value) { return Parse_Float(first, last, value); }
const char* Parse(const char* first, const char* last, double& value) { return Parse_Double(first, last, value); }

const char* Parse(const char* first, const char* last, int& value) {
    const char* end = first;
    return Parse_Int(end, last, value) ? end : first;
}

// A quoted text ends with its line at the latest, and is then none.
const char* Parse(const char* first, const char* last, std::string& value) {
    const char quote = *first;
    const char* p = first;
    if (quote != '\'' && quote != '"') {
        while (!At_Separator(p, last)) ++p;
        value.assign(first, p);
        return p;
    }
    std::string text;
    for (++p; p < last && !Is_Line_End(*p); ++p) {
        if (*p == quote && (++p == last || *p != quote)) {
            value = std::move(text);
            return p;
        }
        text += *p;
    }
    return first;
}

const char* Name(float) { return "a number"; }
const char* Name(double) { return "a number"; }
const char* Name(int) { return "a whole number"; }
const char* Name(const std::string&) { return "a text"; }

}  // namespace

// Goes behind the line end at which the walk stands: LF, CR LF or a lone CR.
void Free_Form_Reader::Line_End() {
    if (*next_ == '\r' && next_ + 1 < end_ && next_[1] == '\n') ++next_;
    ++next_;
    ++line_;
}

void Free_Form_Reader::Begin() {
    given_ = 0;
    separated_ = true;
    slash_ = false;
    repeats_ = 0;
}

bool Free_Form_Reader::End(bool good) {
    if (good)
        Skip_Line();
    else if (ended_ && status_.ok())
        status_ = Status::Fail("Line " + std::to_string(line_) + ": the text ends before all values are read");
    return good;
}

bool Free_Form_Reader::Skip_Line() {
    if (next_ == end_) return false;
    while (next_ < end_ && !Is_Line_End(*next_)) ++next_;
    if (next_ < end_) Line_End();
    return true;
}

bool Free_Form_Reader::At_End() {
    const char* p = next_;
    while (p < end_ && (Is_Blank(*p) || Is_Line_End(*p))) ++p;
    return p == end_;
}

// Goes to the next item, over blanks, line ends and the comma behind the item before.
inline Free_Form_Reader::Found Free_Form_Reader::Find_Item() {
    for (; next_ < end_;) {
        const char c = *next_;
        if (Is_Blank(c)) {
            ++next_;
        } else if (Is_Line_End(c)) {
            Line_End();
        } else if (c == ',') {
            ++next_;
            if (separated_) return Found::null;
            separated_ = true;
        } else if (c == '/') {
            slash_ = true;
            return Found::end;
        } else {
            return Found::value;
        }
    }
    ended_ = true;
    return Found::end;
}

// "3*1.0" stands here: the walk goes behind it, and three values are its 1.0. False, and nothing changed, when it is no count.
bool Free_Form_Reader::Take_Count() {
    int count = 0;
    const char* p = next_;
    if (*p < '0' || *p > '9' || !Parse_Int(p, end_, count) || p == end_ || *p != '*' || count == 0) return false;
    const char* const first = p + 1;
    const char* last = first;
    if (last < end_ && (*last == '\'' || *last == '"')) {
        std::string text;
        last = Parse(first, end_, text);
        if (last == first) return false;
    }
    while (!At_Separator(last, end_)) ++last;
    repeats_ = static_cast<std::size_t>(count);
    repeated_ = {first, static_cast<std::size_t>(last - first)};
    next_ = last;
    separated_ = false;
    return true;
}

// Gives up to n values of a repeat count; how many places it has served, 0 on failure.
template <class Value>
std::size_t Free_Form_Reader::Repeats(Value* values, std::size_t n) {
    const std::size_t count = std::min(n, repeats_);
    if (!repeated_.empty()) {
        Value value{};
        const char* const last = repeated_.data() + repeated_.size();
        if (Parse(repeated_.data(), last, value) != last) {
            Bad_Item(repeated_.data(), Name(value));
            return 0;
        }
        std::fill(values, values + count, value);
        given_ += count;
    }
    repeats_ -= count;
    return count;
}

template <class Value>
bool Free_Form_Reader::Items(Value* values, std::size_t n) {
    if (status_.failed) return false;
    for (std::size_t i = 0; i < n && !slash_;) {
        if (repeats_ > 0) {
            const std::size_t served = Repeats(values + i, n - i);
            if (served == 0) return false;
            i += served;
            continue;
        }
        const Found found = Find_Item();
        if (found == Found::null) ++i;
        if (found == Found::end && !slash_) return false;
        if (found != Found::value) continue;
        if (std::is_same_v<Value, std::string> && Take_Count()) continue;  // a word of its own only when it is no count
        Value value{};
        const char* const last = Parse(next_, end_, value);
        if (last != next_ && At_Separator(last, end_)) {
            values[i++] = std::move(value);
            ++given_;
            next_ = last;
            separated_ = false;
        } else if (!Take_Count()) {
            return Bad_Item(next_, Name(value));
        }
    }
    return true;
}

template bool Free_Form_Reader::Items(float*, std::size_t);
template bool Free_Form_Reader::Items(double*, std::size_t);
template bool Free_Form_Reader::Items(int*, std::size_t);
template bool Free_Form_Reader::Items(std::string*, std::size_t);

bool Free_Form_Reader::Bad_Item(const char* first, const char* wanted) {
    constexpr std::ptrdiff_t shown = 40;
    const char* last = first;
    while (last - first < shown && !At_Separator(last, end_)) ++last;
    status_ = Status::Fail("Line " + std::to_string(line_) + ": \"" + std::string(first, last) + "\" is not " + wanted);
    return false;
}

bool Read_Free_Reals(std::string_view text, std::span<float> values) {
    Free_Form_Reader reader(text);
    return reader.Read(values) && reader.given() == values.size();
}

}  // namespace vntl
