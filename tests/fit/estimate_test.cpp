// Starting values against what they estimate: peaks of a known width.
#include "fit/estimate.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "fit/state_vector.hpp"

namespace vntl {
namespace {

// Triangles on a level of 100: between two points the curve is straight, so that widths are exact.
Diffraction_Pattern_Type Triangles(std::initializer_list<std::pair<double, double>> peaks) {
    Diffraction_Pattern_Type p;
    EXPECT_TRUE(Allocate_Diffraction_Pattern(p, 401).ok());
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        p.x[i] = static_cast<float>(20 + 0.0625 * static_cast<double>(i));
        double y = 100;
        for (const auto& [centre, base] : peaks) y += 800 * std::max(0.0, 1 - std::fabs(p.x[i] - centre) / base);
        p.y[i] = static_cast<float>(y);
    }
    p.scat_var = "2theta";
    p.step = 0.0625f;
    return p;
}

TEST(Estimate, WidthAtHalfHeight) {
    const Diffraction_Pattern_Type p = Triangles({{25, 0.5}, {30, 4}});
    struct Case {
        float x, y, bgr, reach, width;
        bool ok;
    };
    const Case cases[] = {
        {25, 900, 100, 1, 0.5f, true},      // half of the base
        {25, 900, 500, 1, 0.25f, true},     // over a background, a quarter of the way down
        {25, 900, 100, 0.125f, 0, true},    // no crossing within reach: both sides end at the peak
        {25.03f, 900, 100, 0, 0.5f, true},  // between two points, with the usual reach
        {30, 900, 100, 0.625f, 0, true},   {30, 900, 100, 5, 4, true}, {19, 900, 100, 1, -1, false},
        {45, 900, 100, 1, -1, false},      {20, 900, 100, 1, 0, true},
    };
    for (const Case& c : cases) {
        float width = 7;
        const Status status = Calc_FWHM_Peak(p, c.x, c.y, c.bgr, c.reach, width);
        EXPECT_EQ(status.ok(), c.ok) << c.x;
        EXPECT_EQ(status.message, c.ok ? "" : "The index for X(i1) <= x < X(i1+1) was zero!");
        if (c.x == 20) continue;  // at the edge the near point stands in
        EXPECT_NEAR(width, c.width, 1e-4) << c.x << " " << c.reach;
    }
}

TEST(Estimate, UnknownWidthsAreTheMeanOfTheOthers) {
    Diffraction_Pattern_Type p = Triangles({{25, 0.5}, {28, 0.25}, {34, 4}});
    const Detected_Peak detected[] = {{25, 900, 100}, {28, 900, 100}, {34, 900, 100}};
    const auto peaks = Estimate_Fit_Peaks(p, detected);
    ASSERT_EQ(peaks.size(), 3u);
    EXPECT_NEAR(peaks[0].shift_width.value, 0.5, 1e-4);
    EXPECT_NEAR(peaks[0].half_x, 24.75, 1e-4);
    EXPECT_EQ(peaks[0].half_y, 500);
    EXPECT_NEAR(peaks[2].shift_width.value, 0.375, 1e-4);  // its own is out of reach
    for (const Fit_Peak& peak : peaks) {
        EXPECT_TRUE(peak.active && peak.marked && peak.is_height);
        EXPECT_EQ(peak.pos.flag + peak.intensity.flag + peak.shift_width.flag, 3);
        EXPECT_EQ(peak.shift_eta.flag, 0);
    }
    p.scat_var = "Distance";
    EXPECT_FALSE(Estimate_Fit_Peaks(p, detected)[0].marked);
    const std::vector<Detected_Peak> many(450, detected[0]);
    EXPECT_EQ(Estimate_Fit_Peaks(p, many).size(), static_cast<std::size_t>(max_fit_peaks));
}

TEST(State_Vector, ActivePeaksGoInAndComeBack) {
    for (const Fit_Kind kind : {Fit_Kind::constant_wavelength, Fit_Kind::time_of_flight}) {
        const bool flight = kind == Fit_Kind::time_of_flight;
        Fit_State state;
        state.peaks.resize(3);
        state.peaks[1].active = false;
        state.peaks[1].pos = {55, 1, 3};
        state.peaks[2].shift_eta.flag = 1;
        state.prof[prof_eta0].flag = 1;
        std::vector<Background_Mark> nodes = {{10, 1, 1}, {20, 2, 0}};
        LSQ_State_Vector vs = State_Vector(kind, state, nodes);
        ASSERT_EQ(vs.np(), flight ? 6 + 2 + 12 : 9 + 2 + 8);
        EXPECT_EQ(vs.np(), Layout_Of(kind, 2, 2).np());
        const auto last = vs.parameters.back();
        EXPECT_EQ(last.nampar, flight ? "Shf___Eta_3" : "Shf_EtaPV_3");
        EXPECT_EQ(last.code, 1);
        EXPECT_EQ(vs.parameters[flight ? 7 : 10].nampar, "background_2");
        EXPECT_EQ(vs.parameters[flight ? 4 : 7].code, 1);
        for (int i = 0; i < vs.np(); ++i) {
            vs.parameters[static_cast<std::size_t>(i)].pv = static_cast<float>(100 + i);
            vs.parameters[static_cast<std::size_t>(i)].spv = static_cast<float>(i);
        }
        Take_Parameters(vs, kind, state, nodes);
        EXPECT_EQ(state.peaks[2].shift_eta.value, static_cast<float>(100 + vs.np() - 1));
        EXPECT_EQ(state.peaks[2].shift_eta.sd, static_cast<float>(vs.np() - 1));
        EXPECT_EQ(std::pair(state.peaks[1].pos.value, state.peaks[1].pos.sd), std::pair(55.0f, 0.0f));
        EXPECT_EQ(nodes[1].y, flight ? 107 : 110);
        EXPECT_EQ(state.y_fin, nodes[1].y);
        EXPECT_EQ(state.prof[0].value, flight ? 100 : 103);
    }
}

}  // namespace
}  // namespace vntl
