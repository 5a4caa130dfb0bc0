// Ticks of fitted axes: lists worked out by hand, and over many windows that numbers keep apart and tell where they stand. Texts with
// raised pieces.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "drawing/fitted_axis.hpp"
#include "drawing/raised_text.hpp"
#include "drawn.hpp"

namespace vntl {
namespace {

Axis_Room Room(double needs, double minor = 1e300, bool powers = false) {
    return {[needs](std::string_view) { return needs; }, minor, powers ? 1e5 : 1e300};
}

std::string Joined(const Fitted_Ticks& ticks) {
    std::string text;
    for (const Axis_Tick& tick : ticks.major) text += (text.empty() ? "" : " ") + tick.text;
    return text;
}

// What a text says: "2.5·10^3" is 2500.
double Said(std::string text) {
    const std::size_t power = text.find("10^");
    if (power == std::string::npos) return std::stod(text);
    const double mantissa = power == 0 ? 1 : std::stod(text);
    return mantissa * std::pow(10.0, std::stod(text.substr(power + 3)));
}

TEST(Fitted_Axis, NumbersByHand) {
    const struct {
        double lo, hi;
        Axis_Scale scale;
        double needs;
        bool powers;
        const char* numbers;
    } cases[] = {
        {0, 100, Axis_Scale::even, 9, false, "0 10 20 30 40 50 60 70 80 90 100"},
        {0, 100, Axis_Scale::even, 30, false, "0 50 100"},
        {100, 0, Axis_Scale::even, 30, false, "0 50 100"},
        {-0.3, 0.55, Axis_Scale::even, 0.15, false, "-0.2 0.0 0.2 0.4"},
        {0, 350000, Axis_Scale::even, 90000, true,
         "0 1\xC2\xB7"
         "10^5 2\xC2\xB7"
         "10^5 3\xC2\xB7"
         "10^5"},
        {0, 2.2e5, Axis_Scale::even, 4e4, true,
         "0 0.5\xC2\xB7"
         "10^5 1.0\xC2\xB7"
         "10^5 1.5\xC2\xB7"
         "10^5 2.0\xC2\xB7"
         "10^5"},
        {0, 2.2e5, Axis_Scale::even, 4e4, false, "0 50000 100000 150000 200000"},
        {0, std::log(3000.0), Axis_Scale::logarithm, 0.5, true, "1 2 5 10 20 50 100 200 500 1000 2000"},
        {0, std::log(3000.0), Axis_Scale::logarithm, 1, true, "1 10 100 1000"},
        {-1, std::log(2e6), Axis_Scale::logarithm, 3, true, "10^0 10^2 10^4 10^6"},
        {std::log(100.0), std::log(160.0), Axis_Scale::logarithm, 0.1, true, "100 120 140 160"},
        {0, 10, Axis_Scale::root, 1.2, false, "0 2 10 20 50 100"},
        {0, std::sqrt(2500.0), Axis_Scale::root, 5, false, "0 100 500 1000 1500 2000 2500"},
    };
    for (const auto& c : cases) EXPECT_EQ(Joined(Fit_Ticks(c.lo, c.hi, c.scale, Room(c.needs, 1e300, c.powers))), c.numbers) << c.hi;
}

// The text of a tick, read back and put on the scale by the standard library, is where the tick is.
TEST(Fitted_Axis, NumbersKeepApartAndTellTheirPlace) {
    std::mt19937 random(24);
    std::uniform_real_distribution<double> decade(-4, 8), share(0, 1);
    for (int k = 0; k < 3000; ++k) {
        const auto scale = static_cast<Axis_Scale>(k % 3);
        double lo = share(random) < 0.5 ? 0 : std::pow(10, decade(random)), hi = lo + std::pow(10, decade(random));
        if (scale == Axis_Scale::logarithm) lo = std::log1p(lo), hi = std::log1p(hi) + 0.1;
        if (scale == Axis_Scale::root) lo = k % 2 == 0 ? std::sqrt(lo) : -std::sqrt(lo), hi = std::sqrt(hi);
        if (!(hi - lo > 1e-5 * (std::fabs(lo) + std::fabs(hi)))) continue;
        const double needs = (hi - lo) / (2 + 15 * share(random));
        const Fitted_Ticks ticks = Fit_Ticks(lo, hi, scale, Room(needs, 0.05 * (hi - lo), k % 4 < 2));
        for (std::size_t i = 0; i < ticks.major.size(); ++i) {
            const Axis_Tick& tick = ticks.major[i];
            const double said = Said(tick.text);
            const double at = scale == Axis_Scale::even        ? said
                              : scale == Axis_Scale::logarithm ? std::log(std::max(said, 1.0))
                                                               : std::copysign(std::sqrt(std::fabs(said)), said);
            EXPECT_NEAR(at, tick.at, 1e-6 * (std::fabs(lo) + std::fabs(hi))) << tick.text;
            EXPECT_TRUE(tick.at >= lo - 1e-5 * (hi - lo) && tick.at <= hi + 1e-5 * (hi - lo)) << tick.text;
            EXPECT_TRUE(i == 0 || tick.at - ticks.major[i - 1].at >= needs * 0.999) << lo << ' ' << hi << ' ' << tick.text;
        }
        EXPECT_LE(ticks.minor.size(), 400u);
    }
    for (const auto& [lo, hi] : {std::pair{1.0, 1.0}, {0.0, INFINITY}, {NAN, 1.0}, {1e30, 1e30 + 1e15}, {-1e38, 1e38}})
        for (const auto scale : {Axis_Scale::even, Axis_Scale::logarithm, Axis_Scale::root})
            EXPECT_LE(Fit_Ticks(lo, hi, scale, Room(1)).major.size(), 400u);
}

TEST(Fitted_Axis, SmallTicksStandBetween) {
    const auto minor = [](double lo, double hi, Axis_Scale scale, double needs, double gap) {
        return Fit_Ticks(lo, hi, scale, Room(needs, gap)).minor;
    };
    EXPECT_EQ(minor(0, 20, Axis_Scale::even, 9, 1).size(), 8u);   // fifths of 10
    EXPECT_EQ(minor(0, 20, Axis_Scale::even, 9, 4).size(), 2u);   // halves
    EXPECT_EQ(minor(0, 4, Axis_Scale::even, 2, 0.4).size(), 6u);  // quarters of 2
    EXPECT_EQ(minor(0, 20, Axis_Scale::even, 9, 6).size(), 0u);
    const std::vector<double> decades = minor(0, std::log(100.0), Axis_Scale::logarithm, 2, 0.1);
    ASSERT_EQ(decades.size(), 16u);
    EXPECT_NEAR(decades[8], std::log(20.0), 1e-9);
}

TEST(Raised_Text, PiecesAndPlaces) {
    const struct {
        const char* text;
        std::vector<Text_Piece> pieces;
    } cases[] = {{"10^5", {{"10", false}, {"5", true}}},
                 {"2\xC2\xB7"
                  "10^-3 x",
                  {{"2\xC2\xB7"
                    "10",
                    false},
                   {"-3", true},
                   {" x", false}}},
                 {"Q (\xC3\x85-1)", {{"Q (\xC3\x85", false}, {"-1", true}, {")", false}}},
                 {"\xC3\x85\xE2\x81\xBB\xC2\xB9", {{"\xC3\x85", false}, {"-1", true}}},
                 {"a^{2n}", {{"a", false}, {"2n", true}}},
                 {"d-spacing (\xC3\x85)", {{"d-spacing (\xC3\x85)", false}}},
                 {"a^b ^ c^{", {{"a^b ^ c^{", false}}}};
    for (const auto& c : cases) EXPECT_EQ(Pieces_Of(c.text), c.pieces) << c.text;

    // Centred, and turned: the raised piece begins where the other ends, and stands higher across the line of writing.
    for (const double angle : {0.0, 90.0, -90.0}) {
        Recording_Device page;
        Text_Style style{.width = 12, .height = 20, .angle = angle, .justify = Justify::centre};
        Draw_Raised_Text(page, {100, 200}, "10^5", style);
        const auto texts = Drawn<Recorded_Text>(page);
        ASSERT_EQ(texts.size(), 2u);
        const double along_x = texts[1].at.x - texts[0].at.x, along_y = texts[1].at.y - texts[0].at.y;
        const double length = page.Text_Width("10", style), up = raised_lift * 20;
        EXPECT_NEAR(along_x, angle == 0 ? length : angle == 90 ? -up : up, 1e-9);
        EXPECT_NEAR(along_y, angle == 0 ? up : angle == 90 ? length : -length, 1e-9);
        EXPECT_NEAR(angle == 0 ? texts[0].at.x : texts[0].at.y,
                    (angle == 0 ? 100 : 200) - (angle == -90 ? -0.5 : 0.5) * Raised_Text_Width(page, "10^5", style), 1e-9);
    }
}

}  // namespace
}  // namespace vntl
