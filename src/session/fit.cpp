#include "session/fit.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/os.hpp"
#include "base/text.hpp"
#include "fit/background_line.hpp"
#include "fit/estimate.hpp"
#include "fit/pik_file.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_inner_nodes = max_fit_nodes - 2;
constexpr float usual_eta = 0.5f, usual_alpha = 0.7f, usual_beta = 0.3f, least_decay = 0.0001f;
constexpr float usual_d2tof = 5000, least_d2tof = 10;
constexpr float fwhm_of_sigma = 2.35482f;
constexpr float area_of_height_and_width = 1.6064467f;
constexpr float band_part = 0.14f, foot_part = 0.3f, top_part = 0.05f;

bool Left_Of(const Fit_Peak& a, const Fit_Peak& b) { return a.pos.value < b.pos.value; }

std::size_t Index_At(const Diffraction_Pattern_Type& pattern, float x) { return std::max<std::size_t>(Point_At(pattern, x), 1) - 1; }

// Of the two points beside x the nearer one.
float Y_Near(const Diffraction_Pattern_Type& pattern, float x) {
    const std::size_t left = Index_At(pattern, x), right = std::min(left + 1, pattern.x.size() - 1);
    return pattern.y[x - pattern.x[left] <= pattern.x[right] - x ? left : right];
}

// The background line at x: the nodes, or the ends of the window where there are none.
std::vector<float> Background_Under(const Session& session, std::span<const float> x) {
    const Fit_State& fit = session.lists.fit;
    std::vector<float> node_x = {fit.x_ini, fit.x_fin}, heights = {fit.y_ini, fit.y_fin}, bgr(x.size());
    if (session.lists.background.size() >= 2) {
        node_x.clear(), heights.clear();
        for (const Background_Mark& node : session.lists.background) node_x.push_back(node.x), heights.push_back(node.y);
    }
    Background_Line(node_x, x).Values(heights, bgr);
    return bgr;
}

void Keep_What_Is_Inside(Calculation_Lists& lists) {
    const float from = lists.fit.x_ini, to = lists.fit.x_fin;
    std::erase_if(lists.peaks, [&](const Peak_Mark& peak) { return !(peak.x >= from && peak.x <= to); });
}

// The list of detected peaks agrees with the peaks of the fit, as entries of one number each.
void Show_As_Detected(Session& session) {
    const std::vector<Fit_Peak>& peaks = session.lists.fit.peaks;
    std::vector<float> x;
    for (const Fit_Peak& peak : peaks) x.push_back(peak.pos.value);
    const std::vector<float> bgr = Background_Under(session, x);
    session.lists.peaks.clear();
    session.lists.peaks_found_in = session.plot.xspace;
    for (std::size_t i = 0; i < peaks.size(); ++i) session.lists.peaks.push_back({x[i], peaks[i].top, bgr[i]});
}

// Between the ends of the window every second peak gives a node, at the background under it.
void Build_Nodes(Calculation_Lists& lists) {
    const Fit_State& fit = lists.fit;
    std::vector<Background_Mark> inner;
    for (std::size_t i = 0; i + 1 < lists.peaks.size(); i += 2)
        if (lists.peaks[i].x > fit.x_ini && lists.peaks[i].x < fit.x_fin) inner.push_back({lists.peaks[i].x, lists.peaks[i].bgr, 1});
    while (inner.size() > most_inner_nodes) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < inner.size(); i += 2) inner[kept++] = inner[i];
        inner.resize(kept);
    }
    lists.background = {{fit.x_ini, fit.y_ini, 1}};
    lists.background.insert(lists.background.end(), inner.begin(), inner.end());
    lists.background.push_back({fit.x_fin, fit.y_fin, 1});
}

void Take_Window_From_Nodes(Calculation_Lists& lists) {
    Fit_State& fit = lists.fit;
    const Background_Mark &first = lists.background.front(), &last = lists.background.back();
    fit.x_ini = first.x, fit.y_ini = first.y, fit.x_fin = last.x, fit.y_fin = last.y;
    fit.lower_set = fit.upper_set = true;
}

