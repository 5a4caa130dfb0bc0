// Colours for readers: contrast by its published definition, colours that are made readable, maps whose lightness rises by even steps.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "base/colour_map.hpp"
#include "base/contrast.hpp"
#include "base/perceptual.hpp"
#include "colour_difference.hpp"

namespace vntl {
namespace {

constexpr Colour white = WRGB(255, 255, 255), black = 0;

// Pairs that Sharma, Wu and Dalal published for this purpose, with those where the mean hue, and its turn, are easily taken wrong.
TEST(Colour_Difference, PublishedPairs) {
    struct Pair {
        test::Triple a, b;
        double difference;
    };
    const Pair pairs[] = {
        {{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
        {{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1.0000},
        {{50, 0, 0}, {50, -1, 2}, 2.3669},
        {{50, 2.49, -0.001}, {50, -2.49, 0.0009}, 7.1792},
        {{50, 2.49, -0.001}, {50, -2.49, 0.0011}, 7.2195},
        {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
        {{50, 2.5, 0}, {61, -5, 29}, 22.8977},
        {{50, 2.5, 0}, {56, -27, -3}, 31.9030},
        {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
        {{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
    };
    for (const Pair& pair : pairs) EXPECT_NEAR(test::Difference(pair.a, pair.b), pair.difference, 5e-5) << pair.difference;
}

// Ratios that tools of the guidelines give: #777777 on white is the grey that just fails for texts.
TEST(Contrast, PublishedRatios) {
    EXPECT_NEAR(Contrast(black, white), 21, 1e-9);
    EXPECT_NEAR(Contrast(WRGB(0x77, 0x77, 0x77), white), 4.48, 0.005);
    EXPECT_NEAR(Contrast(white, WRGB(255, 0, 0)), 4.00, 0.005);
    EXPECT_NEAR(Contrast(WRGB(0, 0, 255), white), 8.59, 0.005);
}

// Yellow on white, blue on black and the like come to the ratio, not far beyond, and keep their hue.
TEST(Contrast, AReadableColourKeepsItsHue) {
    const Colour colours[] = {WRGB(255, 255, 0), WRGB(0, 255, 255), WRGB(255, 0, 0), WRGB(0, 0, 255), WRGB(128, 128, 128), white, black};
    const Colour grounds[] = {white, black, WRGB(30, 33, 38), WRGB(235, 235, 235), WRGB(120, 120, 120)};
    for (const Colour colour : colours)
        for (const Colour ground : grounds)
            for (const double least : {1.0, 3.0, 4.5}) {
                const Colour readable = Readable(colour, ground, least);
                SCOPED_TRACE(testing::Message() << std::hex << colour << " on " << ground << " for " << least);
                if (Contrast(colour, ground) >= least) {
                    EXPECT_EQ(readable, colour);
                    continue;
                }
                EXPECT_GE(Contrast(readable, ground), least);
                EXPECT_LT(Contrast(readable, ground), least + 0.25);
                const Perceived_Colour before = Perceived(colour), after = Perceived(readable);
                if (before.chroma > 0.03 && after.chroma > 0.03) {
                    EXPECT_NEAR(std::remainder(after.hue - before.hue, 2 * std::numbers::pi), 0, 0.08);
                }
            }
    EXPECT_EQ(Readable(WRGB(255, 0, 0), WRGB(120, 120, 120), 15), black) << "which nothing reaches: the farther end";
}

// Measured by CIELAB, which the maps are not made by alone.
TEST(Colour_Map, LightnessRisesByEvenSteps) {
    for (const std::string_view name : Colour_Maps()) {
        const double first = test::Lab(Map_Colour(name, 0))[0], last = test::Lab(Map_Colour(name, 1))[0];
        EXPECT_GT(last - first, 40) << name;
        for (int i = 0; i <= 20; ++i)
            EXPECT_NEAR(test::Lab(Map_Colour(name, i / 20.0))[0], first + (last - first) * i / 20, 0.7) << name << ' ' << i;
        for (int i = 1; i <= 12; ++i)
            EXPECT_GT(test::Difference_For_All(Map_Colour(name, i / 12.0), Map_Colour(name, (i - 1) / 12.0)), 1.5) << name << ' ' << i;
        EXPECT_EQ(Map_Colour(name, -1), Map_Colour(name, std::nan("")));
        EXPECT_EQ(Map_Colour(name, 1e30), Map_Colour(name, 1));
    }
    EXPECT_FALSE(Is_Colour_Map("rainbow"));
}

TEST(Colour_Map, LinesCanBeSeenOnTheirGround) {
    for (int i = 0; i <= 100; ++i) {
        EXPECT_GE(Contrast(Map_Colour("ember", i / 100.0), white), 3) << i;
        EXPECT_GE(Contrast(Map_Colour("glow", i / 100.0), WRGB(0x1e, 0x21, 0x26)), 3) << i;
    }
}

}  // namespace
}  // namespace vntl
