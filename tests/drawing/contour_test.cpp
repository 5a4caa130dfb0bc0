// Maps of a grid against closed forms, and against a plain search for what every pixel shows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <numbers>
#include <random>
#include <set>

#include "drawing/drawn.hpp"
#include "drawing/presentation.hpp"
#include "pictures/vector_device.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {
namespace {

using Function = std::function<double(double x, double y)>;
using std::numbers::pi;
constexpr float gap = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();

struct Grid {
    std::vector<float> x, y, z;
    Grid_Data Data() const { return {x, y, z}; }
    void Make_Gap(std::size_t column, std::size_t row) { z[row * x.size() + column] = gap; }
};

// Points between two values, in even steps, or in steps of which the widest is four times as wide as the narrowest.
std::vector<float> Axis(int points, double from, double to, bool uneven = false) {
    std::vector<float> axis;
    for (int i = 0; i < points; ++i) {
        const double s = static_cast<double>(i) / (points - 1);
        axis.push_back(static_cast<float>(from + (to - from) * (uneven ? s + 0.6 * std::sin(2 * pi * s) / 6.3 : s)));
    }
    return axis;
}

Grid Make_Grid(std::vector<float> x, std::vector<float> y, const Function& f) {
    Grid grid{std::move(x), std::move(y), {}};
    for (const double v : grid.y)
        for (const double u : grid.x) grid.z.push_back(static_cast<float>(f(u, v)));
    return grid;
}

enum class Kind { lines, smooth, granulated, triangles, parts };
constexpr Kind map_kinds[] = {Kind::smooth, Kind::granulated, Kind::triangles, Kind::parts};
constexpr int parts = 3;

// Draws a grid in a plot box from 0.1 to 0.9 of the page, in 12 bands, 10 lines or a gradient. Red and green tell bands and lines.
std::vector<float> Draw(Device& device, const Grid& grid, Kind kind, int granularity = parts,
                        const std::function<void(Presentation&)>& change = {}) {
    Graphics graphics(device);
    Presentation plot(graphics);
    plot.IPgArea(0.1f, 0.1f, 0.9f, 0.9f);
    const Extremes x = Finite_Extremes(grid.x), y = Finite_Extremes(grid.y), z = Finite_Extremes(grid.z);
    plot.IPgUnitsXYZ(x.low, x.high, y.low, y.high, z.low, z.high);
    plot.IPgNewPlot(8, kind == Kind::lines ? 10 : 12, 0, 0, kind == Kind::smooth ? option_smooth : option_contoured);
    for (unsigned set = 1; set <= 12; ++set) {
        if (set <= 2 || kind >= Kind::triangles)
            plot.IPgStyle(static_cast<int>(set), {.line_colour = kind >= Kind::triangles ? set : WRGB(250 * (set - 1), 100, 0)});
    }
    std::vector<float> levels;
    for (int band = 1; band <= 12; ++band) levels.push_back(z.low + static_cast<float>(band) * (z.high - z.low) / 12);
    if (change) change(plot);
    if (kind == Kind::lines) plot.IPgContour2(grid.Data());
    if (kind == Kind::smooth || kind == Kind::granulated) plot.IPgConGrad2(grid.Data());
    if (kind >= Kind::triangles) plot.IPgConFill2(grid.Data(), levels, kind == Kind::triangles ? 1 : granularity);
    return levels;
}

double Widest_Step(const std::vector<float>& axis) {
    double widest = 0;
    for (std::size_t i = 1; i < axis.size(); ++i) widest = std::max(widest, std::fabs(static_cast<double>(axis[i] - axis[i - 1])));
    return widest;
}

// Levels k / 11 of the range. Cone: six circles in the box, three that reach two of its sides, one that reaches all. Saddle: two branches
// each. Egg box: two tops or two hollows each. Between neighbours the surface differs from a straight one by h^2/8 of its curvature.
TEST(Contours, LieWhereTheyMustAndEndAtTheBorder) {
    const struct {
        const char* name;
        double x1, x2, y1, y2;
        Function f, curvature;
        int closed, open;
    } fields[] = {
        {"plane", -3, 3, -2, 2, [](double x, double y) { return x + 0.5 * y; }, [](double, double) { return 0; }, 0, 10},
        {"cone", -3, 3, -2, 2, [](double x, double y) { return std::hypot(x, y); },
         [](double x, double y) { return 1 / (std::hypot(x, y) - 0.12); }, 6, 10},
        {"saddle", -3, 3, -2, 2, [](double x, double y) { return x * y; }, [](double, double) { return 0; }, 0, 20},
        {"egg box", 0, 2 * pi, 0, 2 * pi, [](double x, double y) { return std::sin(x) * std::sin(y); }, [](double, double) { return 1; },
         20, 0},
    };
    enum { even, uneven, falling, with_gap };
    for (const auto& field : fields) {
        for (const int variant : {even, uneven, falling, with_gap}) {
            Grid grid = Make_Grid(
                Axis(81, field.x1, field.x2, variant == uneven),
                Axis(61, variant == falling ? field.y2 : field.y1, variant == falling ? field.y1 : field.y2, variant == uneven), field.f);
            if (variant == with_gap) grid.Make_Gap(20, 15);
            const Extremes range = Finite_Extremes(grid.z);
            const double h = std::max(Widest_Step(grid.x), Widest_Step(grid.y));
            Recording_Device device;
            Draw(device, grid, Kind::lines);
            const auto x_of = [&](Point p) { return field.x1 + (p.x - 120) / 960 * (field.x2 - field.x1); };
            const auto y_of = [&](Point p) { return field.y1 + (p.y - 80) / 640 * (field.y2 - field.y1); };
            const auto may_end = [&](Point p) {
                const double from_gap = std::max(std::fabs((p.x - 120) / 12 - 20), std::fabs((p.y - 80) * 60 / 640 - 15));
                return std::min({p.x - 120, 1080 - p.x, p.y - 80, 720 - p.y}) < 1e-3 ||
                       (variant == with_gap && std::fabs(from_gap - 1) < 1e-3);
            };
            int closed = 0, open = 0;
            std::map<int, double> length;
            for (const Recorded_Line& line : Drawn<Recorded_Line>(device)) {
                const int k = static_cast<int>(1 + std::round(Red(line.pen.colour) * 9 / 250.0));
                const double level = range.low + k * (static_cast<double>(range.high) - range.low) / 11;
                std::set<std::pair<double, double>> places;
                Point last = line.points.front();
                for (const Point& p : line.points) {
                    EXPECT_NEAR(field.f(x_of(p), y_of(p)), level, h * h / 8 * field.curvature(x_of(p), y_of(p)) + 2e-6) << field.name;
                    places.emplace(p.x, p.y);
                    length[k] += std::hypot(x_of(p) - x_of(last), y_of(p) - y_of(last));
                    last = p;
                }
                const Point first = line.points.front();
                const bool is_closed = first.x == last.x && first.y == last.y;
                EXPECT_EQ(places.size(), line.points.size() - is_closed) << field.name;
                EXPECT_TRUE(is_closed || (may_end(first) && may_end(last))) << field.name << variant;
                ++(is_closed ? closed : open);
            }
            if (variant == with_gap) continue;
            EXPECT_EQ(closed, field.closed) << field.name << variant;
            EXPECT_EQ(open, field.open) << field.name << variant;
            for (int k = 2; k <= 6 && closed == 6; ++k) EXPECT_NEAR(length[k] / (2 * pi * k * std::hypot(3, 2) / 11), 1, 0.005) << k;
        }
    }
}

// Two lines around those opposite corners that the bilinear surface separates: the saddle of the second grid is at 3/8, the mean of its
// corners at 0.4.
TEST(Contours, JoinAsTheSurfaceDoes) {
    const std::tuple<float, float, bool> cases[] = {{1, 0.45f, false}, {1, 0.55f, true}, {0.6f, 0.37f, false}, {0.6f, 0.39f, true}};
    for (const auto& [opposite, level, around_high] : cases) {
        Recording_Device device;
        Draw(device, {{0, 1}, {0, 1}, {1, 0, 0, opposite}}, Kind::lines, 0, [level = level](Presentation& plot) {
            plot.IPgNewPlot(8, 1, 2, 2);
            plot.IPgUnitsXYZ(0, 1, 0, 1, 0, 2 * level);
        });
        const auto lines = Drawn<Recorded_Line>(device);
        EXPECT_EQ(lines.size(), 2u);
        for (const auto& [points, pen] : lines) {
            bool left = false, right = false, foot = false, top = false;
            for (const Point& p : points) left |= p.x<121, right |= p.x> 1079, foot |= p.y<81, top |= p.y> 719;
            EXPECT_EQ((left && foot) || (right && top), around_high) << opposite << ' ' << level;
        }
    }
}

TEST(Contours, AGridFinerThanThePictureCostsWhatShows) {
    std::mt19937 random(1);
    const Grid cone = Make_Grid(Axis(2401, -3, 3), Axis(1601, -2, 2, true), [](double x, double y) { return std::hypot(x, y); });
    const Grid noise = Make_Grid(Axis(1500, 0, 1), Axis(1000, 0, 1), [&](double, double) { return random() % 1000; });
    for (const Grid* grid : {&cone, &noise}) {
        Recording_Device device;
        Draw(device, *grid, Kind::lines);
        std::size_t points = 0;
        for (const Recorded_Line& line : Drawn<Recorded_Line>(device)) {
            const double level = (1 + std::round(Red(line.pen.colour) * 9 / 250.0)) * std::hypot(3, 2) / 11;
            points += line.points.size();
            if (grid == &noise) continue;
            for (const Point& p : line.points) EXPECT_NEAR(160 * level, std::hypot(p.x - 600, p.y - 400), 0.1);
            const Point end = line.points.back();
            const double from_border = std::min({end.x - 120, 1080 - end.x, end.y - 80, 720 - end.y});
            EXPECT_TRUE(from_border < 1e-3 || end.x == line.points.front().x) << level;
        }
        EXPECT_GT(points, 500u);
        EXPECT_LT(points, grid == &cone ? 2000u : 400'000u);
    }
}

// Places of an axis that a pixel shows: cells and where in them.
struct Shown {
    std::vector<std::pair<std::size_t, double>> places;
    bool one_cell = false;

    Shown(const std::vector<float>& axis, double side, double pixel, Kind kind) {
        const Extremes range = Finite_Extremes(axis);
        const auto value = [&](double at) { return range.low + (at - 0.1 * side) / (0.8 * side) * (range.high - range.low); };
        const auto find = [&](double v) {
            std::size_t i = 0;
            while (i + 2 < axis.size() && (axis[0] < axis[1] ? axis[i + 1] <= v : axis[i + 1] > v)) ++i;
            return std::pair(i, std::clamp((v - axis[i]) / (axis[i + 1] - axis[i]), 0.0, 1.0));
        };
        one_cell =
            kind != Kind::smooth && std::ranges::count_if(axis, [&](float v) { return v > value(pixel) && v < value(pixel + 1); }) < 2;
        const int samples = one_cell ? 1 : 24;
        for (int s = 0; s < samples; ++s) places.push_back(find(value(pixel + (s + 0.5) / samples)));
        const int cut = kind == Kind::granulated ? 1 : kind == Kind::parts ? parts : 0;
        double& at = places.front().second;
        if (one_cell && cut > 0) at = (std::min(std::floor(at * cut), cut - 1.0) + 0.5) / cut;
    }
};

double Plain_Value(const Grid_Data& grid, const Shown& across, const Shown& up, Kind kind) {
    double sum = 0, count = 0;
    for (const auto& [row, v] : up.places) {
        for (const auto& [column, u] : across.places) {
            const double a = grid.At(column, row), b = grid.At(column + 1, row), c = grid.At(column, row + 1);
            const double d = grid.At(column + 1, row + 1);
            if (!std::isfinite(a + b + c + d)) continue;
            const bool cut = kind == Kind::triangles && across.one_cell && up.one_cell;
            sum += cut ? (a + d + (u > v ? b : c)) / 3 : a * (1 - u) * (1 - v) + b * u * (1 - v) + c * (1 - u) * v + d * u * v;
            ++count;
        }
    }
    return sum / count;
}

TEST(Maps, EveryPixelOfEveryDeviceShowsItsValue) {
    constexpr int width = 240, height = 160;
    const struct {
        int columns, rows;
        bool uneven, falls;
    } cases[] = {{5, 4, false, false}, {23, 9, true, true}, {401, 5, true, false}, {601, 450, false, true}, {301, 170, true, false}};
    for (const auto& c : cases) {
        Grid grid = Make_Grid(Axis(c.columns, -2, 3, c.uneven), Axis(c.rows, c.falls ? 2 : -1, c.falls ? -1 : 2, c.uneven),
                              [](double x, double y) { return std::sin(2 * x) * std::cos(y) + 0.3 * x; });
        for (std::size_t k = 0; k < 3; ++k) grid.Make_Gap(grid.x.size() / 2 + k, grid.y.size() / 2);
        const Extremes range = Finite_Extremes(grid.z);
        for (const Kind kind : map_kinds) {
            Bitmap bitmap(width, height), again(width, height);
            const std::vector<float> levels = Draw(bitmap.Drawing(), grid, kind);
            Recording_Device recording(width, height);
            Draw(recording, grid, kind);
            recording.Replay(again.Drawing());
            std::vector<Shown> columns;
            for (int x = 0; x < width; ++x) columns.emplace_back(grid.x, width, x, kind);
            int wrong = 0, unlike = 0;
            for (int y = 0; y < height; ++y) {
                const Shown rows(grid.y, height, height - 1 - y, kind);
                for (int x = 0; x < width; ++x) {
                    const bool inside = x >= 24 && x < 216 && y >= 16 && y < 144;
                    const Colour seen = bitmap.Pixel(x, y);
                    unlike += seen != again.Pixel(x, y);
                    const double z = inside ? Plain_Value(grid.Data(), columns[static_cast<std::size_t>(x)], rows, kind) : std::nan("");
                    if (std::isnan(z))
                        wrong += seen != WRGB(255, 255, 255);
                    else if (kind < Kind::triangles)
                        wrong += std::fabs(Red(seen) - 250 * (z - range.low) / (range.high - range.low)) > 1.5 || Green(seen) != 100;
                    else
                        wrong += Red(seen) != 1 + std::min(std::ranges::count_if(levels, [&](float level) { return level <= z; }), 11L);
                }
            }
            EXPECT_EQ(unlike, 0);
            EXPECT_LE(wrong, 100) << c.columns << ' ' << c.rows << ' ' << static_cast<int>(kind);  // on the edge of a band, or of a gap
        }
    }
    const auto print = Open_Vector_Device(Vector_Format::pdf, testing::TempDir() + "map.pdf", 864, 576);
    EXPECT_NEAR(print->Finest({0, 0, 360, 288}).columns, 1000, 2);  // 200 an inch
}

// Share of the box in each band: of a plane the same, of a cone the rings between two circles while they lie in the box.
TEST(Maps, AreasOfBands) {
    const Grid plane = Make_Grid(Axis(241, 0, 1), Axis(9, 0, 1, true), [](double x, double) { return x; });
    const Grid cone = Make_Grid(Axis(121, -3, 3), Axis(81, -2, 2), [](double x, double y) { return std::hypot(x, y); });
    for (const Grid* grid : {&plane, &cone}) {
        for (const int granularity : {0, 4, 30}) {
            Recording_Device device;
            Draw(device, *grid, granularity == 0 ? Kind::triangles : Kind::parts, granularity);
            const std::vector<Colour> colours = Drawn<Recorded_Cells>(device).at(0).colours;
            for (unsigned band = 1; band <= (grid == &plane ? 12 : 6); ++band) {
                const double r = std::hypot(3, 2) / 12;  // of the first circle
                const double share = grid == &plane ? 1 / 12.0 : pi * r * r * (2 * band - 1) / 24;
                EXPECT_NEAR(static_cast<double>(std::ranges::count(colours, band)) / (960 * 640), share, 0.0015)
                    << granularity << ' ' << band;
            }
        }
    }
}

TEST(Maps, ANarrowReflectionIsSeenWhereverItLies) {
    for (int bright = 0; bright < 997; ++bright) {
        int column = 0;
        const Grid grid = Make_Grid(Axis(997, 0, 1), Axis(2, 0, 1), [&](double, double) { return column++ % 997 == bright ? 1 : 0; });
        for (const Kind kind : {Kind::smooth, Kind::granulated}) {
            Bitmap bitmap(61, 10);
            Draw(bitmap.Drawing(), grid, kind);
            unsigned reds = 0;
            for (int x = 6; x < 55; ++x) reds += Red(bitmap.Pixel(x, 5));
            EXPECT_GE(reds, bright == 0 || bright == 996 ? 3u : 10u) << bright;  // of 250 / (996 / 49), half of it at the border
        }
    }
}

TEST(Maps, WithoutAPictureNothingIsDrawn) {
    constexpr float huge = std::numeric_limits<float>::max();
    const Function f = [](double x, double y) { return x * y; };
    const Grid sound = Make_Grid(Axis(5, 1, 2), Axis(4, 1, 2), f);
    using Change = std::function<void(Presentation&)>;
    const struct {
        const char* name;
        Grid grid;
        bool lines, map;
        Change change = {};
    } cases[] = {
        {"sound", sound, true, true},
        {"no values", {}, false, false},
        {"a column", Make_Grid({1}, {1, 2, 3}, f), false, false},
        {"a row", Make_Grid({1, 2, 3}, {1}, f), false, false},
        {"values missing", {{1, 2}, {1, 2}, {1, 2, 3}}, false, false},
        {"gaps", Make_Grid({1, 2, 3}, {1, 2, 3}, [](double, double) { return gap; }), false, false},
        {"infinite", Make_Grid({1, 2, 3}, {1, 2, 3}, [](double, double) { return inf; }), false, false},
        {"infinite x", {{1, inf}, {1, 2}, {1, 2, 3, 4}}, false, false},
        {"unsorted x", {{1, 3, 2}, {1, 2}, {1, 2, 3, 4, 5, 6}}, false, false},
        {"one x", {{1, 1, 1}, {1, 2}, {1, 2, 3, 4, 5, 6}}, false, false},
        {"two alike", {{1, 1, 2, 2}, {1, 1, 2}, {1, 1, 2, 2, 1, 1, 2, 2, 1, 1, 2, 2}}, true, true},
        {"flat", {{1, 2}, {1, 2}, {5, 5, 5, 5}}, false, true},
        {"huge", {{-huge, huge}, {1, 2}, {-huge, huge, -huge, huge}}, true, false},
        {"units without extent", sound, false, false, [](Presentation& plot) { plot.IPgUnitsXYZ(1, 1, 1, 2, 1, 4); }},
        {"a box without extent", sound, false, false, [](Presentation& plot) { plot.IPgArea(0.5f, 0.1f, 0.5f, 0.9f); }},
    };
    for (const auto& c : cases) {
        for (const Kind kind : {Kind::lines, Kind::smooth, Kind::granulated, Kind::triangles, Kind::parts}) {
            Recording_Device device;
            Draw(device, c.grid, kind, parts, c.change);
            const auto maps = Drawn<Recorded_Cells>(device);
            EXPECT_EQ(!Drawn<Recorded_Line>(device).empty(), c.lines && kind == Kind::lines) << c.name;
            EXPECT_EQ(!maps.empty(), c.map && kind != Kind::lines) << c.name;
            if (c.grid.z == std::vector<float>(4, 5) && !maps.empty()) {
                EXPECT_EQ(std::ranges::count(maps[0].colours, maps[0].colours[0]), 960 * 640);
            }
        }
    }
    for (const std::vector<float>& levels : {std::vector<float>{}, {3, 2, 1}, {1, gap}}) {
        Recording_Device device;
        Draw(device, sound, Kind::lines, 0, [&](Presentation& plot) { plot.IPgConFill2(sound.Data(), levels, 4); });
        EXPECT_TRUE(Drawn<Recorded_Cells>(device).empty());
    }
}

}  // namespace
}  // namespace vntl
