// Drawings for CAD programs, read back by a reader of pairs that shares nothing with the writer.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <numbers>
#include <random>
#include <set>
#include <sstream>

#include "drawing/drawn.hpp"
#include "drawing/graphics.hpp"
#include "pictures/cell_merge.hpp"
#include "pictures/dxf_colours.hpp"
#include "pictures/vector_device.hpp"

namespace vntl {
namespace {

constexpr double mm = 25.4 / 72;  // of a point
constexpr double width = 900, height = 600;
constexpr Colour white = WRGB(255, 255, 255), red = WRGB(200, 30, 40), blue = WRGB(0, 0, 255), grey = WRGB(130, 130, 130);

// A record: what follows a group 0 up to the next one.
struct Record {
    std::string type;
    std::vector<std::pair<int, std::string>> groups;

    std::vector<std::string> All(int code) const {
        std::vector<std::string> found;
        for (const auto& [c, value] : groups)
            if (c == code) found.push_back(value);
        return found;
    }
    std::string Word(int code) const { return All(code).empty() ? "" : All(code).front(); }
    double Number(int code) const { return std::atof(Word(code).c_str()); }
    std::string Layer() const { return Word(8); }
    // Points in the page, in points.
    std::vector<Point> Places(int code = 10, Point corner = {0, 0}) const {
        std::vector<Point> places;
        const auto x = All(code), y = All(code + 10);
        for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i)
            places.push_back({(std::atof(x[i].c_str()) - corner.x) / mm, (std::atof(y[i].c_str()) - corner.y) / mm});
        return places;
    }
};

struct Reading {
    std::string text;
    std::map<std::string, std::vector<Record>> sections;  // records by section; of the blocks too
    std::vector<Record> entities;

    std::vector<Record> Of(const std::string& type) const {
        std::vector<Record> found;
        for (const Record& r : entities)
            if (r.type == type) found.push_back(r);
        return found;
    }
    std::set<std::string> Names(const std::string& section, const std::string& type) const {
        std::set<std::string> names;
        for (const Record& r : sections.at(section))
            if (r.type == type) names.insert(r.Word(2));
        return names;
    }
};

// What holds for every file: pairs, finite numbers, handles that are unique, owners, layers, line types, styles and blocks that exist.
void Check_Whole(const Reading& reading) {
    std::set<std::string> handles = {"0"};
    std::vector<std::string> owners;
    const auto layers = reading.Names("TABLES", "LAYER"), linetypes = reading.Names("TABLES", "LTYPE");
    const auto styles = reading.Names("TABLES", "STYLE"), blocks = reading.Names("BLOCKS", "BLOCK");
    EXPECT_EQ(blocks, reading.Names("TABLES", "BLOCK_RECORD"));
    for (const auto& [section, records] : reading.sections)
        for (const Record& r : records) {
            if (section == "HEADER") continue;
            const std::string handle = r.Word(r.type == "DIMSTYLE" ? 105 : 5);
            EXPECT_TRUE(handle.empty() || handles.insert(handle).second) << r.type << " has the handle of another: " << handle;
            if (!r.Word(330).empty()) owners.push_back(r.Word(330));
            const auto exists = [&](int code, const std::set<std::string>& names) {
                EXPECT_TRUE(r.Word(code).empty() || names.count(r.Word(code)) == 1) << r.type << ' ' << r.Word(code);
            };
            if (section == "TABLES") continue;
            exists(8, layers);
            exists(6, linetypes);
            if (r.type == "TEXT") exists(7, styles);
            if (r.type == "INSERT") exists(2, blocks);
        }
    for (const std::string& owner : owners) EXPECT_EQ(handles.count(owner), 1u) << owner;
    for (const char* none : {"nan", "inf", "NAN", "INF"}) EXPECT_EQ(reading.text.find(none), std::string::npos);
}

Reading Read(const std::string& file) {
    Reading reading;
    std::ifstream stream(file, std::ios::binary);
    reading.text.assign(std::istreambuf_iterator<char>(stream), {});
    std::istringstream lines(reading.text);
    std::string code, value, section;
    std::vector<Record>* records = nullptr;
    while (std::getline(lines, code)) {
        EXPECT_TRUE(std::getline(lines, value)) << "a code without its value";
        const int number = std::atoi(code.c_str());
        if (number == 0) {
            if (value == "ENDSEC") records = nullptr, section.clear();
            if (records != nullptr) records->push_back({value, {}});
            if (value == "SECTION") section = "?";
        } else if (section == "?") {
            section = value;
            records = &reading.sections[section];
            records->push_back({section, {}});
        } else if (records != nullptr) {
            records->back().groups.emplace_back(number, value);
            if ((number >= 10 && number < 60) || (number >= 210 && number <= 230)) {
                char* end = nullptr;
                EXPECT_TRUE(std::isfinite(std::strtod(value.c_str(), &end)) && *end == '\0') << code << ' ' << value;
            }
        }
    }
    EXPECT_EQ(value, "EOF");
    for (const char* name : {"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"})
        EXPECT_EQ(reading.sections.count(name), 1u) << name;
    for (const Record& r : reading.sections["ENTITIES"])
        if (r.type != "ENTITIES") reading.entities.push_back(r);
    Check_Whole(reading);
    return reading;
}

std::string File_Name() { return testing::TempDir() + "drawing_" + std::to_string(::getpid()) + ".dxf"; }

Reading Drawing(const std::function<void(Device&)>& draw, const Hardcopy_Options& options = {}) {
    const auto device = Open_Dxf(File_Name(), width, height, options);
    draw(*device);
    EXPECT_TRUE(device->Close().ok());
    Reading reading = Read(File_Name());
    std::remove(File_Name().c_str());
    return reading;
}

void Expect_Places(const std::vector<Point>& found, const std::vector<Point>& wanted, const std::string& what) {
    ASSERT_EQ(found.size(), wanted.size()) << what;
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_NEAR(found[i].x, wanted[i].x, 0.002) << what << i;
        EXPECT_NEAR(found[i].y, wanted[i].y, 0.002) << what << i;
    }
}

