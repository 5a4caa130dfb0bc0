// Shapes, units, scales and texts of Graphics on a device that keeps what is drawn.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include "drawing/drawn.hpp"
#include "drawing/font_table.hpp"
#include "drawing/presentation.hpp"

namespace vntl {
namespace {

// Length of all lines; each must have the angle, from 0 to 180 degrees, and its ends and middle inside the shape.
double Hatched_Length(const Recording_Device& device, double degrees, const std::function<bool(double x, double y)>& inside) {
    double length = 0;
    for (const Recorded_Line& line : Drawn<Recorded_Line>(device)) {
        const Point a = line.points.front(), b = line.points.back();
        EXPECT_EQ(line.points.size(), 2u);
        const double angle = std::atan2(b.y - a.y, b.x - a.x) * 180 / std::numbers::pi;
        EXPECT_TRUE(degrees < 0 || std::fabs(std::remainder(angle - degrees, 180)) < 1e-6) << angle;
        for (const double share : {0.0, 0.5, 1.0}) {
            const double x = a.x + share * (b.x - a.x), y = a.y + share * (b.y - a.y);
            EXPECT_TRUE(inside(x, y)) << x << ' ' << y;
        }
        length += std::hypot(b.x - a.x, b.y - a.y);
    }
    return length;
}

// Lines a distance apart cover an area with area / distance of their length.
TEST(Hatch, RectanglesAtEveryDensityAndAngle) {
    constexpr double distances[] = {20, 12, 7, 4};
    for (const double size : {1.0, 2.0}) {
        for (int density = 1; density <= 4; ++density) {
            for (const int angle : {0, 1, 3, 6, 9, 11}) {
                for (const int style : {1, 2, 3}) {
                    Recording_Device device(1200 * size, 800 * size);
                    Graphics g(device);
                    g.IGrFillPattern(style, density, angle);
                    g.IGrRectangle(803, 101, 120, 697);  // corners in any order
                    const auto inside = [&](double x, double y) {
                        return x > 120 * size - 1e-6 && x < 803 * size + 1e-6 && y > 101 * size - 1e-6 && y < 697 * size + 1e-6;
                    };
                    const double degrees = style == 3 ? -1 : 15 * angle + (style == 2 ? 90 : 0);
                    const double expected = (style == 3 ? 2 : 1) * 683 * 596 * size / distances[density - 1];
                    EXPECT_NEAR(Hatched_Length(device, degrees, inside) / expected, 1, 0.03) << density << ' ' << angle << ' ' << style;
                }
            }
        }
    }
}

TEST(Hatch, CirclesEllipsesAndPolygons) {
    Recording_Device round;
    Graphics g(round);
    g.IGrFillPattern(fill_hatched, 4);
    g.IGrEllipse(600, 400, 300, 0.5f);
    const auto in_ellipse = [](double x, double y) { return std::hypot((x - 600) / 300, (y - 400) / 150) < 1 + 1e-9; };
    EXPECT_NEAR(Hatched_Length(round, 45, in_ellipse) / (std::numbers::pi * 300 * 150 / 4), 1, 0.01);

    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<float> x = {100, 700, 700, 400, nan, 400, 100}, y = {100, 100, 300, 300, 5, 600, 600};  // an L
    const auto in_l = [](double px, double py) {
        return px > 100 - 1e-6 && py > 100 - 1e-6 && (py < 300 + 1e-6 ? px < 700 + 1e-6 : px < 400 + 1e-6 && py < 600 + 1e-6);
    };
    Recording_Device hatched;
    Graphics h(hatched);
    h.IGrFillPattern(fill_hatched, 3, 9);
    h.IGrPolygon(x, y);
    EXPECT_NEAR(Hatched_Length(hatched, 135, in_l) / ((600 * 200 + 300 * 300) / 7.0), 1, 0.03);

    Recording_Device plain;
    Graphics p(plain);
    p.IGrPolygon(x, y);
    p.IGrFillPattern(fill_solid);
    p.IGrPolygon(x, y);
    ASSERT_EQ(Drawn<Recorded_Line>(plain).size(), 1u);
    const std::vector<Point> outline = Drawn<Recorded_Line>(plain)[0].points;
    EXPECT_EQ(outline.size(), 7u);  // closed
    EXPECT_EQ(outline.back().x, 100);
    EXPECT_EQ(outline.back().y, 100);
    ASSERT_EQ(Drawn<Recorded_Fill>(plain).size(), 1u);
    EXPECT_EQ(Drawn<Recorded_Fill>(plain)[0].points.size(), 6u);

    // A shape far larger than the page costs the lines of the page alone, and one without a place none.
    Recording_Device huge;
    Graphics far(huge);
    far.IGrFillPattern(fill_crossed, 4);
    far.IGrRectangle(-1e12f, -1e12f, 1e12f, 1e12f);
    far.IGrRectangle(nan, 0, 10, 10);
    EXPECT_GT(Drawn<Recorded_Line>(huge).size(), 500u);
    EXPECT_LT(Drawn<Recorded_Line>(huge).size(), 1000u);
}

TEST(Graphics, PixelsOfTheArea) {
    Recording_Device device(600, 300);
    Graphics g(device);
    g.IGrViewPixels(400, 250, 100, 50);
    const Rect clip = Drawn<Recorded_Clip>(device).back().rect;
    EXPECT_EQ(clip.x1, 100);
    EXPECT_EQ(clip.y1, 50);
    EXPECT_EQ(clip.x2, 400);
    EXPECT_EQ(clip.y2, 250);
    g.IGrUnits(0, 0, 3, 2);
    g.IGrMoveTo(1, 1);
    g.IGrLineTo(3, 2);
    const std::vector<Point> line = Drawn<Recorded_Line>(device).back().points;
    EXPECT_EQ(line[0].x, 200);
    EXPECT_EQ(line[0].y, 150);
    EXPECT_EQ(line[1].x, 400);
    EXPECT_EQ(line[1].y, 250);
}

TEST(Graphics, UnitsThereAndBack) {
    Recording_Device device(900, 700);
    Graphics g(device);
    Presentation p(g);
    p.IPgArea(0.15f, 0.15f, 0.85f, 0.85f);
    p.IPgUnits(100, -50, 20, 950);  // reversed in x
    float gx = 0, gy = 0, x = 0, y = 0;
    p.IPgUnitsToGrUnits(100, 950, gx, gy);
    EXPECT_NEAR(gx, 180, 1e-3);
    EXPECT_NEAR(gy, 680, 1e-3);
    p.IPgUnitsFromGrUnits(1020, 120, x, y);
    EXPECT_NEAR(x, 20, 1e-4);
    EXPECT_NEAR(y, -50, 1e-3);

    const struct { float x1, y1, x2, y2; } units[] = {{0, 0, 1200, 800}, {100, -50, 20, 950}, {20, 5, 80, -3}, {-1, 1e6f, -7, -2e6f}};
    for (const auto& user : units) {
        for (const auto& plot : units) {
            g.IGrArea(0.1f, 0.3f, 0.9f, 0.8f);
            g.IGrUnits(user.x1, user.y1, user.x2, user.y2);
            p.IPgUnits(plot.x1, plot.y1, plot.x2, plot.y2);
            for (const float share : {-0.2f, 0.0f, 0.31f, 1.0f}) {
                const float px = plot.x1 + share * (plot.x2 - plot.x1), py = plot.y1 + share * (plot.y2 - plot.y1);
                p.IPgUnitsToGrUnits(px, py, gx, gy);
                p.IPgUnitsFromGrUnits(gx, gy, x, y);
                EXPECT_NEAR((x - px) / (plot.x2 - plot.x1), 0, 1e-5);
                EXPECT_NEAR((y - py) / (plot.y2 - plot.y1), 0, 1e-5);
            }
        }
    }
}

TEST(Graphics, SetsAsLinesMarkersAndClips) {
    Recording_Device device;
    Graphics g(device);
    Presentation p(g);
    p.IPgArea(0.25f, 0.25f, 0.75f, 0.75f);
    p.IPgUnits(10, 0, 0, 10);
    const std::vector<float> x = {0, 10}, y = {0, 12};
    p.IPgNewPlot(7, 2, 2);
    p.IPgStyle(1, {2, fill_solid, 5, 6, 221});
    p.IPgStyle(2, {3, fill_outline, 7, 8, 222});
    p.IPgMarker(1, 224);
    p.IPgMarker(0, 224);
    p.IPgMarker(501, 224);
    p.IPgXYPairs(x, y);
    p.IPgClipRectangle(0);
    p.IPgXYLine(x, y);
    const auto markers = Drawn<Recorded_Markers>(device);
    ASSERT_EQ(markers.size(), 1u);
    EXPECT_EQ(markers[0].style.glyph, 224);
    EXPECT_EQ(markers[0].style.colour, 6u);
    EXPECT_TRUE(markers[0].style.filled);
    const auto lines = Drawn<Recorded_Line>(device);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].pen.colour, 7u);
    EXPECT_EQ(lines[0].pen.style, Line_Style::dot_dash);
    EXPECT_NEAR(lines[0].points[0].x, 900, 1e-3);  // 0 lies at the right of the reversed axis
    EXPECT_NEAR(lines[0].points[1].y, 680, 1e-3);
    double left[2] = {-1, -1};  // of the clip in force for markers and line
    double now = -1;
    for (const Recorded& item : device.items()) {
        if (const auto* clip = std::get_if<Recorded_Clip>(&item)) now = clip->rect.x1;
        if (std::holds_alternative<Recorded_Markers>(item)) left[0] = now;
        if (std::holds_alternative<Recorded_Line>(item)) left[1] = now;
    }
    EXPECT_EQ(left[0], 300);
    EXPECT_EQ(left[1], 0);
}

