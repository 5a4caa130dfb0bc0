// Conversions of x: single values against the closed forms, the turn of the arrays, and the way there and back.
#include "calc/x_conversion.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace vntl {
namespace {

using enum X_Step;
using Steps = std::vector<X_Step>;
using Floats = std::vector<float>;

constexpr double pi = std::numbers::pi, degree = pi / 180;
constexpr float most = std::numeric_limits<float>::max();

// The spacing of a time of flight: the root of dtt2 d^2 + dtt1 d - t that goes to t / dtt1 as dtt2 goes to 0.
double Spacing(double t, double dtt1, double dtt2) { return 2 * t / (dtt1 + std::sqrt(dtt1 * dtt1 + 4 * dtt2 * t)); }

double Ulp(float x) { return static_cast<double>(std::nextafter(std::fabs(x), most)) - std::fabs(x); }
double Ulps(float a, float b) { return std::fabs(static_cast<double>(a) - b) / Ulp(b); }

Diffraction_Pattern_Type Pattern_Over(const Floats& x, const X_Constants& constants = {}) {
    Diffraction_Pattern_Type p;
    (void)Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(x.size()));
    p.x = x;
    p.conv = constants;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const auto n = static_cast<float>(i + 1);
        p.y[i] = n;
        p.sigma[i] = 10 * n;
        p.ycalc[i] = 100 * n;
        p.bgr[i] = 1000 * n;
        p.istat[i] = static_cast<std::int32_t>(i + 1);
        p.nd[i] = -p.istat[i];
    }
    return p;
}

TEST(X_Conversion, SingleValuesAgreeWithTheClosedForms) {
    struct Case {
        X_Step step;
        float x;
        X_Constants constants;
        double expected;
    };
    const double lambda = 1.5406f;
    const Case cases[] = {
        {two_theta_to_d, 30, {1.5406f}, lambda / (2 * std::sin(15 * degree))},
        {two_theta_to_d, 0.001f, {1.5406f}, lambda / (2 * std::sin(double{0.001f} / 2 * degree))},
        {two_theta_to_d, -30, {1.5406f}, -lambda / (2 * std::sin(15 * degree))},
        {d_to_two_theta, 2, {1.5406f}, 2 / degree * std::asin(lambda / 4)},
        {d_to_two_theta, 1e6f, {1.5406f}, 2 / degree * std::asin(lambda / 2e6)},
        {d_to_two_theta, 0.75f, {1.5f}, 180},  // half the wavelength: backscattering
        {d_to_two_theta, 0.5f, {1.5f}, 180},   // no angle reaches it
        {d_to_tof, 2, {500, 5}, 1020},
        {d_to_tof, 2, {500, -5}, 980},
        {d_to_tof, 2, {5000, 10}, 10040},
        {tof_to_d, 980, {500, -5}, 2},
        {tof_to_d, 20000, {500, 5}, Spacing(20000, 500, 5)},
        {tof_to_d, 12000, {500, -5}, Spacing(12000, 500, -5)},
        {tof_to_d, 3, {1, 100}, Spacing(3, 1, 100)},
        {tof_to_d, 13000, {500, -5}, 50},         // beyond the largest time of all, at d = dtt1 / (2 |dtt2|)
        {tof_to_d, 10040, {5000, 0}, 2.008},      // no curvature
        {tof_to_d, 10040, {5000, 1e-9f}, 2.008},  // one that changes nothing
        {tof_to_d, 10040, {5000, 10}, 2},         // dtt2 / dtt1^2 is 4e-7, and d 0.4 % less than without it
        {tof_to_d, 20000, {7476.9f, -1.54f}, Spacing(20000, 7476.9f, -1.54f)},
        {tof_to_d, -0.25f, {5000, 1e-4f}, -0.25 / 5000},  // so near to 0 that a time has its own spacing
        {d_q, 2, {}, pi},
        {d_q, 0, {}, std::numeric_limits<double>::infinity()},
        {d_s, 4, {}, 0.25},
        {q_to_s, 3, {}, 3 / (2 * pi)},
        {s_to_q, 3, {}, 3 * 2 * pi},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("step " + std::to_string(static_cast<int>(c.step)) + " of " + std::to_string(c.x));
        const double found = Convert_Value(c.step, c.x, c.constants);
        const double tolerance = c.step == tof_to_d && c.expected == 50 ? 2e-8 : 1e-11;  // at the apex a rounding of the root shows
        if (std::isfinite(c.expected)) {
            EXPECT_NEAR(found, c.expected, tolerance * std::fabs(c.expected));
        } else {
            EXPECT_EQ(found, c.expected);
        }
        EXPECT_FLOAT_EQ(Convert_X(c.step, c.x, c.constants), static_cast<float>(c.expected));
        Diffraction_Pattern_Type p = Pattern_Over({c.x}, c.constants);
        Convert_Points(c.step, p);  // a point obeys the same formula, but for one at or below 0 that has no neighbour
        if (c.x > 0) {
            EXPECT_FLOAT_EQ(p.x[0], static_cast<float>(c.expected));
        }
    }
}

