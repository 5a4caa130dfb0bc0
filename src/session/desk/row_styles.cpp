#include "session/desk/row_styles.hpp"

#include <algorithm>

#include "base/colour_map.hpp"
#include "session/file_information.hpp"
#include "session/store.hpp"

namespace vntl {

Row_Styles::Row_Styles(const Profile_Store& store, const Preferences& prefs, const Look& look, bool by_temperature)
    : prefs_(prefs), map_(look.series_map) {
    if (look.least_marker_gap > 0 && store.prf_loaded) observed_ = store.ProfilePRFactive;
    int shown = 0;
    for (int row = 1; row <= store.nperfiles(); ++row) shown += store.shown(row) ? 1 : 0;
    if (map_.empty() || shown < fewest_rows_of_series) return;
    place_.resize(static_cast<std::size_t>(store.nperfiles()));
    if (by_temperature) Run_Along_Temperatures(store);
    if (!by_temperature_) Run_Along_Rows(store);
}

// A row that is not shown takes the colour that it would have, for the list of patterns.
void Row_Styles::Run_Along_Temperatures(const Profile_Store& store) {
    bool any = false;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        if (!store.shown(row)) continue;
        const float here = store.Pattern(row).TSample;
        if (!(here > known_temperature)) return;
        first_ = any ? std::min(first_, here) : here;
        last_ = any ? std::max(last_, here) : here;
        any = true;
    }
    if (!(last_ > first_)) return;
    by_temperature_ = true;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const float place = (store.Pattern(row).TSample - first_) / (last_ - first_);
        place_[static_cast<std::size_t>(row - 1)] = place > 0 ? std::min(place, 1.0f) : 0;
    }
}

void Row_Styles::Run_Along_Rows(const Profile_Store& store) {
    std::vector<int> shown;
    for (int row = 1; row <= store.nperfiles(); ++row)
        if (store.shown(row)) shown.push_back(row);
    first_ = static_cast<float>(shown.front());
    last_ = static_cast<float>(shown.back());
    const auto steps = static_cast<float>(shown.size() - 1);
    std::size_t before = 0;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        while (before < shown.size() && shown[before] < row) ++before;
        place_[static_cast<std::size_t>(row - 1)] = std::min(static_cast<float>(before) / steps, 1.0f);
    }
}

// Curves of a series differ by their colours alone.
ProfileStyle Row_Styles::Coloured(int row) const {
    if (row < 1 || row > static_cast<int>(place_.size())) return prefs_.Style_Of_Row(row);
    ProfileStyle style = prefs_.profile_styles.front();
    if (style.line_style > 0) style.line_style = 0;
    style.line_colour = style.marker_colour = Map_Colour(map_, place_[static_cast<std::size_t>(row - 1)]);
    return style;
}

ProfileStyle Row_Styles::Of(int row) const {
    constexpr int no_marker = 1, no_line = -1;
    ProfileStyle style = Coloured(row);
    if (row == observed_ && style.marker_type > no_marker) style.line_style = no_line;
    return style;
}

}  // namespace vntl
