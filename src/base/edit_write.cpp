// Writing by edit descriptors, column for column as Fortran programs print.
//
// A real is taken to decimal digits once, correctly rounded from its exact value, and the digits are then placed: before and behind the
// point, with the sign (that of a zero too), with the zero before the point where there is room for it.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "base/edit_descriptor.hpp"

namespace vntl {
namespace {

constexpr int exact_digits = 80;  // behind the point: more than a number above 1e-9 has, so that nothing is rounded

// A text of bounded size: 309 digits before the point, at most 600 behind it, sign, point and exponent.
struct Number_Text {
    char text[1200];
    int size = 0;

    void Add(char c) { text[size++] = c; }
    void Add(const char* from, int n) {
        std::memcpy(text + size, from, static_cast<std::size_t>(n));
        size += n;
    }
    void Add_Zeros(int n) {
        std::memset(text + size, '0', static_cast<std::size_t>(n));
        size += n;
    }
    std::string_view view() const { return {text, static_cast<std::size_t>(size)}; }
};

// Rounds a row of digits at `keep`, ties to even; the carry may need a digit in front, for which the row starts with a zero.
void Round_Digits(char* digits, int size, int keep) {
    const bool odd = keep > 0 && (digits[keep - 1] - '0') % 2 == 1;
    const bool beyond = std::any_of(digits + keep + 1, digits + size, [](char c) { return c != '0'; });
    const bool up = digits[keep] > '5' || (digits[keep] == '5' && (beyond || odd));
    std::fill(digits + keep, digits + size, '0');
    for (int i = keep - 1; up && i >= 0; --i) {
        if (digits[i] != '9') {
            ++digits[i];
            break;
        }
        digits[i] = '0';
    }
}

// The digits of magnitude * 10^scale with `behind` of them behind the point; those before it lose their leading zeros.
struct Fixed_Digits {
    char digits[1200];
    int first = 0;  // of those before the point
    int point = 0;
    int size = 0;

    template <class Real>
    Fixed_Digits(Real magnitude, int behind, int scale) {
        const int precision = behind + scale;
        std::fill(digits, digits + 240, '0');  // room for a carry and for a scale factor below zero
        char* const start = digits + 240;
        const int asked = precision >= 0 ? precision : exact_digits;
        char* end = std::to_chars(start, digits + sizeof digits, magnitude, std::chars_format::fixed, asked).ptr;
        char* dot = std::find(start, end, '.');
        point = static_cast<int>(dot - digits) + scale;
        if (dot != end) {
            std::memmove(dot, dot + 1, static_cast<std::size_t>(end - dot - 1));
            --end;
        }
        size = point + behind;
        if (precision < 0) Round_Digits(digits, static_cast<int>(end - digits), size);
        while (first < point && digits[first] == '0') ++first;
    }
};

// Fw.d of a finite number in `width` columns; 0 columns: as many as needed.
template <class Real>
Number_Text Fixed_Text(Real value, int width, int behind, int scale) {
    const Fixed_Digits number(std::abs(value), behind, scale);
    const int whole = number.point - number.first;
    const bool negative = std::signbit(value);
    Number_Text out;
    if (negative) out.Add('-');
    if (whole == 0 && (behind == 0 || width >= negative + 2 + behind)) out.Add('0');
    out.Add(number.digits + number.first, whole);
    out.Add('.');
    out.Add(number.digits + number.point, behind);
    return out;
}

// Significant digits of a finite number and the power of ten of the first one.
struct Scientific_Digits {
    char digits[800];
    int exponent = 0;

