#include "plot/marker_room.hpp"

#include <algorithm>
#include <cmath>

#include "plot/excluded.hpp"
#include "plot/frame_texts.hpp"
#include "plot/text_style.hpp"

namespace vntl {

namespace {

// Page units from point to point, infinite for fewer than two of them.
double Apart(const Scene& scene, int row, const View& window) {
    const std::vector<float>& x = scene.store.Pattern(row).x;
    const auto [left, right] = std::minmax(window.x1, window.x2);
    const auto shown = Stretch_Between(x, left, right);
    if (!shown || !(right > left)) return HUGE_VAL;
    const double extent = static_cast<double>(x[shown->first + shown->count - 1]) - x[shown->first];
    const double box = static_cast<double>(scene.zone.x2 - scene.zone.x1) * page_width;
    return extent / (static_cast<double>(right) - left) * box / static_cast<double>(shown->count - 1);
}

}  // namespace

// Markers grow with the picture, so the gap is one of a page of 1200 pixels; on a smaller one it is in pixels, that points can be told
// apart.
float Marker_Share(const Scene& scene, int row, const ProfileStyle& style, const View& window, double a_unit) {
    constexpr double part_of_gap = 0.8, least_of_refined = 0.6;
    constexpr double least_pixels = 2.5;  // more than the calculated line
    const double gap = scene.look.least_marker_gap;
    const bool line = style.line_style >= 0, refined = scene.store.prf_loaded && row == scene.store.ProfilePRFactive;
    if (!(gap > 0) || scene.store.Info(row).kind == Row_Kind::mono || (!line && !refined)) return 1;
    const double apart = Apart(scene, row, window);
    if (line && apart * std::min(1.0, a_unit) < gap) return 0;
    const double width = static_cast<double>(Char_Width(style.marker_size)) * page_width;
    const double share = width > 0 ? std::min(1.0, part_of_gap * apart / width) : 1;
    if (line || !(width > 0)) return static_cast<float>(share);
    return static_cast<float>(std::max({share, least_of_refined, least_pixels / (width * a_unit)}));
}

}  // namespace vntl
