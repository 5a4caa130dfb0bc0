// What writers of drawings get: cut at the clip, thinned, without what others hide.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "pictures/cut_shapes.hpp"
#include "pictures/shape_device.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {
namespace {

// Draws what it gets on another device, and counts it.
class Passing_Device : public Shape_Device {
public:
    Passing_Device(double width, double height, Device* target = nullptr)
        : Shape_Device(width, height), target_(target), scale_(target == nullptr ? 1 : target->Width() / width) {}

    std::vector<std::vector<Point>> lines, areas;
    std::vector<Point> markers, ellipses, text_places;
    std::vector<std::string> texts;
    std::vector<Colour> cells;
    Rect cells_at{};
    int columns = 0;

    Status Close() override { return Status::Done(); }

protected:
    void Write_Clear(Colour colour) override {
        if (target_ != nullptr) target_->Clear(colour);
    }
    void Write_Line(std::span<const Point> line, const Pen& pen) override {
        lines.emplace_back(line.begin(), line.end());
        if (target_ != nullptr) target_->Polyline(Scaled(line), pen);
    }
    void Write_Area(std::span<const Point> area, Colour colour) override {
        areas.emplace_back(area.begin(), area.end());
        if (target_ != nullptr) target_->Fill(Scaled(area), colour);
    }
    void Write_Ellipse(Point at, double, double, bool, const Pen&) override { ellipses.push_back(at); }
    void Write_Markers(std::span<const Point> places, const Marker_Style& style) override {
        markers.insert(markers.end(), places.begin(), places.end());
        if (target_ == nullptr) return Shape_Device::Write_Markers(places, style);
        const Glyph_Outline glyph = Marker_Outline(style.glyph);
        for (const Point& at : places) {
            std::vector<Point> corners;
            for (const Point& p : glyph.points) corners.push_back({at.x + p.x * style.width, at.y + p.y * style.height});
            if (!glyph.strokes) target_->Fill(Scaled(corners), style.colour);
            for (std::size_t k = 0; glyph.strokes && k < corners.size(); k += 2)
                target_->Polyline(Scaled(std::span(corners).subspan(k, 2)), {.colour = style.colour});
        }
    }
    void Write_Cells(const Rect& rect, int across, int, std::span<const Colour> colours) override {
        cells_at = rect;
        columns = across;
        cells.assign(colours.begin(), colours.end());
    }
    void Write_Text(Point at, const std::string& text, double, const Text_Style&) override {
        text_places.push_back(at);
        texts.push_back(text);
    }

private:
    std::vector<Point> Scaled(std::span<const Point> points) const {
        std::vector<Point> scaled;
        for (const Point& p : points) scaled.push_back({scale_ * p.x, scale_ * p.y});
        return scaled;
    }

