// The raster device: reduced and unreduced drawing are the same picture; line weights against closed forms; nothing outside the clip.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>

#include "drawing/curve_raster.hpp"
#include "drawing/graphics.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {
namespace {

constexpr int width = 300, height = 200;
constexpr Colour red = WRGB(255, 0, 0);

struct Data {
    std::vector<float> x, y;
};

Data Noisy(unsigned seed, int points) {
    std::mt19937 random(seed);
    std::normal_distribution<float> noise(0, 40);
    std::uniform_real_distribution<float> chance(0, 1);
    Data data;
    for (int i = 0; i < points; ++i) {
        data.x.push_back(chance(random) < 0.1f && i > 0 ? data.x.back() : 400.0f * static_cast<float>(i) / static_cast<float>(points) - 50);
        float y = 100 + noise(random);
        if (chance(random) < 0.01f) y = chance(random) < 0.5f ? 1e9f : -3e5f;
        if (chance(random) < 0.01f) y = std::numeric_limits<float>::quiet_NaN();
        data.y.push_back(y);
    }
    return data;
}

double Ink(const Bitmap& bitmap) {  // pixels of full colour on white
    double ink = 0;
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x) ink += (255.0 - Green(bitmap.Pixel(x, y))) / 255.0;
    return ink;
}

TEST(Raster, ReducedAndUnreducedAreTheSamePicture) {
    for (unsigned seed = 1; seed <= 24; ++seed) {
        const Data data = Noisy(seed, seed % 3 == 0 ? 40 : 5000);
        Series series{data.x, data.y};
        series.x_scale = seed % 4 == 0 ? 40 : 1;  // a zoomed window: most points lie outside
        Bitmap one(width, height), two(width, height);
        two.Reduce(false);
        for (Bitmap* bitmap : {&one, &two}) {
            Device& device = bitmap->Drawing();
            device.Set_Clip({20, 30, 280, 170});
            device.Markers(series, {221 + static_cast<int>(seed % 7), 5, 5, WRGB(0, 0, 255), seed % 2 == 0});
            device.Curve(series, {red, 1.0 + seed % 5, Line_Style::solid});
        }
        int different = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                different += one.Pixel(x, y) != two.Pixel(x, y);
                const bool outside = x < 20 || x >= 280 || y < 30 || y >= 170;
                if (!outside) continue;
                ASSERT_EQ(one.Pixel(x, y), WRGB(255, 255, 255)) << x << ' ' << y;
            }
        EXPECT_EQ(different, 0) << "seed " << seed;
    }
}

// Layers laid from the front to the back against the same colours blended from the back to the front; so many that the memory for them runs
// out, which they survive unless nearly all are clear.
TEST(Raster, LayersLaidBelowOneAnotherBlendAsTheyLie) {
    constexpr int columns = 40, rows = 400, layers = 260;
    constexpr Pixel_Rect bounds{3, 5, 3 + columns, 5 + rows};
    constexpr int pitch = bounds.x2 + 1;
    for (const unsigned most : {1u, 90u, 255u}) {
        std::mt19937 random(most);
        std::uniform_int_distribution<unsigned> opacity(most == 1 ? 1 : 0, most), channel(0, 0xffffff);
        std::vector<unsigned> opacities(static_cast<std::size_t>(layers) * columns * rows);
        for (unsigned& one : opacities) one = opacity(random);
        std::vector<std::uint32_t> inks(layers), one(static_cast<std::size_t>(pitch) * (bounds.y2 + 1), 0xff3080c0u), other = one;
        for (std::uint32_t& ink : inks) ink = opaque | channel(random);
        const auto opacity_of = [&](int layer, int x, int y) {
            return opacities[(static_cast<std::size_t>(layer) * columns + static_cast<std::size_t>(x - bounds.x1)) * rows +
                             static_cast<std::size_t>(y - bounds.y1)];
        };
        Under_Layers below(bounds);
        for (int layer = layers - 1; layer >= 0; --layer)
            for (int x = bounds.x1; x < bounds.x2; ++x) {
                Under_Layers::Column column(below, x, inks[static_cast<std::size_t>(layer)]);
                for (int y = bounds.y1; y < bounds.y2; ++y) column(y, opacity_of(layer, x, y));
            }
        ASSERT_EQ(below.Put_On({one.data(), pitch, bounds.y2 + 1, pitch}), most > 1);
        for (int layer = 0; layer < layers && most > 1; ++layer)
            for (int x = bounds.x1; x < bounds.x2; ++x)
                for (int y = bounds.y1; y < bounds.y2; ++y)
                    Blend(other[static_cast<std::size_t>(y * pitch + x)], inks[static_cast<std::size_t>(layer)], opacity_of(layer, x, y));
        EXPECT_TRUE(one == other) << most;
    }
}

