// Lists of numbers in fixed columns, which are most of such a file: groups of fields, so many groups to a line.
//
//     static const Edit_Format format("(4(F8.0,F7.0,F5.0))");
//     const Groups_Read read = Read_Groups<4, 8, 7, 5>(format, next, n, [&](std::size_t i, const std::array<float, 3>& group) { ... });
//
// Whole numbers as most files have them, "    1021" or "   1021.", are taken eight columns at a time and without a branch on how many
// digits there are; what else a plain number may be, where it stands; a line that holds anything else, or ends early, is read by the
// format. All three give the same values. The real fields of the format are Fw.0; a field of two columns is I2.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "base/digit_word.hpp"
#include "base/edit_descriptor.hpp"
#include "base/real_parse.hpp"

namespace vntl {

// Digits with blanks in front and perhaps a point behind, or blanks alone, in the `width` columns from `start` of a record of `columns`
// columns. False for anything else.
template <int start, int width, int columns>
inline bool Take_Whole(const char* record, float& value) {
    static_assert(width <= 8 && columns >= 8);
    if constexpr (!has_digit_words) return false;
    constexpr std::uint64_t blanks = 0x1010101010101010u;                   // a blank ^ a zero
    constexpr std::uint64_t field = ~std::uint64_t{0} << (64 - 8 * width);  // the last character is the highest byte
    constexpr bool late = start + 8 > columns;                              // eight columns from `start` are not there
    std::uint64_t word;
    std::memcpy(&word, record + (late ? start + width - 8 : start), 8);
    if constexpr (!late) word <<= 64 - 8 * width;
    word = ((word ^ zero_digits) & field) | (blanks & ~field);
    if (width > 2 && word >> 56 == ('.' ^ '0')) word = word << 8 | 0x10;
    const std::uint64_t others = word ^ blanks;
    if (others == 0) {
        value = 0;
        return true;
    }
    word &= ~std::uint64_t{0} << (8 * Bytes_Before(others));
    if (No_Digits(word) != 0) return false;
    value = static_cast<float>(Eight_Digits(word));
    return true;
}

// Any number between blanks that fills no more than the field.
inline bool Take_Real(const char* at, const char* end, float& value) {
    while (at != end && *at == ' ') ++at;
    const char* const stop = Parse_Float(at, end, value);
    if (stop == at) return false;
    for (at = stop; at != end; ++at)
        if (*at != ' ') return false;
    return true;
}

template <int start, int columns>
inline bool Take_Fields(const char*, float*) {
    return true;
}
template <int start, int columns, int width, int... widths>
inline bool Take_Fields(const char* record, float* values) {
    bool taken = false;
    if constexpr (width <= 8)
        taken = Take_Whole<start, width, columns>(record, *values);
    else if (std::string_view(record + start, width - 8).find_first_not_of(' ') == std::string_view::npos)
        taken = Take_Whole<start + width - 8, 8, columns>(record, *values);
    if (!taken && (width <= 2 || !Take_Real(record + start, record + start + width, *values))) return false;
    return Take_Fields<start + width, columns, widths...>(record, values + 1);
}

// Columns that a format leaves blank read as 0, so that a line which ends early fills its groups with zeros: `held` are the groups up to
// the last one in which anything stands.
struct Groups_Read {
    int count = 0, held = 0;
};

inline int Groups_Held(std::string_view line, int columns_a_group) {
    while (!line.empty() && (line.back() == ' ' || line.back() == '\t')) line.remove_suffix(1);
    const auto columns = static_cast<std::size_t>(columns_a_group);
    return static_cast<int>((line.size() + columns - 1) / columns);
}

// The first `n` groups of the lines that `next` gives, each to `take` with its number from 0. The first field that is no number ends them.
// Between the groups of a line are `gap` columns that do not count.
template <int gap, int per_line, int... widths, class Next, class Take>
Groups_Read Read_Groups_Apart(const Edit_Format& format, Next next, int n, Take take) {
    constexpr int group_width = (widths + ...);
    std::array<float, sizeof...(widths)> group{};
    std::string_view line;
    int count = 0, held = 0;
    const auto careful = [&](std::string_view rest, int groups) {
        Edit_Reader reader(format, rest);
        for (; groups > 0; --groups) {
            const bool any = reader.Rest_Of_Line().find_first_not_of(" \t,/") != std::string_view::npos;
            for (float& value : group)
                if (!reader.Read(value)) return false;
            take(static_cast<std::size_t>(count++), group);
            if (any) held = count;
        }
        return true;
    };
    const auto quick = [&](int groups) {
        const int before = count;
        const char* at = line.data();
        for (int left = groups; left > 0; --left, at += group_width + gap) {
            if (!Take_Fields<0, group_width, widths...>(at, group.data()))
                return careful(line.substr(static_cast<std::size_t>(at - line.data())), left);
            take(static_cast<std::size_t>(count++), group);
        }
        if (const int in_line = Groups_Held(line, group_width + gap); in_line > 0) held = std::min(before + in_line, count);
        return true;
    };
    for (bool good = true; good && count < n && next(line);) {
        const int groups = std::min(per_line, n - count);
        const bool whole = line.size() >= static_cast<std::size_t>(per_line * (group_width + gap) - gap);
        good = whole ? quick(groups) : careful(line, groups);
    }
    return {count, held};
}

template <int per_line, int... widths, class Next, class Take>
Groups_Read Read_Groups(const Edit_Format& format, Next next, int n, Take take) {
    return Read_Groups_Apart<0, per_line, widths...>(format, next, n, take);
}

}  // namespace vntl