TEST(Scales, LengthSideAndDecimals) {
    const auto scales = [](const std::function<void(Presentation&)>& setting) {
        Recording_Device device;
        Graphics g(device);
        Presentation p(g);
        p.IPgArea(0.25f, 0.25f, 0.75f, 0.75f);  // 600 page units wide: a tick of length 1 has 7.5
        p.IPgUnits(-1, 0, 1, 2);
        setting(p);
        p.IPgXScale("TN", 0);
        p.IPgYScale("TN", -1);
        return device;
    };
    const struct {
        std::function<void(Presentation&)> setting;
        double x_tick, y_tick, x_room, y_room;  // of a tick upward and to the right; of numbers, from the axis
    } cases[] = {{[](Presentation&) {}, -6, -6, 6, 6},
                 {[](Presentation& p) { p.IPgXTickLength(2), p.IPgYTickPos(2); }, -15, 6, 15, 0},
                 {[](Presentation& p) { p.IPgXTickPos(2), p.IPgYTickLength(0.4f), p.IPgXTickPos(1), p.IPgXTickPos(2); }, 6, -3, 0, 3}};
    for (const auto& c : cases) {
        const Recording_Device device = scales(c.setting);
        bool x_axis = true;
        for (const Recorded& item : device.items()) {
            if (const auto* line = std::get_if<Recorded_Line>(&item)) {
                const Point a = line->points[0], b = line->points[1];
                if (std::fabs(b.x - a.x) > 100 || std::fabs(b.y - a.y) > 100)
                    x_axis = std::fabs(b.x - a.x) > 100;
                else
                    EXPECT_NEAR(x_axis ? b.y - a.y : b.x - a.x, x_axis ? c.x_tick : c.y_tick, 1e-3);
            } else if (const auto* text = std::get_if<Recorded_Text>(&item)) {
                const double em = Em_Of_Cell(text->style.width, text->style.height);
                const double room = x_axis ? 200 - text->at.y - cap_height * em : 300 - text->at.x;
                EXPECT_NEAR(room, 5 + (x_axis ? c.x_room : c.y_room), 1e-3);
            }
        }
    }

    const auto texts = [&](int decimals) {
        std::vector<std::string> all;
        for (const Recorded_Text& text : Drawn<Recorded_Text>(scales([&](Presentation& p) { p.IPgDecimalPlaces(decimals); })))
            all.push_back(text.text);
        return all;
    };
    for (const int decimals : {0, 3, 9, 12}) {
        for (const std::string& text : texts(decimals)) {
            const std::size_t point = text.find('.');
            EXPECT_EQ(point == std::string::npos ? 0 : text.size() - point - 1, std::min(decimals, 9)) << text;
            EXPECT_FALSE(text.starts_with("-0") && text.find_first_not_of("-0.") == std::string::npos) << text;
        }
    }
    EXPECT_EQ(texts(2).front(), "-1.00");
    EXPECT_EQ(texts(-1).front(), "-1");
}