TEST(Raster, MarkersGoBackAndForthAndLeaveNothingForTheNextDrawing) {
    Data data = Noisy(5, 3000);
    std::shuffle(data.x.begin(), data.x.end(), std::mt19937(1));
    const Series series{data.x, data.y};
    const auto draw = [&](Bitmap& bitmap, const Rect& clip, double size) {
        bitmap.Drawing().Clear(WRGB(255, 255, 255));
        bitmap.Drawing().Set_Clip(clip);
        bitmap.Drawing().Markers(series, {227, size, 2 * size, red, false});
    };
    Bitmap used(width, height);
    const std::pair<Rect, double> drawings[] = {
        {{0, 0, 300, 200}, 30}, {{0, 0, 300, 200}, 5}, {{99, 50, 101, 190}, 5}, {{3, 90, 290, 91}, 19}, {{3, 90, 290, 91}, 1}};
    for (const auto& [clip, size] : drawings) {
        Bitmap fresh(width, height);
        fresh.Reduce(false);
        draw(fresh, clip, size);
        draw(used, clip, size);
        int different = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) different += used.Pixel(x, y) != fresh.Pixel(x, y);
        EXPECT_EQ(different, 0) << size;
        EXPECT_GT(Ink(used), 0);
    }
}

TEST(Raster, LinesWeighTheSameInEveryDirection) {
    // A line of length l and width w covers l w pixels, its two round ends half a disc each.
    for (const double pen : {1.0, 2.0, 4.0})
        for (const double slope : {0.0, 0.5, 1.0, 3.0, 20.0}) {
            const double dx = 100 / std::sqrt(1 + slope * slope), dy = slope * dx;
            const std::vector<float> x = {100, static_cast<float>(100 + dx)}, y = {50, static_cast<float>(50 + dy)};
            Bitmap bitmap(width, height);
            bitmap.Drawing().Curve({x, y}, {red, pen, Line_Style::solid});
            EXPECT_NEAR(Ink(bitmap), 100 * pen + 0.785 * pen * pen, 0.15 * 100 * pen) << pen << ' ' << slope;
        }
}

TEST(Raster, MarkersCoverTheirShapes) {
    const float x = 50.5f, y = 60.5f;
    const std::pair<int, double> areas[] = {{221, 3.1416 / 4}, {222, 1}, {223, 0.5}, {224, 0.5}, {225, 0.5}};  // of the box
    for (const auto& [glyph, share] : areas) {
        Bitmap bitmap(width, height);
        bitmap.Drawing().Markers({std::span(&x, 1), std::span(&y, 1)}, {glyph, 20, 20, red, true});
        EXPECT_NEAR(Ink(bitmap), share * 400, 0.04 * 400) << glyph;
    }
}

TEST(Raster, PagesStretchAndTextsStandWhereTheyShould) {
    Bitmap bitmap(600, 400);
    Graphics g(bitmap.Drawing());
    g.IGrPaletteBack(WRGB(255, 255, 255));
    g.IGrClear();
    g.IGrColourN(red);
    g.IGrFillPattern(fill_solid);
    g.IGrRectangle(120, 80, 240, 160);  // page units of 1200 x 800: pixels 60..120 by 40..80 from the bottom
    EXPECT_EQ(bitmap.Pixel(61, 399 - 41), red);
    EXPECT_EQ(bitmap.Pixel(119, 399 - 79), red);
    EXPECT_EQ(bitmap.Pixel(121, 399 - 79), WRGB(255, 255, 255));
    EXPECT_NEAR(Ink(bitmap), 60 * 40, 1);
    g.WGrTextFont(102, 0, 0.02f, 0.04f);
    EXPECT_GT(g.Text_Width("Å µ Intensity"), g.Text_Width("Intensity"));
}

