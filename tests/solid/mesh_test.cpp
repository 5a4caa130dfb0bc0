// Triangles of solids: areas and volumes in closed form, and their sides.
#include "solid/w3d_mesh.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>

#include "pictures/text_extent.hpp"
#include "solid/letters.hpp"
#include "solid/vec3.hpp"
#include "solids.hpp"

namespace vntl {
namespace {

double Area(const Outline& letter) {
    double sum = 0;
    for (const std::vector<Point>& contour : letter)
        for (std::size_t i = 0; i < contour.size(); ++i) {
            const Point &a = contour[i], &b = contour[(i + 1) % contour.size()];
            sum += 0.5 * (a.x * b.y - b.x * a.y);
        }
    return sum;
}

// By the divergence theorem: right where the triangles close around it and all face outward.
double Volume(const W3d_Mesh& mesh) {
    double sum = 0;
    for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
        const Vec3 &a = mesh.vertices[mesh.triangles[t]].at, &b = mesh.vertices[mesh.triangles[t + 1]].at,
                   &c = mesh.vertices[mesh.triangles[t + 2]].at;
        sum += static_cast<double>(Dot(a, Facing(a, b, c))) / 6;
    }
    return sum;
}

void Expect_Normals_On_Their_Sides(const W3d_Mesh& mesh) {
    for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
        const auto corner = [&](std::size_t k) { return mesh.vertices[mesh.triangles[t + k]]; };
        const Vec3 facing = Facing(corner(0).at, corner(1).at, corner(2).at);
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_NEAR(Length(corner(k).normal), 1, 1e-5);
            EXPECT_GE(Dot(facing, corner(k).normal), -1e-6f) << "triangle " << t / 3;
        }
    }
}

TEST(Solid_Mesh, Sheet_With_A_Gap) {
    const std::vector<float> columns = {-1, -0.5f, 0.5f, 2, 3}, rows = {-1, 0, 2, 3};
    W3d solid = Sheet_Over(columns, rows, [](float x, float z) { return x == 0.5f && z == 0 ? gap : 2 * x - z; });
    solid.vertices.insert(solid.vertices.begin(), {7, 7, 7});  // one of no sheet
    solid.sheets[0].first = 1;
    for (const bool backward : {false, true}) {
        if (backward)
            for (Vec3& at : solid.vertices) at = {at[0] * -1, at[1], at[2]};
        const W3d_Mesh mesh = Mesh_Of(solid);
        EXPECT_EQ(mesh.vertices.size(), 20u);
        EXPECT_EQ(mesh.triangles.size(), 3u * 2 * (12 - 4));
        EXPECT_EQ(mesh.sheet_triangles, mesh.triangles.size());
        EXPECT_EQ(mesh.edges.size(), 2u * (4 * 4 + 5 * 3 - 6));  // but for the four at the gap, and two at the border
        for (const std::uint32_t corner : mesh.triangles) {
            const Vec3 wanted = Unit({backward ? 2.0f : -2.0f, 1, 1}, {});  // of a plane
            for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(mesh.vertices[corner].normal[k], wanted[k], 1e-6);
            EXPECT_EQ(mesh.vertices[corner].colour, solid.materials[0]);
        }
        Expect_Normals_On_Their_Sides(mesh);
    }
}

// Half of a ball: the normals point away from its middle.
TEST(Solid_Mesh, Normals_Of_A_Round_Sheet) {
    const W3d_Mesh mesh =
        Mesh_Of(Sheet_Over(Evenly(-1, 1, 201), Evenly(-1, 1, 201), [](float x, float z) { return std::sqrt(4 - x * x - z * z); }));
    for (const W3d_Vertex& vertex : mesh.vertices) EXPECT_GT(Dot(vertex.normal, vertex.at), 2 * 0.9998f);
    const std::set<std::uint32_t> ends(mesh.edges.begin(), mesh.edges.end());
    EXPECT_EQ(mesh.edges.size(), 2u * 2 * 68 * 200);  // of more than 200 lines every third one, and the last
    EXPECT_LE(*ends.rbegin(), 201u * 201 - 1);
}