TEST(Texts, SubTitleBetweenTitleAndBox) {
    int seconds = 0;
    for (const auto& [width, height] : {std::pair{1200.0, 800.0}, {300.0, 200.0}, {4000.0, 900.0}, {500.0, 1400.0}}) {
        for (const float top : {0.8f, 0.95f}) {
            for (const float size : {0.01f, 0.02f, 0.06f}) {
                Recording_Device device(width, height);
                Graphics g(device);
                Presentation p(g);
                p.IPgArea(0.15f, 0.15f, 0.85f, top);
                g.WGrTextFont(101, 0, size, 2 * size);
                p.IPgTitle("Fayalite", 'C');
                g.WGrTextFont(101, 0, 0.03f, 0.06f);
                p.IPgSubTitle("at a temperature of 300 K, in a longer line than the first, which stays on the page", 'L');
                const auto texts = Drawn<Recorded_Text>(device);
                const double title = Em_Of_Cell(texts[0].style.width, texts[0].style.height);
                const bool room = texts[0].at.y - descent * title > static_cast<double>(top) * height;
                ASSERT_EQ(texts.size(), room ? 2u : 1u);
                if (!room) continue;
                ++seconds;
                const double second = Em_Of_Cell(texts[1].style.width, texts[1].style.height);
                EXPECT_GT(second, 0);
                EXPECT_LT(texts[1].at.y + cap_height * second, texts[0].at.y - descent * title);
                EXPECT_GT(texts[1].at.y - descent * second, static_cast<double>(top) * height);
                EXPECT_LT(texts[1].at.x + device.Text_Width(texts[1].text, texts[1].style), width);
            }
        }
    }
    EXPECT_GT(seconds, 18);
}

