// Single numbers in free form, by the readers of numbers; by a format, as a record of one value.
#include "base/conversions.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/edit_descriptor.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"

namespace vntl {
namespace {

constexpr std::string_view separators = " \t\r\n,";

template <class Number>
std::string Number_To_String(Number value, std::string_view format) {
    if (Trim(format).empty()) {
        std::array<char, 64> digits;
        return std::string(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
    }
    const Edit_Format parsed(format);
    std::string text;
    if (Write_Record(text, parsed, value).failed) return {};
    while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
    return text;
}

// By a format; `value` changes on success alone.
template <class Number>
bool Read_By_Format(std::string_view text, std::string_view format, Number& value) {
    const Edit_Format parsed(format);
    Number read{};
    if (Read_Record(text, parsed, read).failed || !std::isfinite(static_cast<double>(read))) return false;
    value = read;
    return true;
}

}  // namespace

std::string IntegerToString(int value, std::string_view format) { return Number_To_String(value, format); }
std::string IRealToString(float value, std::string_view format) { return Number_To_String(value, format); }

bool IStringToInteger(std::string_view text, int& value, std::string_view format) {
    return Trim(format).empty() ? Parse_Integer(text, value) : Read_By_Format(text, format, value);
}

bool IStringToReal(std::string_view text, float& value, std::string_view format) {
    if (!Trim(format).empty()) return Read_By_Format(text, format, value);
    const std::string_view number = Trim(text);
    const char* const end = number.data() + number.size();
    float read = 0;
    if (number.empty() || Parse_Float(number.data(), end, read) != end || !std::isfinite(read)) return false;
    value = read;
    return true;
}

bool INextReal(std::string_view text, std::size_t& position, float& value) {
    position = std::min(text.find_first_not_of(separators, position), text.size());
    const std::size_t end = std::min(text.find_first_of(separators, position), text.size());
    if (!IStringToReal(text.substr(position, end - position), value)) return false;
    position = end;
    return true;
}

}  // namespace vntl
