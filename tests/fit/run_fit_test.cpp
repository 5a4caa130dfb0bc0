// What a fit refuses, and that what it takes ends with numbers.
#include "fit/run_fit.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>

#include "fit/fit_samples.hpp"

namespace vntl {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), infinite = std::numeric_limits<float>::infinity();

// Two peaks over a background of three nodes. A case changes what it is about.
struct Sample {
    Fit_Kind kind = Fit_Kind::constant_wavelength;
    Fit_State state;
    std::vector<Background_Mark> nodes;
    Diffraction_Pattern_Type pattern;
};

Sample Sample_Of(Fit_Kind kind) {
    const bool flight = kind == Fit_Kind::time_of_flight;
    const float unit = flight ? 100 : 1;  // a degree, or a hundred microseconds
    Sample s{.kind = kind, .state = {}, .nodes = {}, .pattern = {}};
    s.state.x_ini = 40 * unit;
    s.state.x_fin = 50 * unit;
    s.state.lambda1 = s.state.lambda2 = 1.54f;
    s.state.d2tof = 5000;
    if (flight) {
        s.state.prof[prof_alpha].value = 0.05f;
        s.state.prof[prof_beta].value = 0.03f;
    }
    for (const float place : {43.0f, 47.0f})
        s.state.peaks.push_back(Free_Peak(place * unit, 300 * unit, flight ? 100 : 0.3, flight ? 0 : 0.5));
    s.nodes = {{40 * unit, 100, 1}, {45 * unit, 100, 1}, {50 * unit, 100, 1}};
    s.pattern = Level_Pattern(39 * unit, 0.02 * unit, 600, 100);
    Fit_Problem problem;
    const Status status = Make_Fit_Problem(kind, s.state, s.nodes, s.pattern, problem);
    EXPECT_TRUE(status.ok()) << status.message;
    const std::vector<float> curve = Curve(problem);
    std::ranges::copy(curve, s.pattern.y.begin() + (std::ranges::find(s.pattern.x, problem.data.x[0]) - s.pattern.x.begin()));
    for (Fit_Peak& peak : s.state.peaks) peak.intensity.value *= 0.8f;
    return s;
}

void Many(Sample& s, int peaks, int nodes) {
    s.state.peaks.resize(static_cast<std::size_t>(peaks), s.state.peaks[0]);
    const float width = s.state.x_fin - s.state.x_ini;
    for (int k = 0; k < peaks; ++k) {
        Fit_Peak& peak = s.state.peaks[static_cast<std::size_t>(k)];
        peak.pos = {s.state.x_ini + width * (static_cast<float>(k) + 0.5f) / static_cast<float>(peaks), 0};
        peak.shift_width.flag = 0;
    }
    s.nodes.clear();
    for (int k = 0; k < nodes; ++k)
        s.nodes.push_back({s.state.x_ini + width * static_cast<float>(k) / static_cast<float>(nodes - 1), 100, 0});
    s.state.Ncyc = 3;
}

struct Case {
    const char* name;
    std::function<void(Sample&)> change;
    const char* message = "";  // part of it; empty: the fit runs
};

const std::vector<Case>& Cases_Of_Both() {
    static const std::vector<Case> cases = {
        {"as it is", [](Sample&) {}},
        {"node out of order", [](Sample& s) { std::swap(s.nodes[1].x, s.nodes[2].x); }, "not in rising order: point 3"},
        {"node doubled", [](Sample& s) { s.nodes[1].x = s.nodes[2].x; }, "not in rising order: point 3"},
        {"inner node before the window", [](Sample& s) { s.nodes[1].x = 0.9f * s.state.x_ini, s.nodes[0].x = 1; }, "not in rising order"},
        {"node without a place", [](Sample& s) { s.nodes[1].x = nan; }, "Background point 2 is no number"},
        {"node without a height", [](Sample& s) { s.nodes[2].y = infinite; }, "Background point 3 is no number"},
        {"no node", [](Sample& s) { s.nodes.clear(); }, "background line is not yet selected"},
        {"one node", [](Sample& s) { s.nodes.resize(1); }},
        {"121 nodes", [](Sample& s) { Many(s, 2, 121); }, "more than 120"},
        {"400 peaks, 120 nodes", [](Sample& s) { Many(s, 400, 120); }},
        {"401 peaks", [](Sample& s) { Many(s, 401, 3); }, "maximum number of peaks"},
        {"window turned round", [](Sample& s) { std::swap(s.state.x_ini, s.state.x_fin); }, "range of the fit is empty"},
        {"window without a number", [](Sample& s) { s.state.x_fin = nan; }, "range of the fit is empty"},
        {"window without points", [](Sample& s) { s.pattern = Level_Pattern(0, 0.001, 100, 100); }, "no points between"},
        {"pattern without points", [](Sample& s) { s.pattern = {}; }, "no points between"},
        {"fewer points than parameters", [](Sample& s) { s.pattern = Level_Pattern(s.state.x_ini * 1.01, s.state.x_ini / 100, 4, 100); }},
        {"peak before the window", [](Sample& s) { s.state.peaks[1].pos.value = 1; }, "Peak 2 at 1"},
        {"peak behind it, at rest", [](Sample& s) { s.state.peaks[1].pos.value = 1e6f, s.state.peaks[1].active = false; }},
        {"peak without a place", [](Sample& s) { s.state.peaks[0].pos.value = nan; }, "Peak 1"},
        {"no peak", [](Sample& s) { s.state.peaks.clear(); }, "No peak has been selected"},
        {"all peaks at rest",
         [](Sample& s) {
             for (Fit_Peak& peak : s.state.peaks) peak.active = false;
         },
         "No peak has been selected"},
        {"peak without width", [](Sample& s) { s.state.peaks[1].shift_width.value = 0; }, "Peak 2"},
        {"width that is no number", [](Sample& s) { s.state.peaks[0].shift_width.value = nan; }, "is no number"},
        {"intensity that is no number", [](Sample& s) { s.state.peaks[1].intensity.value = nan; }, "Intensity_2 is no number"},
        {"endless intensity", [](Sample& s) { s.state.peaks[1].intensity.value = infinite; }, "Intensity_2 is no number"},
        {"eta that is no number", [](Sample& s) { s.state.peaks[1].shift_eta.value = nan; }, "_2 is no number"},
        {"intensity 0",
         [](Sample& s) {
             for (Fit_Peak& peak : s.state.peaks) peak.intensity.value = 0;
         }},
        {"counts that are no number", [](Sample& s) { s.pattern.y[300] = nan; }, "is no number"},
        {"the same outside the window", [](Sample& s) { s.pattern.y[3] = nan; }},
        {"sigma that is no number", [](Sample& s) { s.pattern.sigma[300] = nan, s.pattern.sigma[301] = 0, s.pattern.sigma[302] = -1; }},
        {"counts without sigma", [](Sample& s) { s.pattern.sigma.clear(); }},
        {"nothing is free",
         [](Sample& s) {
             for (Background_Mark& node : s.nodes) node.flag = 0;
             for (Fit_Peak& peak : s.state.peaks) peak.pos.flag = peak.intensity.flag = peak.shift_width.flag = 0;
         }},
        {"two peaks in one place", [](Sample& s) { s.state.peaks[1] = s.state.peaks[0]; }},
    };
    return cases;
}