    Device* target_;
    double scale_;
};

bool In(Point p, const Rect& r) {
    constexpr double slack = 1e-9;
    return p.x >= r.x1 - slack && p.x <= r.x2 + slack && p.y >= r.y1 - slack && p.y <= r.y2 + slack;
}

double Length(const std::vector<Point>& line) {
    double length = 0;
    for (std::size_t i = 1; i < line.size(); ++i) length += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
    return length;
}

// By the sum of its corners (shoelace).
double Area(const std::vector<Point>& polygon) {
    double twice = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return std::fabs(twice) / 2;
}

// Against the plain count of the places of a fine lattice, or of a fine division of the line, that lie inside.
TEST(Shapes, AreCutAtTheClip) {
    const Rect clip{20, 30, 90, 75};
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(-60, 170);
    for (int round = 0; round < 60; ++round) {
        std::vector<Point> line(4);
        for (Point& p : line) p = {place(random), place(random)};
        double length = 0, inside = 0;
        for (const auto& part : Line_Inside(line, clip)) {
            for (const Point& p : part) EXPECT_TRUE(In(p, clip));
            length += Length(part);
        }
        for (std::size_t i = 1; i < line.size(); ++i)
            for (int k = 0; k < 4000; ++k) {
                const double t = (k + 0.5) / 4000;
                const Point p{line[i - 1].x + t * (line[i].x - line[i - 1].x), line[i - 1].y + t * (line[i].y - line[i - 1].y)};
                if (In(p, clip)) inside += Length({line[i - 1], line[i]}) / 4000;
            }
        EXPECT_NEAR(length, inside, 0.4);

        const std::vector<Point> triangle(line.begin(), line.begin() + 3), cut = Polygon_Inside(triangle, clip);
        for (const Point& p : cut) EXPECT_TRUE(In(p, clip));
        const auto side = [&](std::size_t i, Point p) {
            const Point &a = triangle[i], &b = triangle[(i + 1) % 3];
            return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x) > 0;
        };
        int count = 0;
        for (double x = clip.x1 + 0.25; x < clip.x2; x += 0.5)
            for (double y = clip.y1 + 0.25; y < clip.y2; y += 0.5)
                count += side(0, {x, y}) == side(1, {x, y}) && side(1, {x, y}) == side(2, {x, y});
        EXPECT_NEAR(Area(cut), count * 0.25, 45) << round;
    }
    // A line along the edge stays, one that only touches a corner has no length, and what is no number is passed over.
    EXPECT_EQ(Line_Inside(std::vector<Point>{{0, 30}, {200, 30}}, clip).size(), 1u);
    EXPECT_TRUE(Line_Inside(std::vector<Point>{{0, 29}, {200, 29}}, clip).empty());
    EXPECT_EQ(Line_Inside(std::vector<Point>{{30, 40}, {NAN, 3}, {40, 40}}, clip).front().size(), 2u);
    EXPECT_EQ(Line_Inside(std::vector<Point>{{-1e300, 40}, {1e300, 40}}, clip).front().back().x, clip.x2);
}

