// Surfaces and lines in space, on pixels, against rays from the eye through the mesh.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <random>

#include "drawing/drawn.hpp"
#include "drawing/presentation_3d.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {
namespace {

constexpr Colour ground = WRGB(250, 250, 250), least = WRGB(0, 20, 200), most = WRGB(240, 200, 0), lattice = WRGB(255, 255, 255);
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr unsigned looks[] = {2065, 513, 33, 17};

struct Field {
    std::vector<float> x, y, z;
    Grid_Data Grid() const { return {x, y, z}; }
    float& At(std::size_t i, std::size_t j) { return z[j * x.size() + i]; }
    double Share_X(std::size_t i) const { return (static_cast<double>(x[i]) - 10) / 30; }  // of the ends of the axes below
    double Share_Y(std::size_t j) const { return (static_cast<double>(y[j]) - 300) / 200; }
};

// Of uneven steps from 10 to 40 and from 300 to 500; values from 0 to 1.
template <class Value>
Field Field_Of(std::size_t nx, std::size_t ny, unsigned seed, const Value& value) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> step(0.4f, 1.6f);
    const auto axis = [&](std::size_t n, float first, float last) {
        std::vector<float> places = {0};
        while (places.size() < n) places.push_back(places.back() + step(random));
        for (float& place : places) place = first + (last - first) * place / places.back();
        return places;
    };
    Field field{axis(nx, 10, 40), axis(ny, 300, 500), {}};
    for (const float y : field.y)
        for (const float x : field.x) field.z.push_back(std::clamp(value((x - 10) / 30, (y - 300) / 200), 0.0f, 1.0f));
    return field;
}

float Egg_Box(float x, float y) { return 0.5f + 0.5f * std::sin(9 * x) * std::sin(9 * y); }

struct View {
    float rotation, elevation;
    Bitmap bitmap;
    Graphics g;
    Presentation_3D space;

    View(float turn, float rise, float z1 = 0, float z2 = 1, int width = 480, int height = 360)
        : rotation(turn), elevation(rise), bitmap(width, height), g(bitmap.Drawing()), space(g) {
        g.IGrPaletteBack(ground);
        g.IGrClear();
        Set(space, z1, z2);
    }
    void Set(Presentation_3D& other, float z1 = 0, float z2 = 1) const {
        other.IPgArea(0.1f, 0.1f, 0.9f, 0.9f);
        other.IPgUnitsXYZ(300, 500, 10, 40, z1, z2);
        other.IPgRotation(rotation);
        other.IPgElevation(elevation);
    }
    void Draw(const Field& field, unsigned look) const { space.IPgSurf3Data(field.Grid(), {look, lattice, least, most}); }
    int Count(Colour colour) const {
        int count = 0;
        for (int y = 0; y < bitmap.Height(); ++y)
            for (int x = 0; x < bitmap.Width(); ++x) count += bitmap.Pixel(x, y) == colour;
        return count;
    }
};

// A way from the eye, which stands four edges from the middle of the cube, through a place on the page: it meets the upright plane through
// the middle where right is across, and up the height times the cosine of the elevation.
struct Ray {
    Space_Point eye, step;
};
class Rays {
public:
    explicit Rays(const View& view) : turn_(view.rotation * std::numbers::pi / 180), rise_(view.elevation * std::numbers::pi / 180) {
        const Space_Point right = In_Cube({0.5, 0, 0}), up = In_Cube({0, 0, 0.5});
        const auto seen = [&](const Space_Point& p) { return view.space.To_Device(300 + 200 * p[0], 10 + 30 * p[1], p[2]); };
        middle_ = seen({0.5, 0.5, 0.5});
        scale_ = {2 * (seen(right).x - middle_.x), 2 * (seen(up).y - middle_.y) / std::cos(rise_)};
        height_ = view.bitmap.Height();
    }
    Ray Through(double x, double y) const {  // pixels, from the upper left corner
        const double a = (x - middle_.x) / scale_.x, up = (height_ - y - middle_.y) / scale_.y;
        const double away = 4 / std::cos(rise_);
        const Space_Point eye = In_Cube({0, -away, away * std::tan(rise_)}), at = In_Cube({a, 0, up / std::cos(rise_)});
        return {eye, {at[0] - eye[0], at[1] - eye[1], at[2] - eye[2]}};
    }

private:
    Space_Point In_Cube(const Space_Point& p) const {  // from across, away and upward as seen
        return {0.5 - p[0] * std::sin(turn_) + p[1] * std::cos(turn_), 0.5 + p[0] * std::cos(turn_) + p[1] * std::sin(turn_), 0.5 + p[2]};
    }
    double turn_, rise_, height_ = 0;
    Point middle_{}, scale_{};
};

