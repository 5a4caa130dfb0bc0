#include "plot/preview.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "session/desk/waterfall.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

constexpr Colour seam = WRGB(255, 255, 255), colour_of_preview = WRGB(230, 0, 126);
constexpr float line_width = 2, seam_width = 4;

// What falls into one column of pixels.
class Column {
public:
    explicit Column(Thinned_Curve& curve) : curve_(curve) {}

    void Take(long long column, std::size_t i, std::span<const float> y) {
        if (column != column_) {
            column_ = column;
            points_ = {i, i, i, i};
            return;
        }
        if (y[i] < y[points_[1]]) points_[1] = i;
        if (y[i] > y[points_[2]]) points_[2] = i;
        points_[3] = i;
    }
    bool Begins(long long column) const { return column != column_ && !points_.empty(); }
    void Put(std::span<const float> x, std::span<const float> y) {
        std::sort(points_.begin(), points_.end());
        points_.erase(std::unique(points_.begin(), points_.end()), points_.end());
        for (const std::size_t i : points_) {
            curve_.x.push_back(x[i]);
            curve_.y.push_back(y[i]);
        }
    }

private:
    Thinned_Curve& curve_;
    long long column_ = -1;
    std::vector<std::size_t> points_;  // first, lowest, highest, last
};

}  // namespace

Thinned_Curve Thin_Curve(std::span<const float> x, std::span<const float> y, float x1, float x2, int columns) {
    Thinned_Curve thin;
    const std::size_t n = std::min(x.size(), y.size());
    if (n == 0 || !(x2 > x1) || columns < 1) return thin;
    std::size_t from = static_cast<std::size_t>(std::lower_bound(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(n), x1) - x.begin());
    std::size_t behind = static_cast<std::size_t>(std::upper_bound(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(n), x2) - x.begin());
    from -= from > 0 ? 1 : 0;
    behind += behind < n ? 1 : 0;
    Column column(thin);
    for (std::size_t i = from; i < behind; ++i) {
        if (!std::isfinite(y[i])) continue;
        const double place = std::clamp((static_cast<double>(x[i]) - x1) / (static_cast<double>(x2) - x1), -0.5, 1.5);
        const auto number = static_cast<long long>(std::floor(place * columns)) + columns;
        if (column.Begins(number)) column.Put(x, y);
        column.Take(number, i, y);
    }
    column.Put(x, y);
    return thin;
}

void Draw_Preview(const Scene& scene, Graphics& g) {
    const Plot_State& plot = scene.plot;
    const View window = plot.Shown_View();
    if (plot.preview.empty() || !plot.Is_2D() || !window.Drawable()) return;
    constexpr int width_info = 1;
    const int columns = std::max(1, static_cast<int>(static_cast<float>(WInfoWindow(width_info)) * (scene.zone.x2 - scene.zone.x1)));
    g.IGrArea(scene.zone.x1, scene.zone.y1, scene.zone.x2, scene.zone.y2);
    g.IGrUnits(window.x1, window.y1, window.x2, window.y2);
    g.IGrLineType(0);
    for (const Preview_Curve& curve : plot.preview) {
        Thinned_Curve thin = Thin_Curve(curve.x, curve.y, window.x1, window.x2, columns);
        const float offset = Offset_Of_Row(scene.store, plot, curve.row);
        for (float& y : thin.y) y = On_Scale(plot.Scale(), y) + offset;
        for (const auto& [pen, width] : {std::pair{seam, seam_width}, std::pair{colour_of_preview, line_width}}) {
            g.IGrColourN(pen);
            g.IGrLineWidth(width);
            g.IGrPolyLine(thin.x, thin.y);
        }
    }
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
}

}  // namespace vntl
