// Error bars, bars, pies, polar plots and keys, measured on a device that keeps what is drawn.
#include <cmath>
#include <limits>
#include <numbers>

#include "drawing/drawn.hpp"
#include "drawing/presentation.hpp"
#include "drawing/text_room.hpp"

namespace vntl {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
constexpr std::pair<double, double> pages[] = {{1200, 800}, {600, 400}, {500, 900}};

double Area_Of(const std::vector<Point>& corners) {
    double twice = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point a = corners[i], b = corners[(i + 1) % corners.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return 0.5 * twice;
}

class Chart {
public:
    Chart(int type, int sets, double width = 1200, double height = 800) : device(width, height), g(device), p(g) {
        p.IPgArea(0.25f, 0.25f, 0.75f, 0.75f);
        p.IPgUnits(0, -10, 10, 10);
        p.IPgNewPlot(type, sets, 0);
        for (int set = 1; set <= sets; ++set) p.IPgStyle(set, {0, fill_solid, Colour(set), Colour(1000 + set), 221});
        g.WGrTextFont(101, 0, 0.01f, 0.02f);
    }
    double Length_Of_Lines(Colour colour) const {
        double length = 0;
        for (const Recorded_Line& line : Drawn<Recorded_Line>(device))
            if (line.pen.colour == colour)
                length += std::hypot(line.points.back().x - line.points.front().x, line.points.back().y - line.points.front().y);
        return length;
    }

    Recording_Device device;
    Graphics g;
    Presentation p;
};

// The box has 60 units of the page for one of x and 20 for one of y; each bar has two caps of 6 units.
TEST(Error_Bars, HaveTheLengthOfTheDeviationInTheColourOfTheirSet) {
    Chart chart(6, 3);
    const std::vector<float> x = {1, 2, 3, 4, nan, 6}, y = {0, 1, 2, nan, 0, 3}, sigma = {0.5f, -1.5f, 0, 1, 1, inf};
    chart.p.IPgXYLine(x, y);
    chart.p.IPgXYLine({}, {});  // a set without points is one as well
    const double curves[] = {chart.Length_Of_Lines(1), chart.Length_Of_Lines(2)};
    chart.p.IPgErrorBars(x, y, sigma);
    EXPECT_NEAR(chart.Length_Of_Lines(2) - curves[1], 2 * (0.5 + 1.5) * 20 + 2 * 12, 1e-9);
    EXPECT_EQ(chart.Length_Of_Lines(1), curves[0]);
    EXPECT_EQ(chart.Length_Of_Lines(3), 0);
}

// Many strokes cost no more than the pixels that they cover, and show as far as the longest of them.
TEST(Error_Bars, AndBarsOfManyPointsAreMergedByPixels) {
    const std::size_t n = 100000;
    std::vector<float> x, y(n, 1), sigma(n, 1);
    for (std::size_t i = 0; i < n; ++i) x.push_back(10.0f * static_cast<float>(i) / static_cast<float>(n));
    sigma[54321] = 7, y[54321] = 9;
    Chart bars(1, 1), errors(6, 1);
    bars.p.IPgBars(x, y, 1e-4f);
    errors.p.IPgXYLine({}, {});
    errors.p.IPgErrorBars(x, y, sigma);
    double highest = 0, longest = 0;
    for (const Recorded_Fill& fill : Drawn<Recorded_Fill>(bars.device)) highest = std::max(highest, fill.points[2].y - fill.points[0].y);
    for (const Recorded_Line& line : Drawn<Recorded_Line>(errors.device)) longest = std::max(longest, line.points[1].y - line.points[0].y);
    EXPECT_NEAR(highest, 9 * 20, 1e-6);
    EXPECT_NEAR(longest, (9 + 7) * 20, 1e-6);  // with its neighbours, which reach down to 0
    EXPECT_LE(Drawn<Recorded_Fill>(bars.device).size(), 601u);
    EXPECT_LE(Drawn<Recorded_Line>(errors.device).size(), 3 * 601u);
}

// A bar covers value times width; a set's bars have 0.8 of the slot, divided by the sets.
TEST(Bars, CoverTheirValuesSideBySide) {
    for (const auto& [width, height] : pages) {
        for (const int sets : {1, 3, 40}) {
            Chart chart(1, sets, width, height);
            const std::vector<float> x = {2, 4, 6, nan, 8}, y = {1, -2, 0, 3, inf};
            const double x_unit = width / 20, y_unit = height / 40, slot = 2 * x_unit;
            for (int set = 1; set <= sets; ++set) chart.p.IPgBars(x, y, 2);
            double last_side = 0;
            for (int set = 1; set <= sets; ++set) {
                double area = 0;
                for (const Recorded_Fill& fill : Drawn<Recorded_Fill>(chart.device)) {
                    if (fill.colour != Colour(set)) continue;
                    area += std::fabs(Area_Of(fill.points));
                    const double middle = fill.points[0].y < 0.5 * height - 1e-6 ? 4 : 2;  // x of the bar: the negative one goes down
                    const double from_middle = fill.points[0].x - (0.25 * width + middle * x_unit);
                    EXPECT_GE(from_middle, -0.4 * slot - 1e-4);
                    EXPECT_LE(from_middle, 0.4 * slot + 1e-4);
                    if (middle != 2) continue;
                    EXPECT_GE(fill.points[0].x, last_side - 1e-4);
                    last_side = fill.points[1].x;
                }
                EXPECT_NEAR(area / (3 * y_unit * 0.8 * slot / sets), 1, 1e-4) << sets << ' ' << set;
            }
        }
    }
}

// The share of a slice is its angle; polygons with corners every 2.5 degrees lack less than a thousandth of the circle.
TEST(Pie, SlicesHaveTheirShareOfACircleClockwiseFromTheTop) {
    const struct {
        std::vector<float> values;
        std::vector<double> shares;  // of the slices that are drawn
    } cases[] = {{{1, 2, 5}, {0.125, 0.25, 0.625}}, {{3, 0, nan, -4, 1}, {0.75, 0.25}}, {{7}, {1}}, {{0, nan}, {}}, {{}, {}}};
    for (const auto& [width, height] : pages) {
        for (const auto& c : cases) {
            Chart chart(3, static_cast<int>(c.values.size()), width, height);
            chart.p.IPgPie(c.values, 90);
            const auto slices = Drawn<Recorded_Fill>(chart.device);
            ASSERT_EQ(slices.size(), c.shares.size());
            const double rim = 0.25 * std::min(width, height);
            double before = 0;
            for (std::size_t i = 0; i < slices.size(); ++i) {
                const auto& corners = slices[i].points;
                EXPECT_NEAR(-Area_Of(corners) / (std::numbers::pi * rim * rim), c.shares[i], 1e-3);
                for (std::size_t k = slices.size() > 1 ? 1 : 0; k < corners.size(); ++k)
                    EXPECT_NEAR(std::hypot(corners[k].x - 0.5 * width, corners[k].y - 0.5 * height), rim, 1e-6);
                const Point first = corners[slices.size() > 1 ? 1 : 0];
                EXPECT_NEAR(first.x - 0.5 * width, rim * std::sin(2 * std::numbers::pi * before), 1e-6);
                EXPECT_NEAR(first.y - 0.5 * height, rim * std::cos(2 * std::numbers::pi * before), 1e-6);
                before += c.shares[i];
            }
            EXPECT_EQ(Drawn<Recorded_Ellipse>(chart.device).size(), slices.empty() ? 0u : 1u);
        }
    }
}

// x = r cos(angle), y = r sin(angle), in a circle whatever the shape of the page.
TEST(Polar, PointsLieAtTheirAngleAndRadius) {
    const std::vector<float> angles = {0, 90, 210, 45, 720 + 60, nan, 10, 1e30f, 5}, radii = {1, 2, 4, -2, 4, 1, 4.1f, 1, inf};
    for (const auto& [width, height] : pages) {
        Chart chart(7, 2, width, height);
        chart.p.IPgUnitsPolar(4);
        chart.p.IPgPolarPairs({}, {});
        chart.p.IPgPolarPairs(angles, radii);
        const auto sets = Drawn<Recorded_Markers>(chart.device);
        ASSERT_EQ(sets.size(), 1u);
        EXPECT_EQ(sets[0].style.colour, 1002u);
        const double unit = 0.25 * std::min(width, height) / 4, root = std::numbers::sqrt3, side = std::numbers::sqrt2;
        const Point expected[] = {{1, 0}, {0, 2}, {-2 * root, -2}, {-side, -side}, {2, 2 * root}};
        ASSERT_EQ(sets[0].points.size(), 6u);  // 1e30 degrees is an angle, if nobody knows which
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_NEAR(sets[0].points[i].x, 0.5 * width + expected[i].x * unit, 1e-3) << i;
            EXPECT_NEAR(sets[0].points[i].y, 0.5 * height + expected[i].y * unit, 1e-3) << i;
        }
        float gx = 0, gy = 0, x = 0, y = 0;
        chart.g.IGrUnits(0, 0, static_cast<float>(width), static_cast<float>(height));
        chart.p.IPgUnitsToGrUnits(-3, 1, gx, gy);
        EXPECT_NEAR(gx, 0.5 * width - 3 * unit, 1e-3);
        EXPECT_NEAR(gy, 0.5 * height + unit, 1e-3);
        chart.p.IPgUnitsFromGrUnits(gx, gy, x, y);
        EXPECT_NEAR(x, -3, 1e-4);
        EXPECT_NEAR(y, 1, 1e-4);
    }
}

TEST(Polar, RingsAtTheTicksSpokesAndNumbers) {
    for (const auto& [width, height] : pages) {
        for (const float radius : {4.0f, 0.37f, 1e-6f, 2.5e9f}) {
            Chart chart(7, 1, width, height);
            if (radius == 4) chart.p.IPgArea(0.1f, 0.1f, 0.9f, 0.9f), chart.g.WGrTextFont(101, 0, 0.03f, 0.06f);
            chart.p.IPgUnitsPolar(radius);
            chart.p.IPgPolarAxes("NT", "NT");
            Expect_Texts_Apart(chart.device, {0, 0, width, height}, std::to_string(radius));
            const double rim = (radius == 4 ? 0.4 : 0.25) * std::min(width, height);
            std::vector<double> rings;
            for (const Recorded_Ellipse& ring : Drawn<Recorded_Ellipse>(chart.device)) {
                EXPECT_EQ(ring.rx, ring.ry);
                rings.push_back(ring.rx / rim * static_cast<double>(radius));
            }
            for (std::size_t i = 0; radius == 4 && i < 8; ++i) EXPECT_NEAR(rings.at(i), 0.5 * static_cast<double>(i + 1), 1e-6);
            for (int angle = 0; angle < 360; angle += 30) {
                const std::string text = std::to_string(angle) + "\xC2\xB0";
                for (const Recorded_Text& number : Drawn<Recorded_Text>(chart.device)) {
                    if (number.text != text) continue;
                    const Rect room = Room_Of(number, chart.device);
                    const double x = 0.5 * (room.x1 + room.x2) - 0.5 * width, y = 0.5 * (room.y1 + room.y2) - 0.5 * height;
                    EXPECT_NEAR(std::cos(std::atan2(y, x) - angle * std::numbers::pi / 180), 1, 1e-3) << angle;
                    EXPECT_GT(std::hypot(x, y), rim);
                }
            }
            EXPECT_GE(Drawn<Recorded_Text>(chart.device).size(), 13u);
        }
    }
    Chart none(7, 1);
    none.p.IPgUnitsPolar(nan);
    none.p.IPgPolarAxes("", "");
    EXPECT_TRUE(Drawn<Recorded_Text>(none.device).empty());
}

TEST(Keys, StayInTheirBoxWithFortyNames) {
    for (const auto& [width, height] : pages) {
        for (const int type : {1, 3, 6}) {
            for (const int count : {1, 5, 40, 41, 500}) {
                Chart chart(type, count, width, height);
                std::vector<Set_Text> names;
                for (int i = 1; i <= count; ++i)
                    names.push_back({i, "name " + std::to_string(i) + std::string(i % 30, 'w'), type == 3 ? std::to_string(i) : ""});
                chart.p.IPgKeys(0.8f, 0.1f, 0.98f, 0.9f, names);
                const std::string what = std::to_string(type) + ' ' + std::to_string(count) + ' ' + std::to_string(width);
                Expect_Texts_Apart(chart.device, {0.8 * width, 0.1 * height, 0.98 * width, 0.9 * height}, what);
                std::size_t entries = 0;
                std::string last;
                for (const Recorded_Text& text : Drawn<Recorded_Text>(chart.device)) {
                    entries += text.text.starts_with("na") ? 1 : 0;
                    if (text.style.justify == Justify::left) last = text.text;
                }
                const bool all = count <= 40 || entries == static_cast<std::size_t>(count);
                EXPECT_EQ(entries >= 39, count >= 40) << what;
                if (all)
                    EXPECT_EQ(entries, static_cast<std::size_t>(count)) << what;
                else
                    EXPECT_EQ(last, "and " + std::to_string(static_cast<std::size_t>(count) - entries) + " more") << what;
                EXPECT_EQ((type == 6 ? Drawn<Recorded_Markers>(chart.device).size() : Drawn<Recorded_Fill>(chart.device).size()), entries);
            }
        }
    }
}

}  // namespace
}  // namespace vntl