TEST(Texts, LabelRightOfTheBox) {
    for (const char* position : {"TR", "T9", "CR", "C9", "BR", "B9", "CV", "BV"}) {
        for (const auto& [width, height] : {std::pair{1200.0, 800.0}, {300.0, 200.0}, {500.0, 1400.0}}) {
            Recording_Device device(width, height);
            Graphics g(device);
            Presentation p(g);
            p.IPgArea(0.15f, 0.15f, 0.95f, 0.85f);
            g.WGrTextFont(101, 0, 0.04f, 0.08f);
            p.IPgYLabelRight("Counting rate", position);
            const auto texts = Drawn<Recorded_Text>(device);
            ASSERT_EQ(texts.size(), position[1] == 'V' ? 2u : 1u) << position;
            for (const Recorded_Text& text : texts) {
                const double em = Em_Of_Cell(text.style.width, text.style.height);
                const double length = device.Text_Width(text.text, text.style);
                const double angle = text.style.angle;
                EXPECT_EQ(angle, position[1] == 'V' ? 0 : position[1] == '9' ? 90 : -90);
                const double left = angle == 0 ? 0 : angle > 0 ? cap_height * em : descent * em;
                const double right = angle == 0 ? length : angle > 0 ? descent * em : cap_height * em;
                EXPECT_GT(text.at.x - left, 0.95 * width - 1e-3) << position;
                EXPECT_LT(text.at.x + right, width + 1e-3) << position;
                EXPECT_GE(text.at.y, 0);
                EXPECT_LE(text.at.y, height);
                if (angle == 0) continue;
                // The end that points upward stands at the top, the other one at the foot, or the middle in the middle.
                const double after = text.style.justify == Justify::left ? 1 : text.style.justify == Justify::right ? 0 : 0.5;
                const double share = angle > 0 ? after : 1 - after;  // of the length, above the place
                const double from = text.at.y - (1 - share) * length, to = from + length;
                if (position[0] == 'T') {
                    EXPECT_NEAR(to, std::max(0.85 * height, length), 1e-3) << position;
                }
                if (position[0] == 'B') {
                    EXPECT_NEAR(from, std::min(0.15 * height, height - length), 1e-3) << position;
                }
                if (position[0] == 'C') {
                    EXPECT_NEAR(0.5 * (from + to), 0.5 * height, 1e-3) << position;
                }
            }
        }
    }
}

// --- cells -------------------------------------------------------------------------------------------------------------------------

