#include "session/reflection_search.hpp"

#include "session/bragg_rows.hpp"
#include "session/desk/overlay_place.hpp"

namespace vntl {

namespace {

constexpr float part_of_refined_view = 0.02f, part_of_generated_view = 0.01f;

// The first entries, from 1, that are hit.
template <class Hit>
std::vector<int> First_Hit(std::size_t count, Hit hit) {
    std::vector<int> found;
    for (std::size_t j = 0; j < count && static_cast<int>(found.size()) < most_reflections_shown; ++j)
        if (hit(j)) found.push_back(static_cast<int>(j) + 1);
    return found;
}

bool Near(float position, float x, float tolerance) { return x - tolerance < position && position < x + tolerance; }

bool Keep(Reflection_Hits& hits, std::vector<int> found, bool generated) {
    if (found == hits.entries && (found.empty() || generated == hits.generated)) return false;
    hits.entries = std::move(found);
    hits.generated = generated;
    return true;
}

bool In_View(const Plot_State& plot, float x) { return x >= plot.x_view_min && x <= plot.x_view_max; }

// Between the first tick's top and the last one's foot.
bool In_Bragg_Rows(const Overlay_Place& place, int phases, float y) {
    return y >= place.base + Bragg_Row_Of(place.band, phases, phases).bottom && y <= place.base + Bragg_Row_Of(place.band, phases, 1).top;
}

}  // namespace

bool Search_PRF_Refl(const Profile_Store& store, Plot_State& plot, float x, float y, const Look& look) {
    const PRF_Info_Add_Type& info = store.Info(store.ProfilePRFactive);
    const Overlay_Place place = Place_Of_Overlay(store, plot, look);
    if (info.nphases < 1 || !In_View(plot, x) || !In_Bragg_Rows(place, info.nphases, y)) return Keep(plot.hits, {}, false);
    const float tolerance = part_of_refined_view * (plot.x_view_max - plot.x_view_min);
    const auto hit = [&](std::size_t j) { return Near(info.refl_position[j], x, tolerance); };
    return Keep(plot.hits, First_Hit(info.refl_position.size(), hit), false);
}

bool Search_HKLGen_Refl(const std::vector<Reflection_Mark>& marks, Plot_State& plot, float x, float y) {
    if (!In_View(plot, x) || y < plot.y_view_min || y > plot.y_view_max) return Keep(plot.hits, {}, true);
    const float tolerance = part_of_generated_view * (plot.x_view_max - plot.x_view_min);
    const auto hit = [&](std::size_t j) { return Near(marks[j].x, x, tolerance) && y < On_Scale(plot.Scale(), marks[j].y); };
    return Keep(plot.hits, First_Hit(marks.size(), hit), true);
}

}  // namespace vntl
