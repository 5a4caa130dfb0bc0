// Ranges of the axes from the rows, and the plot form and menu states that follow from them.
//
// The x window is the whole range of the rows, the y window that of their intensities with a margin of 5 % at both ends. Under a refined
// profile 20 % more are kept for its reflections and its difference curve.
#include "session/ranges.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/text.hpp"
#include "calc/log_value.hpp"
#include "session/bragg_rows.hpp"
#include "session/desk/kept_view.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/desk/waterfall.hpp"
#include "session/session.hpp"
#include "session/whole_range.hpp"

namespace vntl {

namespace {

constexpr float margin = 0.05f, bragg_band = 0.14f, prf_foot = 0.2f;
constexpr float least_logarithm = 1e-4f;    // below it the foot of logarithms is that of one count, but for rounding
constexpr float largest_intensity = 1e37f;  // leaves room for the margins in single precision

struct Range {
    float lo = std::numeric_limits<float>::infinity(), hi = -std::numeric_limits<float>::infinity();

    void Take(float low, float high) {
        if (std::isfinite(low)) lo = std::min(lo, low);
        if (std::isfinite(high)) hi = std::max(hi, high);
    }
    bool Found() const { return lo <= hi; }
};

// The ends of a row without the excluded regions at its sides.
void Trim_Sides(const PRF_Info_Add_Type& info, float& lo, float& hi) {
    const auto regions = static_cast<std::size_t>(std::clamp(info.nexcl, 0, max_excluded_regions));
    for (std::size_t j = 0; j < regions; ++j)
        if (info.excl_min[j] <= 0 || info.excl_min[j] <= lo) lo = std::max(lo, info.excl_max[j]);
    for (std::size_t j = 0; j < regions; ++j)
        if (hi <= info.excl_max[j]) hi = std::min(hi, info.excl_min[j]);
}

Range Range_Of_X(const Profile_Store& store, bool trim) {
    Range range;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const std::vector<float>& x = store.Pattern(row).x;
        if (x.empty()) continue;
        float lo = x.front(), hi = x.back();
        if (trim) Trim_Sides(store.Info(row), lo, hi);
        range.Take(lo, hi);
    }
    return range;
}

// A constant intensity has no span of its own; it is shown in the middle of a narrow window.
float Span_Of_Y(const Plot_State& plot) {
    const float span = plot.y_all_max - plot.y_all_min;
    return span > 0 ? span : std::max(1.0f, std::fabs(plot.y_all_max));
}

void Set_Range_Y(const Profile_Store& store, Plot_State& plot) {
    Range range;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& pattern = store.Pattern(row);
        range.Take(pattern.ymin, pattern.ymax);
    }
    if (!range.Found()) range = {0, 1};
    plot.y_all_min = std::clamp(range.lo, -largest_intensity, largest_intensity);
    plot.y_all_max = std::clamp(range.hi, -largest_intensity, largest_intensity);

    const float span = Span_Of_Y(plot);
    plot.y_view_max = plot.y_all_max + margin * span;
    plot.y_view_min = plot.y_all_min - margin * span;
    plot.y_prf_bottom = plot.y_all_min - prf_foot * span;
    plot.diff_band = bragg_band * span;
    plot.diff_base = plot.y_all_min - bragg_band * span;
    plot.diff_span = span;
}

void Find_Refined_Row(Profile_Store& store, Plot_State& plot) {
    store.ProfilePRFactive = 0;
    for (int row = store.nperfiles(); row >= 1; --row)
        if (Is_Refined(store.Info(row).kind)) store.ProfilePRFactive = row;
    store.prf_loaded = store.ProfilePRFactive != 0;
    if (store.prf_loaded) plot.y_view_min = plot.y_prf_bottom;
}

void Set_Single_Form(Session& session) {
    Set_Calculation_Mode(session, Click_Mode::none);
    Set_Menu_Single(session, true);
    session.lists.peaks.clear();
    session.lists.background.clear();
    session.lists.hklgen.clear();
}

