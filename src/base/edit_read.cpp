// Reading by edit descriptors. A field that is a plain number between blanks is converted where it stands; any other is first copied
// without its blanks and taken apart.
#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>

#include "base/edit_descriptor.hpp"
#include "base/real_parse.hpp"

namespace vntl {
namespace {

constexpr std::size_t number_limit = 1000;  // characters of a number without its blanks

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

const char* Skip_Blanks(const char* p, const char* last) {
    while (p < last && *p == ' ') ++p;
    return p;
}

const char* Parse(const char* first, const char* last, float& value) { return Parse_Float(first, last, value); }
const char* Parse(const char* first, const char* last, double& value) { return Parse_Double(first, last, value); }

// A number without its blanks.
struct Compact {
    char text[number_limit];
    std::size_t size = 0;

    bool Fill(std::string_view field) {
        for (char c : field) {
            if (c == ' ') continue;
            if (size == number_limit) return false;
            text[size++] = c;
        }
        return true;
    }
    const char* begin() const { return text; }
    const char* end() const { return text + size; }
};

// The exponent that fills [p, last), with or without its letter.
bool Whole_Exponent(const char* p, const char* last, long long& exponent) {
    if (std::strchr("eEdDqQ", *p))
        ++p;
    else if (*p != '+' && *p != '-')
        return false;
    return Parse_Int(p, last, exponent) && p == last && exponent > -1'000'000 && exponent < 1'000'000;
}

// Any real field: the point implied before the last `digits` digits, the scale factor, a sign or a point alone for zero.
template <class Real>
bool Careful_Real(std::string_view field, int digits, int scale, Real& value) {
    Compact number;
    if (!number.Fill(field)) return false;
    const char* p = number.begin();
    const char* const last = number.end();
    const bool negative = p < last && *p == '-';
    if (p < last && (*p == '-' || *p == '+')) ++p;
    const char* const first = p;
    const char* point = nullptr;
    for (; p < last && (Is_Digit(*p) || (*p == '.' && !point)); ++p)
        if (*p == '.') point = p;
    if (p == first && p < last)
        return Is_Digit(*p) || *p == 'i' || *p == 'I' || *p == 'n' || *p == 'N' ? Parse(number.begin(), last, value) == last : false;
    long long exponent = -scale;
    if (p < last && !Whole_Exponent(p, last, exponent)) return false;
    exponent -= point ? p - point - 1 : digits;
    if constexpr (std::is_same_v<Real, float>)
        value = Float_From_Digits(first, p, exponent, negative);
    else
        value = Double_From_Digits(first, p, exponent, negative);
    return true;
}

// A field of Fw.d, Ew.d, Dw.d or Gw.d.
template <class Real>
bool Convert_Real(std::string_view field, int digits, int scale, Real& value) {
    const char* const last = field.data() + field.size();
    const char* const first = Skip_Blanks(field.data(), last);
    if (first == last) {
        value = 0;
        return true;
    }
    if (scale == 0) {
        Real plain;
        const char* const end = Parse(first, last, plain);
        const bool point_told = digits == 0 || std::memchr(first, '.', static_cast<std::size_t>(end - first));
        if (end != first && point_told && Skip_Blanks(end, last) == last) {
            value = plain;
            return true;
        }
    }
    return Careful_Real(field, digits, scale, value);
}

// A field of Iw for an integer or a real.
template <class Number>
bool Convert_Integer(std::string_view field, Number& value) {
    using Whole = std::conditional_t<std::is_same_v<Number, int>, int, long long>;
    const char* const last = field.data() + field.size();
    const char* p = Skip_Blanks(field.data(), last);
    Whole whole = 0;
    if (p != last && !(Parse_Int(p, last, whole) && Skip_Blanks(p, last) == last)) {
        Compact number;
        if (!number.Fill(field)) return false;
        p = number.begin();
        if (!Parse_Int(p, number.end(), whole) || p != number.end()) return false;
    }
    value = static_cast<Number>(whole);
    return true;
}

}  // namespace

Edit_Reader::Edit_Reader(const Edit_Format& format, std::string_view line)
    : walk_(format), line_(line), lines_(1), status_(format.status()) {}

Edit_Reader::Edit_Reader(const Edit_Format& format, Next_Line next) : walk_(format), next_(std::move(next)), status_(format.status()) {
    if (status_.ok()) New_Line();
}

bool Edit_Reader::Fail(std::string text) {
    if (status_.ok()) status_ = Status::Fail(std::move(text));
    return false;
}

bool Edit_Reader::New_Line() {
    at_ = 0;
    if (next_ && next_(line_)) {
        ++lines_;
        return true;
    }
    line_ = {};
    ended_ = true;
    return Fail("The lines end before the format " + walk_.format().text() + " has all its values");
}

// The item of the next value; what stands before it acts. nullptr on failure.
const Edit_Item* Edit_Reader::Next_Field() {
    while (status_.ok()) {
        const Edit_Item* item = walk_.Next();
        if (!item) {
            if (!walk_.format().restart_takes()) {
                Fail("The format " + walk_.format().text() + " has too few fields");
                return nullptr;
            }
            walk_.Restart();
            New_Line();
            continue;
        }
        switch (item->kind) {
            case Edit_Kind::right:
            case Edit_Kind::literal:
                at_ += static_cast<std::size_t>(item->count);
                break;
            case Edit_Kind::tab:
                at_ = static_cast<std::size_t>(item->count) - 1;
                break;
            case Edit_Kind::left:
                at_ -= std::min(at_, static_cast<std::size_t>(item->count));
                break;
            case Edit_Kind::line_end:
                New_Line();
                break;
            case Edit_Kind::scale:
                scale_ = item->count;
                break;
            case Edit_Kind::stop:
                break;
            default:
                return item;
        }
    }
    return nullptr;
}

std::string_view Edit_Reader::Field(int width) const {
    return at_ < line_.size() ? line_.substr(at_, static_cast<std::size_t>(width)) : std::string_view();
}

bool Edit_Reader::Bad_Field(std::string_view field) {
    constexpr std::size_t shown = 60;
    return Fail("Bad value \"" + std::string(field.substr(0, shown)) + "\" in columns " + std::to_string(at_ + 1) + " to " +
                std::to_string(at_ + field.size()));
}

bool Edit_Reader::Wrong_Kind(const char* wanted) {
    return Fail("The format " + walk_.format().text() + " has no " + wanted + " field where one is needed");
}

// One field; a comma inside ends it early, and the next field starts behind the comma.
template <class Number, class Convert>
inline bool Edit_Reader::Number_Field(const Edit_Item& item, Number& value, Convert convert) {
    const std::string_view field = Field(item.width);
    if (convert(field, value)) {
        at_ += static_cast<std::size_t>(item.width);
        return true;
    }
    const std::size_t comma = field.find(',');
    if (comma == std::string_view::npos || !convert(field.substr(0, comma), value)) return Bad_Field(field);
    at_ += comma + 1;
    return true;
}

template <class Real>
bool Edit_Reader::Reals(Real* values, std::size_t n) {
    for (std::size_t i = 0; i < n;) {
        const Edit_Item* item = Next_Field();
        if (!item) return false;
        const bool whole = item->kind == Edit_Kind::integer;
        if (!whole && item->kind != Edit_Kind::fixed && item->kind != Edit_Kind::exponential && item->kind != Edit_Kind::general)
            return Wrong_Kind("real");
        if (item->width == 0) return Fail("The format " + walk_.format().text() + " has a field without a width, which cannot be read");
        const std::size_t most = std::min<std::size_t>(n - i - 1, std::numeric_limits<int>::max());
        const std::size_t last = i + 1 + static_cast<std::size_t>(walk_.Take(static_cast<int>(most)));
        for (; i < last; ++i, ++given_) {
            const bool good =
                whole ? Number_Field(*item, values[i], [](auto f, Real& v) { return Convert_Integer(f, v); })
                      : Number_Field(*item, values[i], [this, item](auto f, Real& v) { return Convert_Real(f, item->digits, scale_, v); });
            if (!good) return false;
        }
    }
    return true;
}

template bool Edit_Reader::Reals(float*, std::size_t);
template bool Edit_Reader::Reals(double*, std::size_t);

bool Edit_Reader::Integers(int* values, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i, ++given_) {
        const Edit_Item* item = Next_Field();
        if (!item) return false;
        if (item->kind != Edit_Kind::integer && item->kind != Edit_Kind::general) return Wrong_Kind("integer");
        if (item->width == 0) return Fail("The format " + walk_.format().text() + " has a field without a width, which cannot be read");
        if (!Number_Field(*item, values[i], [](auto f, int& v) { return Convert_Integer(f, v); })) return false;
    }
    return true;
}