// Values that no fit can hold alone: everything of the problem that a plot or a file would show.
bool Has_Numbers_Only(const Fit_Problem& problem) {
    bool good = std::ranges::all_of(problem.data.yc, [](float y) { return std::isfinite(y); });
    for (const LSQ_Parameter& p : State_Vector(problem.kind, problem.state, problem.nodes).parameters) good = good && std::isfinite(p.pv);
    return good;
}

void Check(const Case& c, Sample s) {
    SCOPED_TRACE(std::string(c.name) + (s.kind == Fit_Kind::time_of_flight ? ", time of flight" : ", constant wavelength"));
    c.change(s);
    Fit_Problem problem;
    problem.state.Ncyc = 77;
    const Status status = Make_Fit_Problem(s.kind, s.state, s.nodes, s.pattern, problem);
    EXPECT_EQ(status.failed, *c.message != 0) << status.message;
    if (status.failed) {
        EXPECT_NE(status.message.find(c.message), std::string::npos) << status.message;
        EXPECT_EQ(problem.state.Ncyc, 77);  // the former problem is kept
        return;
    }
    Work_Control control;
    const Fit_Result result = Run_Fit(problem, control);
    EXPECT_TRUE(Has_Numbers_Only(problem)) << result.run.infout;
    EXPECT_FALSE(result.run.infout.empty());
}

TEST(Run_Fit, TakesOrRefuses) {
    for (const Fit_Kind kind : {Fit_Kind::constant_wavelength, Fit_Kind::time_of_flight}) {
        const Sample sample = Sample_Of(kind);
        for (const Case& c : Cases_Of_Both()) Check(c, sample);
    }
    const Case of_angles[] = {
        {"negative width", [](Sample& s) { s.state.peaks[1].shift_width.value = -0.2f; }, "Peak 2"},
        {"root of a negative law", [](Sample& s) { s.state.prof[prof_v].value = -1; }, "Peak 1"},
        {"U that is no number", [](Sample& s) { s.state.prof[prof_u].value = nan; }, "U-Caglioti is no number"},
        {"S_L that is no number", [](Sample& s) { s.state.asym[0].value = nan; }, "Asym-1(S_L) is no number"},
        {"ratio that is no number", [](Sample& s) { s.state.ratio.value = nan; }, "no number"},
        {"ratio that leaves nothing", [](Sample& s) { s.state.ratio.value = -1; }, "ratio"},
        {"wavelength that is no number", [](Sample& s) { s.state.lambda2 = infinite; }, "wavelength is no number"},
        {"no wavelength", [](Sample& s) { s.state.lambda1 = s.state.lambda2 = 0; }},
        {"second line that no angle has", [](Sample& s) { s.state.lambda2 = 10, s.state.ratio.value = 0.5f; }},
        {"large divergence", [](Sample& s) { s.state.asym[0].value = s.state.asym[1].value = 5; }},
    };
    for (const Case& c : of_angles) Check(c, Sample_Of(Fit_Kind::constant_wavelength));
    const Case of_flight[] = {
        {"no decay", [](Sample& s) { s.state.prof[prof_alpha].value = 0; }, "Alpha and beta of peak 1"},
        {"decay that is no number", [](Sample& s) { s.state.prof[prof_beta].value = nan; }, "Global-beta is no number"},
        {"rise within a peak", [](Sample& s) { s.state.peaks[1].shift_beta.value = -1; }, "Alpha and beta of peak 2"},
        {"no d to time", [](Sample& s) { s.state.d2tof = 0, s.state.prof[prof_sig1].value = 1; }},
        {"d to time that is no number", [](Sample& s) { s.state.d2tof = nan; }, "Peak 1"},
        {"very fast decay", [](Sample& s) { s.state.prof[prof_alpha].value = 1e6f; }},
        {"very slow decay", [](Sample& s) { s.state.prof[prof_beta].value = 1e-6f; }},
    };
    for (const Case& c : of_flight) Check(c, Sample_Of(Fit_Kind::time_of_flight));
}

}  // namespace
}  // namespace vntl