// Where no search has told the wavelengths, the file does, unless the searches look for doublets of a tube.
void Find_Wavelengths(const Session& session, Fit_State& fit) {
    if (fit.lambda1 > 0) return;
    const std::array<float, 5>& conv = session.store.Pattern(1).conv;
    const Search_Radiation tube = Radiation_Of_Search(session.search.search_radiation, conv[0]);
    const bool in_file = session.search.search_radiation == 1 && conv[1] > 0;
    fit.lambda1 = tube.lambda1;
    fit.lambda2 = in_file ? conv[1] : tube.lambda2;
    fit.ratio.value = in_file && conv[2] > 0 ? conv[2] : tube.ratio;
}

// The measured widths become one law, sigma^2 = Sig-1 d^2, and the shifts of the peaks from it begin at 0.
void Width_Law_Of_Flight(const Diffraction_Pattern_Type& pattern, Fit_State& fit) {
    if (!fit.peaks_ready) return;
    fit.peaks_ready = false;
    Heights_To_Areas(fit);  // while each peak has its width
    fit.d2tof = pattern.conv[0] >= least_d2tof ? pattern.conv[0] : usual_d2tof;
    float sum = 0;
    for (Fit_Peak& peak : fit.peaks) {
        const float d = peak.pos.value / fit.d2tof, sigma = peak.shift_width.value / fwhm_of_sigma;
        if (d > 0) sum += sigma * sigma / (d * d);
        peak.shift_width = {};
    }
    fit.prof[prof_sig1] = {sum / static_cast<float>(fit.peaks.size()), 1};
}

// Row 1 carries the calculated curve: the observed points outside of the window, so that the difference is 0 there.
void Put_Curve(Diffraction_Pattern_Type& pattern, const Fit_Problem& problem, std::span<const float> yc) {
    pattern.ycalc = pattern.y;
    pattern.al_ycalc = pattern.has_ycalc = true;
    const std::size_t first = Point_At(pattern, problem.state.x_ini), points = std::min(yc.size(), pattern.y.size() - first);
    std::copy_n(yc.begin(), points, pattern.ycalc.begin() + static_cast<std::ptrdiff_t>(first));
}

void Put_Reflections(PRF_Info_Add_Type& info, const Fit_State& fit) {
    info.nphases = 1;
    info.refl_position.clear();
    info.refl_label.clear();
    int number = 0;
    for (const Fit_Peak& peak : fit.peaks) {
        ++number;
        if (!peak.active) continue;
        info.refl_position.push_back(peak.pos.value);
        info.refl_label.push_back("Peak #" + std::to_string(number));
    }
    info.nreflections = static_cast<std::int32_t>(info.refl_position.size());
    info.refl_phase.assign(info.refl_position.size(), 1);
    info.refl_code.assign(info.refl_position.size(), 1);
    info.refl_tag.assign(info.refl_position.size(), 0);
    info.phase_value.assign(1, 0);
    info.phase_table.clear();
}

// A row a peak: what it adds to the background inside the window.
void Add_Rows_Of_Peaks(Session& session, const Fit_Problem& problem, const Fit_Result& result) {
    Profile_Store& store = session.store;
    int number = 0;
    for (const std::vector<float>& share : result.shares) {
        if (store.full()) return;
        const int row = store.Append_Copy(1);
        Diffraction_Pattern_Type& pattern = store.Pattern(row);
        const std::string text = std::to_string(++number);
        pattern.title = "Peak_number: " + std::string(text.size() < 2 ? " " : "") + text;
        store.Info(row).file_name = "Peak " + text;  // the legend tells them apart by it
        store.Info(row).chi2 = 0;
        const std::size_t first = Point_At(pattern, problem.state.x_ini);
        for (std::size_t i = 0; i < share.size(); ++i) pattern.y[first + i] = share[i] + problem.data.bgr[i];
        Set_Y_Limits(pattern);
    }
}

}  // namespace

std::optional<Fit_Kind> Kind_Of_Fit(const Session& session, int row) {
    struct Variable {
        std::string_view word;
        X_Space space;
        Fit_Kind kind;
    };
    constexpr Variable variables[] = {{"2theta", X_Space::two_theta, Fit_Kind::constant_wavelength},
                                      {"distance", X_Space::distance, Fit_Kind::constant_wavelength},
                                      {"r.l.u.", X_Space::rlu, Fit_Kind::constant_wavelength},
                                      {"tof", X_Space::tof, Fit_Kind::time_of_flight}};
    if (session.store.nperfiles() < row) return {};
    const std::string variable = Lower(session.store.Pattern(row).scat_var);
    for (const Variable& known : variables)
        if (Contains(variable, known.word)) return session.plot.xspace == known.space ? std::optional(known.kind) : std::nullopt;
    return {};
}

