// Metafiles, played record by record, beside what a recording device got by the same calls.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <numbers>

#include "pictures/metafile_player.hpp"
#include "pictures/vector_device.hpp"

namespace vntl {
namespace {

struct Format {
    const char* name;
    bool wmf, old;
    bool Round_Ends() const { return wmf || old; }
};
constexpr Format formats[] = {{"EMF", false, false}, {"EMF of old systems", false, true}, {"WMF", true, false}};

using Routine = std::function<void(Device&)>;

Drawing Written(const Format& format, double width, double height, const Routine& draw) {
    const std::string file = testing::TempDir() + "vantrelo_" + testing::UnitTest::GetInstance()->current_test_info()->name() + ".emf";
    Hardcopy_Options options;
    options.old_metafile = format.wmf;
    options.old_systems = format.old;
    const auto device = Open_Metafile(file, width, height, options);
    draw(*device);
    EXPECT_TRUE(device->Close().ok());
    std::ifstream in(file, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    std::filesystem::remove(file);
    Drawing drawing = format.wmf ? Play_Wmf(bytes) : Play_Emf(bytes);
    EXPECT_NEAR(drawing.width, width, 0.1);
    EXPECT_NEAR(drawing.height, height, 0.1);
    for (const Shape& shape : drawing.shapes)
        for (const Point& p : shape.points)
            EXPECT_TRUE(p.x > -0.1 && p.x < width + 0.1 && p.y > -0.1 && p.y < height + 0.1) << p.x << ' ' << p.y;
    return drawing;
}

TEST(Metafile, ShapesAsTheyWereDrawn) {
    for (const Format& format : formats) {
        for (const double size : {900.0, 2700.0}) {  // which needs more than 16 bits at 1/20 point
            SCOPED_TRACE(std::string(format.name) + ' ' + std::to_string(size));
            Recording_Device recording(size, size * 2 / 3);
            Draw_Shapes(recording);
            std::vector<Shape> expected = Shapes_Of(recording);
            std::erase_if(expected, [](const Shape& s) { return s.colour == WRGB(5, 5, 5); });
            const Drawing drawing = Written(format, size, size * 2 / 3, Draw_Shapes);
            const double exact = format.Round_Ends() ? std::max(0.05, size / 32767) : 0.05;
            Same_Shapes(drawing.shapes, expected, exact);
        }
    }
}

// Letters of fixed pitch are 0.6 em wide, whatever they are.
TEST(Metafile, Texts) {
    struct Case {
        std::string text;
        int font;
        std::u32string shown;
        const char* face;
        std::u32string shown_in_wmf = shown;
        const char* first_face_in_wmf = face;
    };
    const std::u32string angstrom = U"λ = 1.5406 Å, d ≤ 2 – −1", long_title = std::u32string(89, 'x') + U"%%" + std::u32string(89, 'y');
    const Case cases[] = {{"2θ (°)", 101, U"2θ (°)", "Courier New"},
                          {"λ = 1.5406 Å, d ≤ 2 – −1", 102, angstrom, "Arial", angstrom, "Symbol"},
                          {"2q l D f 1", 104, U"2θ λ Δ φ 1", "Arial"},
                          {"100%% \\x {a} & <b> \"\xe4", 101, U"100%% \\x {a} & <b> \"ä", "Courier New"},
                          {std::string(long_title.begin(), long_title.end()), 101, long_title, "Courier New"},
                          {"Ж-𝜃", 103, U"Ж-𝜃", "Times New Roman", U"?-?"}};
    struct Expected {
        Case the;
        Text_Style style;
        Point at;
        double width;
    };
    for (const Format& format : formats) {
        std::vector<Expected> texts;
        const Drawing drawing = Written(format, 1600, 1600, [&](Device& d) {
            for (const Case& the : cases)
                for (const int justify : {0, 1, 2})
                    for (const double angle : {0.0, 90.0, -90.0}) {
                        const Text_Style style{the.font, justify, 3, 5, angle, static_cast<Justify>(justify), WRGB(200, 10, 30)};
                        const Point at{600 + 8.0 * static_cast<double>(texts.size()), 1000 - 8.0 * static_cast<double>(texts.size())};
                        d.Text(at, the.text, style);
                        texts.push_back({the, style, at, d.Text_Width(the.text, style)});
                    }
        });
        ASSERT_EQ(drawing.shapes.size(), texts.size());
        for (std::size_t k = 0; k < texts.size(); ++k) {
            SCOPED_TRACE(std::string(format.name) + ": " + texts[k].the.text);
            const auto& [the, style, at, width] = texts[k];
            const Shape& shown = drawing.shapes[k];
            EXPECT_TRUE(shown.words == (format.wmf ? the.shown_in_wmf : the.shown));
            EXPECT_EQ(shown.face, format.wmf ? the.first_face_in_wmf : the.face);
            EXPECT_EQ(shown.colour, style.colour);
            EXPECT_EQ(shown.style, style.style);
            EXPECT_EQ(shown.angle, style.angle);
            EXPECT_NEAR(shown.size, 5, 0.05);
            EXPECT_NEAR(shown.advance, width, 0.1);
            const double letters = static_cast<double>(the.shown.size());
            EXPECT_NEAR(width, the.font == 101 ? 0.6 * 5 * letters : width, 0.01 * width);
            const double back = static_cast<int>(style.justify) * 0.5 * width, turn = style.angle * std::numbers::pi / 180;
            EXPECT_LT(std::hypot(shown.points[0].x - at.x + back * std::cos(turn), shown.points[0].y - at.y + back * std::sin(turn)), 0.15);
        }
    }
}

// Along a straight line each dash lies where its pattern says. Pens with round ends reach half their width further; dashes of wide ones are
// areas.
TEST(Metafile, DashesAreLines) {
    for (const Format& format : formats) {
        for (const Line_Style style : {Line_Style::dotted, Line_Style::dashed, Line_Style::dot_dash, Line_Style::dot_dot_dash}) {
            for (const double width : {1.0, 5.0}) {
                SCOPED_TRACE(std::string(format.name) + ' ' + std::to_string(static_cast<int>(style)) + ' ' + std::to_string(width));
                const Drawing drawing = Written(format, 900, 600, [&](Device& d) {
                    d.Polyline(std::vector<Point>{{100, 300}, {250, 300}, {251, 300}, {700, 300}}, {WRGB(1, 2, 3), width, style});
                });
                std::vector<std::pair<double, double>> dashes;
                for (const Shape& shape : drawing.shapes) {
                    const auto [low, high] = std::minmax_element(shape.points.begin(), shape.points.end(),
                                                                 [](const Point& a, const Point& b) { return a.x < b.x; });
                    const double reach = shape.kind == Shape::line && format.Round_Ends() ? shape.size / 2 : 0;
                    EXPECT_EQ(shape.kind == Shape::area, format.Round_Ends() && width > 1);
                    EXPECT_EQ(shape.colour, WRGB(1, 2, 3));
                    for (const Point& p : shape.points)
                        EXPECT_NEAR(std::fabs(p.y - 300), shape.kind == Shape::area ? 0.75 * width / 2 : 0, 0.03);
                    if (!dashes.empty() && low->x - reach < dashes.back().second + 0.1)
                        dashes.back().second = high->x + reach;  // goes on at a corner
                    else
                        dashes.emplace_back(low->x - reach, high->x + reach);
                }
                const auto pattern = Dash_Pattern(style);
                double from = 100;
                for (std::size_t k = 0; k < dashes.size(); ++k) {
                    const double to = std::min(700.0, from + 0.75 * pattern[2 * k % pattern.size()]);
                    if (to - from > 0.75) {
                        EXPECT_NEAR(dashes[k].first, from, 0.08) << k;
                        EXPECT_NEAR(dashes[k].second, to, 0.08) << k;
                    }
                    from = to + 0.75 * pattern[(2 * k + 1) % pattern.size()];
                }
                EXPECT_GE(from, 700);
            }
        }
    }
}

// The images lie round the cells without a colour, of which none is covered; the other ones are covered once, in their colour.
TEST(Metafile, CellsWithGaps) {
    constexpr int columns = 7, rows = 5;
    std::vector<Colour> colours;
    for (unsigned k = 0; k < columns * rows; ++k) colours.push_back(k % 9 == 4 || k == 30 || k == 31 ? no_colour : WRGB(7 * k, 200 - k, k));
    const Rect rect{100, 200, 310, 350};
    for (const Format& format : formats) {
        const Drawing drawing = Written(format, 900, 600, [&](Device& d) { d.Cells({rect, columns, rows, colours}); });
        for (int k = 0; k < columns * rows; ++k) {
            const Point middle{rect.x1 + (k % columns + 0.5) * 30, rect.y1 + (k / columns + 0.5) * 30};
            std::vector<Colour> covering;
            for (const Shape& image : drawing.shapes) {
                const Point &a = image.points[0], &b = image.points[1];
                if (middle.x < a.x || middle.x > b.x || middle.y > a.y || middle.y < b.y) continue;
                const auto column = static_cast<int>((middle.x - a.x) / (b.x - a.x) * image.columns);
                const auto row = static_cast<int>((middle.y - b.y) / (a.y - b.y) * image.rows);
                covering.push_back(image.colours[static_cast<std::size_t>(row * image.columns + column)]);
            }
            const Colour own = colours[static_cast<std::size_t>(k)];
            EXPECT_EQ(covering, own == no_colour ? std::vector<Colour>{} : std::vector<Colour>{own}) << format.name << ' ' << k;
        }
    }
}

// Lines and areas of more corners than a record takes: all are there, and the parts of an area add up (shoelace formula).
TEST(Metafile, ManyCorners) {
    std::vector<Point> comb;
    for (int k = 0; k < 20'000; ++k) {
        comb.push_back({50 + 0.04 * k, 100});
        comb.push_back({50 + 0.04 * k, 500.0 + k % 7});
    }
    for (const Format& format : formats) {
        const Drawing line = Written(format, 900, 600, [&](Device& d) { d.Polyline(comb, {WRGB(1, 2, 3)}); });
        std::vector<Point> joined;
        for (const Shape& part : line.shapes)
            joined.insert(joined.end(), part.points.begin() + (joined.empty() ? 0 : 2), part.points.end());
        ASSERT_EQ(joined.size(), comb.size()) << format.name;
        for (std::size_t k = 0; k < comb.size(); ++k) ASSERT_LT(std::hypot(joined[k].x - comb[k].x, joined[k].y - comb[k].y), 0.05) << k;

        std::vector<Point> teeth = comb;
        teeth.push_back({850, 90});
        teeth.push_back({50, 90});
        std::vector<Point> flat(50'000, {300, 30});
        flat.insert(flat.end(), {{400, 30}, {400, 60}});
        const auto area = [](const std::vector<Point>& corners) {
            double sum = 0;
            for (std::size_t k = 0; k < corners.size(); ++k) {
                const Point &a = corners[k], &b = corners[(k + 1) % corners.size()];
                sum += 0.5 * (a.x * b.y - b.x * a.y);
            }
            return std::fabs(sum);
        };
        for (const auto& corners : {teeth, flat}) {
            const Drawing areas = Written(format, 900, 600, [&](Device& d) { d.Fill(corners, WRGB(1, 2, 3)); });
            double sum = 0;
            for (const Shape& part : areas.shapes) sum += area(part.points);
            EXPECT_NEAR(sum / area(corners), 1, 0.02) << format.name << ' ' << corners.size();
            EXPECT_LE(std::max(areas.most_corners, line.most_corners), 16'384u);
        }
    }
}

TEST(Metafile, AFileThatCannotBeWritten) {
    const std::string file = testing::TempDir() + "no such directory/a.emf";
    const auto device = Open_Metafile(file, 900, 600);
    const Status status = device->Close();
    EXPECT_TRUE(status.failed && status.of_file);
    EXPECT_NE(status.message.find(file), std::string::npos);
}

}  // namespace
}  // namespace vntl
