#include "plot/covered.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "session/desk/overlay_place.hpp"
#include "session/desk/waterfall.hpp"
#include "session/y_scale.hpp"

namespace vntl {

namespace {

constexpr int columns = 160;
constexpr std::size_t most_points = 40'000;  // of a row that are looked at
constexpr double half_of_lines = 3;          // page pixels

}  // namespace

Covered_Columns::Covered_Columns(const Scene& scene, const Rect& box, const View& window, const Device& device)
    : box_(box), beside_(half_of_lines * Line_Unit(device.Width(), device.Height())) {
    if (!window.Drawable()) return;
    const Row_Offsets offsets(scene.store, scene.plot);
    for (int row = 1; row <= scene.store.nperfiles(); ++row)
        if (scene.store.shown(row)) Add_Row(scene, row, offsets.Of(row), window);
    if (scene.store.prf_loaded) Add_Foot(scene, window);
}

// The range of the row's line in each column, between its points too.
void Covered_Columns::Add_Row(const Scene& scene, int row, float offset, const View& window) {
    const Diffraction_Pattern_Type& pattern = scene.store.Pattern(row);
    const std::size_t points = std::min(pattern.x.size(), pattern.y.size()), stride = std::max<std::size_t>(1, points / most_points);
    const Y_Scale scale = scene.plot.Scale();
    constexpr double none = std::numeric_limits<double>::infinity();
    std::vector<Span> spans(columns, {none, -none});
    const double per_x = columns / (static_cast<double>(window.x2) - window.x1);
    const double per_y = (box_.y2 - box_.y1) / (static_cast<double>(window.y2) - window.y1);
    const auto meet = [&](int column, double y) {
        Span& span = spans[static_cast<std::size_t>(column)];
        span = {std::min(span.low, y), std::max(span.high, y)};
    };
    double before_x = 0, before_y = 0;
    bool joined = false;
    for (std::size_t i = 0; i < points; i += stride) {
        const double x = (static_cast<double>(pattern.x[i]) - window.x1) * per_x;
        const double y = box_.y1 + (static_cast<double>(On_Scale(scale, pattern.y[i])) + offset - window.y1) * per_y;
        if (!std::isfinite(x) || !std::isfinite(y)) {
            joined = false;
            continue;
        }
        if (x >= 0 && x < columns) meet(static_cast<int>(x), y);
        if (joined && std::floor(x) != std::floor(before_x)) {
            const double from = std::clamp(std::min(x, before_x), 0.0, static_cast<double>(columns));
            const double to = std::clamp(std::max(x, before_x), 0.0, static_cast<double>(columns));
            for (int column = static_cast<int>(from); column < columns && column <= to && from < to; ++column)
                for (const double edge : {std::max(from, static_cast<double>(column)), std::min(to, column + 1.0)})
                    meet(column, before_y + (edge - before_x) / (x - before_x) * (y - before_y));
        }
        before_x = x, before_y = y, joined = true;
    }
    rows_.push_back(std::move(spans));
}

// Reflections and difference of a refinement lie below the zero of the counts, or in a band of their own.
void Covered_Columns::Add_Foot(const Scene& scene, const View& window) {
    const double per_y = (box_.y2 - box_.y1) / (static_cast<double>(window.y2) - window.y1);
    const float band = Part_Of_Band(scene.store, scene.plot, scene.look);
    const double zero = box_.y1 + (static_cast<double>(On_Scale(scene.plot.Scale(), 0)) - window.y1) * per_y;
    const double top = band > 0 ? box_.y1 + band * (box_.y2 - box_.y1) : zero;
    if (top > box_.y1) rows_.emplace_back(columns, Span{box_.y1, top});
}

double Covered_Columns::By(const Rect& rect) const {
    const double per_x = columns / (box_.x2 - box_.x1);
    const int first = std::clamp(static_cast<int>((rect.x1 - beside_ - box_.x1) * per_x), 0, columns - 1);
    const int last = std::clamp(static_cast<int>((rect.x2 + beside_ - box_.x1) * per_x), 0, columns - 1);
    double covered = 0;
    for (const std::vector<Span>& spans : rows_)
        for (int column = first; column <= last; ++column) {
            const Span& span = spans[static_cast<std::size_t>(column)];
            if (span.low <= rect.y2 + beside_ && span.high >= rect.y1 - beside_) ++covered;
        }
    return covered;
}

}  // namespace vntl
