// A decimal text is a whole number m times a power of ten. When m < 2^53 and the power is at most 10^22 both are doubles without
// error, so one multiplication or division gives the correctly rounded double (Clinger, 1990). The float next to that double is the
// float next to the text, unless the double lies exactly midway between two floats: there, and everywhere else, std::from_chars
// decides on a plain copy of the digits.
#include "base/real_parse.hpp"

#include <algorithm>
#include <bit>  // bit_cast
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

#include "base/digit_word.hpp"

namespace vntl {
namespace {

constexpr double powers_of_ten[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::uint64_t small_powers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
constexpr long long largest_exact_power = 22;
constexpr std::uint64_t mantissa_limit = std::uint64_t{1} << 53;
constexpr long long uint64_digits = 19;            // any whole number of 19 digits fits into 64 bits
constexpr long long exponent_limit = 100'000'000;  // larger exponents change nothing more
constexpr long long deciding_digits = 780;         // a double is decided by its first 767 digits and whether more follow

inline bool Is_Digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }
inline char To_Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Appends the digits at p to the mantissa.
inline const char* Gather_Digits(const char* p, const char* last, std::uint64_t& mantissa) {
    if (has_digit_words) {
        const std::uint64_t word = Load_Word(p, last) ^ zero_digits;
        const int count = Bytes_Before(No_Digits(word));
        if (count == 0) return p;
        mantissa = mantissa * small_powers[count] + Eight_Digits(word << (64 - 8 * count));
        p += count;
        if (count < word_digits) return p;
    }
    for (; p < last && Is_Digit(*p); ++p) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
    return p;
}

bool Starts_With(const char* first, const char* last, std::string_view word) {
    if (last - first < static_cast<std::ptrdiff_t>(word.size())) return false;
    return std::equal(word.begin(), word.end(), first, [](char w, char c) { return w == To_Lower(c); });
}

// The double is the nearest one to the text; true when the float nearest to it is the float nearest to the text.
bool Decides_Float(double magnitude) {
    constexpr std::uint64_t low_bits = (std::uint64_t{1} << 29) - 1, midway = std::uint64_t{1} << 28;
    return (std::bit_cast<std::uint64_t>(magnitude) & low_bits) != midway && magnitude >= double{std::numeric_limits<float>::min()} &&
           magnitude < double{std::numeric_limits<float>::max()};
}

template <class Real>
bool Quick_Value(std::uint64_t mantissa, long long exponent10, bool negative, Real& value) {
    if (mantissa >= mantissa_limit || exponent10 > largest_exact_power || exponent10 < -largest_exact_power) return false;
    double magnitude = static_cast<double>(mantissa);
    if (exponent10 < 0)
        magnitude /= powers_of_ten[-exponent10];
    else
        magnitude *= powers_of_ten[exponent10];
    if (std::is_same_v<Real, float> && mantissa != 0 && !Decides_Float(magnitude)) return false;
    value = static_cast<Real>(negative ? -magnitude : magnitude);
    return true;
}

// A number of nine to sixteen characters whose point is one of the first eight: the seven digits about it and those of a second word, which
// need not wait for how the first one ends. `first` for any other.
template <class Real>
const char* Parse_Long_Fraction(const char* first, const char* last, bool negative, Real& value) {
    if (!has_digit_words) return first;
    const std::uint64_t word = Load_Word(first, last) ^ zero_digits;
    const std::uint64_t marks = No_Digits(word);
    const int whole = Bytes_Before(marks);
    if (whole == word_digits || (marks & (marks - 1)) != 0 || !Is_Point(word, whole)) return first;
    const std::uint64_t rest = Load_Word(first + word_digits, last) ^ zero_digits;
    const int more = Bytes_Before(No_Digits(rest));
    const char* const end = first + word_digits + more;
    if (more == 0 || (end != last && *end > ' ' && *end != ',')) return first;
    const std::uint64_t seven = Eight_Digits(Without_Byte(word, whole) << 8);
    const std::uint64_t mantissa = seven * small_powers[more] + Eight_Digits(rest << (64 - 8 * more));
    return Quick_Value(mantissa, whole + 1 - word_digits - more, negative, value) ? end : first;
}

template <class Real>
Real From_Digits(const char* first, const char* last, long long exponent10, bool negative) {
    char copy[deciding_digits + 32];
    long long count = 0, dropped = 0;
    bool more = false;
    for (const char* p = first; p < last; ++p) {
        if (*p == '.' || (count == 0 && *p == '0')) continue;
        if (count < deciding_digits) {
            copy[count++] = *p;
        } else {
            ++dropped;
            more |= *p != '0';
        }
    }
    Real value = 0;
    if (count > 0) {
        long long exponent = exponent10 + dropped;
        const long long magnitude = exponent + count;
        if (more) {
            copy[count++] = '1';
            --exponent;
        }
        copy[count++] = 'e';
        exponent = std::clamp(exponent, -99999LL, 99999LL);
        char* end = std::to_chars(copy + count, copy + sizeof copy, exponent).ptr;
        if (std::from_chars(copy, end, value).ec == std::errc::result_out_of_range)
            value = magnitude > 0 ? std::numeric_limits<Real>::infinity() : Real{0};
    }
    return negative ? -value : value;
}

template <class Real>
const char* Parse_Name(const char* first, const char* p, const char* last, bool negative, Real& value) {
    const bool nan = Starts_With(p, last, "nan");
    if (!nan && !Starts_With(p, last, "inf")) return first;
    const Real magnitude = nan ? std::numeric_limits<Real>::quiet_NaN() : std::numeric_limits<Real>::infinity();
    value = negative ? -magnitude : magnitude;
    if (!nan && Starts_With(p, last, "infinity")) return p + 8;
    return p + 3;
}

// The exponent at p, with or without its letter; p itself when no exponent stands there.
const char* Parse_Exponent(const char* p, const char* last, long long& exponent) {
    const char* q = p;
    const char letter = To_Lower(*q);
    const bool lettered = letter == 'e' || letter == 'd' || letter == 'q';
    if (lettered) ++q;
    const bool is_signed = q < last && (*q == '+' || *q == '-');
    if (!lettered && !is_signed) return p;
    const bool negative = is_signed && *q == '-';
    if (is_signed) ++q;
    if (q == last || !Is_Digit(*q)) return p;
    long long power = 0;
    for (; q < last && Is_Digit(*q); ++q) power = std::min(power * 10 + (*q - '0'), exponent_limit);
    exponent = negative ? -power : power;
    return q;
}

template <class Real>
const char* Parse_Real_Number(const char* first, const char* last, Real& value) {
    const char* p = first;
    if (p == last) return first;
    const bool negative = *p == '-';
    if (negative || *p == '+') ++p;
    const char* const digits = p;
    if (p != first) {
        const char* const end = Parse_Short(digits, last, value);
        if (negative && end != digits) value = -value;
        if (end != digits) return end;
    }
    if (const char* const end = Parse_Long_Fraction(digits, last, negative, value); end != digits) return end;
    std::uint64_t mantissa = 0;  // wraps on long mantissas, which the digit count below tells
    p = Gather_Digits(p, last, mantissa);
    long long count = p - digits;
    long long exponent10 = 0;
    if (p < last && *p == '.') {
        const char* const fraction = ++p;
        p = Gather_Digits(p, last, mantissa);
        exponent10 = fraction - p;
        count -= exponent10;
    }
    if (count == 0) return Parse_Name(first, digits, last, negative, value);
    const char* const digits_end = p;
    const bool goes_on = p != last && *p > ' ' && *p != ',';
    if (goes_on) {
        long long written = 0;
        p = Parse_Exponent(p, last, written);
        exponent10 += written;
    }
    if (count > uint64_digits || !Quick_Value(mantissa, exponent10, negative, value))
        value = From_Digits<Real>(digits, digits_end, exponent10, negative);
    return p;
}

template <class Integer>
bool Parse_Integer_Number(const char*& cursor, const char* last, Integer& value) {
    const char* p = cursor;
    if (p < last && *p == '+' && p + 1 < last && p[1] != '-') ++p;
    const auto [end, error] = std::from_chars(p, last, value);
    if (error != std::errc{}) return false;
    cursor = end;
    return true;
}

}  // namespace

const char* Parse_Any(const char* first, const char* last, float& value) { return Parse_Real_Number(first, last, value); }
const char* Parse_Any(const char* first, const char* last, double& value) { return Parse_Real_Number(first, last, value); }

bool Parse_Int(const char*& cursor, const char* last, int& value) { return Parse_Integer_Number(cursor, last, value); }
bool Parse_Int(const char*& cursor, const char* last, long long& value) { return Parse_Integer_Number(cursor, last, value); }

float Float_From_Digits(const char* first, const char* last, long long exponent10, bool negative) {
    return From_Digits<float>(first, last, exponent10, negative);
}
double Double_From_Digits(const char* first, const char* last, long long exponent10, bool negative) {
    return From_Digits<double>(first, last, exponent10, negative);
}

}  // namespace vntl
