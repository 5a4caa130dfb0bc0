#include "patterns/neutron_tools.hpp"

#include <algorithm>
#include <array>

#include "patterns/plain_columns.hpp"

namespace vntl {

namespace {

// The first `size` groups of a list, each to `take` with its number from 0.
template <int per_line, int... widths, class Take>
List_Read Read_List(Line_Cursor& lines, const Edit_Format& format, std::size_t size, Take take) {
    bool ended = false;
    const auto next = [&](std::string_view& line) {
        ended = !lines.Next(line);
        return !ended;
    };
    const Groups_Read read = Read_Groups<per_line, widths...>(format, next, static_cast<int>(size), take);
    const bool all = static_cast<std::size_t>(read.count) == size;
    const Filled filled = all ? Filled::all : ended ? Filled::lines_ended : Filled::bad_number;
    return {filled, static_cast<std::size_t>(read.count), static_cast<std::size_t>(read.held)};
}

template <int per_line, int first_width, int second_width, class Number>
List_Read Read_Pairs(Line_Cursor& lines, const Edit_Format& pairs, std::span<Number> first, std::span<float> second) {
    return Read_List<per_line, first_width, second_width>(lines, pairs, first.size(), [&](std::size_t i, const std::array<float, 2>& pair) {
        first[i] = static_cast<Number>(pair[0]);
        second[i] = pair[1];
    });
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

List_Read Read_10_F8(Line_Cursor& lines, std::span<float> values) {
    static const Edit_Format ten("(10F8.0)");
    return Read_List<10, 8>(lines, ten, values.size(), [&](std::size_t i, const std::array<float, 1>& value) { values[i] = value[0]; });
}

List_Read Read_10_I2_F8(Line_Cursor& lines, std::span<int> first, std::span<float> second) {
    static const Edit_Format pairs("(10(I2,F8.0))");
    return Read_Pairs<10, 2, 8>(lines, pairs, first, second);
}

List_Read Read_10_I2_F6(Line_Cursor& lines, std::span<int> first, std::span<float> second) {
    static const Edit_Format pairs("(10(I2,F6.0))");
    return Read_Pairs<10, 2, 6>(lines, pairs, first, second);
}

List_Read Read_5_F6_F10(Line_Cursor& lines, std::span<float> first, std::span<float> second) {
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
