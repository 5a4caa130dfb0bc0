// A cube in space against closed forms, and its scales, which stand outside of it and keep apart from every side.
#include "drawing/projection.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "drawing/drawn.hpp"
#include "drawing/font_table.hpp"
#include "drawing/presentation_3d.hpp"

namespace vntl {
namespace {

std::vector<Space_Point> Corners() {
    std::vector<Space_Point> corners;
    for (const double x : {0.0, 1.0})
        for (const double y : {0.0, 1.0})
            for (const double z : {0.0, 1.0}) corners.push_back({x, y, z});
    return corners;
}

TEST(Projection, ClosedForms) {
    const double half = 0.5, root2 = std::sqrt(2.0) / 2;
    const struct {
        double rotation, elevation, distance;
        Space_Point point;
        double right, up, depth;
    } cases[] = {
        {0, 90, orthographic, {1, 0, 1}, -half, half, -half},  // from above: y to the right, x upward, the top nearest
        {0, 90, orthographic, {0, 1, 0}, half, -half, half},   //
        {0, 0, orthographic, {1, 0, 1}, -half, half, half},    // along the floor: y to the right, z upward, x away
        {90, 0, orthographic, {0, 0.5, 0}, half, -half, 0},    // the front has gone to the right
        {90, 90, orthographic, {0.5, 1, 0.5}, 0, half, 0},     // and the right side away
        {45, 0, orthographic, {0, 1, 0}, root2, -half, 0},     //
        {0, 30, orthographic, {1, 0.5, 0.5}, 0, 0.25, 0.5 * std::sqrt(3.0) / 2},
        {0, 0, 2, {0, 1, 1}, half / 0.75, half / 0.75, -half},  // the near face at 1.5 of 2
        {0, 0, 2, {1, 1, 1}, half / 1.25, half / 1.25, half},   // the far face at 2.5
        {0, 60, 2, {1, 1, 0}, half / 1.125, (-0.25 + 0.25 * std::sqrt(3.0)) / 1.125, 0.25 + 0.25 * std::sqrt(3.0)},
        {123, 32, 3, {0.5, 0.5, 0.5}, 0, 0, 0},
    };
    for (const auto& c : cases) {
        const Seen_Point seen = Projection(c.rotation, c.elevation, c.distance).See(c.point);
        EXPECT_NEAR(seen.right, c.right, 1e-12) << c.rotation << ' ' << c.elevation;
        EXPECT_NEAR(seen.up, c.up, 1e-12) << c.rotation << ' ' << c.elevation;
        EXPECT_NEAR(seen.depth, c.depth, 1e-12) << c.rotation << ' ' << c.elevation;
    }
    // Seen along its diagonal the three edges of a cube are equally long, the root of 2/3.
    const Projection isometric(45, std::asin(1 / std::sqrt(3.0)) * 180 / std::acos(-1.0));
    const Seen_Point corner = isometric.See({0, 0, 1});
    for (const Space_Point& end : {Space_Point{1, 0, 1}, {0, 1, 1}, {0, 0, 0}}) {
        const Seen_Point seen = isometric.See(end);
        EXPECT_NEAR(std::hypot(seen.right - corner.right, seen.up - corner.up), std::sqrt(2.0 / 3), 1e-12);
    }
}

TEST(Projection, NoLengthChangesAndAFarEyeSeesParallels) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> turn(-360, 360), rise(0, 90), share(0, 1);
    for (int i = 0; i < 200; ++i) {
        const double rotation = turn(random), elevation = rise(random);
        const Space_Point point = {share(random), share(random), share(random)};
        const Seen_Point seen = Projection(rotation, elevation).See(point);
        EXPECT_NEAR(std::hypot(seen.right, seen.up, seen.depth), std::hypot(point[0] - 0.5, point[1] - 0.5, point[2] - 0.5), 1e-12);
        const Seen_Point far = Projection(rotation, elevation, 1e9).See(point);
        EXPECT_NEAR(far.right, seen.right, 1e-8);
        EXPECT_NEAR(far.up, seen.up, 1e-8);
        EXPECT_EQ(far.depth, seen.depth);
    }
}

TEST(Projection, TheExtentHoldsEveryRotationAndNoMore) {
    for (const double distance : {1.2, 4.0, orthographic}) {
        for (const double elevation : {0.0, 10.0, 45.0, 90.0}) {
            Rect reached{0, 0, 0, 0};
            for (double rotation = 0; rotation < 360; rotation += 0.25) {
                for (const Space_Point& corner : Corners()) {
                    const Seen_Point seen = Projection(rotation, elevation, distance).See(corner);
                    reached = {std::min(reached.x1, seen.right), std::min(reached.y1, seen.up), std::max(reached.x2, seen.right),
                               std::max(reached.y2, seen.up)};
                }
            }
            const Rect extent = Projection(17, elevation, distance).Extent();
            for (const auto& [bound, found] : {std::pair{extent.x1, reached.x1}, {extent.y1, reached.y1}}) {
                EXPECT_LE(bound, found + 1e-12) << distance << ' ' << elevation;
                EXPECT_NEAR(bound, found, 1e-4) << distance << ' ' << elevation;
            }
            for (const auto& [bound, found] : {std::pair{extent.x2, reached.x2}, {extent.y2, reached.y2}}) {
                EXPECT_GE(bound, found - 1e-12) << distance << ' ' << elevation;
                EXPECT_NEAR(bound, found, 1e-4) << distance << ' ' << elevation;
            }
        }
    }
}

// A place at a share of the way from the eye to a point is seen where the point is, and hides it; and uprights stay upright.
TEST(Projection, RaysLeadToTheEye) {
    std::mt19937 random(4);
    std::uniform_real_distribution<double> turn(-360, 360), rise(0, 60), share(0, 1);
    for (int i = 0; i < 200; ++i) {
        const Projection view(turn(random), rise(random), 1 + 9 * share(random));
        const Space_Point eye = view.Eye(), point = {share(random), share(random), share(random)};
        const double way = 0.2 + 0.7 * share(random);
        Space_Point nearer;
        for (std::size_t k = 0; k < 3; ++k) nearer[k] = eye[k] + way * (point[k] - eye[k]);
        const Seen_Point far = view.See(point), near = view.See(nearer);
        EXPECT_NEAR(far.right, near.right, 1e-9);
        EXPECT_NEAR(far.up, near.up, 1e-9);
        EXPECT_LT(near.depth, far.depth);
        EXPECT_EQ(view.See({point[0], point[1], 0}).right, far.right);
    }
}

// --- units and scales in space ---------------------------------------------------------------------------------------------------

struct Space {
    Recording_Device device;
    Graphics g{device};
    Presentation_3D space{g};