// Where the difference curve and the reflections of a refined profile stand under the window.
void Make_Room_For_Refinement(const Profile_Store& store, Plot_State& plot) {
    const float span = plot.y_view_max - plot.y_view_min;
    plot.diff_base = plot.y_view_min - bragg_band * span;
    plot.y_prf_bottom = plot.y_view_min - prf_foot * span;
    plot.diff_band = bragg_band * span;
    const int phases = store.Info(store.ProfilePRFactive).nphases;
    if (store.show_difference)
        plot.y_view_min = plot.y_prf_bottom;
    else if (store.show_reflections && phases >= 1)
        plot.y_view_min = plot.diff_base + Bragg_Row_Of(plot.diff_band, phases, phases).bottom;
}

void View_In_Log(const Profile_Store& store, Plot_State& plot, float foot, float top) {
    plot.y_view_min = top > foot ? foot : 0;
    plot.y_view_max = top > foot ? top : 1;
    if (store.prf_loaded) Make_Room_For_Refinement(store, plot);
}

// Where the window of the intensities begins, above the room that was made.
float Foot_Of_Logarithms(const Profile_Store& store, const Plot_State& plot) {
    if (!store.prf_loaded) return plot.y_view_min;
    const int phases = store.Info(store.ProfilePRFactive).nphases;
    const bool room_of_ticks = phases >= 1 && plot.y_view_min == plot.diff_base + Bragg_Row_Of(plot.diff_band, phases, phases).bottom;
    return plot.y_view_min == plot.y_prf_bottom || room_of_ticks ? plot.diff_base + plot.diff_band : plot.y_view_min;
}

void Take_Ends(const Plot_State& from, Plot_State& plot) {
    for (const auto end :
         {&Plot_State::x_view_min, &Plot_State::x_view_max, &Plot_State::y_view_min, &Plot_State::y_view_max, &Plot_State::y_all_min,
          &Plot_State::y_all_max, &Plot_State::y_prf_bottom, &Plot_State::diff_base, &Plot_State::diff_band, &Plot_State::diff_span})
        plot.*end = from.*end;
}

// The whole range in counts, and on a scale of roots, with the places of an overlay.
void Whole_Counts(const Profile_Store& store, Plot_State& plot) {
    Set_Range_Y(store, plot);
    if (store.prf_loaded) plot.y_view_min = plot.y_prf_bottom;
}

void Whole_Roots(const Profile_Store& store, Plot_State& plot) {
    Set_Range_Y(store, plot);
    const float low = On_Scale(Y_Scale::root, plot.y_all_min), high = On_Scale(Y_Scale::root, plot.y_all_max);
    float span = high - low;
    if (!(span > 0)) span = std::max(1.0f, std::fabs(high));
    plot.y_view_max = high + margin * span;
    plot.y_view_min = low - margin * span;
    plot.y_prf_bottom = low - prf_foot * span;
    plot.diff_band = bragg_band * span;
    plot.diff_base = low - bragg_band * span;
    if (store.prf_loaded) plot.y_view_min = plot.y_prf_bottom;
}

// What a scale says of a plot.
Plot_State Ends_Of(const Plot_State& plot) {
    Plot_State ends;
    Take_Ends(plot, ends);
    return ends;
}

using Whole_Range = void (*)(const Profile_Store&, Plot_State&);

// Every place of the window and its overlay is carried over, but the whole range, which is found anew.
template <class Carry>
void Carry_View(const Profile_Store& store, Plot_State& plot, Whole_Range whole_before, Whole_Range whole, Carry carry) {
    const auto carried = [&carry](float y) { return std::clamp(carry(y), -largest_intensity, largest_intensity); };
    Plot_State before = Ends_Of(plot), after = Ends_Of(plot);
    whole_before(store, before);
    whole(store, after);
    const View all = after.Shown_View();
    if (plot.y_view_min != before.y_view_min) {
        const float band_top = carried(plot.diff_base + plot.diff_band);
        after.diff_span = plot.diff_span;
        after.y_prf_bottom = carried(plot.y_prf_bottom);
        after.diff_base = carried(plot.diff_base);
        after.diff_band = band_top - after.diff_base;
        after.y_view_min = carried(plot.y_view_min);
    }
    if (plot.y_view_max != before.y_view_max) after.y_view_max = carried(plot.y_view_max);
    if (!(after.y_view_min < after.y_view_max)) after.Show(all);
    Take_Ends(after, plot);
}