// T or F after an optional point, whatever follows; a blank field is false.
bool Edit_Reader::Logical(bool& value) {
    const Edit_Item* item = Next_Field();
    if (!item) return false;
    if (item->kind != Edit_Kind::logical && item->kind != Edit_Kind::general) return Wrong_Kind("logical");
    const std::string_view field = Field(item->width);
    const char* const last = field.data() + field.size();
    const char* p = Skip_Blanks(field.data(), last);
    const bool blank = p == last;
    if (!blank && *p == '.') ++p;
    if (!blank && (p == last || !std::strchr("TtFf", *p) || *p == '\0')) return Bad_Field(field);
    value = !blank && (*p == 'T' || *p == 't');
    at_ += static_cast<std::size_t>(item->width);
    ++given_;
    return true;
}

bool Edit_Reader::Read_Text(std::string& text, std::size_t length) {
    const Edit_Item* item = Next_Field();
    if (!item) return false;
    if (item->kind != Edit_Kind::text && item->kind != Edit_Kind::general) return Wrong_Kind("text");
    const std::size_t rest = at_ < line_.size() ? line_.size() - at_ : 0;
    const std::size_t own = length == static_cast<std::size_t>(-1) ? rest : length;
    const std::size_t width = item->width > 0 ? static_cast<std::size_t>(item->width) : own;
    std::string_view field = at_ < line_.size() ? line_.substr(at_, width) : std::string_view();
    if (width > length) field = field.substr(std::min(width - length, field.size()));
    text.assign(field.substr(0, field.find_last_not_of(' ') + 1));
    at_ += width;
    ++given_;
    return true;
}

}  // namespace vntl