    Space(float rotation, float elevation) {
        space.IPgArea(0.25f, 0.25f, 0.75f, 0.75f);
        space.IPgUnitsXYZ(29, 0, 10, 120, 0, 1.2f);  // x reversed
        space.IPgRotation(rotation);
        space.IPgElevation(elevation);
        g.WGrTextFont(101, 0, 0.012f, 0.024f);
    }
};

TEST(Presentation_3D, UnitsViewAndDepth) {
    const Space front(0, 0);
    const Point near = front.space.To_Device(29, 120, 1.2f), far = front.space.To_Device(0, 120, 1.2f);
    EXPECT_NEAR((near.x - 600) / (far.x - 600), 4.5 / 3.5, 1e-6);  // faces half an edge before and behind the middle, the eye at 4
    EXPECT_NEAR((near.y - 400) / (far.y - 400), 4.5 / 3.5, 1e-6);
    EXPECT_NEAR(Space(45, 0).space.To_Device(29, 10, 1.2f).y, 600, 1e-6);  // the nearest corner, at the upper end of the plot box
    EXPECT_GT(front.space.Depth(0, 50, 1), front.space.Depth(29, 50, 1));
    EXPECT_LT(Space(180, 0).space.Depth(0, 50, 1), Space(180, 0).space.Depth(29, 50, 1));
    EXPECT_LT(Space(0, 30).space.Depth(5, 50, 1), Space(0, 30).space.Depth(5, 50, 0.5));

    const auto place = [](float rotation, float elevation) { return Space(rotation, elevation).space.To_Device(3, 20, 1); };
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        float rotation, elevation, same_rotation, same_elevation;
    } equal[] = {{360, 20, 0, 20},   {-360, 20, 0, 20}, {500, 20, 0, 20}, {nan, 20, 0, 20},
                 {-90, 20, 270, 20}, {30, 60, 30, 45},  {30, -5, 30, 0}};
    for (const auto& c : equal) {
        const Point one = place(c.rotation, c.elevation), other = place(c.same_rotation, c.same_elevation);
        EXPECT_EQ(one.x, other.x) << c.rotation << ' ' << c.elevation;
        EXPECT_EQ(one.y, other.y) << c.rotation << ' ' << c.elevation;
    }
}