// Closed forms: a comb whose points fill a few columns, and far more points than columns.
TEST(Shapes, ACurveOfManyPointsKeepsItsExtremesAndItsGaps) {
    constexpr int points = 400'000;
    std::vector<float> x, y;
    for (int i = 0; i < points; ++i) {
        x.push_back(10 + 80.0f * static_cast<float>(i) / points);
        y.push_back(i == 123'456 ? NAN : 40 + 20 * std::sin(0.9f * static_cast<float>(i)));
    }
    x.push_back(300);  // beyond the page
    y.push_back(40);
    Passing_Device device(100, 80);
    device.Curve({x, y}, {});
    ASSERT_EQ(device.lines.size(), 2u);  // the gap
    std::size_t kept = 0;
    double low = 80, high = 0;
    for (const auto& line : device.lines) {
        kept += line.size();
        for (const Point& p : line) {
            EXPECT_TRUE(In(p, {0, 0, 100, 80}));
            low = std::min(low, p.y);
            high = std::max(high, p.y);
        }
    }
    EXPECT_LT(kept, 4u * 80 * 20 + 20);  // four points a column of 1/20 point
    EXPECT_NEAR(low, 20, 1e-4);
    EXPECT_NEAR(high, 60, 1e-4);
    EXPECT_EQ(device.lines.back().back().x, 100);  // up to the edge
    const std::vector<float> far_x = {-3e38f, 3e38f}, far_y = {40, 40};
    device.Curve({far_x, far_y}, {});
    EXPECT_NEAR(Length(device.lines.back()), 100, 1e-6);
}

Colour Colour_Of(int row) { return WRGB(static_cast<unsigned>(40 * (row % 6)), static_cast<unsigned>(255 - 30 * (row % 7)), 90); }

// The rows of a plot, the front one last. What is left of them must look as all of it does: laid on pixels, four a point.
TEST(Shapes, WhatOthersHideCanBeLeftOut) {
    constexpr int rows = 16, points = 2000;
    constexpr double width = 240, height = 160;
    std::mt19937 random(8);
    std::normal_distribution<float> noise;
    std::vector<std::vector<float>> x(rows), y(rows);
    for (int row = 0; row < rows; ++row)
        for (int i = 0; i < points; ++i) {
            const auto k = static_cast<std::size_t>(row);
            x[k].push_back(10 + 220.0f * static_cast<float>(i) / points);
            const float d = (x[k].back() - 20 - 9 * static_cast<float>(row % 7)) / 3;
            y[k].push_back(15 + 110 / (1 + d * d) + 0.8f * noise(random) + 0.5f * static_cast<float>(row));
        }
    for (const int glyph : {221, 223, 224, 226}) {
        const auto draw_row = [&](Device& device, int row, bool backwards) {
            const auto k = static_cast<std::size_t>(row);
            const Series s{x[k], y[k]};
            const Marker_Style style{glyph, 4, 5, Colour_Of(row), glyph != 226};
            if (backwards) device.Markers(s, style);
            device.Curve(s, {WRGB(0, 0, 0), 1, Line_Style::solid});
            if (!backwards) device.Markers(s, style);
        };
        Bitmap whole(960, 640), seen(960, 640);
        Passing_Device all(width, height, &whole.Drawing()), least(width, height, &seen.Drawing());
        for (Device* device : {static_cast<Device*>(&all), static_cast<Device*>(&least)}) {
            device->Clear(WRGB(255, 255, 255));
            device->Set_Clip({12, 10, 225, 120});
        }
        for (int row = 0; row < rows; ++row)
            for (int i = 0; i < points; i += 500) {  // so few at a time that nothing is left out
                const auto k = static_cast<std::size_t>(row);
                if (i == 0) all.Curve({x[k], y[k]}, {WRGB(0, 0, 0), 1, Line_Style::solid});
                const std::size_t from = static_cast<std::size_t>(i);
                const Series part{std::span(x[k]).subspan(from, 500), std::span(y[k]).subspan(from, 500)};
                all.Markers(part, {glyph, 4, 5, Colour_Of(row), glyph != 226});
            }
        ASSERT_TRUE(least.Start_Backwards(100'000));
        for (int row = rows - 1; row >= 0; --row) draw_row(least, row, true);
        ASSERT_TRUE(least.End_Backwards());
        // A sliver of 1/20 point is a fifth of a pixel: none may stand out. Along the edge of the clip, x = 48 and x = 900, ends of lines
        // do.
        int most = 0;
        double sum = 0;
        for (int py = 0; py < 640; ++py)
            for (int px = 50; px < 898; ++px)
                for (const auto channel : {Red, Green, Blue}) {
                    const int one = static_cast<int>(channel(whole.Pixel(px, py))), other = static_cast<int>(channel(seen.Pixel(px, py)));
                    most = std::max(most, std::abs(one - other));
                    sum += std::abs(one - other);
                }
        EXPECT_LE(most, 100) << glyph;
        EXPECT_LT(sum / (3 * 960 * 640), 0.05) << glyph;
        std::size_t in_lines = 0, in_all_lines = 0;
        for (const auto& line : least.lines) in_lines += line.size();
        for (const auto& line : all.lines) in_all_lines += line.size();
        if (glyph == 226) continue;  // crosses hide nothing
        EXPECT_LT(least.markers.size(), all.markers.size() / 3) << glyph;
        EXPECT_LT(in_lines, in_all_lines / 2) << glyph;
    }
}

TEST(Shapes, WhatCannotBeDrawnBackwardsUndoesIt) {
    Passing_Device device(100, 80);
    const std::vector<float> x = {10, 20}, y = {10, 20};
    ASSERT_TRUE(device.Start_Backwards(100'000));
    device.Curve({x, y}, {});
    device.Text({10, 10}, "a", {101, 0, 5, 8, 0, Justify::left, 0});
    EXPECT_FALSE(device.End_Backwards());
    EXPECT_TRUE(device.lines.empty() && device.texts.empty());
    device.Curve({x, y}, {});
    EXPECT_EQ(device.lines.size(), 1u);
}

// Letters that lie beyond the clip go, from either end and on each of the three angles; what stays stands where it stood.
TEST(Shapes, ATextKeepsTheLettersThatShow) {
    const Text_Style level{101, 0, 6, 10, 0, Justify::centre, 0};  // fixed pitch: 6 points a letter
    const struct {
        Point at;
        double angle;
        const char* text;
        const char* shown;
        Point place;
    } cases[] = {{{100, 50}, 0, "abcdefg", "abcdefg", {100, 50}},
                 {{0, 50}, 0, "abcdefg", "efg", {3, 50}},
                 {{200, 50}, 0, "abcdefg", "abc", {179, 50}},
                 {{100, 100},
                  90,
                  "a\xCE\xB8"
                  "cd",
                  "a\xCE\xB8",
                  {100, 88}},
                 {{100, 0}, 90, "abcd", "cd", {100, 0}},
                 {{100, 0}, -90, "abcd", "ab", {100, 12}},
                 {{100, 150}, 0, "above", "", {}},
                 {{100, 50}, 0, "a\tb\x7F", "a b ", {100, 50}}};
    for (const auto& c : cases) {
        Passing_Device device(200, 100);
        Text_Style style = level;
        style.angle = c.angle;
        device.Text(c.at, c.text, style);
        ASSERT_EQ(device.texts.size(), std::string(c.shown).empty() ? 0u : 1u) << c.text;
        if (device.texts.empty()) continue;
        EXPECT_EQ(device.texts[0], c.shown);
        EXPECT_NEAR(device.text_places[0].x, c.place.x, 0.05) << c.text;
        EXPECT_NEAR(device.text_places[0].y, c.place.y, 0.05) << c.text;
    }
}

// The same image as on the pixels of a bitmap as fine as print.
TEST(Shapes, CellsComeForThePartThatShows) {
    std::vector<Colour> colours;
    for (unsigned i = 0; i < 12; ++i) colours.push_back(i == 5 ? no_colour : WRGB(20 * i, 255 - 10 * i, 7 * i));
    Passing_Device device(100, 80);
    device.Set_Clip({15, 20, 100, 80});
    device.Cells({{10, 10, 50, 40}, 4, 3, colours});
    const int rows = static_cast<int>(device.cells.size()) / device.columns;
    ASSERT_GT(rows, 10);
    EXPECT_NEAR(device.cells_at.x1, 15, 1e-9);
    EXPECT_NEAR(device.cells_at.x2, 50, 1e-9);
    EXPECT_NEAR(device.cells_at.y1, 20, 1e-9);
    EXPECT_NEAR(device.cells_at.y2, 40, 1e-9);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < device.columns; ++column) {
            const double x = 15 + 35 * (column + 0.5) / device.columns, y = 20 + 20 * (row + 0.5) / rows;
            const auto cell = static_cast<std::size_t>(4 * static_cast<int>((y - 10) / 10) + static_cast<int>((x - 10) / 10));
            EXPECT_EQ(device.cells[static_cast<std::size_t>(row * device.columns + column)], colours[cell]) << x << ' ' << y;
        }
}

// Partly outside: as areas or lines; wholly outside: not at all.
TEST(Shapes, MarkersAndEllipsesAtTheEdgeAreCut) {
    const std::vector<float> x = {50, 99, 200}, y = {40, 40, 40};
    for (const int glyph : {221, 222, 226}) {
        Passing_Device device(100, 80);
        device.Markers({x, y}, {glyph, 6, 6, 0, true});
        EXPECT_EQ(device.markers.size(), 1u);
        for (const auto& shapes : {device.lines, device.areas})
            for (const auto& shape : shapes)
                for (const Point& p : shape) EXPECT_TRUE(In(p, {0, 0, 100, 80})) << glyph;
        EXPECT_EQ(device.areas.size(), glyph == 226 ? 0u : glyph == 221 ? 1u : 2u);
    }
    Passing_Device device(100, 80);
    device.Ellipse({50, 40}, 10, 20, true, {});
    device.Ellipse({100, 40}, 10, 20, true, {});
    device.Ellipse({100, 40}, 10, 20, false, {});
    ASSERT_EQ(device.ellipses.size(), 1u);
    ASSERT_EQ(device.areas.size(), 1u);
    EXPECT_NEAR(Area(device.areas[0]), 3.14159265 * 10 * 20 / 2, 1);
    ASSERT_GE(device.lines.size(), 1u);
    double arc = 0;
    for (const auto& line : device.lines) arc += Length(line);
    EXPECT_NEAR(arc, 96.88 / 2, 0.3);  // half of the perimeter (Ramanujan, 1914)
}

}  // namespace
}  // namespace vntl
