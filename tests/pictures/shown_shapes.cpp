#include "pictures/shown_shapes.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vntl {

std::vector<Shape> Shapes_Of(const Recording_Device& device) {
    const double unit = device.Width() / 1200;
    std::vector<Shape> shapes;
    const auto glyph = [&](Point at, const Marker_Style& s) {
        if (s.glyph == 221) {
            shapes.push_back(
                {Shape::ellipse, {{at.x - s.width / 2, at.y + s.height / 2}, {at.x + s.width / 2, at.y - s.height / 2}}, s.colour});
            if (!s.filled) shapes.back().size = unit;
            return;
        }
        std::vector<Point> outline = Marker_Outline(s.glyph).points;
        for (Point& p : outline) p = {at.x + p.x * s.width, at.y + p.y * s.height};
        if (s.glyph >= 226)
            for (std::size_t k = 0; k < 4; k += 2) shapes.push_back({Shape::line, {outline[k], outline[k + 1]}, s.colour, unit});
        else if (s.filled)
            shapes.push_back({Shape::area, outline, s.colour});
        else
            outline.push_back(outline[0]), shapes.push_back({Shape::line, outline, s.colour, unit});
    };
    for (const Recorded& item : device.items()) {
        if (const auto* clear = std::get_if<Recorded_Clear>(&item))
            shapes.push_back(
                {Shape::area, {{0, 0}, {device.Width(), 0}, {device.Width(), device.Height()}, {0, device.Height()}}, clear->colour});
        if (const auto* line = std::get_if<Recorded_Line>(&item))
            shapes.push_back({Shape::line, line->points, line->pen.colour, line->pen.width * unit});
        if (const auto* fill = std::get_if<Recorded_Fill>(&item)) shapes.push_back({Shape::area, fill->points, fill->colour});
        if (const auto* e = std::get_if<Recorded_Ellipse>(&item))
            shapes.push_back({Shape::ellipse,
                              {{e->centre.x - e->rx, e->centre.y + e->ry}, {e->centre.x + e->rx, e->centre.y - e->ry}},
                              e->pen.colour,
                              e->filled ? 0 : e->pen.width * unit});
        if (const auto* markers = std::get_if<Recorded_Markers>(&item))
            for (const Point& at : markers->points) glyph(at, markers->style);
    }
    return shapes;
}

void Same_Shapes(const std::vector<Shape>& shown, const std::vector<Shape>& expected, double exact) {
    ASSERT_EQ(shown.size(), expected.size());
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const Shape &a = shown[i], &b = expected[i];
        ASSERT_EQ(a.kind, b.kind) << i;
        EXPECT_EQ(a.colour, b.colour) << i;
        EXPECT_NEAR(a.size, b.size, 2 * exact) << i;
        ASSERT_EQ(a.points.size(), b.points.size()) << i;
        for (std::size_t k = 0; k < a.points.size(); ++k)
            EXPECT_LT(std::hypot(a.points[k].x - b.points[k].x, a.points[k].y - b.points[k].y), 1.5 * exact) << i << ' ' << k;
    }
}

void Draw_Shapes(Device& d) {
    const double w = d.Width(), h = d.Height();
    d.Clear(WRGB(255, 255, 240));
    d.Set_Clip({0, 0, w, h});
    for (unsigned k = 0; k < 100; ++k) {
        const double x = w * (0.01 + 0.009 * k);
        d.Polyline(std::vector<Point>{{x, 0.1 * h}, {x + 5, 0.2 * h}, {x + 3, 0.25 * h}}, {WRGB(k, 2 * k, 200), 1.0 + k % 3});
        d.Fill(std::vector<Point>{{x, 0.3 * h}, {x + 5, 0.3 * h}, {x + 2, 0.33 * h}}, k % 2 == 0 ? WRGB(k, 0, 0) : WRGB(9, 9, 9));
    }
    d.Polyline(std::vector<Point>{{0, 0}, {w, 0}, {w, h}, {0, h}, {0, 0}}, {WRGB(1, 2, 3), 2});
    d.Ellipse({w / 2, h / 2}, 31, 17, true, {WRGB(0, 200, 0)});
    d.Ellipse({w / 2, h / 2}, 31, 17, false, {WRGB(0, 0, 200), 3});
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(), far = 1e30f;
    const std::vector<float> x = {1, 2, 3, 4, 5, 6, 7}, y = {10, 20, nan, 15, 12, 13, 14};
    const Series series{x, y, 40, 20, 300, 2};
    d.Curve(series, {WRGB(7, 8, 9)});
    for (int glyph = 221; glyph <= 227; ++glyph)
        for (const bool filled : {false, true}) d.Markers(series, {glyph, 9, 12, WRGB(static_cast<unsigned>(glyph), 0, 0), filled});
    d.Curve({std::vector<float>{1}, std::vector<float>{far}}, {WRGB(5, 5, 5)});  // neither shows anything
    d.Markers({std::vector<float>{far}, std::vector<float>{far}}, {222, 5, 5, WRGB(5, 5, 5), true});
}

}  // namespace vntl