std::string True_Colour(Colour c) { return std::to_string(65536 * Red(c) + 256 * Green(c) + Blue(c)); }

const std::vector<Point> zigzag = {{50, 60}, {110, 90.5}, {170, 61}, {230, 300.25}}, triangle = {{10, 10}, {60, 10}, {35, 50}, {10, 10}};
const std::vector<Point> star = {{400, 300}, {450, 310}, {480, 280}, {470, 340}, {430, 350}};

void Draw_All_Kinds(Device& device) {
    device.Clear(white);
    device.Polyline(zigzag, {red, 1, Line_Style::solid});
    device.Polyline(triangle, {blue, 3, Line_Style::solid});
    for (const Line_Style style : {Line_Style::dotted, Line_Style::dashed, Line_Style::dot_dash, Line_Style::dot_dot_dash})
        device.Polyline(zigzag, {grey, 2, style});
    device.Fill(std::span(triangle).first(3), red);
    device.Fill(std::array<Point, 4>{{{300, 300}, {340, 300}, {340, 330}, {300, 330}}}, blue);
    device.Fill(star, grey);
    device.Ellipse({500, 100}, 20, 20, false, {red, 1, Line_Style::solid});
    device.Ellipse({600, 100}, 20, 30, false, {blue, 2, Line_Style::dashed});
    device.Ellipse({700, 100}, 20, 10, true, {grey, 1, Line_Style::solid});
    const std::vector<float> x = {100, 200.5f, 300}, y = {400, 410, 420.25f};
    for (int glyph = 221; glyph <= 227; ++glyph)
        for (const bool filled : {true, false}) device.Markers({x, y}, {glyph, 8, 10, glyph % 2 == 0 ? red : blue, filled});
    for (const double angle : {0.0, 90.0, -90.0})
        for (const Justify justify : {Justify::left, Justify::centre, Justify::right})
            device.Text({450, 450}, "2θ (°), Å", {102, 0, 10, 16, angle, justify, blue});
    device.Text({450, 500}, "qy", {104, 2 + 4 + 8, 10, 16, 0, Justify::left, red});
}