// The way along a ray to a triangle, in double precision: the one solution of three equations by determinants.
std::optional<double> Meets(const Ray& ray, const Space_Point& a, const Space_Point& b, const Space_Point& c) {
    const auto minus = [](const Space_Point& p, const Space_Point& q) { return Space_Point{p[0] - q[0], p[1] - q[1], p[2] - q[2]}; };
    const auto det = [](const Space_Point& p, const Space_Point& q, const Space_Point& r) {
        return p[0] * (q[1] * r[2] - q[2] * r[1]) - p[1] * (q[0] * r[2] - q[2] * r[0]) + p[2] * (q[0] * r[1] - q[1] * r[0]);
    };
    const Space_Point u = minus(b, a), v = minus(c, a), back = {-ray.step[0], -ray.step[1], -ray.step[2]}, w = minus(ray.eye, a);
    const double all = det(u, v, back);
    const double s = det(w, v, back) / all, t = det(u, w, back) / all;
    if (!(s >= 0 && t >= 0 && s + t <= 1)) return {};
    return det(u, v, w) / all;
}

struct Hit {
    std::size_t cell = 0;
    double way = std::numeric_limits<double>::infinity(), height = 0;
};

Hit Nearest(const Field& field, const Ray& ray) {
    Hit hit;
    const auto corner = [&](std::size_t i, std::size_t j) {
        return Space_Point{field.Share_Y(j), field.Share_X(i), static_cast<double>(field.z[j * field.x.size() + i])};
    };
    for (std::size_t j = 0; j + 1 < field.y.size(); ++j) {
        for (std::size_t i = 0; i + 1 < field.x.size(); ++i) {
            const std::array<Space_Point, 4> c = {corner(i, j), corner(i + 1, j), corner(i + 1, j + 1), corner(i, j + 1)};
            if (!std::isfinite(c[0][2] + c[1][2] + c[2][2] + c[3][2])) continue;
            const std::size_t from = std::fabs(c[0][2] - c[2][2]) <= std::fabs(c[1][2] - c[3][2]) ? 0 : 1;
            for (const std::size_t side : {from + 1, (from + 3) % 4}) {
                const auto way = Meets(ray, c[from], c[from + 2], c[side]);
                if (way && *way < hit.way) hit = {j * field.x.size() + i + 1, *way, ray.eye[2] + *way * ray.step[2]};
            }
        }
    }
    return hit;
}

Colour Mixed(double share) {
    const auto channel = [&](unsigned a, unsigned b) {
        return static_cast<unsigned>(std::lround(a + share * (static_cast<double>(b) - a)));
    };
    return WRGB(channel(Red(least), Red(most)), channel(Green(least), Green(most)), channel(Blue(least), Blue(most)));
}

// The colour of a hit, where the look tells it: that of its cell, of its band, or the one colour.
std::optional<Colour> Wanted(const Field& field, const Hit& hit, unsigned look) {
    if (hit.cell == 0) return ground;
    if (look == 513) return least;
    const std::size_t at = hit.cell - 1, n = field.x.size();
    if (look == 33) return Mixed(0.25 * (static_cast<double>(field.z[at]) + field.z[at + 1] + field.z[at + n] + field.z[at + n + 1]));
    const double band = 10 * hit.height, nearest = std::fabs(band - std::round(band));
    return nearest < 1e-6 ? std::optional<Colour>() : Mixed(std::min(std::floor(band), 9.0) / 9);
}

// Mixed with the colour of the lattice.
bool Whitened(Colour wanted, Colour seen) {
    const auto share = [&](unsigned from, unsigned to) { return (to - static_cast<double>(from)) / (255.0 - from); };
    const double red = share(Red(wanted), Red(seen));
    return red > 0 && std::fabs(share(Green(wanted), Green(seen)) - red) < 0.02 && std::fabs(share(Blue(wanted), Blue(seen)) - red) < 0.02;
}

