// Error bars and bars.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "base/page.hpp"
#include "drawing/line_unit.hpp"
#include "drawing/presentation.hpp"

namespace vntl {

namespace {

constexpr double error_cap = 3;       // page units on each side
constexpr double filled_share = 0.8;  // of a slot, by its bars

// An upright stroke, or a bar of some width: the places of its left and right side and of its lower and upper end.
using Upright = Rect;

// With more strokes than a page shows side by side, those that begin in the same column of pixels are drawn as one, as long as all of them:
// otherwise a plot would cost points, and not pixels.
std::vector<Upright> Merged(std::vector<Upright> strokes, double column) {
    constexpr std::size_t shown_one_by_one = 4096;
    if (strokes.size() <= shown_one_by_one) return strokes;
    for (Upright& stroke : strokes) {
        const double left = column * std::floor(stroke.x1 / column);
        stroke.x2 = left + std::max(column, stroke.x2 - stroke.x1);
        stroke.x1 = left;
    }
    std::stable_sort(strokes.begin(), strokes.end(), [](const Upright& a, const Upright& b) { return a.x1 < b.x1; });
    std::vector<Upright> merged;
    for (const Upright& stroke : strokes) {
        if (merged.empty() || merged.back().x1 != stroke.x1) merged.push_back(stroke);
        merged.back().y1 = std::min(merged.back().y1, stroke.y1);
        merged.back().y2 = std::max(merged.back().y2, stroke.y2);
    }
    return merged;
}

}  // namespace

void Presentation::IPgErrorBars(std::span<const float> x, std::span<const float> y, std::span<const float> half_length) {
    const double half_cap = error_cap * Target().Width() / page_width;
    const int set = std::clamp(next_set_ - 1, 1, std::max(static_cast<int>(styles_.size()), 1));
    const Pen pen{styles_.empty() ? graphics_->Current_Colour() : Style_Of_Set(set).line_colour, graphics_->Line_Width(),
                  Line_Style::solid};
    std::vector<Upright> bars;
    for (std::size_t i = 0; i < std::min({x.size(), y.size(), half_length.size()}); ++i) {
        const double middle = y[i] + raise_, half = std::fabs(static_cast<double>(half_length[i]));
        const Point low = Plot_To_Device(x[i], middle - half), high = Plot_To_Device(x[i], middle + half);
        if (half > 0 && std::isfinite(low.x) && std::isfinite(low.y) && std::isfinite(high.y))
            bars.push_back({low.x, std::min(low.y, high.y), low.x, std::max(low.y, high.y)});
    }
    Clip_Sets();
    for (const Upright& bar : Merged(std::move(bars), Line_Unit(Target()))) {
        const double at = 0.5 * (bar.x1 + bar.x2);
        Target().Polyline(std::array<Point, 2>{{{at, bar.y1}, {at, bar.y2}}}, pen);
        for (const double end : {bar.y1, bar.y2})
            Target().Polyline(std::array<Point, 2>{{{at - half_cap, end}, {at + half_cap, end}}}, pen);
    }
    graphics_->Clip_To_Area();
}

void Presentation::IPgBars(std::span<const float> x, std::span<const float> y, float slot) {
    if (styles_.empty()) return;
    const auto sets = static_cast<double>(styles_.size());
    const double width = filled_share * static_cast<double>(slot) / sets;
    const double left = width * (std::min<double>(next_set_, sets) - 1 - 0.5 * sets);  // of this set, from the middle of its slot
    const Colour colour = Next_Set().line_colour;
    std::vector<Upright> bars;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
        const double from = static_cast<double>(x[i]) + left;
        const Point a = Plot_To_Device(from, 0), b = Plot_To_Device(from + width, y[i]);
        if (y[i] != 0 && std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(b.x) && std::isfinite(b.y))
            bars.push_back({std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)});
    }
    Clip_Sets();
    for (const Upright& bar : Merged(std::move(bars), Line_Unit(Target())))
        Target().Fill(std::array<Point, 4>{{{bar.x1, bar.y1}, {bar.x2, bar.y1}, {bar.x2, bar.y2}, {bar.x1, bar.y2}}}, colour);
    graphics_->Clip_To_Area();
}

}  // namespace vntl
