// The model of time-of-flight peaks against its own values, and the rules that say which part of a shape counts where.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

#include "fit/peak_model.hpp"

namespace vntl {
namespace {

constexpr int nodes = 3;
constexpr Fit_Kind tof = Fit_Kind::time_of_flight;

// Two peaks over a background of three nodes; what a test wants different it changes.
struct Case {
    std::vector<float> pv = {0.1f, 0.04f, 20,    300,   50,      0.3f,    // common
                             120,  90,    150,                            // background
                             5000, 3e4f,  15,    0.01f, -0.005f, 0.05f,   // a peak
                             5400, 2e4f,  -2.5f, 0,     0.01f,   -0.1f};  // another
    std::vector<int> free;
    Fit_Constants constants{.node_x = {4000, 5200, 7000}, .d2tof = 5000};
    std::vector<float> x;

    Case() {
        free.assign(pv.size(), 0);
        for (int k = 0; k < 1500; ++k) x.push_back(4000.5f + 2.0f * static_cast<float>(k));
    }
    float& Own(int peak, int p) { return pv[static_cast<std::size_t>(Layout_Of(tof, nodes, 2).Peak(peak) + p)]; }
    std::unique_ptr<Peak_Model> Model() const {
        LSQ_State_Vector vs;
        for (std::size_t p = 0; p < pv.size(); ++p) vs.parameters.push_back({.nampar = "", .pv = pv[p], .code = free[p]});
        return Time_Of_Flight_Model(constants, vs, x);
    }
};

std::vector<float> Peaks_Of(Peak_Model& model, const Case& c) {
    std::vector<float> y(c.x.size()), bgr(y);
    model.Values(c.pv, y, bgr);
    std::ranges::transform(y, bgr, y.begin(), std::minus());
    return y;
}

// A change of a parameter that single precision shows and that curvature does not bend.
float Step_Of(int p) {
    const Parameter_Layout layout = Layout_Of(tof, nodes, 2);
    constexpr float of_common[] = {4e-4f, 2e-4f, 0.5f, 4, 2, 2e-3f}, of_peak[] = {0.25f, 200, 2, 4e-4f, 2e-4f, 2e-3f}, of_node = 10;
    if (p < layout.Node(0)) return of_common[p];
    return p < layout.Peak(0) ? of_node : of_peak[(p - layout.Peak(0)) % layout.of_a_peak];
}

// Central differences of Values for every parameter; those of `none` have no derivative. Further out a change of a parameter brings points
// into the reach of a peak.
void Check_Derivatives(const Case& c, const std::vector<int>& none) {
    const auto model = c.Model();
    std::vector<int> all(c.pv.size());
    std::iota(all.begin(), all.end(), 0);
    std::vector<float> weight;
    for (std::size_t j = 0; j < c.x.size(); ++j) weight.push_back(-0.5f - 0.001f * static_cast<float>(j));
    Jacobian columns(static_cast<int>(c.x.size()), static_cast<int>(all.size()));
    model->Derivatives(c.pv, all, weight, columns);

    for (const int p : all) {
        const std::span<const float> column = columns.Column(p);
        if (std::ranges::find(none, p) != none.end()) {
            EXPECT_TRUE(std::ranges::all_of(column, [](float value) { return value == 0; })) << "parameter " << p;
            continue;
        }
        const auto at = static_cast<std::size_t>(p);
        const float step = Step_Of(p);
        std::vector<float> up = c.pv, down = c.pv, y_up(c.x.size()), y_down(y_up), bgr(y_up);
        up[at] += step;
        down[at] -= step;
        model->Values(up, y_up, bgr);
        model->Values(down, y_down, bgr);
        double size = 0, off = 0;
        for (std::size_t j = 0; j < c.x.size(); ++j) {
            if (c.x[j] < 4600 || c.x[j] > 6200) continue;
            const double slope = (static_cast<double>(y_up[j]) - static_cast<double>(y_down[j])) / static_cast<double>(up[at] - down[at]);
            size = std::max(size, std::fabs(slope));
            off = std::max(off, std::fabs(slope - static_cast<double>(column[j]) / static_cast<double>(weight[j])));
        }
        EXPECT_LE(off, 1e-3 * size) << "parameter " << p;
        EXPECT_GT(size, 0) << "parameter " << p;
    }
}

TEST(TOF_Model, ItsDerivativesAreThoseOfItsValues) {
    Case law;
    law.pv[6] = law.pv[7] = law.pv[8] = 0;  // single precision keeps the digits of the peaks
    Check_Derivatives(law, {});
    Case folded = law;  // Shift-sigma below -s^2: the modulus counts, and falls where the sum rises
    folded.Own(1, 2) = -900;
    Check_Derivatives(folded, {});
    Case shifts_alone = law;  // a law that gives no variance has no derivatives, nor has eta where none is
    for (const int p : {2, 3, 4, 5}) shifts_alone.pv[static_cast<std::size_t>(p)] = 0;
    shifts_alone.Own(0, 2) = 200;
    shifts_alone.Own(1, 2) = 400;
    shifts_alone.Own(0, 5) = shifts_alone.Own(1, 5) = 0;
    Check_Derivatives(shifts_alone, {2, 3, 4, 5, 14, 20});
}

TEST(TOF_Model, APeakEndsAtItsReach) {
    Case c;
    c.pv[6] = c.pv[7] = c.pv[8] = 0;
    c.Own(1, 1) = 0;
    c.constants.d2tof = 0;  // no d-spacing: Sig-0 alone
    c.pv[4] = 1;
    c.Own(0, 2) = 0;
    const auto model = c.Model();
    const std::vector<float> y = Peaks_Of(*model, c);
    EXPECT_NEAR(model->Width_Of(c.pv, 0).fwhm, 2.35482, 1e-5);
    EXPECT_NEAR(model->Width_Of(c.pv, 0).eta, 0.35, 1e-6);
    for (std::size_t j = 0; j < c.x.size(); ++j) {
        const double delta = static_cast<double>(c.x[j]) - 5000, rate = delta > 0 ? 0.035 : 0.11;
        EXPECT_EQ(y[j] > 0, std::fabs(delta) <= 15 * (1.3862944 / rate + 2.35482)) << delta;
    }
}

TEST(TOF_Model, TakesTheLorentzianPartWhereItIsOrMayCome) {
    Case none;
    none.pv[5] = 9e-6f;  // less than counts
    none.Own(0, 5) = none.Own(1, 5) = 0;
    Case zero = none;
    zero.pv[5] = 0;
    EXPECT_EQ(Peaks_Of(*none.Model(), none), Peaks_Of(*zero.Model(), zero));

    const std::vector<int> by_eta = {5};
    const std::vector<float> weight(none.x.size(), 1.0f);
    const auto has_derivative = [&](const Case& c) {
        Jacobian column(static_cast<int>(c.x.size()), 1);
        c.Model()->Derivatives(c.pv, by_eta, weight, column);
        return std::ranges::any_of(column.Column(0), [](float value) { return value != 0; });
    };
    EXPECT_FALSE(has_derivative(zero));
    const std::size_t shift = static_cast<std::size_t>(Layout_Of(tof, nodes, 2).Peak(1) + 5);
    for (const std::size_t p : {std::size_t{5}, shift}) {
        Case may_come = zero, is_there = zero;
        may_come.free[p] = 1;
        is_there.pv[p] = 2e-5f;
        EXPECT_TRUE(has_derivative(may_come)) << p;
        EXPECT_TRUE(has_derivative(is_there)) << p;
    }
}

TEST(TOF_Model, SharesAddUpAndOldParametersLeaveNothing) {
    Case c;
    const auto model = c.Model();
    std::vector<float> y(c.x.size()), bgr(y), sum, again(y), bgr_again(y);
    model->Values(c.pv, y, bgr);
    Case other = c;
    other.Own(0, 0) += 40;
    other.Own(1, 4) = 0.03f;
    other.pv[4] = NAN;
    model->Values(other.pv, again, bgr_again);
    EXPECT_TRUE(std::isnan(again[500]));
    other.pv[0] = -0.2f;  // a step of a fit that went too far
    model->Values(other.pv, again, bgr_again);
    EXPECT_TRUE(std::isnan(again[500]));
    model->Values(c.pv, again, bgr_again);
    EXPECT_EQ(again, y);
    sum = bgr;
    model->Add_Peak(c.pv, 0, sum);
    model->Add_Peak(c.pv, 1, sum);
    for (std::size_t j = 0; j < y.size(); ++j) ASSERT_NEAR(sum[j], y[j], 2e-7 * static_cast<double>(y[j]));
    EXPECT_NEAR(bgr.front(), 120, 0.1);  // the line from 120 to 90, and its end near 150
    EXPECT_NEAR(bgr.back(), 150, 0.1);
}

}  // namespace
}  // namespace vntl