void Take_Fit_Window(Session& session) {
    Calculation_Lists& lists = session.lists;
    const Fit_State& fit = lists.fit;
    std::vector<Background_Mark>& nodes = lists.background;
    std::erase_if(nodes, [&](const Background_Mark& node) { return !(node.x > fit.x_ini && node.x < fit.x_fin); });
    nodes.insert(nodes.begin(), {fit.x_ini, fit.y_ini, 1});
    nodes.push_back({fit.x_fin, fit.y_fin, 1});
    Keep_What_Is_Inside(lists);
}

void Add_Fit_Peak(Session& session, float x) {
    Fit_State& fit = session.lists.fit;
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    const Detected_Peak clicked{x, Y_Near(pattern, x), Background_Under(session, {&x, 1}).front()};
    std::vector<Fit_Peak> estimated = Estimate_Fit_Peaks(pattern, {&clicked, 1});
    const auto place = std::upper_bound(fit.peaks.begin(), fit.peaks.end(), estimated.front(), Left_Of);
    fit.peaks.insert(place, estimated.front());
    Show_As_Detected(session);
}

void Delete_Fit_Peak(Session& session, std::size_t index) {
    std::vector<Fit_Peak>& peaks = session.lists.fit.peaks;
    peaks.erase(peaks.begin() + static_cast<std::ptrdiff_t>(index));
    Show_As_Detected(session);
}

void Set_Fit_Window(Session& session) {
    Fit_State& fit = session.lists.fit;
    if (!session.lists.background.empty()) return Take_Window_From_Nodes(session.lists);
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    fit.x_ini = session.plot.x_view_min;
    fit.x_fin = session.plot.x_view_max;
    fit.y_ini = pattern.y[Index_At(pattern, fit.x_ini)];
    fit.y_fin = pattern.y[Index_At(pattern, fit.x_fin)];
    fit.lower_set = fit.upper_set = true;
}

void Build_Fit_Peaks(Session& session, Ask& ask) {
    Calculation_Lists& lists = session.lists;
    Keep_What_Is_Inside(lists);
    if (lists.peaks.empty()) return;
    if (lists.peaks.size() > max_fit_peaks) {
        ask.Information("The maximum number of peaks to fit was reached!");
        lists.peaks.resize(max_fit_peaks);
    }
    std::vector<Detected_Peak> detected;
    for (const Peak_Mark& peak : lists.peaks) detected.push_back({peak.x, peak.y, peak.bgr});
    lists.fit.peaks = Estimate_Fit_Peaks(session.store.Pattern(1), detected);
    for (Background_Mark& node : lists.background) node.flag = 1;
    lists.fit.nodes_given = false;
    lists.fit.done = false;
    if (Kind_Of_Fit(session) == Fit_Kind::time_of_flight) return;
    Fit_Value& eta = lists.fit.prof[prof_eta0];
    eta = {eta.value == 0 ? usual_eta : eta.value, 1};
}

Status Prepare_Starting_Values(Session& session, Fit_Kind kind) {
    Calculation_Lists& lists = session.lists;
    Fit_State& fit = lists.fit;
    if (lists.background.empty()) return Status::Fail("ERROR: The background line is not yet selected!");
    if (fit.peaks.empty()) return Status::Fail("ERROR: No peak has been selected!");
    if (lists.background.size() < 3 && !fit.nodes_given)
        Build_Nodes(lists), lists.background_found_in = session.plot.xspace;
    else
        Take_Window_From_Nodes(lists);
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    if (kind == Fit_Kind::constant_wavelength) {
        Find_Wavelengths(session, fit);
        fit.output = Fit_Output::none;
        return Status::Done();
    }
    Width_Law_Of_Flight(pattern, fit);
    for (Background_Mark& node : lists.background) node.flag = 1;
    if (fit.prof[prof_alpha].value < least_decay) fit.prof[prof_alpha].value = usual_alpha;
    if (fit.prof[prof_beta].value < least_decay) fit.prof[prof_beta].value = usual_beta;
    return Status::Done();
}