void View_From_Counts_To_Roots(const Profile_Store& store, Plot_State& plot) {
    Carry_View(store, plot, Whole_Counts, Whole_Roots, [](float y) { return On_Scale(Y_Scale::root, y); });
}
void View_From_Roots_To_Counts(const Profile_Store& store, Plot_State& plot) {
    Carry_View(store, plot, Whole_Roots, Whole_Counts, [](float y) { return Off_Scale(Y_Scale::root, y); });
}

}  // namespace

// Conversion back to the scattering variable of the files is possible only while all rows share it.
void Set_Origin_Commands(Session& session) {
    Profile_Store& store = session.store;
    const std::string_view first = Trim(store.Pattern(1).scat_var);
    store.mixed_scat_var = false;
    for (int row = 2; row <= store.nperfiles(); ++row)
        if (!Contains(store.Pattern(row).scat_var, first)) store.mixed_scat_var = true;
    session.interface.Enable(command::to_two_theta, !store.mixed_scat_var && Contains(first, "2theta"));
    session.interface.Enable(command::to_tof, !store.mixed_scat_var && Contains(first, "TOF"));
}

void Set_Range_X(const Profile_Store& store, const PRF_Prefs& prefs, Plot_State& plot) {
    if (store.nperfiles() == 0) return;
    Range range = Range_Of_X(store, prefs.excl_ignore_sides);
    if (!(range.lo < range.hi)) range = Range_Of_X(store, false);
    if (!range.Found()) range = {0, 1};
    plot.x_all_min = plot.x_view_min = range.lo;
    plot.x_all_max = plot.x_view_max = range.hi;
}

void Plot_Ranges(Session& session) {
    Plot_State& plot = session.plot;
    Profile_Store& store = session.store;
    if (plot.pointed_row > store.nperfiles()) plot.pointed_row = 0;
    if (store.nperfiles() == 0) {
        if (plot.plot_type != Plot_Form::none) Set_Menu_Empty(session);
        return;
    }
    const bool log = plot.log_scale;  // of the form that was there
    Set_Range_X(store, session.prefs.prf, plot);
    Set_Range_Y(store, plot);
    plot.first_pattern = 1;
    plot.last_pattern = store.nperfiles();
    session.interface.Enable(command::open_prf, true);
    Find_Refined_Row(store, plot);
    Set_Origin_Commands(session);
    if (store.nperfiles() == 1) {
        Set_Single_Form(session);
        if (plot.y_scale == Y_Scale::logarithm) Set_Menu_Log_Of_One(session);
    } else {
        Set_Menu_Graph(session, plot.y_scale == Y_Scale::logarithm || (plot.y_scale == Y_Scale::linear && log));
    }
    if (plot.Is_Log()) View_In_Log(store, plot, 0, Log_Value(plot.y_view_max));
    if (plot.Scale() == Y_Scale::root) Whole_Roots(store, plot);
    const float foot = Foot_Of_Data(store, plot, session.look);
    plot.y_view_max += Height_Of_Waterfall(store, plot);
    plot.y_view_min = plot.waterfall.offset > 0 ? Foot_Of_Box(store, plot, session.look, foot, plot.y_view_max) : plot.y_view_min;
}

View Whole_On_Scale(const Profile_Store& store, const Plot_State& plot, Y_Scale scale) {
    Plot_State whole = Ends_Of(plot);
    scale == Y_Scale::root ? Whole_Roots(store, whole) : Whole_Counts(store, whole);
    if (scale == Y_Scale::logarithm) View_In_Log(store, whole, 0, Log_Value(whole.y_view_max));
    return whole.Shown_View();
}

float Top_Of_Whole(const Plot_State& plot) {
    const float top = plot.y_all_max + margin * Span_Of_Y(plot);
    if (plot.Scale() != Y_Scale::root) return On_Scale(plot.Scale(), top);
    return Whole_View(plot).y2;
}

