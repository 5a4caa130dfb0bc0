#include "base/natural_order.hpp"

#include <algorithm>

#include "base/text.hpp"

namespace vntl {

namespace {

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

std::size_t Digits_At(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && Is_Digit(text[end])) ++end;
    return end - at;
}

// A number without the zeros that do not change its value.
struct Number {
    std::string_view whole, decimals;
    std::size_t length = 0;  // characters in the text
};

std::string_view Without_Leading_Zeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}
std::string_view Without_Last_Zeros(std::string_view digits) { return digits.substr(0, digits.find_last_not_of('0') + 1); }

bool Point_Before_Digit(std::string_view text, std::size_t at) { return at + 1 < text.size() && text[at] == '.' && Is_Digit(text[at + 1]); }

// The number at a digit. A point belongs to it where neither another group of digits with its point comes before nor one comes behind.
Number Number_At(std::string_view text, std::size_t at) {
    const std::size_t whole = Digits_At(text, at), point = at + whole;
    Number number{Without_Leading_Zeros(text.substr(at, whole)), {}, whole};
    const bool after_point = at >= 2 && text[at - 1] == '.' && Is_Digit(text[at - 2]);
    if (after_point || !Point_Before_Digit(text, point)) return number;
    const std::size_t decimals = Digits_At(text, point + 1);
    if (Point_Before_Digit(text, point + 1 + decimals)) return number;
    number.decimals = Without_Last_Zeros(text.substr(point + 1, decimals));
    number.length += 1 + decimals;
    return number;
}

std::weak_ordering Compare(const Number& a, const Number& b) {
    if (const auto by_length = a.whole.size() <=> b.whole.size(); by_length != 0) return by_length;
    if (const auto by_whole = a.whole <=> b.whole; by_whole != 0) return by_whole;
    return a.decimals <=> b.decimals;
}

}  // namespace

std::weak_ordering Compare_Natural(std::string_view a, std::string_view b) {
    const std::string first = Lower(a), second = Lower(b);
    std::size_t i = 0, j = 0;
    while (i < first.size() && j < second.size()) {
        if (Is_Digit(first[i]) && Is_Digit(second[j])) {
            const Number x = Number_At(first, i), y = Number_At(second, j);
            if (const auto order = Compare(x, y); order != 0) return order;
            i += x.length;
            j += y.length;
        } else {
            const auto x = static_cast<unsigned char>(first[i++]), y = static_cast<unsigned char>(second[j++]);
            if (x != y) return x <=> y;
        }
    }
    return first.size() - i <=> second.size() - j;
}

}  // namespace vntl