// Three columns and two rows, each cell a colour of its own.
const std::vector<Colour> six = {1, 2, 3, 4, 5, 6};

TEST(Cells, StandWhereTheUnitsSay) {
    const struct {
        float x1, y1, x2, y2;
        std::vector<Colour> from_lower_left;
    } cases[] = {{0, 0, 30, 20, {1, 2, 3, 4, 5, 6}},
                 {30, 0, 0, 20, {3, 2, 1, 6, 5, 4}},
                 {0, 20, 30, 0, {4, 5, 6, 1, 2, 3}},
                 {30, 20, 0, 0, {6, 5, 4, 3, 2, 1}}};
    for (const auto& c : cases) {
        Recording_Device device(300, 200);
        Graphics g(device);
        g.IGrUnits(0, 0, 30, 20);
        g.IGrCells(c.x1, c.y1, c.x2, c.y2, 3, 2, six);
        const auto cells = Drawn<Recorded_Cells>(device);
        ASSERT_EQ(cells.size(), 1u);
        EXPECT_EQ(cells[0].colours, c.from_lower_left);
        EXPECT_EQ(cells[0].rect.x2 - cells[0].rect.x1, 300);
        EXPECT_EQ(device.Bounds()->y2, 200);
    }
    Recording_Device device;
    Graphics g(device);
    g.IGrCells(0, 0, 1, 1, 3, 3, six);  // fewer colours than cells
    g.IGrCells(0, 0, 0, 1, 3, 2, six);
    g.IGrCells(0, 0, std::numeric_limits<float>::infinity(), 1, 3, 2, six);
    EXPECT_TRUE(Drawn<Recorded_Cells>(device).empty());
}

TEST(Graphics, EllipsesKeepTheirRatioToThePage) {
    const struct { double width, height, rx, ry; } cases[] = {{1200, 800, 60, 45}, {600, 800, 30, 45}, {1200, 200, 60, 11.25}};
    for (const auto& c : cases) {
        Recording_Device device(c.width, c.height);
        Graphics g(device);
        g.IGrEllipse(600, 400, 60, 0.75f);
        EXPECT_EQ(Drawn<Recorded_Ellipse>(device)[0].rx, c.rx);
        EXPECT_EQ(Drawn<Recorded_Ellipse>(device)[0].ry, c.ry);
    }
}

TEST(Recording, ReplayStretchesEachDirectionByItself) {
    const float x = 300, y = 600;
    Recording_Device drawn(1200, 800), replayed(600, 1600);
    drawn.Markers({std::span(&x, 1), std::span(&y, 1)}, {222, 10, 20, 0, true});
    drawn.Ellipse({300, 600}, 30, 40, true, {});
    drawn.Text({300, 600}, "a", {101, 0, 8, 16});
    drawn.Set_Clip({100, 200, 300, 600});
    drawn.Replay(replayed);
    const auto at = [](Point p) { return std::pair{p.x, p.y}; };
    const std::pair there{150.0, 1200.0};
    const auto markers = Drawn<Recorded_Markers>(replayed);
    const auto ellipses = Drawn<Recorded_Ellipse>(replayed);
    const auto texts = Drawn<Recorded_Text>(replayed);
    ASSERT_TRUE(markers.size() == 1 && ellipses.size() == 1 && texts.size() == 1);
    EXPECT_EQ(at(markers[0].points[0]), there);
    EXPECT_EQ(std::pair(markers[0].style.width, markers[0].style.height), std::pair(5.0, 40.0));
    EXPECT_EQ(at(ellipses[0].centre), there);
    EXPECT_EQ(std::pair(ellipses[0].rx, ellipses[0].ry), std::pair(15.0, 80.0));
    EXPECT_EQ(at(texts[0].at), there);
    EXPECT_EQ(std::pair(texts[0].style.width, texts[0].style.height), std::pair(4.0, 32.0));
    const Rect clip = Drawn<Recorded_Clip>(replayed).back().rect;
    EXPECT_EQ(std::pair(clip.x1, clip.y1), std::pair(50.0, 400.0));
    EXPECT_EQ(std::pair(clip.x2, clip.y2), std::pair(150.0, 1200.0));
}

}  // namespace
}  // namespace vntl
