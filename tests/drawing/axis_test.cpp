// The tick rule against a computation in double precision of its own, and the texts of the numbers.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "drawing/axis.hpp"

namespace vntl {
namespace {

// Step of a range by its decade and leading digits; 0 where single precision may fall on either side of a bound.
double Expected_Step(double range) {
    const double decade = std::floor(std::log10(range));
    const double m = range / std::pow(10, decade);
    for (const double bound : {1.0, 1.3, 2.6, 6.5, 10.0})
        if (std::fabs(m - bound) < 1e-4) return 0;
    const double multiplier = m < 1.3 ? 1 : m < 2.6 ? 2 : m < 6.5 ? 5 : 10;
    return multiplier * std::pow(10, decade - 1);
}

TEST(Axis, ThousandRandomWindows) {
    std::mt19937 random(20261124);
    std::uniform_real_distribution<double> exponent(-3, 6), sign(-1, 1);
    int compared = 0;
    for (int k = 0; k < 1000; ++k) {
        const auto lo = static_cast<float>(sign(random) * std::pow(10, exponent(random)));
        const auto hi = static_cast<float>(lo + std::max(1e-3, std::fabs(lo) * 0.01) * std::pow(10, 0.5 * (exponent(random) + 3)));
        const double step = Expected_Step(static_cast<double>(hi) - lo);
        if (step == 0) continue;
        ++compared;
        const Axis_Ticks axis = Ticks_Of_Axis(lo, hi);
        EXPECT_NEAR(axis.step / step, 1, 1e-5) << lo << ' ' << hi;
        const double resolution = 4 * std::max(std::fabs(lo), std::fabs(hi)) * std::numeric_limits<float>::epsilon();
        const double slack = 1e-3 * step + resolution;
        const int least = static_cast<int>(std::floor((hi - slack) / step) - std::ceil((lo + slack) / step)) + 1;
        const int most = static_cast<int>(std::floor((hi + slack) / step) - std::ceil((lo - slack) / step)) + 1;
        EXPECT_GE(static_cast<int>(axis.values.size()), least) << lo << ' ' << hi;
        EXPECT_LE(static_cast<int>(axis.values.size()), most) << lo << ' ' << hi;
        for (std::size_t j = 0; j < axis.values.size(); ++j) {
            const double multiple = axis.values[j] / step;
            EXPECT_NEAR(multiple, std::round(multiple), 2e-3 + static_cast<double>(j + 2) * resolution / step)
                << lo << ' ' << hi << ' ' << j;
        }
    }
    EXPECT_GT(compared, 950);
}

TEST(Axis, Examples) {
    const Axis_Ticks fives = Ticks_Of_Axis(20, 80);
    ASSERT_EQ(fives.values.size(), 13u);
    EXPECT_EQ(fives.step, 5);
    const Axis_Ticks hundreds = Ticks_Of_Axis(0, 1000);
    ASSERT_EQ(hundreds.values.size(), 11u);
    EXPECT_EQ(hundreds.values.back(), 1000);
    const Axis_Ticks small = Ticks_Of_Axis(0.5f, 0.9f);
    EXPECT_NEAR(small.step, 0.05, 1e-7);
    ASSERT_EQ(small.values.size(), 9u);
    EXPECT_EQ(Tick_Text(small.values[0], small.exponent), ".50");
    EXPECT_EQ(Tick_Text(small.values[1], small.exponent), ".55");
}

TEST(Axis, Texts) {
    const struct {
        float value;
        int exponent;
        const char* text;
    } cases[] = {{0, 0, "0"}, {-0.5f, 0, "-.5"}, {2, 0, "2"}, {1.5f, 0, "1.5"}, {-0.25f, -1, "-.25"}, {1200, 3, "1200"}, {-30, 1, "-30"}};
    for (const auto& c : cases) EXPECT_EQ(Tick_Text(c.value, c.exponent), c.text);
    EXPECT_NE(Tick_Text(1.5e7f, 7).find('E'), std::string::npos);
}

TEST(Axis, BadWindowsEnd) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const std::pair<float, float> windows[] = {{nan, 1},        {0, inf},   {-inf, inf}, {3, 3}, {1e8f, 1.00000001e8f},
                                               {-3e38f, 3e38f}, {0, 1e-44f}};
    for (const auto& [lo, hi] : windows) EXPECT_LE(Ticks_Of_Axis(lo, hi).values.size(), max_axis_ticks);
    EXPECT_FALSE(Ticks_Of_Axis(80, 20).values.empty() && Ticks_Of_Axis(20, 80).values.empty());
}

}  // namespace
}  // namespace vntl