TEST(Surface, EveryPixelShowsWhatARayMeetsFirst) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> share(0, 1);
    const auto any = [&](float, float) { return share(random); };
    Field holes = Field_Of(9, 12, 5, any), falling = Field_Of(11, 7, 6, any);
    holes.At(4, 5) = nan, holes.At(0, 0) = std::numeric_limits<float>::infinity(), holes.At(8, 7) = nan;
    std::reverse(falling.y.begin(), falling.y.end());
    const Field fields[] = {Field_Of(14, 12, 1, Egg_Box), Field_Of(8, 10, 2, any), Field_Of(2, 9, 3, any), holes, falling};
    int compared = 0, wrong = 0, on_lines = 0;
    for (const Field& field : fields) {
        for (const float elevation : {0.0f, 3.0f, 22.0f, 45.0f}) {
            for (const float rotation : {0.0f, 4.0f, 30.0f, 90.0f, 135.0f, 177.0f, -60.0f, -92.0f, -150.0f}) {
                const unsigned look = looks[1 + random() % 3];
                View view(rotation, elevation);
                view.Draw(field, look);
                const Rays rays(view);
                for (int k = 0; k < 250; ++k) {
                    const int x = static_cast<int>(share(random) * 479), y = static_cast<int>(share(random) * 359);
                    const Hit hit = Nearest(field, rays.Through(x + 0.5, y + 0.5));
                    const auto wanted = Wanted(field, hit, look);
                    bool plain = wanted.has_value();  // the same all around the pixel
                    for (int around = 0; plain && around < 8; ++around) {
                        const double angle = around * std::numbers::pi / 4;
                        const Hit other = Nearest(field, rays.Through(x + 0.5 + 1.6 * std::cos(angle), y + 0.5 + 1.6 * std::sin(angle)));
                        plain = other.cell == hit.cell && Wanted(field, other, look) == wanted;
                    }
                    if (!plain) continue;
                    ++compared;
                    const Colour seen = view.bitmap.Pixel(x, y);
                    wrong += seen != *wanted && !Whitened(*wanted, seen);
                    on_lines += seen != *wanted;
                }
            }
        }
    }
    EXPECT_GT(compared, 20000);
    EXPECT_EQ(wrong, 0);
    EXPECT_LT(on_lines, compared / 200);  // of slopes that are seen edge on, between the rays
}

