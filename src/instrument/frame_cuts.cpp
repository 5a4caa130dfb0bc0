#include "instrument/frame_cuts.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace vntl {

namespace {

// Where a place lies along an axis: between two of its points, and how far from the first to the second.
struct Axis_Cell {
    std::size_t first = 0, second = 0;
    double fraction = 0;
};

// By bisection; equal points have no room between them, and an axis may fall.
Axis_Cell Find_Cell(std::span<const float> axis, double place) {
    const bool rises = axis.back() >= axis.front();
    std::size_t low = 0, high = axis.size() - 1;
    while (high - low > 1) {
        const std::size_t middle = (low + high) / 2;
        ((static_cast<double>(axis[middle]) <= place) == rises ? low : high) = middle;
    }
    const double from = static_cast<double>(axis[low]), width = static_cast<double>(axis[high]) - from;
    const double fraction = width != 0 ? (place - from) / width : 0;
    return {low, high, std::clamp(fraction, 0.0, 1.0)};
}

bool Holds_Points(const Picture_Grid& grid) { return !grid.x.empty() && !grid.y.empty() && grid.z.size() / grid.x.size() >= grid.y.size(); }

}  // namespace

float Scaled_Intensity(float value, Intensity_Scale scale) {
    if (scale == Intensity_Scale::logarithm) return value > 1 ? std::log(value) : 0;
    if (scale == Intensity_Scale::root_square) return value > 0 ? std::sqrt(value) : 0;
    return value;
}

void Scale_Intensities(std::span<float> values, Intensity_Scale scale) {
    if (scale == Intensity_Scale::linear) return;
    for (float& value : values) value = Scaled_Intensity(value, scale);
}

float Bilinear(const Picture_Grid& grid, double x, double y) {
    if (!Holds_Points(grid) || std::isnan(x) || std::isnan(y)) return std::numeric_limits<float>::quiet_NaN();
    const Axis_Cell column = Find_Cell(grid.x, x), row = Find_Cell(grid.y, y);
    const auto z = [&](std::size_t i, std::size_t k) { return static_cast<double>(grid.z[k * grid.x.size() + i]); };
    const double t = column.fraction, u = row.fraction;
    return static_cast<float>((1 - t) * (1 - u) * z(column.first, row.first) + t * (1 - u) * z(column.second, row.first) +
                              t * u * z(column.second, row.second) + (1 - t) * u * z(column.first, row.second));
}

Line_Plot Cross_Section(const Picture_Grid& grid, float x1, float y1, float x2, float y2) {
    const double from_x = static_cast<double>(x1), from_y = static_cast<double>(y1);
    const double dx = static_cast<double>(x2) - from_x, dy = static_cast<double>(y2) - from_y, length = std::hypot(dx, dy);
    Line_Plot line;
    for (int i = 0; i < section_points; ++i) {
        const double part = static_cast<double>(i) / (section_points - 1);
        line.x.push_back(static_cast<float>(part * length));
        line.y.push_back(Bilinear(grid, from_x + part * dx, from_y + part * dy));
    }
    return line;
}

Line_Plot Omega_Scan(const SXTAL_Numor_Type& numor, Intensity_Scale scale) {
    Line_Plot scan;
    if (numor.tmc_ang.values() <= frame_total) return scan;
    for (std::size_t frame = 0; frame < numor.tmc_ang.frames(); ++frame) {
        scan.x.push_back(static_cast<float>(frame + 1));
        scan.y.push_back(Scaled_Intensity(numor.tmc_ang.Frame(frame)[frame_total], scale));
    }
    return scan;
}

}  // namespace vntl