// Against the share of each pixel's 8 x 8 places that lie on the line: nearer than half its width to a segment, and not beyond its ends.
TEST(Raster, LinesOfAnyDirectionCoverWhatLiesOnThem) {
    const std::vector<Point> open = {{20.3, 30.1}, {60, 90.7}, {61.4, 88}, {140.2, 95.5}, {120, 180}},
                             closed = {{200, 40}, {280.5, 60}, {230, 150}, {200, 40}};
    constexpr int fine = 8;
    for (const double pen : {1.0, 2.0, 5.5})
        for (const bool is_open : {true, false}) {
            const std::vector<Point>& line = is_open ? open : closed;
            Bitmap bitmap(width, height);
            bitmap.Drawing().Polyline(line, {red, pen, Line_Style::solid});
            const auto lies_on = [&](double x, double y) {
                for (std::size_t i = 1; i < line.size(); ++i) {
                    const double dx = line[i].x - line[i - 1].x, dy = line[i].y - line[i - 1].y, length = std::hypot(dx, dy);
                    const double along = ((x - line[i - 1].x) * dx + (y - line[i - 1].y) * dy) / length;
                    const double beyond = std::max({-along, along - length, 0.0});
                    const bool cut = is_open && ((i == 1 && along < 0) || (i + 1 == line.size() && along > length));
                    const double across = ((x - line[i - 1].x) * dy - (y - line[i - 1].y) * dx) / length;
                    if (!cut && std::hypot(across, beyond) <= 0.5 * pen) return true;
                }
                return false;
            };
            Bitmap part(width, height);  // a clip changes nothing of what it shows, nor does the line before
            for (const Rect& clip : {Rect{0, 0, 110, height}, Rect{110, 0, width, height}}) {
                part.Drawing().Set_Clip(clip);
                part.Drawing().Polyline(line, {red, pen, Line_Style::solid});
            }
            int different = 0;
            double all = 0, worst = 0;
            for (int row = 0; row < height; ++row)
                for (int column = 0; column < width; ++column) {
                    different += part.Pixel(column, row) != bitmap.Pixel(column, row);
                    double share = 0;
                    for (int k = 0; k < fine * fine; ++k)
                        share += lies_on(column + (k % fine + 0.5) / fine, height - row - (k / fine + 0.5) / fine);
                    share /= fine * fine;
                    all += share;
                    worst = std::max(worst, std::fabs(share - (255.0 - Green(bitmap.Pixel(column, row))) / 255));
                }
            EXPECT_LT(worst, 0.3) << pen;  // in a sharp corner, where one half lies on one segment and one on the other
            EXPECT_NEAR(Ink(bitmap), all, 0.02 * all) << pen;
            EXPECT_EQ(different, 0) << pen;
        }
}

TEST(Raster, HostileNumbersEnd) {
    constexpr float inf = std::numeric_limits<float>::infinity();
    const std::vector<float> x = {-inf, -3e38f, 0, 1, 2, 3e38f, inf}, y = {0, 3e38f, -3e38f, inf, 5, 6, 7};
    Bitmap bitmap(width, height);
    Device& device = bitmap.Drawing();
    for (const auto style : {Line_Style::solid, Line_Style::dashed}) device.Curve({x, y, 1e300, 1e300, -1e300, 1e200}, {red, 1, style});
    device.Curve({x, y}, {red, 1, Line_Style::solid});
    const std::vector<Point> far = {{-1e300, 5}, {1e300, inf}, {3, -1e9}, {3.00000001, 1e9}, {7, 7}, {7, 7}};
    for (const double pen : {std::numeric_limits<double>::quiet_NaN(), 1e300, 0.0, -5.0, 2.0})
        device.Polyline(far, {red, pen, Line_Style::solid});
    device.Markers({x, y, 0, 1e30, 0, 1}, {221, 1e9, -4, red, true});
    SUCCEED();
}

TEST(Raster, FramesGrowWithTheirPage) {
    const std::vector<Point> frame = {{100, 100}, {500, 100}, {500, 300}, {100, 300}, {100, 100}};
    for (const int size : {1, 2, 3}) {
        Bitmap bitmap(1200 * size, 800 * size);
        bitmap.Drawing().Polyline(frame, {red, 2, Line_Style::solid});
        const double line = 2 * size;
        EXPECT_EQ(Ink(bitmap), 2 * (400 + 200) * line) << size;  // the outer corners and the inner ones make up for one another
    }
}

}  // namespace
}  // namespace vntl