TEST(Dxf, DrawsWhatTheRecordingHas) {
    Recording_Device record(width, height);
    Draw_All_Kinds(record);
    const Reading reading = Drawing(Draw_All_Kinds);

    std::vector<Record> lines, inserts = reading.Of("INSERT"), texts = reading.Of("TEXT");
    for (const Record& r : reading.Of("LWPOLYLINE")) lines.push_back(r);
    const auto drawn_lines = Drawn<Recorded_Line>(record);
    ASSERT_EQ(lines.size(), drawn_lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto places = lines[i].Places();
        if (static_cast<int>(lines[i].Number(70)) % 2 == 1) places.push_back(places.front());
        Expect_Places(places, drawn_lines[i].points, "line");
        EXPECT_EQ(lines[i].Word(420), True_Colour(drawn_lines[i].pen.colour));
        EXPECT_EQ(lines[i].Word(6).empty(), drawn_lines[i].pen.style == Line_Style::solid);
        EXPECT_NEAR(lines[i].Number(370) / 100, drawn_lines[i].pen.width * 0.75 * mm, 0.04);  // the nearest width that there is
    }
    EXPECT_NEAR(lines[1].Number(43), 3 * 0.75 * mm, 0.001);

    const auto solids = reading.Of("SOLID");
    Expect_Places(solids[0].Places(), {{0, 0}}, "page");
    EXPECT_EQ(solids[0].Layer(), "PAGE");
    for (const auto& [code, at] : std::map<int, Point>{{10, {300, 300}}, {11, {340, 300}}, {12, {300, 330}}, {13, {340, 330}}})
        Expect_Places(solids[2].Places(code), {at}, "corners in a Z");
    const auto hatches = reading.Of("HATCH");
    auto corners = hatches[0].Places();
    Expect_Places({corners.begin() + 1, corners.end()}, star, "hatch");  // behind its elevation
    EXPECT_EQ(hatches[0].Word(2), "SOLID");

    Expect_Places(reading.Of("CIRCLE")[0].Places(), {{500, 100}}, "circle");
    EXPECT_NEAR(reading.Of("CIRCLE")[0].Number(40), 20 * mm, 0.001);
    Expect_Places(reading.Of("ELLIPSE")[0].Places(11), {{0, 30}}, "longer axis");
    EXPECT_NEAR(reading.Of("ELLIPSE")[0].Number(40), 2.0 / 3, 1e-6);

    std::size_t next = 0;
    for (const Recorded_Markers& markers : Drawn<Recorded_Markers>(record))
        for (const Point& at : markers.points) {
            ASSERT_LT(next, inserts.size());
            Expect_Places(inserts[next].Places(), {at}, "marker");
            EXPECT_EQ(inserts[next++].Word(420), True_Colour(markers.style.colour));
        }
    EXPECT_EQ(next, inserts.size());
    EXPECT_EQ(reading.Names("BLOCKS", "BLOCK").size(), 2u + 14);

    const auto drawn_texts = Drawn<Recorded_Text>(record);
    ASSERT_EQ(texts.size(), drawn_texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Text_Style& style = drawn_texts[i].style;
        Expect_Places(texts[i].Places(style.justify == Justify::left ? 10 : 11), {drawn_texts[i].at}, "text");
        EXPECT_EQ(texts[i].Number(72), static_cast<int>(style.justify));
        EXPECT_EQ(texts[i].Number(50), style.angle);
        EXPECT_EQ(texts[i].Word(1), style.font == 104 ? "%%u\\U+03B8\\U+03C8" : "2\\U+03B8 (\\U+00B0), \\U+00C5");
    }
    EXPECT_EQ(texts.back().Word(7), "PLOT_SYMBOL_ITALIC");
    EXPECT_EQ((reading.entities.end() - 2)->type, "SOLID");  // the box behind it
    EXPECT_NEAR(texts[0].Number(40), 16 * 0.716 * mm, 0.001);
}

