#include "session/desk/nearest_row.hpp"

#include <algorithm>
#include <cmath>
#include <span>

#include "session/desk/waterfall.hpp"
#include "session/store.hpp"

namespace vntl {

namespace {

// As a place on the scale of the view.
class Row_In_View {
public:
    Row_In_View(const Diffraction_Pattern_Type& pattern, Y_Scale scale, float offset)
        : x_(std::span(pattern.x).first(std::min(pattern.x.size(), pattern.y.size()))), y_(pattern.y), scale_(scale), offset_(offset) {}

    std::span<const float> X() const { return x_; }
    float Y(std::size_t i) const { return On_Scale(scale_, y_[i]) + offset_; }

private:
    std::span<const float> x_, y_;
    Y_Scale scale_;
    float offset_;
};

// The square of the distance from the origin to a line between two points.
float Distance2(float x1, float y1, float x2, float y2) {
    const float dx = x2 - x1, dy = y2 - y1, length2 = dx * dx + dy * dy;
    const float along = length2 > 0 ? std::clamp(-(x1 * dx + y1 * dy) / length2, 0.0f, 1.0f) : 0;
    const float x = x1 + along * dx, y = y1 + along * dy;
    return x * x + y * y;
}

// The same from a place to a row, in reaches; infinity for one that is farther than a reach.
float Distance2(const Row_In_View& row, Place_In_View at, Place_In_View reach) {
    constexpr std::ptrdiff_t most_points = 64;  // on either side
    const std::span<const float> x = row.X();
    const auto middle = std::lower_bound(x.begin(), x.end(), at.x);
    const auto first = std::max(std::lower_bound(x.begin(), middle, at.x - reach.x), middle - std::min(most_points, middle - x.begin()));
    const auto end = std::min(std::upper_bound(middle, x.end(), at.x + reach.x), middle + std::min(most_points, x.end() - middle));
    if (x.empty()) return INFINITY;
    auto i = static_cast<std::size_t>(std::max<std::ptrdiff_t>(first - x.begin() - 1, 0));
    const auto last = static_cast<std::size_t>(std::min<std::ptrdiff_t>(end - x.begin(), std::ssize(x) - 1));
    float least = INFINITY;
    float x1 = (x[i] - at.x) / reach.x, y1 = (row.Y(i) - at.y) / reach.y;
    for (bool goes_on = true; goes_on;) {
        i = std::min(i + 1, last);
        goes_on = i < last;
        const float x2 = (x[i] - at.x) / reach.x, y2 = (row.Y(i) - at.y) / reach.y;
        const bool passes_by = (y1 > 1 && y2 > 1) || (y1 < -1 && y2 < -1);
        if (!passes_by) least = std::min(least, Distance2(x1, y1, x2, y2));  // what is no number stays out
        x1 = x2, y1 = y2;
    }
    return least <= 1 ? least : INFINITY;
}

}  // namespace

int Nearest_Row(const Profile_Store& store, const Plot_State& plot, Place_In_View at) {
    const Y_Scale scale = plot.Scale();
    const Row_Offsets offsets(store, plot);
    int nearest = 0;
    float least = 0;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& pattern = store.Pattern(row);
        if (!store.shown(row) || at.x < pattern.xmin || at.x > pattern.xmax) continue;
        const std::size_t point = Point_At(pattern, at.x);
        if (point == 0) continue;
        const float distance = std::fabs(On_Scale(scale, pattern.y[point - 1]) + offsets.Of(row) - at.y);
        if (!std::isfinite(distance) || (nearest != 0 && !(distance < least))) continue;
        nearest = row;
        least = distance;
    }
    return nearest;
}

int Row_Within(const Profile_Store& store, const Plot_State& plot, Place_In_View at, Place_In_View reach) {
    if (!(reach.x > 0) || !(reach.y > 0)) return 0;
    const Y_Scale scale = plot.Scale();
    const Row_Offsets offsets(store, plot);
    int nearest = 0;
    float least = INFINITY;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& pattern = store.Pattern(row);
        if (!store.shown(row) || at.x < pattern.xmin - reach.x || at.x > pattern.xmax + reach.x) continue;
        const float distance = Distance2(Row_In_View(pattern, scale, offsets.Of(row)), at, reach);
        if (distance == INFINITY || distance > least) continue;
        nearest = row;
        least = distance;
    }
    return nearest;
}

}  // namespace vntl