TEST(Presentation_3D, ScalesSeenFromTheFront) {
    Space front(0, 22);
    front.g.WGrTextFont(101, 0, 0.006f, 0.012f);
    const auto corner = [&](double x, double y, double z) { return front.space.To_Device(x, y, z); };
    front.space.IPgFrame();  // twelve edges, the four of the far face before those of the near one
    const auto frame = Drawn<Recorded_Line>(front.device);
    ASSERT_EQ(frame.size(), 12u);
    const auto holds = [](const Recorded_Line& line, Point p) {
        return std::any_of(line.points.begin(), line.points.end(), [&](Point q) { return std::hypot(q.x - p.x, q.y - p.y) < 1e-4; });
    };
    EXPECT_TRUE(holds(frame.front(), corner(0, 10, 0)) || holds(frame.front(), corner(0, 120, 0)));
    EXPECT_TRUE(holds(frame.back(), corner(29, 10, 1.2f)) || holds(frame.back(), corner(29, 120, 1.2f)));

    const auto scale = [&](void (Presentation_3D::*draw)(std::string_view)) {
        const std::size_t lines = Drawn<Recorded_Line>(front.device).size(), texts = Drawn<Recorded_Text>(front.device).size();
        (front.space.*draw)("NT");
        const auto all_lines = Drawn<Recorded_Line>(front.device);
        const auto all_texts = Drawn<Recorded_Text>(front.device);
        return std::pair{std::vector(all_lines.begin() + static_cast<std::ptrdiff_t>(lines), all_lines.end()),
                         std::vector(all_texts.begin() + static_cast<std::ptrdiff_t>(texts), all_texts.end())};
    };
    const struct {
        void (Presentation_3D::*draw)(std::string_view);
        Point from, to;
        std::size_t ticks;
        const char *first, *last;
    } cases[] = {
        {&Presentation_3D::IPgXScale, corner(29, 120, 0), corner(0, 120, 0), 6, "0", "25"},      // at the right; steps of 5
        {&Presentation_3D::IPgYScale, corner(29, 10, 0), corner(29, 120, 0), 12, "10", "120"},   // at the front; of 10
        {&Presentation_3D::IPgZScale, corner(29, 10, 0), corner(29, 10, 1.2f), 7, "0", "1.2"}};  // at the left; no tenths of a third axis
    for (const auto& c : cases) {
        const auto [lines, texts] = scale(c.draw);
        ASSERT_EQ(lines.size(), 1 + c.ticks);
        EXPECT_NEAR(lines[0].points[0].x, c.from.x, 1e-4);
        EXPECT_NEAR(lines[0].points[0].y, c.from.y, 1e-4);
        EXPECT_NEAR(lines[0].points[1].x, c.to.x, 1e-4);
        EXPECT_NEAR(lines[0].points[1].y, c.to.y, 1e-4);
        for (std::size_t i = 1; i < lines.size(); ++i)  // 0.8 eightieths of the box
            EXPECT_NEAR(std::hypot(lines[i].points[1].x - lines[i].points[0].x, lines[i].points[1].y - lines[i].points[0].y), 6, 1e-6);
        ASSERT_GE(texts.size(), 2u);
        EXPECT_EQ(texts.front().text, c.first);
        EXPECT_EQ(texts.back().text, c.last);
    }
}

