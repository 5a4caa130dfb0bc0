#include "session/desk/waterfall.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/extremes.hpp"
#include "session/desk/kept_view.hpp"
#include "session/file_information.hpp"

namespace vntl {

namespace {

constexpr float largest_offset = 1e37f;  // leaves room in single precision for the points themselves

// The height that offsets are shares of; one for rows without any.
double Height_Of_Pattern(const Plot_State& plot) {
    const Y_Scale scale = plot.Scale();
    const double height = static_cast<double>(On_Scale(scale, plot.y_all_max)) - static_cast<double>(On_Scale(scale, plot.y_all_min));
    return height > 0 ? height : 1;
}

// Places of the rows in units of the height of one pattern times the offset: 0 of the lowest, the number of rows less one of the highest.
std::vector<double> Even_Places(std::size_t rows) {
    std::vector<double> places(rows);
    for (std::size_t i = 0; i < rows; ++i) places[i] = static_cast<double>(i);
    return places;
}

// Nothing where a temperature is not known, or all are alike.
std::vector<double> Places_By_Temperature(const Profile_Store& store, const std::vector<int>& rows) {
    std::vector<double> places;
    for (const int row : rows) {
        const float kelvin = store.Pattern(row).TSample;
        if (!(kelvin > known_temperature) || !std::isfinite(kelvin)) return {};
        places.push_back(kelvin);
    }
    const auto [coldest, hottest] = std::minmax_element(places.begin(), places.end());
    if (rows.size() < 2 || !(*hottest > *coldest)) return {};
    const double from = *coldest, span = *hottest - from;
    for (double& place : places) place = (place - from) / span * static_cast<double>(rows.size() - 1);
    return places;
}

std::vector<int> Shown_Rows(const Profile_Store& store) {
    std::vector<int> rows;
    for (int row = 1; row <= store.nperfiles(); ++row)
        if (store.shown(row)) rows.push_back(row);
    return rows;
}

}  // namespace

Row_Offsets::Row_Offsets(const Profile_Store& store, const Plot_State& plot) {
    if (!plot.Is_2D() || !(plot.waterfall.offset > 0)) return;
    const std::vector<int> rows = Shown_Rows(store);
    if (rows.size() < 2) return;
    std::vector<double> places;
    if (plot.waterfall.by_temperature) places = Places_By_Temperature(store, rows);
    if (places.empty()) places = Even_Places(rows.size());
    const double step = plot.waterfall.offset * Height_Of_Pattern(plot);
    offsets_.resize(static_cast<std::size_t>(store.nperfiles()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto offset = static_cast<float>(std::min(step * places[i], static_cast<double>(largest_offset)));
        offsets_[static_cast<std::size_t>(rows[i] - 1)] = offset;
        highest_ = std::max(highest_, offset);
    }
}

bool Temperatures_Differ(const Profile_Store& store) { return !Places_By_Temperature(store, Shown_Rows(store)).empty(); }

float Offset_Of_Row(const Profile_Store& store, const Plot_State& plot, int row) { return Row_Offsets(store, plot).Of(row); }

float Height_Of_Waterfall(const Profile_Store& store, const Plot_State& plot) { return Row_Offsets(store, plot).Highest(); }

Extent_Of_Rows Extent_In_View(const Profile_Store& store, const Plot_State& plot, const Row_Offsets& offsets) {
    constexpr double none = std::numeric_limits<double>::infinity();
    const Y_Scale scale = plot.Scale();
    Extent_Of_Rows extent{none, -none};
    for (int row = 1; row <= store.nperfiles(); ++row) {
        if (!store.shown(row)) continue;
        const Diffraction_Pattern_Type& pattern = store.Pattern(row);
        const std::size_t points = std::min(pattern.x.size(), pattern.y.size());
        Extremes y;
        for (std::size_t i = 0; i < points; ++i) {
            if (!(plot.x_view_min < pattern.x[i] && pattern.x[i] < plot.x_view_max) || !std::isfinite(pattern.y[i])) continue;
            y.low = std::min(y.low, pattern.y[i]);
            y.high = std::max(y.high, pattern.y[i]);
        }
        if (!y.Found()) continue;
        const double offset = offsets.Of(row);
        extent.foot = std::min(extent.foot, static_cast<double>(On_Scale(scale, y.low)) + offset);
        extent.top = std::max(extent.top, static_cast<double>(On_Scale(scale, y.high)) + offset);
    }
    return extent;
}

void Set_Waterfall(const Profile_Store& store, Plot_State& plot, Waterfall waterfall, const Look& look) {
    waterfall.offset = waterfall.offset > 0 ? std::min(waterfall.offset, 1.0f) : 0;
    if (waterfall == plot.waterfall) return;
    const Kept_View kept(store, plot, look);
    const Waterfall before = std::exchange(plot.waterfall, waterfall);
    if (!kept.Show(store, plot, look)) plot.waterfall = before;
}

}  // namespace vntl