    template <class Real>
    Scientific_Digits(Real magnitude, int count) {
        const char* const end = std::to_chars(digits, digits + sizeof digits, magnitude, std::chars_format::scientific, count - 1).ptr;
        const char* const letter = std::find(digits, const_cast<char*>(end), 'e');
        std::from_chars(letter + (letter[1] == '+' ? 2 : 1), end, exponent);
        if (count > 1) std::memmove(digits + 1, digits + 2, static_cast<std::size_t>(letter - digits - 2));
    }
};

// How many of the d digits that Gw.d shows stand before the point, -1 when the number needs its scientific form. The bounds, numbers that
// would round to the next power of ten, are computed in the precision of the value, as the libraries of Fortran do: 0.95 in single
// precision, a little less than 0.95, is shown as 1. by G12.1.
template <class Real>
int Digits_Before_Point(Real magnitude, int d) {
    if (magnitude == 0) return 1;
    const Real half_unit = Real(0.5) * std::pow(Real(10), Real(-d));
    if (magnitude < Real(0.1) - Real(0.1) * half_unit) return -1;
    Real power = 1;
    for (int s = 0; s <= d; ++s, power *= 10)
        if (magnitude < power * (1 - half_unit)) return s;
    return -1;
}

// "E+05", "+123" where three digits leave no room for the letter, or as many digits as the item tells. False when they are too few.
bool Add_Exponent(Number_Text& out, int exponent, const Edit_Item& item) {
    const bool shortest = item.exponent == 0 || (item.width == 0 && item.exponent < 0);
    if (item.width == 0 && shortest && exponent == 0) return true;
    char digits[12];
    const int size = static_cast<int>(std::to_chars(digits, digits + sizeof digits, exponent < 0 ? -exponent : exponent).ptr - digits);
    const int columns = shortest ? size : item.exponent > 0 ? item.exponent : size <= 2 ? 2 : 3;
    if (size > columns) return false;
    if (shortest || item.exponent > 0 || columns == 2) out.Add(item.letter);
    out.Add(exponent < 0 ? '-' : '+');
    out.Add_Zeros(columns - size);
    out.Add(digits, size);
    return true;
}

// Ew.d and Dw.d of a finite number: with a scale factor of k > 0 it has k digits before the point, else -k zeros behind it.
template <class Real>
bool Exponential_Text(Real value, const Edit_Item& item, int scale, Number_Text& out) {
    const int count = scale > 0 ? item.digits + 1 : item.digits + scale;
    const Scientific_Digits number(std::abs(value), count);
    Number_Text tail;
    if (!Add_Exponent(tail, value == 0 ? 0 : number.exponent + 1 - scale, item)) return false;
    const bool negative = std::signbit(value);
    if (negative) out.Add('-');
    if (scale <= 0 && (item.width == 0 || item.width >= negative + 2 + item.digits + tail.size)) out.Add('0');
    out.Add(number.digits, std::max(scale, 0));
    out.Add('.');
    out.Add_Zeros(std::max(-scale, 0));
    out.Add(number.digits + std::max(scale, 0), count - std::max(scale, 0));
    out.Add(tail.text, tail.size);
    return true;
}

// "NaN", "Infinity" where it and its sign have room, else "Inf"; empty when not even that fits.
std::string_view Name_Text(bool nan, bool negative, int width) {
    const int room = width > 0 ? width : 4;
    if (nan) return room >= 3 ? "NaN" : "";
    if (negative) return room >= 9 ? "-Infinity" : room >= 4 ? "-Inf" : "";
    return room >= 8 ? "Infinity" : room >= 3 ? "Inf" : "";
}

}  // namespace

Edit_Writer::Edit_Writer(const Edit_Format& format, std::string& out)
    : walk_(format), out_(out), start_(out.size()), status_(format.status()) {}

bool Edit_Writer::Fail(std::string text) {
    if (status_.ok()) status_ = Status::Fail(std::move(text));
    return false;
}

bool Edit_Writer::Wrong_Kind(const char* wanted) {
    return Fail("The format " + walk_.format().text() + " has no " + wanted + " field where one is needed");
}

void Edit_Writer::End_Line() {
    out_ += '\n';
    start_ = out_.size();
    at_ = 0;
}

void Edit_Writer::Put(std::string_view text) {
    if (text.empty()) return;
    const std::size_t place = start_ + at_;
    if (place > out_.size()) out_.append(place - out_.size(), ' ');
    out_.replace(place, std::min(text.size(), out_.size() - place), text);
    at_ += text.size();
}

// Right-justified in `width` columns, stars when it is longer or empty; as it is in 0 columns.
void Edit_Writer::Put_Right(std::string_view text, int width) {
    const std::size_t columns = static_cast<std::size_t>(width);
    if (columns > 0 && (text.empty() || text.size() > columns)) {
        Put(std::string(columns, '*'));
        return;
    }
    if (columns > text.size()) Put(std::string(columns - text.size(), ' '));
    Put(text);
}

void Edit_Writer::Act(const Edit_Item& item) {
    switch (item.kind) {
        case Edit_Kind::right:
            at_ += static_cast<std::size_t>(item.count);
            break;
        case Edit_Kind::tab:
            at_ = static_cast<std::size_t>(item.count) - 1;
            break;
        case Edit_Kind::left:
            at_ -= std::min(at_, static_cast<std::size_t>(item.count));
            break;
        case Edit_Kind::line_end:
            End_Line();
            break;
        case Edit_Kind::scale:
            scale_ = item.count;
            break;
        case Edit_Kind::literal:
            Put(walk_.format().Literal(item));
            break;
        default:
            break;
    }
}

// The item of the next value; what stands before it acts. nullptr on failure.
const Edit_Item* Edit_Writer::Next_Field() {
    while (status_.ok()) {
        const Edit_Item* item = walk_.Next();
        if (item && Takes_Value(item->kind)) return item;
        if (item) {
            Act(*item);
            continue;
        }
        if (!walk_.format().restart_takes()) {
            Fail("The format " + walk_.format().text() + " has too few fields");
            return nullptr;
        }
        walk_.Restart();
        End_Line();
    }
    return nullptr;
}

const Status& Edit_Writer::Finish() {
    if (status_.failed) return status_;
    for (const Edit_Item* item = walk_.Next(); item && !Takes_Value(item->kind) && item->kind != Edit_Kind::stop; item = walk_.Next())
        Act(*item);
    End_Line();
    return status_;
}

template <class Number>
bool Edit_Writer::Real(Number value) {
    const Edit_Item* item = Next_Field();
    if (!item) return false;
    const bool general = item->kind == Edit_Kind::general;
    if (item->kind != Edit_Kind::fixed && item->kind != Edit_Kind::exponential && !general) return Wrong_Kind("real");
    if (!std::isfinite(value)) {
        Put_Right(Name_Text(std::isnan(value), std::signbit(value), item->width), item->width);
        return true;
    }
    if (item->kind == Edit_Kind::fixed) {
        Put_Right(Fixed_Text(value, item->width, item->digits, scale_).view(), item->width);
        return true;
    }
    if ((item->digits == 0 && scale_ == 0) || scale_ <= -item->digits - (item->digits == 0) || scale_ >= item->digits + 2)
        return Fail("The scale factor in the format " + walk_.format().text() + " leaves no digits");
    if (general && item->digits > 0) {
        const int blanks = item->exponent > 0 ? item->exponent + 2 : 4;
        const int before = Digits_Before_Point(std::abs(value), item->digits);
        if (before >= 0) {
            Number_Text number = Fixed_Text(value, std::max(item->width - blanks, 1), item->digits - before, 0);
            number.Add("                    ", blanks);
            Put_Right(number.view(), item->width);
            return true;
        }
    }
    Number_Text number;
    if (!Exponential_Text(value, *item, scale_, number)) number.size = 0;
    Put_Right(number.view(), item->width);
    return true;
}

template bool Edit_Writer::Real(float);
template bool Edit_Writer::Real(double);

bool Edit_Writer::Integer(long long value) {
    const Edit_Item* item = Next_Field();
    if (!item) return false;
    if (item->kind != Edit_Kind::integer && item->kind != Edit_Kind::general) return Wrong_Kind("integer");
    const int least = item->kind == Edit_Kind::integer ? item->digits : -1;
    char digits[24];
    char* const first = digits + (value < 0);
    char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const int size = static_cast<int>(end - first);
    if (value == 0 && least == 0) {
        Put(std::string(static_cast<std::size_t>(std::max(item->width, 1)), ' '));
        return true;
    }
    Number_Text number;
    if (value < 0) number.Add('-');
    number.Add_Zeros(std::max(least - size, 0));
    number.Add(first, size);
    Put_Right(number.view(), item->width);
    return true;
}

bool Edit_Writer::Logical(bool value) {
    const Edit_Item* item = Next_Field();
    if (!item) return false;
    if (item->kind != Edit_Kind::logical && item->kind != Edit_Kind::general) return Wrong_Kind("logical");
    Put_Right(value ? "T" : "F", item->width);
    return true;
}

// A text that is too long is cut, never inside a UTF-8 character.
bool Edit_Writer::Text(std::string_view text) {
    const Edit_Item* item = Next_Field();
    if (!item) return false;
    if (item->kind != Edit_Kind::text && item->kind != Edit_Kind::general) return Wrong_Kind("text");
    if (item->width < 0) {
        Put(text);
        return true;
    }
    const std::size_t width = static_cast<std::size_t>(item->width);
    if (text.size() > width) {
        std::size_t cut = width;
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0u) == 0x80u) --cut;
        text = text.substr(0, cut);
        Put(text);
        Put(std::string(width - cut, ' '));
        return true;
    }
    Put(std::string(width - text.size(), ' '));
    Put(text);
    return true;
}

}  // namespace vntl