void View_In_Logarithms(const Profile_Store& store, Plot_State& plot) {
    const float top = Log_Value(plot.y_view_max);
    View_In_Log(store, plot, top > 0 ? Log_Value(plot.y_view_min) : 0, top);
}

void View_In_Counts(const Profile_Store& store, Plot_State& plot) {
    const float low = Foot_Of_Logarithms(store, plot), high = plot.y_view_max;
    Set_Range_Y(store, plot);
    if (store.prf_loaded) plot.y_view_min = plot.y_prf_bottom;
    const bool whole = high == Log_Value(plot.y_view_max) || !std::isfinite(std::exp(high));
    const float top = whole ? plot.y_view_max : std::exp(high);
    const float foot = low > least_logarithm ? std::exp(low) : plot.y_view_min;
    if (top > foot) plot.Show({plot.x_view_min, plot.x_view_max, foot, top});
}

void View_On_Scale(const Profile_Store& store, Plot_State& plot, Y_Scale from, Y_Scale to) {
    if (from == to) return;
    if (from == Y_Scale::logarithm) View_In_Counts(store, plot);
    if (from == Y_Scale::root) View_From_Roots_To_Counts(store, plot);
    if (to == Y_Scale::logarithm) View_In_Logarithms(store, plot);
    if (to == Y_Scale::root) View_From_Counts_To_Roots(store, plot);
}

void Counts_On_Scale(const Profile_Store& store, Plot_State& plot) { View_On_Scale(store, plot, Y_Scale::linear, plot.Scale()); }

void Choose_Scale(Session& session, Y_Scale scale) {
    Plot_State& plot = session.plot;
    if (!plot.Is_2D() || session.store.nperfiles() == 0) return;
    const Kept_View kept(session.store, plot, session.look);
    plot.y_scale = scale;
    if (plot.plot_type == Plot_Form::calculation) {
        plot.rubber = {};
        plot.drag = {};
        session.interface.want_mouse_up = false;
        Show_Scale(session);
    } else {
        Set_Menu_Of_Scale(session);
    }
    kept.Show(session.store, plot, session.look);
}

View Whole_View(const Plot_State& plot) {
    const float counts = margin * (plot.y_all_max - plot.y_all_min);
    View view{plot.x_all_min, plot.x_all_max, plot.y_all_min - counts, plot.y_all_max + counts};
    if (plot.Scale() == Y_Scale::logarithm) {
        const float top = Log_Value(view.y2);
        view.y1 = 0, view.y2 = top > 0 ? top : 1;
    }
    if (plot.Scale() == Y_Scale::root) {
        const float low = On_Scale(Y_Scale::root, plot.y_all_min), high = On_Scale(Y_Scale::root, plot.y_all_max);
        view.y1 = low - margin * (high - low), view.y2 = high + margin * (high - low);
    }
    return view;
}

void Focus_Plot(const Profile_Store& store, Plot_State& plot) {
    float lowest = plot.y_all_max, highest = plot.y_all_min;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& pattern = store.Pattern(row);
        const std::size_t points = std::min(pattern.x.size(), pattern.y.size());
        for (std::size_t i = 0; i < points; ++i) {
            if (!(plot.x_view_min < pattern.x[i] && pattern.x[i] < plot.x_view_max) || !std::isfinite(pattern.y[i])) continue;
            lowest = std::min(lowest, pattern.y[i]);
            highest = std::max(highest, pattern.y[i]);
        }
    }
    lowest = On_Scale(plot.Scale(), lowest);
    highest = On_Scale(plot.Scale(), highest);
    if (const Row_Offsets offsets(store, plot); offsets.Any()) {
        const Extent_Of_Rows shown = Extent_In_View(store, plot, offsets);
        lowest = static_cast<float>(shown.foot);
        highest = static_cast<float>(shown.top);
    }
    if (!(highest > lowest)) return;
    const float pad = margin * (highest - lowest);
    plot.y_view_min = lowest - pad;
    plot.y_view_max = highest + pad;
    if (store.prf_loaded && store.ProfilePRFactive > 0) Make_Room_For_Refinement(store, plot);
}

}  // namespace vntl