// The loop over points is another one than that for single values: they agree to the last place everywhere.
TEST(X_Conversion, PointsAgreeWithTheClosedFormOverTheWholeRange) {
    Floats angles, spacings;
    for (int i = 1; i <= 36000; ++i) angles.push_back(static_cast<float>(i) * 0.005f);
    for (int i = 1; i <= 40000; ++i) spacings.push_back(0.7703f + static_cast<float>(i) * static_cast<float>(i) * 1e-7f);
    Diffraction_Pattern_Type from_angles = Pattern_Over(angles, {1.5406f}), from_spacings = Pattern_Over(spacings, {1.5406f});
    Convert_Points(two_theta_to_d, from_angles);
    Convert_Points(d_to_two_theta, from_spacings);
    double worst = 0;
    for (std::size_t i = 0; i < angles.size(); ++i) {
        const double d = double{1.5406f} / (2 * std::sin(double{angles[i]} / 2 * degree));
        worst = std::max(worst, std::fabs(from_angles.x[angles.size() - 1 - i] - d) / Ulp(static_cast<float>(d)));
    }
    for (std::size_t i = 0; i < spacings.size(); ++i) {
        const double angle = 2 / degree * std::asin(double{1.5406f} / (2 * double{spacings[i]}));
        worst = std::max(worst, std::fabs(from_spacings.x[spacings.size() - 1 - i] - angle) / Ulp(static_cast<float>(angle)));
    }
    EXPECT_LT(worst, 0.51);  // half a unit is the rounding itself
}

TEST(X_Conversion, EveryArrayTurnsWithXAndTheLimitsAreThoseOfAllPoints) {
    Diffraction_Pattern_Type p = Pattern_Over({1, 2, 4});
    p.y = {5, -7, 3};
    Convert_Points(d_s, p);
    EXPECT_EQ(p.x, (Floats{0.25f, 0.5f, 1}));
    EXPECT_EQ(p.y, (Floats{3, -7, 5}));
    EXPECT_EQ(p.sigma, (Floats{30, 20, 10}));
    EXPECT_EQ(p.ycalc, (Floats{300, 200, 100}));
    EXPECT_EQ(p.bgr, (Floats{3000, 2000, 1000}));
    EXPECT_EQ(p.istat, (std::vector<std::int32_t>{3, 2, 1}));
    EXPECT_EQ(p.nd, (std::vector<std::int32_t>{-3, -2, -1}));
    EXPECT_EQ((Floats{p.xmin, p.xmax, p.ymin, p.ymax}), (Floats{0.25f, 1, -7, 5}));

    Diffraction_Pattern_Type bare = Pattern_Over({1, 2, 4}, {10, 1});  // the arrays that a row can do without
    for (Floats* array : {&bare.sigma, &bare.ycalc, &bare.bgr}) array->clear();
    bare.istat.clear();
    bare.al_sigma = bare.al_ycalc = bare.al_bgr = bare.al_istat = false;
    Convert_Points(d_to_tof, bare);
    EXPECT_EQ(bare.x, (Floats{11, 24, 56}));
    EXPECT_EQ(bare.y, (Floats{1, 2, 3}));  // no turn
    EXPECT_EQ((Floats{bare.xmin, bare.xmax, bare.ymin, bare.ymax}), (Floats{11, 56, 1, 3}));
    Convert_Points(d_q, bare);
    EXPECT_EQ(bare.y, (Floats{3, 2, 1}));
    EXPECT_TRUE(bare.sigma.empty() && bare.ycalc.empty() && bare.bgr.empty() && bare.istat.empty());

    for (const X_Step step : {two_theta_to_d, tof_to_d, d_to_tof, d_to_two_theta, d_q, d_s, q_to_s, s_to_q}) {
        Diffraction_Pattern_Type none;
        Convert_Points(step, none);
        EXPECT_EQ((Floats{none.xmin, none.xmax, none.ymin, none.ymax}), (Floats{most, -most, most, -most})) << static_cast<int>(step);
    }
}