struct Box {
    double x1, y1, x2, y2;
};

Box Box_Of(const Recording_Device& device, const Recorded_Text& text) {
    const double em = Em_Of_Cell(text.style.width, text.style.height), high = cap_height * em;
    const double wide = device.Text_Width(text.text, text.style), before = text.style.justify == Justify::centre ? 0.5 * wide : 0;
    const Point at = text.at;
    if (text.style.angle == 90) return {at.x - high, at.y - before, at.x, at.y - before + wide};
    return {at.x - before, at.y, at.x - before + wide, at.y + high};
}

bool Touch(const Box& a, const Box& b) { return a.x1 < b.x2 && b.x1 < a.x2 && a.y1 < b.y2 && b.y1 < a.y2; }

// How far a point lies outside of the cube on the page: above 0 beyond one of the lines through two corners with all others on one side.
double Outside(const std::vector<Point>& corners, Point p) {
    double farthest = -1e9;
    for (const Point& a : corners) {
        for (const Point& b : corners) {
            const double dx = b.x - a.x, dy = b.y - a.y, length = std::hypot(dx, dy);
            if (length < 1e-6) continue;
            const auto side = [&](const Point& q) { return ((q.x - a.x) * dy - (q.y - a.y) * dx) / length; };
            if (std::all_of(corners.begin(), corners.end(), [&](const Point& q) { return side(q) < 1e-6; }))
                farthest = std::max(farthest, side(p));
        }
    }
    return farthest;
}

TEST(Presentation_3D, ScalesStandOutsideAndNumbersKeepApartFromEverySide) {
    for (const float elevation : {0.0f, 5.0f, 22.0f, 45.0f}) {
        for (float rotation = 0; rotation < 360; rotation += 7.5f) {
            Space view(rotation, elevation);
            const float size = rotation < 90 ? 0.012f : rotation < 180 ? 0.02f : 0.015f;
            view.g.WGrTextFont(101, 0, size, 2 * size);
            std::size_t numbers = 0;
            for (const auto draw : {&Presentation_3D::IPgXScale, &Presentation_3D::IPgYScale, &Presentation_3D::IPgZScale}) {
                (view.space.*draw)("TN");
                const std::size_t now = Drawn<Recorded_Text>(view.device).size();
                const bool nearly_end_on = elevation < 20;
                EXPECT_TRUE(nearly_end_on || size > 0.019f || now - numbers >= 2) << rotation << ' ' << elevation;
                numbers = now;
            }
            std::vector<Point> corners, floor;
            for (const Space_Point& corner : Corners()) {
                corners.push_back(view.space.To_Device(29 * corner[0], 10 + 110 * corner[1], static_cast<double>(1.2f) * corner[2]));
                if (corner[2] == 0) floor.push_back(corners.back());
            }
            int ticks = 0, scales = 0;
            for (const Recorded_Line& line : Drawn<Recorded_Line>(view.device)) {
                const Point a = line.points[0], b = line.points[1];
                const bool axis = std::hypot(b.x - a.x, b.y - a.y) > 6.1;
                axis ? ++scales : ++ticks;
                const std::vector<Point>& shape = scales == 3 ? corners : floor;
                EXPECT_NEAR(Outside(shape, a), 0, 1e-3) << rotation << ' ' << elevation;
                EXPECT_TRUE(axis || Outside(shape, b) > 0.5) << rotation << ' ' << elevation;
            }
            EXPECT_GE(ticks, 25);
            const auto texts = Drawn<Recorded_Text>(view.device);
            for (std::size_t i = 0; i < texts.size(); ++i) {
                const Box a = Box_Of(view.device, texts[i]);
                for (std::size_t j = i + 1; j < texts.size(); ++j)
                    EXPECT_FALSE(Touch(a, Box_Of(view.device, texts[j])))
                        << texts[i].text << " and " << texts[j].text << " at " << rotation << ' ' << elevation;
            }
        }
    }
}

