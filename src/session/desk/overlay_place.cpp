#include "session/desk/overlay_place.hpp"

#include "session/bragg_rows.hpp"

namespace vntl {

namespace {

// Of the height of the intensities, which with the margin above and the room for the overlay is the whole view.
constexpr float whole_view = 1.25f, base_below = 0.14f, difference_below = 0.2f, gap_above = 0.02f, gap_below = 0.01f;

// How far the band reaches below the intensities; 0 for no band.
float Depth(const Profile_Store& store, const Plot_State& plot, const Look& look) {
    const bool graph = look.pinned_difference && plot.Is_2D();
    if (!graph || !store.prf_loaded || store.ProfilePRFactive < 1 || store.ProfilePRFactive > store.nperfiles()) return 0;
    if (store.show_difference) return difference_below;
    const int phases = store.Info(store.ProfilePRFactive).nphases;
    return store.show_reflections && phases >= 1 ? base_below - Bragg_Row_Of(base_below, phases, phases).bottom + gap_below : 0;
}

float Height(const Plot_State& plot) { return plot.y_view_max - plot.y_view_min; }

}  // namespace

float Part_Of_Band(const Profile_Store& store, const Plot_State& plot, const Look& look) {
    const float depth = Depth(store, plot, look);
    return depth > 0 ? (depth - gap_above) / whole_view : 0;
}

Overlay_Place Place_Of_Overlay(const Profile_Store& store, const Plot_State& plot, const Look& look) {
    const float depth = Depth(store, plot, look);
    if (!(depth > 0)) return {false, plot.diff_base, plot.diff_band, 1};
    const float whole = Height(plot) / whole_view;  // the height of the intensities in a whole view
    return {true, plot.y_view_min + (depth - base_below) * whole, base_below * whole, plot.diff_span > 0 ? whole / plot.diff_span : 0};
}

float Foot_Of_Data(const Profile_Store& store, const Plot_State& plot, const Look& look) {
    return plot.y_view_min + Part_Of_Band(store, plot, look) * Height(plot);
}

float Foot_Of_Box(const Profile_Store& store, const Plot_State& plot, const Look& look, float low, float high) {
    const float part = Part_Of_Band(store, plot, look);
    return low - part / (1 - part) * (high - low);
}

}  // namespace vntl
