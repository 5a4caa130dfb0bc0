#include "pictures/dxf_groups.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "pictures/text_extent.hpp"

namespace vntl {
namespace {

constexpr double farthest = 1e9;  // millimetres: no page reaches there, and the whole number keeps its digits
constexpr std::size_t number_room = 32;

std::int64_t Scaled(double value, double scale) {
    if (!std::isfinite(value)) return 0;
    const double scaled = std::clamp(value, -farthest, farthest) * scale;
    return static_cast<std::int64_t>(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
}

// A whole number of 1/`scale`, without zeros at the end.
char* Put_Decimal(char* at, std::int64_t value, std::int64_t scale) {
    if (value < 0) *at++ = '-', value = -value;
    at = std::to_chars(at, at + number_room, value / scale).ptr;
    std::int64_t rest = value % scale;
    if (rest == 0) return at;
    *at++ = '.';
    for (; rest != 0; rest %= scale) {
        scale /= 10;
        *at++ = static_cast<char>('0' + rest / scale);
    }
    return at;
}

char* Put_Coordinate(char* at, char axis, std::int64_t value) {
    *at++ = axis, *at++ = '0', *at++ = '\n';
    at = Put_Decimal(at, value, 1000);
    *at++ = '\n';
    return at;
}

void Put_Utf16(std::string& words, std::uint32_t unit) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    words += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) words += digits[unit >> shift & 15u];
}

}  // namespace

Dxf_Place Rounded_Place(Point mm) { return {Scaled(mm.x, 1000), Scaled(mm.y, 1000)}; }

void Dxf_Groups::Number(int value) {
    std::array<char, number_room> digits;
    text_.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
    text_ += '\n';
}

void Dxf_Groups::Word(int code, std::string_view value) {
    Number(code);
    text_ += value;
    text_ += '\n';
}

void Dxf_Groups::Whole(int code, int value) {
    Number(code);
    Number(value);
}

void Dxf_Groups::Handle(int code, std::uint32_t value) {
    std::array<char, number_room> digits;
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    for (char* c = digits.data(); c != end; ++c)
        if (*c >= 'a') *c = static_cast<char>(*c - 'a' + 'A');
    Word(code, {digits.data(), static_cast<std::size_t>(end - digits.data())});
}

void Dxf_Groups::Length(int code, double mm) {
    std::array<char, number_room> digits;
    char* const end = Put_Decimal(digits.data(), Scaled(mm, 1e3), 1000);
    Word(code, {digits.data(), static_cast<std::size_t>(end - digits.data())});
}

void Dxf_Groups::Ratio(int code, double value) {
    std::array<char, number_room> digits;
    char* const end = Put_Decimal(digits.data(), Scaled(value, 1e6), 1000000);
    Word(code, {digits.data(), static_cast<std::size_t>(end - digits.data())});
}

void Dxf_Groups::Place(int code, Dxf_Place place) {
    for (const std::int64_t value : {place.x, place.y, std::int64_t{0}}) {
        std::array<char, number_room> digits;
        Word(code, {digits.data(), static_cast<std::size_t>(Put_Decimal(digits.data(), value, 1000) - digits.data())});
        code += 10;
    }
}

// A drawing is vertices for the greatest part, millions of them: each pair is put together before it is appended.
void Dxf_Groups::Vertices(std::span<const Dxf_Place> vertices) {
    std::array<char, 3 * number_room> pair;
    for (const Dxf_Place& place : vertices) {
        char* const end = Put_Coordinate(Put_Coordinate(pair.data(), '1', place.x), '2', place.y);
        text_.append(pair.data(), end);
    }
}

std::string Dxf_Words(std::string_view text) {
    std::string words;
    for (std::size_t i = 0; i < text.size();) {
        const bool doubled = text[i] == '%' && ((i + 1 < text.size() && text[i + 1] == '%') || (i > 0 && text[i - 1] == '%'));
        const std::uint32_t code = Next_Letter(text, i);
        if (doubled) {
            words += "%%%";
        } else if (code == '^') {
            words += "^ ";
        } else if (code == '\\' || (code >= 0x80 && code < 0x10000)) {
            Put_Utf16(words, code);
        } else if (code >= 0x10000) {
            Put_Utf16(words, 0xd800 + ((code - 0x10000) >> 10));
            Put_Utf16(words, 0xdc00 + ((code - 0x10000) & 0x3ff));
        } else {
            words += static_cast<char>(code);
        }
    }
    return words;
}

}  // namespace vntl
