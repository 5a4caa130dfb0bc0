// The order in which facets are laid, against the depths of all facets that cover a place; and what is left of them near the eye.
#include "solid/w3d_draw.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <tuple>

#include "drawing/recording.hpp"
#include "solid/w3d_mesh.hpp"
#include "solids.hpp"

namespace vntl {
namespace {

constexpr double hidden = 1e30;

struct Laid {
    std::vector<Point> places;
    std::vector<Facet> facets;
    Colour background = 0;
};

Laid Lay(const W3d& solid, const W3d_View& view) {
    Recording_Device device(800, 600);
    Draw_W3d(solid, view, device);
    Laid laid;
    for (const Recorded& item : device.items()) {
        if (const auto* clear = std::get_if<Recorded_Clear>(&item)) laid.background = clear->colour;
        if (const auto* list = std::get_if<Recorded_Facets>(&item)) laid = {list->places, list->facets, laid.background};
    }
    for (const Point& place : laid.places) EXPECT_TRUE(std::isfinite(place.x) && std::isfinite(place.y));
    return laid;
}

double Turn(const Point& a, const Point& b, const Point& c) { return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x); }

// Depths of the corners of what was laid, by the places that the vertices of the solid have on the page.
class Depths {
public:
    Depths(const W3d& solid, const W3d_View& view, const Laid& laid) : laid_(laid) {
        const W3d_Camera camera(view.eye, 800, 600);
        for (const W3d_Vertex& vertex : Mesh_Of(solid).vertices) {
            const W3d_Camera::Seen seen = camera.See(vertex.at);
            of_place_[{seen.at.x, seen.at.y}] = seen.depth;
        }
    }