TEST(Solid_Mesh, Rods) {
    for (const Vec3& to : {Vec3{3, 0, 0}, Vec3{0, 0, -3}, Vec3{0, 3, 0}, Vec3{1, 2, 2}}) {
        W3d solid;
        solid.rods.push_back({{0, 0, 0}, to, 0.2f, 0.1f, 20, 8, 6});
        const W3d_Mesh mesh = Mesh_Of(solid);
        EXPECT_EQ(mesh.triangles.size(), 3u * (20 * 8 * 2 + 2 * 6));
        EXPECT_EQ(mesh.sheet_triangles, 0u);
        Expect_Normals_On_Their_Sides(mesh);
        const double octagon = 2 * std::numbers::sqrt2;  // area of one in a circle of radius 1
        EXPECT_NEAR(Volume(mesh), octagon * 3 / 3 * (0.04 + 0.02 + 0.01), 1e-5);
    }
}

TEST(Solid_Mesh, Letters_Have_The_Area_Of_Their_Outlines) {
    for (int font = 101; font <= 104; ++font) {
        const Text_Style style{.font = font, .width = 0.6, .height = 1};
        for (Outline& shape : Outlines_Of_Text(
                 "ABDOPQR abdegopq 0123456789 .,:;!?%&@#$(){}[] \u2593 2\u03b8 \u00e5\u00c5\u00fc \u03a6\u0398\u00b0", style)) {
            const Outline letter = Directed(std::move(shape));
            double sum = 0;
            for (const Flat_Triangle& t : Triangles_Of(letter)) sum += Area({{t[0], t[1], t[2]}});
            EXPECT_GT(Area(letter), 0);
            EXPECT_NEAR(sum, Area(letter), 1e-9) << "font " << font << ", corners " << letter[0].size();
        }
    }
    const std::vector<Point> square = {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, hole = {{1, 1}, {3, 1}, {3, 3}, {1, 3}},
                             island = {{1.5, 1.5}, {2.5, 1.5}, {2.5, 2.5}, {1.5, 2.5}};
    double sum = 0;
    for (const Flat_Triangle& t : Triangles_Of(Directed({hole, island, square}))) sum += Area({{t[0], t[1], t[2]}});
    EXPECT_DOUBLE_EQ(sum, 16 - 4 + 1);
    const Outline eight = Directed({{{0, 0}, {2, 2}, {2, 0}, {0, 2}}});  // crosses itself: any triangles, but an end
    EXPECT_LE(Triangles_Of(eight).size(), 2u);
}

TEST(Solid_Mesh, Texts_Stand_In_Their_Plane) {
    const std::string words = "2\u03b8 80.0";
    const double across = 0.2 / 0.6, up = 0.3;  // of an em: letters are spaced by 0.6 em where all have one width
    const Text_Style em{.font = 102, .width = 1, .height = 1};
    double area = 0;
    for (Outline& letter : Outlines_Of_Text(words, em)) area += across * up * Area(Directed(std::move(letter)));
    const double width = across * Extent_Of_Text(words, em);
    struct Case {
        Vec3 along, upward, forward;  // the last as its reader looks
    };
    for (const Case& c :
         {Case{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}, Case{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, Case{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}}) {
        W3d solid;
        solid.texts.push_back({words, 102, {1, 2, 3}, c.along, c.upward, 0.2f, 0.3f, 0.04f, 6});
        const W3d_Mesh mesh = Mesh_Of(solid);
        Expect_Normals_On_Their_Sides(mesh);
        EXPECT_NEAR(Volume(mesh), area * 0.04, 1e-5);
        for (const W3d_Vertex& vertex : mesh.vertices) {
            const Vec3 from = Minus(vertex.at, {1, 2, 3});
            EXPECT_LE(std::fabs(Dot(from, c.along)), 0.5 * width);
            EXPECT_GT(Dot(from, c.upward), -0.1f);
            EXPECT_NEAR(std::fabs(Dot(from, c.forward)), 0.02f, 1e-6f);
        }
        EXPECT_EQ(mesh.vertices[0].normal, Moved({}, -1, c.forward));
    }
}

}  // namespace
}  // namespace vntl