// By the rules of the format: "%%%" is a percent sign, "^ " a caret, \U+ the UTF-16 of a letter, of two units beyond the first 65536.
TEST(Dxf, TextsReadAsThemselves) {
    std::string longest, escaped;
    for (int i = 0; i < 180; ++i) longest += "θ", escaped += "\\U+03B8";
    const std::vector<std::pair<std::string, std::string>> titles = {{"100 % of 5%", "100 % of 5%"},
                                                                     {"%%", "%%%%%%"},
                                                                     {"a%%d %%%c%", "a%%%%%%d %%%%%%%%%c%"},
                                                                     {"\\P \\U+0041", "\\U+005CP \\U+005CU+0041"},
                                                                     {"{\\fArial;x}", "{\\U+005CfArial;x}"},
                                                                     {"^J ^ 2^", "^ J ^  2^ "},
                                                                     {"µ ² 中", "\\U+00B5 \\U+00B2 \\U+4E2D"},
                                                                     {"\xF0\x9F\x94\xAC", "\\U+D83D\\U+DD2C"},
                                                                     {"  blanks  ", "  blanks  "},
                                                                     {longest, escaped}};
    const Reading reading = Drawing([&](Device& device) {
        for (const auto& title : titles) device.Text({1, 300}, title.first, {101, 0, 3, 6, 0, Justify::left, 0});
    });
    const auto texts = reading.Of("TEXT");
    ASSERT_EQ(texts.size(), titles.size());
    for (std::size_t i = 0; i < titles.size(); ++i) EXPECT_EQ(texts[i].Word(1), titles[i].second);
    EXPECT_LT(escaped.size(), 2049u);  // what readers take of a line
}

TEST(Dxf, PlaceColoursAndFillAreAsChosen) {
    const auto draw = [](Device& device) {
        device.Clear(white);
        device.Fill(star, WRGB(250, 10, 5));
        device.Fill(triangle, WRGB(240, 240, 240));
        device.Polyline(zigzag, {WRGB(0, 0, 0), 1, Line_Style::solid});
        device.Text({450, 500}, "opaque", {102, 8, 10, 16, 0, Justify::left, blue});
    };
    Hardcopy_Options options;
    options.x_pos = 100, options.y_pos = -20;
    const Reading moved = Drawing(draw, options);
    Expect_Places(moved.Of("LWPOLYLINE")[0].Places(10, {100, -20}), zigzag, "moved");
    EXPECT_NE(moved.text.find("$EXTMAX\n10\n417.5\n20\n191.667\n"), std::string::npos);
    EXPECT_EQ(moved.Of("HATCH")[0].Word(62), "1");
    EXPECT_EQ(moved.Of("LWPOLYLINE")[0].Word(62), "250");  // the darkest grey: 7 would be white on a dark ground, and the page is white

    options = {};
    options.dxf_colours = Dxf_Colours::index;
    const Reading indexed = Drawing(draw, options);
    EXPECT_EQ(indexed.text.find("\n420\n"), std::string::npos);
    EXPECT_EQ(indexed.Of("SOLID")[0].Word(62), "255");

    options.dxf_colours = Dxf_Colours::black;
    const Reading black = Drawing(draw, options);
    for (const Record& r : black.entities) EXPECT_EQ(r.Word(62), "7") << r.type;
    EXPECT_TRUE(black.Of("SOLID").empty());  // neither page nor light areas nor boxes behind texts
    EXPECT_EQ(black.Of("HATCH").size(), 1u);

    const double distances[] = {20, 12, 7, 4};  // line units of 3/4 point
    for (int density = 1; density <= 4; ++density) {
        options = {};
        options.fill_density = density;
        const Reading hatched = Drawing(draw, options);
        const Record hatch = hatched.Of("HATCH")[0];
        EXPECT_EQ(hatch.Word(70), "0");
        EXPECT_NEAR(std::hypot(hatch.Number(45), hatch.Number(46)), distances[density - 1] * 0.75 * mm, 1e-4);
        auto outline = hatched.Of("LWPOLYLINE")[0].Places();
        Expect_Places(outline, star, "outline");
        EXPECT_EQ(hatched.Of("SOLID").size(), 2u);  // page and box
    }
}