TEST(Presentation_3D, AxesWithoutExtentHaveNoTicks) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    Space flat(30, 20);
    flat.space.IPgUnitsXYZ(3, 3, 0, 1, nan, 5);
    flat.space.IPgXScale("TN");
    flat.space.IPgZScale("TN");
    EXPECT_EQ(Drawn<Recorded_Line>(flat.device).size(), 2u);
    EXPECT_TRUE(Drawn<Recorded_Text>(flat.device).empty());
    EXPECT_FALSE(std::isfinite(flat.space.To_Device(3, 0, 1).x));
}

// As the two pictures in space draw them: stacks of lines, whose titles come before their scales, and surfaces, where they come after.
TEST(Presentation_3D, TitlesStandOnThePageApartFromEverything) {
    const std::string longest(150, 'T');
    const struct {
        bool scales_first;
        float title_width, label_width, number_width, height;
        std::string title;
        const char *x_label, *z_letters;
    } forms[] = {{false, 0.013333f, 0.013333f, 0.013333f, 0.04f, longest, "Patterns", "CV"},
                 {true, 0.02f, 0.02f, 0.015f, 0.04f, "Plot 3D surface multi file", "Temperature", "T"}};
    for (const auto& form : forms) {
        for (const float elevation : {0.0f, 5.0f, 22.0f, 45.0f}) {
            for (float rotation = -180; rotation <= 180; rotation += 4) {
                Recording_Device device;
                Graphics g(device);
                Presentation_3D space(g);
                space.IPgArea(0.15f, 0.15f, 0.85f, 0.85f);
                space.IPgUnitsXYZ(290, 450, 5, 120, 0, 12000);
                space.IPgRotation(rotation);
                space.IPgElevation(elevation);
                const auto scales = [&] {
                    g.WGrTextFont(101, 0, form.number_width, form.scales_first ? 0.03f : form.height);
                    if (form.scales_first) space.IPgXScale("TN");
                    space.IPgYScale("TN");
                    space.IPgZScale("TN");
                };
                g.WGrTextFont(101, 0, form.title_width, form.height);
                space.IPgTitle(form.title);
                if (form.scales_first) scales();
                g.WGrTextFont(101, 0, form.label_width, form.height);
                space.IPgLabelPos(1, 0.6f);
                space.IPgXLabel(form.x_label, "C");
                space.IPgLabelPos(2, 0.6f);
                space.IPgYLabel("2theta (degrees)", "C");
                space.IPgLabelPos(3, 0.8f);
                space.IPgZLabel("Intensity (arb. units)", form.z_letters);
                if (!form.scales_first) scales();

                std::vector<Point> corners;
                for (const Space_Point& c : Corners()) corners.push_back(space.To_Device(290 + 160 * c[0], 5 + 115 * c[1], 12000 * c[2]));
                const auto texts = Drawn<Recorded_Text>(device);
                std::size_t titles = 0;
                for (std::size_t i = 0; i < texts.size(); ++i) {
                    const Box a = Box_Of(device, texts[i]);
                    const std::string where = texts[i].text + " at " + std::to_string(rotation) + ' ' + std::to_string(elevation);
                    EXPECT_TRUE(a.x1 > 0 && a.y1 > 0 && a.x2 < 1200 && a.y2 < 800) << where;
                    for (std::size_t j = i + 1; j < texts.size(); ++j)
                        EXPECT_FALSE(Touch(a, Box_Of(device, texts[j]))) << where << " and " << texts[j].text;
                    if (texts[i].style.justify != Justify::centre) continue;  // a number
                    ++titles;
                    EXPECT_GE(texts[i].style.height, titles == 1 ? 7 : 15) << where;
                    const double x = 0.5 * (a.x1 + a.x2), y = 0.5 * (a.y1 + a.y2);
                    EXPECT_GT(Outside(corners, {x, y}), 0.5 * std::min(a.x2 - a.x1, a.y2 - a.y1)) << where;
                }
                EXPECT_EQ(titles, 4u) << rotation << ' ' << elevation;
            }
        }
    }
}

}  // namespace
}  // namespace vntl