TEST(X_Conversion, AnAngleAtOrBelowZeroTakesTheSpacingOfThePointBehindIt) {
    const float d1 = Convert_X(two_theta_to_d, 1, {2}), d2 = Convert_X(two_theta_to_d, 2, {2});
    Diffraction_Pattern_Type p = Pattern_Over({-2, -1, 0, 1, 2}, {2});
    Convert_Points(two_theta_to_d, p);
    EXPECT_EQ(p.x, (Floats{d2, d1, d1, d1, d1}));
    EXPECT_EQ(p.y, (Floats{5, 4, 3, 2, 1}));
    EXPECT_EQ((Floats{p.xmin, p.xmax}), (Floats{d2, d1}));
}

// A chain of n steps rounds x n - 1 times between its ends. A relative error e of d moves an angle by 2 tan(theta) e, and a time by
// (dtt1 + 2 dtt2 d) / (dtt1 + dtt2 d) e, which is at most 2; everything else by e. Half a unit is the last rounding.
TEST(X_Conversion, ThereAndBackReturnsX) {
    struct Chain {
        const char* name;
        Steps steps;
        X_Constants constants;
        float lowest, highest;
    };
    const Chain chains[] = {
        {"angle, d", {two_theta_to_d, d_to_two_theta}, {0.7093f}, 0.01f, 180},
        {"angle, d, s, Q", {two_theta_to_d, d_s, s_to_q, d_q, d_to_two_theta}, {2.52f}, 0.01f, 180},
        {"d, Q, s", {d_q, q_to_s, d_s}, {}, 0.1f, 100},
        {"d, s, Q", {d_s, s_to_q, d_q}, {}, 0.1f, 100},
        {"time, dtt2 above 0", {tof_to_d, d_to_tof}, {500, 5}, 0.1f, 30000},
        {"time, dtt2 far above 0", {tof_to_d, d_to_tof}, {1, 1000}, 0.1f, 30000},
        {"time, dtt2 below 0", {tof_to_d, d_to_tof}, {500, -5}, 0.1f, 12500},  // up to the largest time of all
        {"time, dtt2 tiny", {tof_to_d, d_to_tof}, {7476.9f, 1e-7f}, 0.1f, 30000},
        {"time, dtt2 of an instrument", {tof_to_d, d_to_tof}, {7476.9f, -1.54f}, 0.1f, 30000},
        {"time, dtt2 of another", {tof_to_d, d_to_tof}, {22580.5f, 12.1f}, 0.1f, 130000},
        {"time, d, Q, s", {tof_to_d, d_q, q_to_s, d_s, d_to_tof}, {500, 5}, 0.1f, 30000},
    };
    std::mt19937 random(41);
    for (const Chain& chain : chains) {
        SCOPED_TRACE(chain.name);
        const bool angles = chain.steps.front() == two_theta_to_d;
        for (int pattern = 0; pattern < 40; ++pattern) {
            Floats x(1 + random() % 400);
            std::uniform_real_distribution<float> place(chain.lowest, chain.highest);
            for (float& v : x) v = place(random);
            std::sort(x.begin(), x.end());
            Diffraction_Pattern_Type p = Pattern_Over(x, chain.constants);
            const Diffraction_Pattern_Type before = p;
            ASSERT_TRUE(Check_Convertible(chain.steps, p, "f").ok());
            Convert_Points(chain.steps, p);
            if (std::count_if(chain.steps.begin(), chain.steps.end(), Reverses) % 2 == 0) {
                EXPECT_TRUE(p.y == before.y && p.sigma == before.sigma && p.istat == before.istat && p.nd == before.nd);
            }
            const double roundings = static_cast<double>(chain.steps.size() - 1) * std::ldexp(1, -24);
            for (std::size_t i = 0; i < x.size(); ++i) {
                const double steepness = angles ? 2 / degree * std::tan(double{x[i]} / 2 * degree) : 2.0 * double{x[i]};
                ASSERT_LE(std::fabs(double{p.x[i]} - x[i]), 1.01 * steepness * roundings + 0.51 * Ulp(x[i])) << x[i];
                if (chain.steps.size() <= 3 && (!angles || x[i] < 165)) {
                    ASSERT_LE(Ulps(p.x[i], x[i]), chain.steps.front() == tof_to_d ? 3 : 4) << x[i];
                }
            }
        }
    }
}

