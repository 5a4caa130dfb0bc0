// The model of a series against the formulas of its box, its axes on the page, and the picture of its dialogs by pixels.
#include "plot/model.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "plot/model_state.hpp"
#include "plot/polar_picture.hpp"
#include "solid/w3d_view.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {
namespace {

constexpr float nan_value = std::numeric_limits<float>::quiet_NaN();

// Columns at the squares of 1 to nx, patterns at 10, 20, 40, 80 and so on.
PlotGrid Uneven_Grid(std::size_t nx, std::size_t ny) {
    PlotGrid grid;
    for (std::size_t i = 0; i < nx; ++i) grid.grid_x.push_back(static_cast<float>((i + 1) * (i + 1)));
    for (std::size_t k = 0; k < ny; ++k) grid.grid_y.push_back(10 * std::exp2f(static_cast<float>(k)));
    for (std::size_t j = 0; j < nx * ny; ++j) grid.grid_z.push_back(static_cast<float>(j));
    grid.z_max = static_cast<float>(nx * ny - 1);
    grid.grid_y_label = "Temperature";
    return grid;
}

TEST(Model, VerticesStandInABoxEvenly) {
    PlotGrid grid = Uneven_Grid(11, 5);
    const W3d solid = Build_Model(grid, "x", WRGB(1, 2, 3));
    ASSERT_EQ(solid.vertices.size(), 55u);
    EXPECT_EQ(solid.Facets(), 40u);
    for (std::size_t k = 0; k < 5; ++k)
        for (std::size_t i = 0; i < 11; ++i) {
            const Vec3& at = solid.vertices[k * 11 + i];
            EXPECT_FLOAT_EQ(at[0], -1.5f + 0.3f * static_cast<float>(i));
            EXPECT_NEAR(at[1], static_cast<double>(k * 11 + i) * 2.5 / 54 - 2.5 / 3, 1e-6);
            EXPECT_FLOAT_EQ(at[2], -1 + 0.5f * static_cast<float>(k));
        }
    EXPECT_EQ(solid.Material(1), WRGB(1, 2, 3));
    EXPECT_NE(std::find(solid.materials.begin(), solid.materials.end(), WRGB(192, 212, 30)), solid.materials.end());
    // Without a scale everything lies on the floor; what is no number is a gap there too.
    grid.grid_z.assign(55, 7);
    grid.grid_z[3] = nan_value;
    grid.z_min = grid.z_max = 7;
    const W3d flat = Build_Model(grid, "", 0);
    for (std::size_t j = 0; j < 55; ++j) {
        const float up = flat.vertices[j][1];
        EXPECT_TRUE(j == 3 ? std::isnan(up) : up == -2.5f / 3) << j << ' ' << up;
    }
    EXPECT_TRUE(Build_Model({}, "x", 0).vertices.empty());
}

// Of uneven steps the numbers are what stands there: with 10 columns a quarter of the way is a quarter between the third and the fourth.
TEST(Model, AxesTellTheMeasuredValuesAtTheirPlaces) {
    const W3d solid = Build_Model(Uneven_Grid(10, 6), "2theta (deg)", 0);
    std::vector<std::string> texts;
    for (const W3d_Text& text : solid.texts) texts.push_back(text.text);
    EXPECT_EQ(texts, (std::vector<std::string>{"1.0", "10.8", "30.5", "60.2", "100.0", "2theta (deg)",  //
                                               "10.0", "25.0", "60.0", "140.0", "320.0", "Temperature"}));
    ASSERT_EQ(solid.rods.size(), 2u);
    for (const W3d_Rod& rod : solid.rods) {
        EXPECT_EQ(rod.radius_from, 0.025f);
        EXPECT_EQ(rod.radius_to, 0.005f);
        EXPECT_EQ(rod.from, (Vec3{rod.to[0] > rod.from[0] ? -1.5f : 1.5f, -2.5f / 3, -1}));
    }
}

using Quad = std::array<Point, 4>;

// Convex corners are apart where a side of one has the other wholly outside.
bool Apart(const Quad& a, const Quad& b) {
    for (const auto& [one, other] : {std::pair{&a, &b}, std::pair{&b, &a}})
        for (std::size_t i = 0; i < 4; ++i) {
            const Point &p = (*one)[i], &q = (*one)[(i + 1) % 4];
            const auto side = [&p, &q](const Point& c) { return (q.x - p.x) * (c.y - p.y) - (q.y - p.y) * (c.x - p.x); };
            const double inner = side((*one)[(i + 2) % 4]);
            if (std::all_of(other->begin(), other->end(), [&](const Point& c) { return side(c) * inner <= 0; })) return true;
        }
    return false;
}

// From where a window begins to show them, and from above and below that, whatever the numbers and however long the title.
TEST(Model, TheTextsOfTheAxesCoverNothing) {
    for (const float scale : {1.0f, 1000.0f, 1e9f, 1e30f}) {
        PlotGrid grid = Uneven_Grid(10, 6);
        for (float& x : grid.grid_x) x *= scale;
        for (float& y : grid.grid_y) y *= scale;
        const W3d solid = Build_Model(grid, "a title of many letters, sin(theta)/lambda (1/angstrom)", 0);
        for (const auto& [elevation, azimuth] : {std::pair{22.5, -45.0}, {10.0, -45.0}, {60.0, -45.0}, {22.5, -70.0}, {22.5, -20.0}}) {
            const W3d_Camera camera(From_Polar(elevation, azimuth, 20), 800, 600);
            std::vector<Quad> quads = {{camera.See({-1.5f, -2.5f / 3, -1}).at, camera.See({1.5f, -2.5f / 3, -1}).at,
                                        camera.See({1.5f, -2.5f / 3, 1}).at, camera.See({-1.5f, -2.5f / 3, 1}).at}};
            for (const W3d_Text& text : solid.texts) {
                const float half = text.width * static_cast<float>(text.text.size()) / 2;
                const auto corner = [&](float along, float up) {
                    Vec3 at = text.at;
                    for (std::size_t k = 0; k < 3; ++k) at[k] += along * text.along[k] + up * text.upward[k];
                    return camera.See(at).at;
                };
                quads.push_back({corner(-half, 0), corner(half, 0), corner(half, text.height), corner(-half, text.height)});
            }
            for (std::size_t i = 0; i < quads.size(); ++i)
                for (std::size_t j = 0; j < i; ++j)
                    EXPECT_TRUE(Apart(quads[i], quads[j])) << scale << ' ' << elevation << ' ' << azimuth << ' ' << i << ' ' << j;
        }
    }
}

TEST(Model, APlaceIsFoundFromItsCoordinates) {
    const Polar_Place otherwise{1, 2, 3};
    for (const Polar_Place& place : {Polar_Place{22.5f, -45, 20}, {-89.9f, 179, 2}, {0, 90, 12}, {90, 0, 5}}) {
        const Polar_Place found = Polar_Of(From_Polar(place.elevation, place.azimuth, place.distance), otherwise);
        EXPECT_NEAR(found.elevation, place.elevation, 2e-2);
        EXPECT_NEAR(place.elevation < 90 ? found.azimuth : place.azimuth, place.azimuth, 2e-2);
        EXPECT_NEAR(found.distance, place.distance, 1e-5);
    }
    for (const Vec3& none : {Vec3{0, 0, 0}, Vec3{nan_value, 1, 1}, Vec3{std::numeric_limits<float>::infinity(), 0, 0}})
        EXPECT_EQ(Polar_Of(none, otherwise).distance, 3);
}

// A line that is painted smoothly keeps more than half of its colour.
bool Alike(Colour a, Colour b) {
    const auto apart = [](unsigned p, unsigned q) { return p > q ? p - q : q - p; };
    return std::max({apart(Red(a), Red(b)), apart(Green(a), Green(b)), apart(Blue(a), Blue(b))}) < 115;
}

TEST(Model, ThePictureOfAPlaceByItsPixels) {
    constexpr Colour ground = WRGB(100, 162, 80), lamp = WRGB(220, 220, 220), own = WRGB(200, 30, 60), black = 0, blue = WRGB(0, 0, 255);
    struct Look {
        double x, y;
        Colour colour;
    };
    for (const auto& [elevation, azimuth] : {std::pair{45.0f, 0.0f}, {0.0f, 90.0f}, {-60.0f, -135.0f}, {90.0f, 180.0f}}) {
        Bitmap bitmap(polar_picture_width, polar_picture_height);
        Graphics g(bitmap.Drawing());
        Draw_Polar_Picture(g, elevation, azimuth, own);
        const double a = azimuth * 3.14159265358979 / 180, e = elevation * 3.14159265358979 / 180;
        std::vector<Look> looks = {{150, 30, black}, {75, 25, black},   {30, 50, black},
                                   {5, 5, ground},   {187, 62, ground}, {295, 95, ground}};
        looks.push_back({75 + 40 * std::cos(0.6), 50 + 40 * std::sin(0.6), black});
        looks.push_back({225 + 40 * std::cos(0.3), 50 + 40 * std::sin(0.3), black});
        for (const double x : {75, 225})
            looks.insert(looks.end(), {{x, 50, own}, {x - 6, 50, blue}, {x + 6, 50, blue}, {x, 46, blue}, {x, 54, blue}});
        for (const Point at : {Point{75 + 40 * std::sin(a), 50 - 40 * std::cos(a)}, {225 + 40 * std::cos(e), 50 + 40 * std::sin(e)}})
            looks.insert(looks.end(), {{at.x, at.y, lamp}, {at.x - 5, at.y, blue}, {at.x + 5, at.y, blue}, {at.x, at.y - 5, blue}});
        // From the lower left; a line lies within a pixel of its place.
        for (const Look& look : looks) {
            bool seen = false;
            for (int dx = -1; dx <= 1; ++dx)
                for (int dy = -1; dy <= 1; ++dy)
                    seen |= Alike(bitmap.Pixel(static_cast<int>(look.x) + dx, 99 - static_cast<int>(look.y) + dy), look.colour);
            EXPECT_TRUE(seen) << look.x << ' ' << look.y << " at " << elevation << ' ' << azimuth;
        }
    }
}

}  // namespace
}  // namespace vntl
