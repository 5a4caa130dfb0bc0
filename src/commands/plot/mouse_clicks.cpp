#include "commands/plot/mouse_clicks.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "plot/plot.hpp"
#include "session/changes.hpp"
#include "session/fit.hpp"
#include "session/modes.hpp"

namespace vntl {

namespace {

constexpr float near_part = 0.01f;       // of the view: a click this near to an entry means it
constexpr float near_fit_part = 0.001f;  // of the fit window

std::size_t First_Point_From(const Diffraction_Pattern_Type& pattern, float x) {
    return static_cast<std::size_t>(std::lower_bound(pattern.x.begin(), pattern.x.end(), x) - pattern.x.begin());
}

template <class Mark>
bool Left_Of(const Mark& a, const Mark& b) {
    return a.x < b.x;
}

// A new peak stands on the background of its neighbours.
float Background_At(const std::vector<Peak_Mark>& peaks, float x) {
    if (peaks.empty()) return 0;
    const auto right = std::upper_bound(peaks.begin(), peaks.end(), Peak_Mark{x, 0, 0}, Left_Of<Peak_Mark>);
    if (right == peaks.begin()) return peaks.front().bgr;
    if (right == peaks.end()) return peaks.back().bgr;
    return 0.5f * ((right - 1)->bgr + right->bgr);
}

// Where a click that inserts a peak inserts it.
struct Peak_Place {
    float x, y;
    bool on_top = false;  // it is the highest point near the click
};

// The highest point of the pattern that is shown, as near to the click as one that deletes must be, and between two limits; the click
// itself where there is no such point, and while no clicks are to snap.
Peak_Place Snapped(const Session& session, Peak_Place click, float lo, float hi) {
    const int row = session.store.First_Shown();
    if (!session.desk.snap_to_maximum || row == 0) return click;
    const float reach = near_part * (session.plot.x_view_max - session.plot.x_view_min);
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(row);
    Peak_Place best = click;
    for (std::size_t i = First_Point_From(pattern, std::max(lo, click.x - reach)); i < pattern.y.size(); ++i) {
        if (pattern.x[i] > std::min(hi, click.x + reach)) break;
        if (std::isfinite(pattern.y[i]) && !(best.on_top && pattern.y[i] <= best.y)) best = {pattern.x[i], pattern.y[i], true};
    }
    return best;
}

// A second click on the same top has nothing to add.
constexpr std::string_view there_already = "A peak stands there already";

void Insert_Peak(Session& session, Ask& ask, float x, float y) {
    std::vector<Peak_Mark>& peaks = session.lists.peaks;
    if (peaks.size() >= max_peaks) return ask.Error("The limit number of peaks has been attained!");
    const Peak_Place place = Snapped(session, {x, y}, -INFINITY, INFINITY);
    const auto here = [&place](const Peak_Mark& peak) { return peak.x == place.x; };
    if (place.on_top && std::any_of(peaks.begin(), peaks.end(), here)) return session.interface.Hint(std::string(there_already));
    x = place.x, y = place.y;
    if (peaks.empty()) session.lists.peaks_found_in = session.plot.xspace;
    peaks.push_back({x, y, Background_At(peaks, x)});
    std::stable_sort(peaks.begin(), peaks.end(), Left_Of<Peak_Mark>);
}

void Delete_Peak(Session& session, Ask& ask, float x) {
    const float reach = near_part * (session.plot.x_view_max - session.plot.x_view_min);
    std::vector<Peak_Mark>& peaks = session.lists.peaks;
    const auto found = std::find_if(peaks.begin(), peaks.end(), [&](const Peak_Mark& peak) { return std::fabs(peak.x - x) <= reach; });
    if (found == peaks.end()) return ask.Error("No peaks found in this position for removing");
    peaks.erase(found);
}

void Insert_Background(Session& session, Ask& ask, float x, float y) {
    std::vector<Background_Mark>& points = session.lists.background;
    if (points.size() >= max_background_points) return ask.Error("The limit number of background points has been attained!");
    if (points.empty()) session.lists.background_found_in = session.plot.xspace;
    points.push_back({x, y});
    std::stable_sort(points.begin(), points.end(), Left_Of<Background_Mark>);
}

void Delete_Background(Session& session, Ask& ask, float x, float y) {
    const Plot_State& plot = session.plot;
    const float reach_x = near_part * (plot.x_view_max - plot.x_view_min), reach_y = near_part * (plot.y_view_max - plot.y_view_min);
    std::vector<Background_Mark>& points = session.lists.background;
    const auto found = std::find_if(points.begin(), points.end(), [&](const Background_Mark& point) {
        return std::fabs(point.x - x) <= reach_x && std::fabs(On_Scale(plot.Scale(), point.y) - On_Scale(plot.Scale(), y)) <= reach_y;
    });
    if (found == points.end()) return ask.Error("No background point found in this position for removing");
    points.erase(found);
}

void Set_Upper_Limit(Session& session, Ask& ask, float x, float y) {
    Fit_State& fit = session.lists.fit;
    if (!(x > fit.x_ini)) return ask.Error("ERROR: The maximal X-value CANNOT\n       be lower than the minimal X-value");
    fit.upper_set = true;
    fit.x_fin = x;
    fit.y_fin = y;
    Take_Fit_Window(session);
    session.interface.Hint("From now, you only need add/delete peaks into the range defined previously");
}

std::string Count_Of_Peaks(const Fit_State& fit) {
    return ": " + std::to_string(fit.peaks.size()) + (fit.peaks.size() == 1 ? " peak" : " peaks");
}

// A click on a peak takes it away, unless peaks are being added; anywhere else in the window it adds one.
void Change_Fit_Peaks(Session& session, Ask& ask, float x) {
    const Fit_State& fit = session.lists.fit;
    const bool adding = session.plot.peak_insert;
    const float reach = near_fit_part * (fit.x_fin - fit.x_ini);
    const auto found =
        std::find_if(fit.peaks.begin(), fit.peaks.end(), [&](const Fit_Peak& peak) { return std::fabs(peak.pos.value - x) <= reach; });
    const bool deletes = !adding && found != fit.peaks.end();
    if (!deletes && fit.peaks.size() >= max_fit_peaks) return ask.Information("The maximum number of peaks to fit was reached!");
    if (x < fit.x_ini || x > fit.x_fin) return;
    if (!deletes) {
        const Peak_Place place = Snapped(session, {x, 0}, fit.x_ini, fit.x_fin);
        const auto here = [&place](const Fit_Peak& peak) { return peak.pos.value == place.x; };
        if (place.on_top && std::any_of(fit.peaks.begin(), fit.peaks.end(), here))
            return session.interface.Hint(std::string(there_already));
        x = place.x;
    }
    if (deletes) {
        Delete_Fit_Peak(session, static_cast<std::size_t>(found - fit.peaks.begin()));
        return session.interface.Hint("A peak has been deleted" + Count_Of_Peaks(fit));
    }
    Add_Fit_Peak(session, x);
    session.interface.Hint("A peak has been added" + Count_Of_Peaks(fit));
}

// Two points of the background limit the window, then clicks in it choose its peaks.
void Click_In_Fit(Session& session, Ask& ask, float x, float y) {
    const std::string variable = Lower(session.store.Pattern(1).scat_var);
    if (!Contains(variable, "2theta") && !Contains(variable, "tof")) return;
    Fit_State& fit = session.lists.fit;
    if (fit.done) fit.done = false, Set_Fit_Overlay(session);  // choosing goes on
    if (fit.upper_set) return Change_Fit_Peaks(session, ask, x);
    if (fit.lower_set) return Set_Upper_Limit(session, ask, x, y);
    fit.lower_set = true;
    fit.x_ini = x;
    fit.y_ini = y;
    session.interface.Hint("Select now the upper limit on background points");
}

}  // namespace

void Click(Session& session, Ask& ask, float x, float y) {
    const Plot_State& plot = session.plot;
    const auto listed = [&lists = session.lists] { return lists.peaks.size() + lists.background.size(); };
    const std::size_t before = listed();
    switch (plot.ClickMode) {
        case Click_Mode::fit: {
            Row_Change change(session, "choice in the fit");
            Click_In_Fit(session, ask, x, y);
            change.Keep();
            break;
        }
        case Click_Mode::peaks: {
            Row_Change change(session, plot.peak_delete ? "deleted peak" : "inserted peak");
            if (plot.peak_insert && !plot.peak_delete) Insert_Peak(session, ask, x, y);
            if (plot.peak_delete) Delete_Peak(session, ask, x);
            change.Keep();
            break;
        }
        case Click_Mode::background: {
            Row_Change change(session, plot.bgr_delete ? "deleted background point" : "inserted background point");
            if (plot.bgr_insert) Insert_Background(session, ask, x, y);
            if (plot.bgr_delete) Delete_Background(session, ask, x, y);
            change.Keep();
            break;
        }
        default:
            break;
    }
    Plot_Redraw(session);
    if (listed() != before) Tell_Count(session);
}

}  // namespace vntl