TEST(X_Conversion, WhatDoesNotLeadToRisingFiniteXIsRefused) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        const char* what;
        Steps steps;
        Floats x;
        X_Constants constants;
        bool convertible;
    };
    const Case cases[] = {
        {"angles", {two_theta_to_d, d_q}, {-1, 0, 1, 2}, {1.5f}, true},
        {"spacings without an angle among others", {d_to_two_theta}, {0.5f, 1, 2}, {1.5f}, true},
        {"no positive angle", {two_theta_to_d}, {-3, -2, -1, 0}, {1.5f}, false},
        {"a wavelength that is no number", {two_theta_to_d}, {1, 2}, {nan}, false},
        {"Q through 0", {d_q}, {-1, 1}, {}, false},
        {"s to 0", {d_s}, {-1, 0}, {}, false},
        {"Q through 0 to an angle", {d_q, d_to_two_theta}, {-1, 1}, {1.5f}, false},
        {"dtt1 of 0", {tof_to_d}, {1, 20000}, {0, 0}, false},
        {"times beyond the range of numbers", {d_to_tof}, {1, 1e30f}, {1e30f, 0}, false},
        {"times that fall", {d_to_tof}, {60, 80}, {500, -5}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Diffraction_Pattern_Type p = Pattern_Over(c.x, c.constants);
        const Status status = Check_Convertible(c.steps, p, "some name.xye");
        EXPECT_EQ(status.ok(), c.convertible) << status.message;
        EXPECT_EQ(status.message.find("some name.xye") != std::string::npos, !c.convertible) << status.message;
    }
}

// What is let through does lead there, whatever the pattern: angles beyond 180 degrees, times beyond the apex, signs of all kinds.
TEST(X_Conversion, WhatIsLetThroughEndsFiniteAndRising) {
    const Steps chains[] = {
        {two_theta_to_d}, {two_theta_to_d, d_q}, {tof_to_d},     {tof_to_d, d_s}, {d_to_two_theta}, {d_to_tof}, {d_q}, {d_s},
        {d_q, q_to_s},    {d_q, d_to_two_theta}, {d_s, d_to_tof}};
    std::mt19937 random(7);
    int through = 0;
    for (int trial = 0; trial < 20000; ++trial) {
        const Steps& steps = chains[random() % std::size(chains)];
        const bool angles = steps.front() == two_theta_to_d;
        std::uniform_real_distribution<float> unit(0, 1), signed_unit(-1, 1);
        const float span = angles ? 400 : std::pow(10.0f, 6 * unit(random) - 1), shift = span * signed_unit(random);
        Floats x(1 + random() % 12);
        for (float& v : x) v = shift + span * unit(random);
        std::sort(x.begin(), x.end());
        Diffraction_Pattern_Type p = Pattern_Over(x, {std::pow(10.0f, 4 * unit(random)), 20 * signed_unit(random)});
        if (Check_Convertible(steps, p, "f").failed) continue;
        ++through;
        Convert_Points(steps, p);
        ASSERT_TRUE(std::all_of(p.x.begin(), p.x.end(), [](float v) { return std::isfinite(v); }));
        ASSERT_TRUE(std::is_sorted(p.x.begin(), p.x.end())) << "first step " << static_cast<int>(steps.front()) << ", x from " << x.front()
                                                            << " to " << x.back() << ", " << p.conv[0] << ' ' << p.conv[1];
    }
    EXPECT_GT(through, 3000);
}

}  // namespace
}  // namespace vntl