void Heights_To_Areas(Fit_State& fit) {
    for (Fit_Peak& peak : fit.peaks) {
        if (!peak.is_height) continue;
        peak.is_height = false;
        peak.intensity.value *= area_of_height_and_width * peak.shift_width.value;
    }
}

Status Load_Pik(Session& session, const std::string& file) {
    Calculation_Lists& lists = session.lists;
    Fit_State fit = lists.fit;
    std::vector<Background_Mark> nodes;
    Fit_Kind kind{};
    if (Status status = Read_Pik_File(file, fit, nodes, kind); status.failed) return status;
    if (const std::optional<Fit_Kind> own = Kind_Of_Fit(session); own && *own != kind)
        return Status::Fail_File(kind == Fit_Kind::time_of_flight ? "The PIK file is one of time of flight: " + file
                                                                  : "The PIK file is one of constant wavelength: " + file);
    const Diffraction_Pattern_Type& pattern = session.store.Pattern(1);
    for (Fit_Peak& peak : fit.peaks) peak.top = Y_Near(pattern, peak.pos.value);
    fit.peaks_ready = fit.done = fit.range_pending = false;
    fit.pik_loaded = fit.nodes_given = true;
    lists.fit = std::move(fit);
    lists.background = std::move(nodes);
    lists.background_found_in = session.plot.xspace;
    Show_As_Detected(session);
    return Status::Done();
}

std::string Fit_Stem(const Session& session) {
    const PRF_Info_Add_Type& info = session.store.Info(1);
    std::string name(Trim(info.file_name));
    name.resize(name.size() - Extension_Of(name).size());
    return info.directory.empty() ? name : session.config.Path(info.directory, name);
}

void Show_Fitted_Curve(Session& session, const Fit_Problem& problem, std::span<const float> yc) {
    Put_Curve(session.store.Pattern(1), problem, yc);
    Put_Reflections(session.store.Info(1), problem.state);
    Profile_Store& store = session.store;
    store.ProfilePRFactive = 1;
    store.prf_loaded = store.show_ycalc = store.show_difference = store.show_reflections = true;
    store.show_background = false;

    const auto [least_y, largest_y] = std::ranges::minmax(problem.data.y);
    const auto [least_yc, largest_yc] = std::ranges::minmax(yc);
    const float m = std::min(least_y, least_yc), most = std::max(largest_y, largest_yc), range = most > m ? most - m : 1;
    Plot_State& plot = session.plot;
    plot.diff_band = band_part * range;
    plot.diff_base = m - band_part * range;
    plot.diff_span = range;
    const View counts{problem.state.x_ini, problem.state.x_fin, m - foot_part * range, most + top_part * range};
    if (plot.Show(counts)) Counts_On_Scale(store, plot);
}

void Keep_Fit(Session& session, const Fit_Problem& problem, const Fit_Result& result) {
    session.lists.fit = problem.state;
    session.lists.background = problem.nodes;
    Show_As_Detected(session);
    Show_Fitted_Curve(session, problem, problem.data.yc);
    session.store.Info(1).chi2 = problem.state.chi2;
    if (problem.kind == Fit_Kind::constant_wavelength) Add_Rows_Of_Peaks(session, problem, result);
}

void Keep_First_Row(Profile_Store& store) {
    if (store.nperfiles() < 2) return;
    std::vector<int> others(static_cast<std::size_t>(store.nperfiles() - 1));
    std::iota(others.begin(), others.end(), 2);
    store.Take_Out(others);
    store.changes.Forget();
}

void Set_Fit_Overlay(Session& session) {
    if (session.plot.ClickMode != Click_Mode::fit) return;
    session.store.prf_loaded = session.lists.fit.done;
    session.store.ProfilePRFactive = session.lists.fit.done ? 1 : 0;
}

void Clear_Fit(Session& session) {
    Keep_First_Row(session.store);
    session.lists.fit = {};
    session.lists.fit.range_pending = true;
    session.lists.peaks.clear();
    session.lists.background.clear();
    Set_Fit_Overlay(session);
}

}  // namespace vntl