TEST(Dxf, NothingLeavesThePageAndNoNumberIsWild) {
    const double nan = std::nan(""), far = 1e30;
    const Rect clip{100, 100, 500, 400};
    const Reading reading = Drawing([&](Device& device) {
        device.Set_Clip(clip);
        const std::vector<float> x = {0, 100, 200, static_cast<float>(nan), 300, 1e30f}, y = {-1e30f, 200, 300, 5, 1e30f, 350};
        device.Curve({x, y}, {red, 1, Line_Style::dashed});
        device.Markers({x, y}, {221, 10, 10, red, false});
        device.Fill(std::array<Point, 4>{{{-far, -far}, {far, -far}, {far, 150}, {nan, 3}}}, blue);
        device.Ellipse({100, 100}, 50, 20, true, {grey, 1, Line_Style::solid});
        device.Text({480, 380}, "cut at the end of the clip", {101, 0, 10, 16, 0, Justify::left, 0});
        device.Text({nan, 380}, "nowhere", {101, 0, 10, 16, 0, Justify::left, 0});
        device.Polyline(zigzag, {red, nan, Line_Style::solid});
        device.Cells({{-far, 0, far, 600}, 2, 1, std::array<Colour, 2>{red, blue}});
    });
    EXPECT_GT(reading.entities.size(), 5u);
    for (const Record& r : reading.entities)
        for (const int code : {10, 11, 12, 13})
            for (const Point& at : r.Places(code)) {
                if (at.x == 0 && at.y == 0 && r.type == "HATCH") continue;  // its elevation
                EXPECT_TRUE(at.x >= clip.x1 - 0.01 && at.x <= clip.x2 + 0.01 && at.y >= clip.y1 - 0.01 && at.y <= clip.y2 + 0.01)
                    << r.type << ' ' << at.x << ' ' << at.y;
            }

    Hardcopy_Options wild;
    wild.x_pos = nan, wild.y_pos = far, wild.fill_density = 77;
    EXPECT_TRUE(Drawing([](Device&) {}, wild).entities.empty());
    const Status status = Open_Dxf("/no/such/place/x.dxf", width, height)->Close();
    EXPECT_TRUE(status.failed && status.of_file && status.message.find("/no/such/place/x.dxf") != std::string::npos);
}

// --- cells -----------------------------------------------------------------------------------------------------------------------------

std::vector<Colour> Painted(const Cell_Rectangles& merged) {
    std::vector<Colour> cells(static_cast<std::size_t>(merged.columns * merged.rows), no_colour);
    for (const Merged_Cells& r : merged.rectangles)
        for (int row = r.row1; row < r.row2; ++row)
            for (int column = r.column1; column < r.column2; ++column) {
                Colour& cell = cells[static_cast<std::size_t>(row * merged.columns + column)];
                EXPECT_EQ(cell, no_colour) << "covered twice";
                cell = r.colour;
            }
    return cells;
}

TEST(Dxf, MergedCellsPaintTheImage) {
    std::mt19937 random(3);
    for (const unsigned colours : {1u, 2u, 5u, 4000u}) {
        std::vector<Colour> image(60 * 41);
        for (std::size_t i = 0; i < image.size(); ++i)
            image[i] = i % 17 == 0 ? no_colour : static_cast<Colour>(3000 * (random() % colours));
        EXPECT_EQ(Painted(Merge_Cells(60, 41, image, 100000)), image);
    }
    std::vector<Colour> blocks(90 * 60);
    for (std::size_t i = 0; i < blocks.size(); ++i) blocks[i] = static_cast<Colour>(i % 90 / 30 + i / 90 / 20 * 10);
    EXPECT_EQ(Merge_Cells(90, 60, blocks, 100).rectangles.size(), 9u);

    // Too many: near colours become one, then blocks of cells, and the mean stays.
    std::vector<Colour> near(300 * 200), noise(300 * 200);
    for (Colour& c : near) c = WRGB(100 + random() % 4, 100, 100);
    EXPECT_EQ(Merge_Cells(300, 200, near, 500).rectangles.size(), 1u);
    for (Colour& c : noise) c = random() % 2 == 0 ? WRGB(0, 0, 0) : WRGB(200, 100, 40);
    const Cell_Rectangles coarse = Merge_Cells(300, 200, noise, 5000);
    EXPECT_LE(coarse.rectangles.size(), 5000u);
    EXPECT_GT(coarse.rectangles.size(), 2000u);
    double sum = 0;
    for (const Colour c : Painted(coarse)) sum += Red(c);
    EXPECT_NEAR(sum / (coarse.columns * coarse.rows), 100, 3);

    // Below them no block that would close a hole.
    noise[150 * 300 + 20] = no_colour;
    const Cell_Rectangles ground = Ground_Of_Cells(300, 200, noise, 600);
    EXPECT_EQ(ground.columns * ground.rows, 600);
    const std::vector<Colour> below = Painted(ground);
    EXPECT_EQ(std::count(below.begin(), below.end(), no_colour), 1);
    EXPECT_EQ(below[static_cast<std::size_t>(150 * ground.rows / 200 * ground.columns + 20 * ground.columns / 300)], no_colour);
}