double Area(const std::vector<Point>& corners) {
    double twice = 0;
    for (std::size_t k = 0; k < corners.size(); ++k) {
        const Point a = corners[k], b = corners[(k + 1) % corners.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return 0.5 * std::fabs(twice);
}

// A plane that rises along x: of ten level bands each is as large as it is seen, but for what the lattice covers.
TEST(Surface, EachLookCoversItsAreasInItsColours) {
    const Field plane = Field_Of(40, 30, 7, [](float x, float) { return x; });
    for (const unsigned look : looks) {
        View view(35, 30, 0, 1, 1200, 800);
        view.Draw(plane, look);
        const auto seen = [&](double x, double y) { return view.space.To_Device(300 + 200 * y, 10 + 30 * x, x); };
        const auto strip = [&](double x1, double x2) { return Area({seen(x1, 0), seen(x2, 0), seen(x2, 1), seen(x1, 1)}); };
        const bool has_lattice = look == 513 || look == 17;
        EXPECT_NEAR((1200 * 800 - view.Count(ground)) / strip(0, 1), 1, 0.02) << look;
        EXPECT_EQ(view.Count(lattice) > 5000, has_lattice) << look;
        for (int band = 0; band < 10 && look != 33 && look != 513; ++band) {
            const Point middle = seen(0.1 * band + 0.05, 0.5);
            const Colour colour =
                look == 17 ? Mixed(band / 9.0) : view.bitmap.Pixel(static_cast<int>(middle.x), 800 - static_cast<int>(middle.y));
            EXPECT_NEAR(view.Count(colour) / strip(0.1 * band, 0.1 * band + 0.1), has_lattice ? 0.7 : 1, has_lattice ? 0.15 : 0.03) << band;
        }
        EXPECT_TRUE(look != 513 || std::fabs(view.Count(least) / strip(0, 1) - 0.7) < 0.15);
        for (std::size_t i = 0; look == 33 && i + 1 < plane.x.size(); ++i)
            EXPECT_NEAR(view.Count(Mixed(0.5 * (plane.Share_X(i) + plane.Share_X(i + 1)))) / strip(plane.Share_X(i), plane.Share_X(i + 1)),
                        1, 0.15);
    }
}

// The light comes from the left above the viewer, wherever the cube has turned.
TEST(Surface, SlopesTowardTheLightAreBrighter) {
    const auto brightness = [](float rotation, float slope_x, float slope_y) {
        View view(rotation, 30);
        view.space.IPgSurf3Data(
            Field_Of(5, 5, 1, [&](float x, float y) { return 0.5f + slope_x * (x - 0.5f) + slope_y * (y - 0.5f); }).Grid(),
            {2065, lattice, WRGB(100, 100, 100), WRGB(100, 100, 100)});
        const Point at = view.space.To_Device(400, 25, 0.5);
        return Red(view.bitmap.Pixel(static_cast<int>(at.x), 360 - static_cast<int>(at.y)));
    };
    EXPECT_GT(brightness(0, 0.9f, 0), brightness(0, -0.9f, 0));  // rises to the right: faces left
    EXPECT_GT(brightness(0, 0, 0.9f), brightness(0, 0, -0.9f));  // rises away: faces the viewer
    EXPECT_EQ(brightness(0, 0.9f, 0), brightness(180, -0.9f, 0));
    EXPECT_EQ(brightness(0, 0.9f, 0), brightness(90, 0, -0.9f));  // what ran away now runs to the left
}

TEST(Surface, FlatEmptyAndStrangeGrids) {
    const Field flat = Field_Of(5, 6, 1, [](float, float) { return 0.25f; });
    for (const unsigned look : looks) {
        View view(30, 30, 0.25f, 0.25f);
        view.Draw(flat, look);
        const auto seen = [&](double y, double x) { return View(30, 30).space.To_Device(y, x, 0.5); };
        const double area = Area({seen(300, 10), seen(500, 10), seen(500, 40), seen(300, 40)});
        EXPECT_NEAR((480 * 360 - view.Count(ground)) / area, 1, 0.03) << look;  // a plane halfway up
        Field holed = flat;                                                     // by one point, which takes four cells with it
        holed.At(2, 3) = nan;
        View through(30, 30, 0, 1);
        for (float& z : holed.z) z *= 2;
        through.Draw(holed, look);
        const float x1 = flat.x[1], x2 = flat.x[3], y1 = flat.y[2], y2 = flat.y[4];
        const double hole = Area({seen(y1, x1), seen(y2, x1), seen(y2, x2), seen(y1, x2)});
        EXPECT_NEAR((480 * 360 - through.Count(ground)) / (area - hole), 1, look == 513 || look == 17 ? 0.07 : 0.03)
            << look;  // half a line beyond
    }
    const auto drawn = [](const Field& field, float z1 = 0, float z2 = 1) {
        Recording_Device device;
        Graphics g(device);
        Presentation_3D space(g);
        View(30, 30).Set(space, z1, z2);
        space.IPgSurf3Data(field.Grid(), {17, lattice, least, most});
        const auto surfaces = Drawn<Recorded_Facets>(device);
        return surfaces.empty() ? 0 : surfaces.front().facets.size();
    };
    EXPECT_GT(drawn(flat), 0u);
    EXPECT_EQ(drawn({}), 0u);
    EXPECT_EQ(drawn({{10, 20}, {300, 400}, {1, 1, 1}}), 0u);               // too few values
    EXPECT_EQ(drawn({{10, 20}, {300, 400}, {1, 1, 1, nan}}), 0u);          // no whole cell
    EXPECT_EQ(drawn({{10, 10}, {nan, nan}, {1, 1, 1, 1}}), 0u);            // no places
    EXPECT_EQ(drawn({{50, 60, 70}, {300, 400}, {1, 1, 1, 1, 1, 1}}), 0u);  // beyond the axis
    EXPECT_GT(drawn({{10, 20}, {300, 400}, {-5, 7, 1e30f, -1e30f}}), 0u);  // beyond its heights, where they end
    EXPECT_EQ(drawn({{10, 20}, {300, 400}, {1, 1, 1, 1}}, nan, 1), 0u);
}

// A mesh finer than the pixels keeps the top of a reflection of one point, wherever that lies.
TEST(Surface, NoNarrowReflectionIsLostAndNoPictureGrowsWithTheGrid) {
    constexpr std::size_t points = 5000;
    std::mt19937 random(2);
    Field field = Field_Of(points, 4, 3, [](float, float) { return 0.0f; });
    for (int k = 0; k < 60; ++k) {
        const std::size_t i = k == 0 ? 0 : k == 1 ? points - 1 : random() % points, j = static_cast<std::size_t>(k) % 4;
        field.At(i, j) = 1;
        View view(k % 3 == 0 ? 0.0f : 21.0f, 22);
        view.Draw(field, k % 2 == 0 ? 33 : 2065);
        const Point top = view.space.To_Device(field.y[j], field.x[i], 1);
        int found = 0;
        for (int y = 1; y <= 12; ++y)  // at a slant its end may be finer than the samples
            for (int x = -3; x <= 2; ++x)
                found += view.bitmap.Pixel(static_cast<int>(top.x) + x, 360 - static_cast<int>(top.y) + y) != ground;
        EXPECT_GT(found, 0) << i << ' ' << j;
        field.At(i, j) = 0;
    }
    Recording_Device device;
    Graphics g(device);
    Presentation_3D space(g);
    View(40, 22).Set(space);
    space.IPgSurf3Data(Field_Of(points, 2000, 3, Egg_Box).Grid(), {513, lattice, least, most});
    EXPECT_LT(Drawn<Recorded_Facets>(device).front().facets.size(), 600'000u);
}

// Drawn at once, in halves, and again from a record: one picture.
TEST(Surface, OnePictureOnEveryDevice) {
    const Field field = Field_Of(60, 40, 8, Egg_Box);
    for (const unsigned look : looks) {
        View whole(-20, 22), replayed(-20, 22), halves(-20, 22);
        whole.Draw(field, look);
        Recording_Device device(480, 360);
        Graphics g(device);
        Presentation_3D space(g);
        whole.Set(space);
        space.IPgSurf3Data(field.Grid(), {look, lattice, least, most});
        device.Replay(replayed.bitmap.Drawing());
        for (const auto& band : halves.bitmap.Drawing().Bands()) {
            Graphics part = halves.g.On(*band);
            Presentation_3D there(part);
            whole.Set(there);
            there.IPgSurf3Data(field.Grid(), {look, lattice, least, most});
        }
        int unlike = 0;
        for (int y = 0; y < 360; ++y)
            for (int x = 0; x < 480; ++x)
                unlike += whole.bitmap.Pixel(x, y) != replayed.bitmap.Pixel(x, y) || whole.bitmap.Pixel(x, y) != halves.bitmap.Pixel(x, y);
        EXPECT_EQ(unlike, 0) << look;
    }
}

// --- walls, frame and lines ------------------------------------------------------------------------------------------------------

struct Record {
    Recording_Device device;
    Graphics g{device};
    Presentation_3D space{g};
    Record(float rotation, float elevation) { View(rotation, elevation).Set(space); }
};

// A wall is seen from inside where a ray from the eye to its middle passes through the cube: then it lies behind the cube's middle or
// beside it. The edges before all are those that only walls which are not drawn have in common.
TEST(Walls, ThoseAwayFromTheEyeAndTheEdgesBeforeThem) {
    const struct {
        float rotation, elevation;
        std::size_t walls, front;
    } cases[] = {{0, 22, 4, 1}, {0, 0, 4, 0},    {3, 22, 4, 1},  {30, 22, 3, 3},
                 {30, 0, 3, 1}, {-45, 45, 3, 3}, {90, 10, 4, 1}, {150, 22, 3, 3}};
    for (const auto& c : cases) {
        Record view(c.rotation, c.elevation);
        view.space.IPgWalls(1, 2, 3);
        const auto walls = Drawn<Recorded_Fill>(view.device);
        ASSERT_EQ(walls.size(), c.walls) << c.rotation;
        EXPECT_EQ(walls[0].colour, 1u);
        EXPECT_EQ(walls[1].colour, 2u);
        EXPECT_EQ(walls.back().colour, 3u);
        view.space.IPgFrame(Presentation_3D::Edges::front);
        EXPECT_EQ(Drawn<Recorded_Line>(view.device).size(), c.front) << c.rotation << ' ' << c.elevation;
        view.space.IPgFrame(Presentation_3D::Edges::back);
        EXPECT_EQ(Drawn<Recorded_Line>(view.device).size(), 12u);
    }
}

TEST(Lines, StandWhereTheirPointsAreAndEndAtTheSides) {
    const struct {
        const char* name;
        std::vector<float> x, z;
        std::vector<std::vector<std::array<double, 2>>> pieces;  // x, z
    } cases[] = {
        {"inside", {10, 20, 40}, {0, 1, 0.5f}, {{{10, 0}, {20, 1}, {40, 0.5}}}},
        {"beyond the ends", {0, 20, 60}, {0, 1, 0}, {{{10, 0.5}, {20, 1}, {40, 0.5}}}},
        {"right through", {0, 50}, {0, 1}, {{{10, 0.2}, {40, 0.8}}}},
        {"out at the top", {10, 20, 30, 40}, {0, 2, 0, 0}, {{{10, 0}, {15, 1}}, {{25, 1}, {30, 0}, {40, 0}}}},
        {"past the cube", {0, 5, 50, 60}, {-1, 5, 5, 0}, {}},
        {"a gap", {10, 20, 25, 30, 40}, {0, 1, nan, 1, 0}, {{{10, 0}, {20, 1}}, {{30, 1}, {40, 0}}}},
        {"a gap outside", {10, 20, 45, 50, 30, 40}, {0, 1, 0, nan, 1, 0}, {{{10, 0}, {20, 1}, {40, 0.2}}, {{30, 1}, {40, 0}}}},
        {"nothing", {}, {}, {}},
    };
    for (const float rotation : {0.0f, 37.0f, 90.0f, 155.0f, -60.0f, -179.0f}) {
        for (const auto& c : cases) {
            Record view(rotation, 30);
            view.g.IGrColourN(77);
            view.space.IPgXYZLine(std::vector<float>(c.x.size(), 350), c.x, c.z);
            std::vector<std::vector<Point>> lines;
            for (const Recorded_Line& line : Drawn<Recorded_Line>(view.device)) lines.push_back(line.points);
            std::vector<std::vector<Point>> wanted;
            for (const auto& piece : c.pieces) {
                wanted.emplace_back();
                for (const auto& [x, z] : piece) wanted.back().push_back(view.space.To_Device(350, x, z));
            }
            ASSERT_EQ(lines.size(), wanted.size()) << c.name;
            if (!wanted.empty() && wanted.front().front().x > wanted.back().back().x) {  // from left to right on the page
                std::reverse(wanted.begin(), wanted.end());
                for (auto& piece : wanted) std::reverse(piece.begin(), piece.end());
            }
            for (std::size_t k = 0; k < lines.size(); ++k) {
                ASSERT_EQ(lines[k].size(), wanted[k].size()) << c.name;
                for (std::size_t i = 0; i < lines[k].size(); ++i) {
                    EXPECT_NEAR(lines[k][i].x, wanted[k][i].x, 1e-3) << c.name << ' ' << rotation;
                    EXPECT_NEAR(lines[k][i].y, wanted[k][i].y, 1e-3) << c.name << ' ' << rotation;
                }
            }
        }
    }
}

// However a row of counts is turned, its places on the page go one way, end on as well: only so it is drawn at the cost of its pixels.
TEST(Lines, GoOneWayAcrossThePage) {
    const Field row = Field_Of(2000, 2, 5, [](float x, float y) { return x * 97 + y - std::floor(x * 97); });
    for (const float rotation : {0.0f, 30.0f, 88.0f, 90.0f, 94.5f, 98.2132f, 180.0f, -90.0f, -130.0f}) {
        for (const float place : {300.0f, 317.0f, 500.0f}) {
            Record view(rotation, 45);
            view.space.IPgXYZLine(std::vector<float>(2000, place), row.x, std::span(row.z).first(2000));
            const auto points = Drawn<Recorded_Line>(view.device).at(0).points;
            EXPECT_TRUE(std::is_sorted(points.begin(), points.end(), [](Point a, Point b) { return a.x < b.x; }))
                << rotation << ' ' << place;
        }
    }
}

}  // namespace
}  // namespace vntl