    // Of a facet where it covers a place, `hidden` elsewhere. What grows evenly over the page is 1 by the depth.
    double At(const Facet& facet, const Point& at) const {
        double depth = hidden;
        for (std::uint32_t k = 1; k + 1 < facet.count; ++k) {
            const std::array<std::uint32_t, 3> corners = {facet.corners[0], facet.corners[k], facet.corners[k + 1]};
            const auto place = [&](std::size_t i) { return laid_.places[corners[i % 3]]; };
            const double area = Turn(place(0), place(1), place(2));
            double nearness = 0, least = 1;
            for (std::size_t i = 0; i < 3; ++i) {
                const double share = Turn(at, place(i + 1), place(i + 2)) / area;
                least = std::min(least, share);
                nearness += share / Corner(corners[i]);
            }
            if (least > 1e-6) depth = std::min(depth, 1 / nearness);
        }
        return depth;
    }
    double Corner(std::uint32_t number) const { return of_place_.at({laid_.places[number].x, laid_.places[number].y}); }

private:
    const Laid& laid_;
    std::map<std::pair<double, double>, double> of_place_;
};

// At the middles of all facets the one that is laid last is the nearest. A line is laid after whatever is farther, and before whatever is
// nearer.
void Expect_Order(const W3d& solid, const W3d_View& view, const char* label) {
    const Laid laid = Lay(solid, view);
    const Depths depths(solid, view, laid);
    int wrong = 0;
    for (std::size_t f = 0; f < laid.facets.size(); ++f) {
        const Facet& facet = laid.facets[f];
        const Point &a = laid.places[facet.corners[0]], &b = laid.places[facet.corners[1]], &c = laid.places[facet.corners[2]];
        const bool line = facet.count == 2;
        const Point at = line ? Point{0.5 * (a.x + b.x), 0.5 * (a.y + b.y)} : Point{(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3};
        const double of_line = line ? 2 / (1 / depths.Corner(facet.corners[0]) + 1 / depths.Corner(facet.corners[1])) : 0;
        double nearest = hidden, last = hidden;
        for (std::size_t g = 0; g < laid.facets.size(); ++g) {
            if (laid.facets[g].count == 2) continue;
            const double depth = depths.At(laid.facets[g], at);
            if (depth == hidden) continue;
            last = depth;
            nearest = std::min(nearest, depth);
            if (line && std::fabs(depth - of_line) > 1e-4 && (depth > of_line) != (g < f)) ++wrong;
        }
        if (!line && last > nearest + 1e-4) ++wrong;
    }
    EXPECT_EQ(wrong, 0) << label << " from " << testing::PrintToString(view.eye) << ", facets " << laid.facets.size();
}

struct Random_Views {
    std::mt19937 random{7};
    W3d_View Next(Render_Mode mode) {
        std::uniform_real_distribution<double> share(-1, 1);
        const double elevation = 89.9 * share(random), azimuth = 180 * share(random), distance = 19 + 11 * share(random);
        return {From_Polar(elevation, azimuth, distance), From_Polar(45, 0, 12), mode};
    }
};

TEST(Solid_Draw, Facets_And_Lines_Of_Sheets_In_Order) {
    struct Case {
        const char* label;
        std::vector<float> columns, rows;
    };
    const Case cases[] = {
        {"even", Evenly(-1.5f, 1.5f, 13), Evenly(-1, 1, 9)},
        {"narrow columns", Evenly(-1.5f, 1.5f, 41), Evenly(-1, 1, 3)},
        {"backward", Evenly(1.5f, -1.5f, 9), Evenly(1, -1, 13)},
        {"uneven", {-3, -2.9f, -1, 0, 0.01f, 2}, {-1, 2, 2.1f, 2.2f, 4}},
    };
    std::mt19937 random(2);
    std::uniform_real_distribution<float> height(-0.8f, 1.6f);
    Random_Views views;
    for (const Case& c : cases) {
        for (int view = 0; view < 60; ++view) {
            const bool gaps = view % 3 == 2;
            const W3d solid = Sheet_Over(c.columns, c.rows, [&](float, float) {
                const float y = height(random);
                return gaps && y > 1.3f ? gap : y;
            });
            const Render_Mode mode = view % 2 == 0 ? Render_Mode::hidden_lines : Render_Mode::gouraud;
            const W3d_View from = views.Next(mode);
            Expect_Order(solid, from, c.label);

            const W3d_Mesh mesh = Mesh_Of(solid);
            std::size_t triangles = 0, lines = 0;
            for (const Facet& facet : Lay(solid, from).facets) facet.count == 2 ? ++lines : triangles += facet.count - 2;
            EXPECT_EQ(3 * triangles, mesh.triangles.size()) << c.label;
            EXPECT_EQ(2 * lines, mode == Render_Mode::gouraud ? 0 : mesh.edges.size()) << c.label;
        }
    }
}

TEST(Solid_Draw, Rods_And_Letters_In_Order) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> height(0, 1.6f);
    W3d solid = Sheet_Over(Evenly(-1.5f, 1.5f, 7), Evenly(-1, 1, 5), [&](float, float) { return height(random); });
    solid.rods = {{{-1.5f, -0.1f, -1.1f}, {1.5f, -0.1f, -1.1f}, 0.03f, 0.01f, 3, 8, 6},
                  {{1.6f, -0.1f, -1}, {1.6f, 1, 1}, 0.03f, 0, 3, 5, 5}};
    solid.texts = {{"8L", 102, {0, 0, -1.5f}, {1, 0, 0}, {0, 0, 1}, 0.2f, 0.3f, 0.05f, 6},
                   {"oH", 103, {0, 2.2f, 0}, {1, 0, 0}, {0, 1, 0}, 0.2f, 0.3f, 0.05f, 6}};
    Random_Views views;
    for (int view = 0; view < 40; ++view) Expect_Order(solid, views.Next(Render_Mode::flat), "with rods");
}

// A sheet in a sloping plane around the eye: what lies on it and before the eye is covered, the rest of the plane is not.
TEST(Solid_Draw, A_Sheet_Around_The_Eye_Is_Cut_Before_It) {
    const auto plane = [](float x, float z) { return -1 + 0.1f * x - 0.05f * z; };
    const W3d solid = Sheet_Over(Evenly(-7, 7, 9), Evenly(-5, 5, 6), plane);
    std::mt19937 random(4);
    std::uniform_real_distribution<float> across(-9, 9), angle(-180, 180), up(5, 60);
    int inside = 0, outside = 0;
    for (int view = 0; view < 40; ++view) {
        const W3d_View from{From_Polar(up(random), angle(random), 2), {0, 9, 0}, Render_Mode::flat};
        const W3d_Camera camera(from.eye, 800, 600);
        const Laid laid = Lay(solid, from);
        for (int k = 0; k < 200; ++k) {
            const float x = across(random), z = across(random);
            const float beyond = std::max(std::fabs(x) - 7, std::fabs(z) - 5);
            const W3d_Camera::Seen seen = camera.See({x, plane(x, z), z});
            if (seen.depth < 1.1 * camera.Nearest() || std::fabs(beyond) < 0.01f) continue;
            bool covered = false;
            for (const Facet& facet : laid.facets)
                for (std::uint32_t i = 1; i + 1 < facet.count; ++i) {
                    const Point &a = laid.places[facet.corners[0]], &b = laid.places[facet.corners[i]],
                                &c = laid.places[facet.corners[i + 1]];
                    const double area = Turn(a, b, c);
                    covered = covered || (Turn(a, b, seen.at) / area > -1e-9 && Turn(b, c, seen.at) / area > -1e-9 &&
                                          Turn(c, a, seen.at) / area > -1e-9);
                }
            EXPECT_EQ(covered, beyond < 0) << x << ' ' << z << " from " << testing::PrintToString(from.eye);
            ++(beyond < 0 ? inside : outside);
        }
    }
    EXPECT_GT(inside, 500);
    EXPECT_GT(outside, 500);
}

TEST(Solid_Draw, Colours_Of_The_Modes) {
    W3d solid = Sheet_Over({-1, 1}, {-1, 1}, [](float, float) { return 0; });
    const Vec3 above = {0, 10, -1}, below = {0, -10, -1}, light = {0, 8, 0};
    const Colour background = WRGB(1, 2, 3), edge = WRGB(200, 0, 0), material = solid.materials[0];
    struct Case {
        Render_Mode mode;
        Vec3 eye;
        bool facet;
        Colour colour;
        int lines;
    };
    const float lit = Lit({0, 1, 0}, {1, 0, 1}, light), dark = Lit({0, -1, 0}, {1, 0, 1}, light);  // all corners are as far from it
    for (const Case& c :
         {Case{Render_Mode::wireframe, above, false, 0, 4}, Case{Render_Mode::hidden_lines, above, true, background, 4},
          Case{Render_Mode::unlit, below, true, material, 4}, Case{Render_Mode::flat, above, true, Lit_Colour(material, lit), 0},
          Case{Render_Mode::gouraud, above, true, Lit_Colour(material, lit), 0},
          Case{Render_Mode::phong, below, true, Lit_Colour(material, dark), 0}}) {
        const Laid laid = Lay(solid, {c.eye, light, c.mode, background, edge});
        const std::string label = "mode " + std::to_string(static_cast<int>(c.mode));
        EXPECT_EQ(laid.background, background) << label;
        EXPECT_EQ(laid.facets.size(), static_cast<std::size_t>(c.lines + (c.facet ? 1 : 0))) << label;
        for (const Facet& facet : laid.facets) EXPECT_EQ(facet.colour, facet.count == 2 ? edge : c.colour) << label;
    }
}

TEST(Solid_Draw, Thinned_And_Scaled) {
    struct Case {
        int columns, rows;
        std::size_t facets;
        int kept_columns, kept_rows;
    };
    for (const Case& c : {Case{11, 6, 50, 11, 6}, Case{11, 6, 49, 6, 6}, Case{11, 6, 12, 5, 4}, Case{1001, 4, 600, 201, 4},
                          Case{1000, 500, 100'000, 334, 251}, Case{10, 10, 1, 2, 2}, Case{9, 1, 100, 0, 0}}) {
        const std::vector<float> rows = c.rows == 1 ? std::vector<float>{0} : Evenly(-1, 1, c.rows);
        const W3d solid = Sheet_Over(Evenly(-1, 1, c.columns), rows, [](float x, float z) { return x * z; });
        const W3d thin = Thinned(solid, c.facets);
        const std::string label = std::to_string(c.columns) + " x " + std::to_string(c.rows) + " in " + std::to_string(c.facets);
        ASSERT_EQ(thin.sheets.size(), c.kept_columns == 0 ? 0u : 1u) << label;
        if (thin.sheets.empty()) continue;
        EXPECT_EQ(thin.sheets[0].columns, c.kept_columns) << label;
        EXPECT_EQ(thin.sheets[0].rows, c.kept_rows) << label;
        EXPECT_LE(thin.Facets(), c.facets) << label;
        EXPECT_EQ(thin.vertices.front(), solid.vertices.front()) << label;
        EXPECT_EQ(thin.vertices.back(), solid.vertices.back()) << label;
    }
    W3d solid;
    solid.rods.push_back({{1, 1, 1}, {2, 2, 2}, 0.5f, 0.25f});
    const W3d_Rod wide = Scaled(solid, 2, 3, 0.5f).rods.at(0);
    EXPECT_EQ(std::tuple(wide.to, wide.radius_from), std::tuple(Vec3{4, 6, 1}, 0.5f));
}

}  // namespace
}  // namespace vntl