TEST(Dxf, CellsStandWhereTheyBelong) {
    const std::vector<Colour> colours = {red, blue, blue, red, no_colour, blue};
    const auto solids = Drawing([&](Device& device) { device.Cells({{90, 60, 390, 260}, 3, 2, colours}); }).Of("SOLID");
    const std::vector<std::tuple<Point, Point, Colour>> wanted = {
        {{190, 60}, {390, 160}, blue}, {{90, 60}, {190, 260}, red}, {{290, 160}, {390, 260}, blue}};
    ASSERT_EQ(solids.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto& [low, high, colour] = wanted[i];
        Expect_Places({solids[i].Places(10)[0], solids[i].Places(13)[0]}, {low, high}, "cells");
        EXPECT_EQ(solids[i].Word(420), True_Colour(colour));
    }
}

// Rows of the published palette of numbered colours.
TEST(Dxf, NumberedColoursAreThePublishedOnes) {
    const std::map<int, unsigned> published = {
        {1, 0xff0000},   {5, 0x0000ff},   {8, 0x808080},   {10, 0xff0000},  {11, 0xff7f7f},  {12, 0xa50000},  {13, 0xa55252},
        {20, 0xff3f00},  {25, 0x7f4f3f},  {26, 0x4c1300},  {40, 0xffbf00},  {53, 0xa5a552},  {94, 0x007f00},  {131, 0x7fffff},
        {150, 0x007fff}, {170, 0x0000ff}, {200, 0xbf00ff}, {240, 0xff003f}, {250, 0x333333}, {254, 0xbebebe}, {255, 0xffffff}};
    for (const auto& [index, rgb] : published) EXPECT_EQ(Colour_Of_Index(index), WRGB(rgb >> 16, rgb >> 8 & 255, rgb & 255)) << index;
    for (int index = 1; index <= 255; ++index)
        EXPECT_EQ(Colour_Of_Index(Nearest_Index(Colour_Of_Index(index))), Colour_Of_Index(index)) << index;
}

// --- another reader --------------------------------------------------------------------------------------------------------------------

TEST(Dxf, AnotherReaderFindsNothingToMend) {
    // The system's own interpreter has the system's packages.
    const std::string python = "/usr/bin/python3";
    if (std::system((python + " -c 'import ezdxf' 2>/dev/null").c_str()) != 0) GTEST_SKIP() << "python3-ezdxf is not installed";
    const std::string script = File_Name() + ".py", answer = File_Name() + ".txt";
    std::ofstream(script) << "import ezdxf, sys, collections\n"
                             "doc = ezdxf.readfile(sys.argv[1])\n"
                             "audit = doc.audit()\n"
                             "for e in audit.errors + audit.fixes: print('audit', e.code, e.message)\n"
                             "counts = collections.Counter(e.dxftype() for e in doc.modelspace())\n"
                             "print(' '.join(f'{k}={v}' for k, v in sorted(counts.items())))\n"
                             "for e in doc.modelspace().query('TEXT'): print(ascii(ezdxf.decode_dxf_unicode(e.plain_text())))\n";
    const auto device = Open_Dxf(File_Name(), width, height);
    Draw_All_Kinds(*device);
    device->Text({10, 300}, "5% \\ {x}", {101, 0, 10, 16, 0, Justify::left, 0});
    ASSERT_TRUE(device->Close().ok());
    ASSERT_EQ(std::system((python + ' ' + script + ' ' + File_Name() + " > " + answer).c_str()), 0);
    std::ifstream stream(answer);
    std::string found((std::istreambuf_iterator<char>(stream)), {}), texts;
    for (int i = 0; i < 9; ++i) texts += "'2\\u03b8 (\\xb0), \\xc5'\n";
    EXPECT_EQ(found, "CIRCLE=1 ELLIPSE=1 HATCH=2 INSERT=42 LWPOLYLINE=6 SOLID=4 TEXT=11\n" + texts + "'\\u03b8\\u03c8'\n'5% \\\\ {x}'\n");
    for (const std::string& file : {script, answer, File_Name()}) std::remove(file.c_str());
}

}  // namespace
}  // namespace vntl
