#include "patterns/cif/cif_values.hpp"

#include <cmath>
#include <cstdlib>
#include <iterator>

namespace vntl {

namespace {

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// The decimal exponent of the last digit of the number in [first, last): -2 of "12.34", 1 of "1.234E3".
bool Last_Place(const char* first, const char* last, int& place) {
    const char* at = first;
    if (*at == '+' || *at == '-') ++at;
    while (at != last && Is_Digit(*at)) ++at;
    const char* const point = at;
    if (at != last && *at == '.') ++at;
    while (at != last && Is_Digit(*at)) ++at;
    const int decimals = at == point ? 0 : static_cast<int>(at - point) - 1;
    int exponent = 0;
    if (at != last) {
        constexpr int most = 10000;
        if (*at != '+' && *at != '-') ++at;
        if (!Parse_Int(at, last, exponent) || std::abs(exponent) > most) return false;
    }
    place = exponent - decimals;
    return true;
}

// Digits whose last one has that place.
float Deviation(const char* first, const char* last, int place) {
    constexpr double powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
    constexpr int short_enough = 9;
    if (last - first > short_enough || place > 0 || -place >= static_cast<int>(std::size(powers)))
        return Float_From_Digits(first, last, place, false);
    int digits = 0;
    for (; first != last; ++first) digits = 10 * digits + (*first - '0');
    return static_cast<float>(digits / powers[-place]);
}

}  // namespace

bool Take_Cif_Deviation(const char* at, const char*& behind, const char* last, Cif_Value& value) {
    const char* const first = behind + 1;
    const char* end = first;
    while (end != last && Is_Digit(*end)) ++end;
    int place = 0;
    if (end == first || end == last || *end != ')' || !Last_Place(at, behind, place)) return false;
    value.deviation = Deviation(first, end, place);
    behind = end + 1;
    return std::isfinite(value.deviation);
}

}  // namespace vntl
