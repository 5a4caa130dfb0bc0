// Cuts through pictures that bilinear pieces make up exactly, against their formulas, and the scales.
#include "instrument/frame_cuts.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>

namespace vntl {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct Picture {
    std::vector<float> x, y, z;
    Picture_Grid Grid() const { return {x, y, z}; }
};

// From 0 at an even number to 1 at an odd one.
double Zigzag(double x) { return 1 - std::fabs(x - 2 * std::floor(x / 2) - 1); }

TEST(Frame_Cuts, FollowFormulasThatAreBilinear) {
    const std::function<double(double, double)> formulas[] = {[](double x, double y) { return 3 + 2 * x - 5 * y; },
                                                              [](double x, double y) { return (x - 1.5) * (y + 2); },
                                                              [](double x, double y) { return 100 * Zigzag(x) * Zigzag(y); }};
    // Whole numbers, with gaps that only the first two formulas bear, and falling.
    const std::vector<float> even = {-3, -2, -1, 0, 1, 2, 3, 4}, uneven = {-3, -2.5f, 0.25f, 0.5f, 4}, falling = {4, 1.5f, 1, -3};
    using Axes = std::vector<std::vector<float>>;
    std::mt19937 dice(22);
    std::uniform_real_distribution<double> place(-5, 6);
    for (std::size_t f = 0; f < std::size(formulas); ++f)
        for (const auto& axis : f == 2 ? Axes{even} : Axes{even, uneven, falling}) {
            Picture picture{axis, even, {}};
            for (const float y : even)
                for (const float x : axis) picture.z.push_back(static_cast<float>(formulas[f](x, y)));
            for (int i = 0; i < 300; ++i) {
                const double x = i < 8 ? even[static_cast<std::size_t>(i)] : place(dice), y = i < 8 ? 4 - 7 * (i % 2) : place(dice);
                const double expected = formulas[f](std::clamp(x, -3.0, 4.0), std::clamp(y, -3.0, 4.0));
                ASSERT_NEAR(Bilinear(picture.Grid(), x, y), expected, 1e-5 * (1 + std::fabs(expected))) << f << ": " << x << ' ' << y;
            }
            const Line_Plot line = Cross_Section(picture.Grid(), -2.5f, 3.5f, 3.5f, -4.5f);
            ASSERT_EQ(line.x.size() + line.y.size(), 100u);
            for (std::size_t i = 0; i < 50; ++i) {
                const double part = static_cast<double>(i) / 49;
                EXPECT_NEAR(line.x[i], 10 * part, 1e-5);
                EXPECT_NEAR(line.y[i], formulas[f](-2.5 + 6 * part, std::max(3.5 - 8 * part, -3.0)), 1e-4) << f << ": " << i;
            }
        }
}

TEST(Frame_Cuts, OfFewAndBadPoints) {
    const Picture plane{{1, 2, 3}, {1, 2}, {11, 12, 13, 21, 22, 23}};
    const Line_Plot still = Cross_Section(plane.Grid(), 2.5f, 1.5f, 2.5f, 1.5f);
    EXPECT_TRUE(still.x == std::vector<float>(50, 0) && still.y == std::vector<float>(50, 17.5f));
    const struct {
        Picture picture;
        double x, y;
        float value;
    } cases[] = {{{{5}, {7}, {42}}, -1, 99, 42}, {{{1, 2}, {7}, {10, 20}}, 1.25, 0, 12.5f},         {{{3, 3, 3}, {1}, {5, 5, 5}}, 3, 1, 5},
                 {plane, nan, 1, nan},           {{{1, 2, 3}, {1, 2}, {1, 2, 3, 4, 5}}, 1, 1, nan},  // a point is missing
                 {{{}, {}, {}}, 1, 1, nan}};
    for (const auto& c : cases) {
        const float value = Bilinear(c.picture.Grid(), c.x, c.y);
        EXPECT_TRUE(std::isnan(c.value) ? std::isnan(value) : value == c.value) << &c - cases << ": " << value;
    }
}

TEST(Frame_Cuts, ScalesAndTheScanOfTotals) {
    const float e = std::exp(1.0f);
    const std::vector<float> counts = {0, 1, -4, 0.5f, e, 9, nan};
    const std::pair<Intensity_Scale, std::vector<float>> scales[] = {
        {Intensity_Scale::linear, counts},
        {Intensity_Scale::logarithm, {0, 0, 0, 0, 1, std::log(9.0f), 0}},
        {Intensity_Scale::root_square, {0, 1, 0, std::sqrt(0.5f), std::sqrt(e), 3, 0}}};
    SXTAL_Numor_Type run;
    run.tmc_ang = Frame_Values(4, counts.size());
    for (std::size_t i = 0; i < counts.size(); ++i) run.tmc_ang.Frame(i)[frame_total] = counts[i];
    for (const auto& [scale, expected] : scales) {
        std::vector<float> scaled = counts;
        Scale_Intensities(scaled, scale);
        const Line_Plot scan = Omega_Scan(run, scale);
        ASSERT_EQ(scan.y.size(), counts.size());
        for (std::size_t i = 0; i < counts.size(); ++i)
            for (const float value : {scaled[i], scan.y[i]})
                EXPECT_TRUE(std::isnan(expected[i]) ? std::isnan(value) : std::fabs(value - expected[i]) < 1e-6f) << i << ": " << value;
        EXPECT_TRUE(scan.x.front() == 1 && scan.x.back() == 7);
    }
}

}  // namespace
}  // namespace vntl
