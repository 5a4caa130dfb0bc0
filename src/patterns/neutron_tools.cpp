#include "patterns/neutron_tools.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vntl {

namespace {

constexpr std::array<float, 11> powers_of_ten = {1, 1e1f, 1e2f, 1e3f, 1e4f, 1e5f, 1e6f, 1e7f, 1e8f, 1e9f, 1e10f};  // all exact

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// A field of `width` columns that is blank, or an unsigned number between blanks whose digits a float holds exactly: one division rounds it
// right.
template <std::size_t width>
inline bool Take_Plain(const char* field, float& value) {
    static_assert(width < powers_of_ten.size());
    constexpr std::uint64_t exact = 1u << 24;
    const char* const end = field + width;
    while (field != end && *field == ' ') ++field;
    if (field == end) {
        value = 0;
        return true;
    }
    if (!Is_Digit(*field)) return false;
    std::uint64_t digits = 0;
    std::size_t decimals = 0;
    for (; field != end && Is_Digit(*field); ++field) digits = 10 * digits + static_cast<std::uint64_t>(*field - '0');
    if (field != end && *field == '.') {
        const char* const point = field++;
        for (; field != end && Is_Digit(*field); ++field) digits = 10 * digits + static_cast<std::uint64_t>(*field - '0');
        decimals = static_cast<std::size_t>(field - point - 1);
    }
    while (field != end && *field == ' ') ++field;
    value = static_cast<float>(digits) / powers_of_ten[decimals];
    return field == end && digits <= exact;
}

template <std::size_t width>
inline bool Take_Plain(const char* field, int& value) {
    static_assert(width == 2);
    const bool tens = Is_Digit(field[0]);
    if (!Is_Digit(field[1]) || (!tens && field[0] != ' ')) return false;
    value = (tens ? 10 * (field[0] - '0') : 0) + field[1] - '0';
    return true;
}

// A list, line by line: `plain` takes all values of a line from a position on or tells that it cannot, `careful` is asked then.
template <std::size_t per_line, std::size_t width, class Plain, class Careful>
inline Filled Read_List(Line_Cursor& lines, std::size_t size, Plain plain, Careful careful) {
    std::string_view line;
    for (std::size_t at = 0; at < size; at += per_line) {
        if (!lines.Next(line)) return Filled::lines_ended;
        const bool whole = size - at >= per_line && line.size() >= per_line * width;
        if (!(whole && plain(line.data(), at)) && !careful(line, at)) return Filled::bad_number;
    }
    return Filled::all;
}

template <std::size_t per_line, std::size_t first_width, std::size_t second_width, class Number>
Filled Read_Pairs(Line_Cursor& lines, const Edit_Format& pairs, std::span<Number> first, std::span<float> second) {
    constexpr std::size_t width = first_width + second_width;
    const auto plain = [&](const char* line, std::size_t at) {
        for (std::size_t i = 0; i < per_line; ++i, line += width)
            if (!Take_Plain<first_width>(line, first[at + i]) || !Take_Plain<second_width>(line + first_width, second[at + i]))
                return false;
        return true;
    };
    const auto careful = [&](std::string_view line, std::size_t at) {
        Edit_Reader reader(pairs, line);
        const std::size_t end = std::min(at + per_line, first.size());
        for (; at < end; ++at)
            if (!reader.Read(first[at], second[at])) return false;
        return true;
    };
    return Read_List<per_line, width>(lines, first.size(), plain, careful);
}

}  // namespace

bool Read_Range(Line_Cursor& lines, Diffraction_Pattern_Type& p, double& intervals) {
    double xmin = 0, step = 0, xmax = 0;
    if (!Read_Free_Record(lines, xmin, step, xmax)) return false;
    intervals = (xmax - xmin) / step;
    p.xmin = static_cast<float>(xmin);
    p.step = static_cast<float>(step);
    p.xmax = static_cast<float>(xmax);
    return All_Finite(p.xmin, p.step, p.xmax);
}

Filled Read_10_F8(Line_Cursor& lines, std::span<float> values) {
    static const Edit_Format ten("(10F8.0)");
    constexpr std::size_t per_line = 10, width = 8;
    const auto plain = [&](const char* line, std::size_t at) {
        for (std::size_t i = 0; i < per_line; ++i, line += width)
            if (!Take_Plain<width>(line, values[at + i])) return false;
        return true;
    };
    const auto careful = [&](std::string_view line, std::size_t at) {
        return Edit_Reader(ten, line).Read(values.subspan(at, std::min(per_line, values.size() - at)));
    };
    return Read_List<per_line, width>(lines, values.size(), plain, careful);
}

Filled Read_10_I2_F8(Line_Cursor& lines, std::span<int> first, std::span<float> second) {
    static const Edit_Format pairs("(10(I2,F8.0))");
    return Read_Pairs<10, 2, 8>(lines, pairs, first, second);
}

Filled Read_10_I2_F6(Line_Cursor& lines, std::span<int> first, std::span<float> second) {
    static const Edit_Format pairs("(10(I2,F6.0))");
    return Read_Pairs<10, 2, 6>(lines, pairs, first, second);
}

Filled Read_5_F6_F10(Line_Cursor& lines, std::span<float> first, std::span<float> second) {
    static const Edit_Format pairs("(5(F6.0,F10.0))");
    return Read_Pairs<5, 6, 10>(lines, pairs, first, second);
}

void Set_Detector_Variances(Diffraction_Pattern_Type& p, float factor) {
    for (std::size_t i = 0; i < p.y.size(); ++i) {
        p.nd[i] = std::max(p.nd[i], 1);
        p.sigma[i] = std::fabs(p.y[i]) * factor / static_cast<float>(p.nd[i]);
    }
}

}  // namespace vntl
