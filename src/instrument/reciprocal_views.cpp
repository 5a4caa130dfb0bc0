// What is read and told of reciprocal space: the matrix, the axes of a volume, and pictures across it.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "base/real_parse.hpp"
#include "instrument/reciprocal_volume.hpp"

namespace vntl {

namespace {

constexpr std::string_view between_numbers = " \t\r\n,;";
constexpr std::size_t label_width = 23;

// Takes the next number of a text off its front.
bool Take_Number(std::string_view& text, double& value) {
    text.remove_prefix(std::min(text.find_first_not_of(between_numbers), text.size()));
    const char* const first = text.data();
    const char* const end = Parse_Double(first, first + text.size(), value);
    if (end == first || !std::isfinite(value)) return false;
    text.remove_prefix(static_cast<std::size_t>(end - first));
    return text.empty() || between_numbers.find(text.front()) != std::string_view::npos;
}

// A label against its right end, and a number of any size.
std::string Line(std::string label, double value) {
    label.insert(0, label_width - std::min(label.size(), label_width), ' ');
    const double size = std::fabs(value);
    char number[32];
    std::snprintf(number, sizeof number, size == 0 || (size >= 1e-3 && size < 1e6) ? "%13.6f" : "%13.5e", value);
    return label + number;
}

void Describe_Axis(char name, const Volume_Axis& axis, double star, std::vector<std::string>& lines) {
    const std::string axis_name(1, name), rlu = "(r.l.u.) : ";
    lines.push_back(Line(axis_name + "-min" + rlu, axis.min));
    lines.push_back(Line(axis_name + "-max" + rlu, axis.max));
    lines.push_back(Line(axis_name + "-range" + rlu, axis.max - axis.min));
    lines.push_back("   Initial divisions : " + std::to_string(axis.first_count));
    lines.push_back(Line(axis_name + "-steps" + rlu, axis.step));
    lines.push_back(Line(axis_name + "-steps(1/angstr) : ", axis.step * star));
}

std::vector<float> Values_Of(const Volume_Axis& axis) {
    std::vector<float> values;
    for (int cell = 1; cell <= axis.count; ++cell) values.push_back(static_cast<float>(axis.Value(cell)));
    return values;
}

struct View_Of_Volume {
    const Volume_Axis& x;
    const Volume_Axis& y;
    const Volume_Axis& across;
};
View_Of_Volume View_Along(const Reciprocal_Volume& volume, View_Axis axis) {
    if (axis == View_Axis::h) return {volume.k, volume.l, volume.h};
    if (axis == View_Axis::k) return {volume.h, volume.l, volume.k};
    return {volume.h, volume.k, volume.l};
}

// Steps in the list of cells to the next one in x, in y and across.
std::array<std::size_t, 3> Strides(const Reciprocal_Volume& volume, View_Axis axis) {
    const std::size_t row = static_cast<std::size_t>(volume.h.count), layer = row * static_cast<std::size_t>(volume.k.count);
    if (axis == View_Axis::h) return {row, layer, 1};
    if (axis == View_Axis::k) return {1, layer, row};
    return {1, row, layer};
}

// Sums of cells across the picture, from `first` (from 0) on.
Volume_Picture Picture(const Reciprocal_Volume& volume, View_Axis axis, std::size_t first, std::size_t cells) {
    const View_Of_Volume view = View_Along(volume, axis);
    Volume_Picture picture{Values_Of(view.x), Values_Of(view.y), {}};
    const std::size_t nx = picture.x.size(), ny = picture.y.size();
    const std::array<std::size_t, 3> strides = Strides(volume, axis);
    const std::size_t to_x = strides[0], to_y = strides[1], across = strides[2];
    std::vector<double> sums(nx * ny, 0.0);
    const auto add = [&](std::size_t x, std::size_t y, std::size_t cell) {
        sums[y * nx + x] += static_cast<double>(volume.z[x * to_x + y * to_y + cell * across]);
    };
    // The list is walked in its order.
    if (across == 1) {
        for (std::size_t y = 0; y < ny; ++y)
            for (std::size_t x = 0; x < nx; ++x)
                for (std::size_t cell = first; cell < first + cells; ++cell) add(x, y, cell);
    } else {
        for (std::size_t cell = first; cell < first + cells; ++cell)
            for (std::size_t y = 0; y < ny; ++y)
                for (std::size_t x = 0; x < nx; ++x) add(x, y, cell);
    }
    picture.z.assign(sums.begin(), sums.end());
    return picture;
}

}  // namespace

Status Parse_UB_Matrix(std::string_view text, Matrix3d& ub, Matrix3d& inverse) {
    const Status refused = Status::Fail(" Error reading the UB-Matrix");
    Matrix3d read{}, inverted{};
    for (Vector3d& row : read)
        for (double& value : row)
            if (!Take_Number(text, value)) return refused;
    if (text.find_first_not_of(between_numbers) != std::string_view::npos || !Invert(read, inverted)) return refused;
    ub = read;
    inverse = inverted;
    return Status::Done();
}

std::vector<std::string> Describe_Volume(const Reciprocal_Volume& volume, const Matrix3d& ub) {
    std::vector<std::string> lines;
    const auto star = [&ub](std::size_t axis) { return Length({ub[0][axis], ub[1][axis], ub[2][axis]}); };
    Describe_Axis('h', volume.h, star(0), lines);
    Describe_Axis('k', volume.k, star(1), lines);
    Describe_Axis('l', volume.l, star(2), lines);
    return lines;
}

Volume_Picture Plane(const Reciprocal_Volume& volume, View_Axis axis, int cell) {
    const int count = View_Along(volume, axis).across.count;
    if (volume.empty() || cell < 1 || cell > count) return {};
    return Picture(volume, axis, static_cast<std::size_t>(cell) - 1, 1);
}

Volume_Picture Projection(const Reciprocal_Volume& volume, View_Axis axis) {
    if (volume.empty()) return {};
    return Picture(volume, axis, 0, static_cast<std::size_t>(View_Along(volume, axis).across.count));
}

}  // namespace vntl
