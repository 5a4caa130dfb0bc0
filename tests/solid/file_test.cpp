// Solids go to a file and come back the same; whatever else a file holds is refused, with the line.
#include "solid/w3d_file.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>

#include "solids.hpp"

namespace vntl {
namespace {

// Every bit of the floats; all gaps are one.
template <class Floats>
std::vector<std::uint32_t> Bits(const Floats& floats) {
    std::vector<std::uint32_t> bits;
    for (const float value : floats) bits.push_back(std::isnan(value) ? ~0u : std::bit_cast<std::uint32_t>(value));
    return bits;
}

void Expect_Same(const W3d& found, const W3d& wanted) {
    ASSERT_EQ(found.vertices.size(), wanted.vertices.size());
    for (std::size_t i = 0; i < found.vertices.size(); ++i) ASSERT_EQ(Bits(found.vertices[i]), Bits(wanted.vertices[i])) << i;
    ASSERT_EQ(found.sheets.size(), wanted.sheets.size());
    for (std::size_t i = 0; i < found.sheets.size(); ++i) {
        const auto fields = [](const W3d_Sheet& s) { return std::tuple(s.first, s.columns, s.rows, s.material); };
        EXPECT_EQ(fields(found.sheets[i]), fields(wanted.sheets[i])) << i;
    }
    ASSERT_EQ(found.rods.size(), wanted.rods.size());
    for (std::size_t i = 0; i < found.rods.size(); ++i) {
        const auto fields = [](const W3d_Rod& r) {
            return std::tuple(Bits(r.from), Bits(r.to), r.radius_from, r.radius_to, r.sections, r.sides, r.material);
        };
        EXPECT_EQ(fields(found.rods[i]), fields(wanted.rods[i])) << i;
    }
    ASSERT_EQ(found.texts.size(), wanted.texts.size());
    for (std::size_t i = 0; i < found.texts.size(); ++i) {
        const auto fields = [](const W3d_Text& t) {
            return std::tuple(t.text, t.font, Bits(t.at), Bits(t.along), Bits(t.upward), t.width, t.height, t.depth, t.material);
        };
        EXPECT_EQ(fields(found.texts[i]), fields(wanted.texts[i])) << i;
    }
    EXPECT_EQ(found.materials, wanted.materials);
}

TEST(Solid_File, Comes_Back_Bit_For_Bit) {
    std::mt19937 random(5);
    std::vector<float> columns, rows;
    for (float x = -3; x < 3; x += std::uniform_real_distribution<float>(1e-6f, 0.1f)(random)) columns.push_back(x);
    for (float z = 2; z > -3; z -= std::uniform_real_distribution<float>(1e-6f, 0.1f)(random)) rows.push_back(z);
    W3d solid = Sheet_Over(columns, rows, [&](float, float) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        return std::fabs(value) < 1e6f ? value : gap;
    });
    for (const Vec3 at : {Vec3{-0.0f, 1, 0}, Vec3{1, -0.0f, 0}, Vec3{-0.0f, gap, 1}, Vec3{1, 1e-44f, 1}}) solid.vertices.push_back(at);
    solid.sheets.push_back({solid.vertices.size() - 4, 2, 2, 5});
    solid.vertices.push_back({1e6f, -1e6f, 1e-20f});
    solid.rods.push_back({{0.1f, 0.2f, 0.3f}, {1, 2, 3}, 0.025f, 0, 7, 3, 2});
    solid.texts = {{" a \"b\" \\n \n\r\t2\u03b8 # ", 104, {1, 2, 3}, {0, 0.6f, 0.8f}, {1, 0, 0}, 0.1f, 0.2f, 0, 4}, {"", 101}};
    solid.materials = {1, 2, WRGB(255, 255, 255), 0, WRGB(1, 2, 3), 5};
    for (int mode = 0; mode < 6; ++mode) {
        const W3d_View view{From_Polar(22.5, -45, 20), {0.1f, -0.0f, 1e-30f}, static_cast<Render_Mode>(mode), WRGB(4, 5, 6), WRGB(7, 8, 9)};
        W3d again;
        W3d_View seen;
        const Status status = Read_W3d_Text(W3d_Text_Of(solid, view), again, seen);
        ASSERT_FALSE(status.failed) << status.message;
        Expect_Same(again, solid);
        EXPECT_EQ(Bits(seen.eye), Bits(view.eye));
        EXPECT_EQ(Bits(seen.light), Bits(view.light));
        EXPECT_EQ(std::tuple(seen.mode, seen.background, seen.edge_colour), std::tuple(view.mode, view.background, view.edge_colour));
    }
}

TEST(Solid_File, A_Text_By_Hand) {
    W3d solid;
    W3d_View view;
    ASSERT_FALSE(
        Read_W3d_Text("\tw3d 1 \r\n\n  # a comment\n eye 0 0 -5\nlight\t1 2 3\r\nmode flat\nv 0 1 0\nv 1 gap 0\nv 0 1 -1\nv 1.0e0 +2 "
                      "-1\nsheet 1 2 2 3\nmaterial 3 1 2 3\neye 0 0 -6\nend\n\n# more",
                      solid, view)
            .failed);
    EXPECT_EQ(solid.vertices.size(), 4u);
    EXPECT_EQ(solid.Facets(), 1u);
    EXPECT_EQ(solid.Material(3), WRGB(1, 2, 3));
    EXPECT_EQ(view.eye, (Vec3{0, 0, -6}));
    EXPECT_EQ(view.mode, Render_Mode::flat);
}

TEST(Solid_File, Refused_With_The_Line) {
    const std::string head = "w3d 1\neye 0 0 -5\nlight 0 5 0\n", square = "v 0 0 0\nv 1 0 0\nv 0 0 1\nv 1 0 1\n", end = "end\n";
    const std::string text_start = "text 102 0 0 0 1 0 0 0 0 1 .1 .1 .1 6 ", rod_start = "rod 0 0 0 1 1 1 .1 .1 ";
    std::string rods, letters;
    for (int k = 0; k < 30; ++k) rods += rod_start + "200 200 6\n", letters += text_start + '"' + std::string(100, 'm') + "\"\n";
    struct Case {
        std::string text;
        int line;
        const char* part;
    };
    const Case cases[] = {
        {"", 0, "no solid"},
        {"w3d 2\n", 0, "no solid"},
        {"solid\n" + end, 0, "no solid"},
        {std::string(1 << 20, '\xff'), 0, "no solid"},
        {head, 3, "the end is missing"},
        {head + "v 1 2", 4, "numbers"},
        {head + end + "v 1 2 3", 5, "behind the end"},
        {"w3d 1\nlight 1 2 3\n" + end, 3, "eye or light"},
        {"w3d 1\neye 1 2 3\n" + end, 3, "eye or light"},
        {"w3d 1\neye 0 0 0\n", 2, "numbers"},
        {"w3d 1\neye 1 2 nan\n", 2, "numbers"},
        {"w3d 1\nlight inf 2 3\n", 2, "numbers"},
        {"w3d 1\nlight 1e9 2 3\n", 2, "numbers"},
        {head + "ball 1 2 3\n", 4, "no word"},
        {head + std::string("v 1\0002 3\n", 9), 4, "numbers"},
        {head + "v 1x 2 3\n", 4, "numbers"},
        {head + "v nan 2 3\n", 4, "numbers"},
        {head + "v 1 nan 3\n", 4, "numbers"},
        {head + "v gap 2 3\n", 4, "numbers"},
        {head + "v 1 2 3 4\n", 4, "behind its numbers"},
        {head + "mode shiny\n", 4, "mode"},
        {head + "background 1 2 256\n", 4, "numbers"},
        {head + "edges 1 2 -1\n", 4, "numbers"},
        {head + "edges 1 2 3.5\n", 4, "numbers"},
        {head + "material 7 1 2 3\n", 4, "numbers"},
        {head + "sheet 1 2 2 1\n" + square, 4, "do not stand before"},
        {head + square + "sheet 2 2 2 1\n", 8, "do not stand before"},
        {head + square + "sheet 0 2 2 1\n", 8, "numbers"},
        {head + square + "sheet 1 0 4 1\n", 8, "numbers"},
        {head + square + "sheet 1 50000000 50000000 1\n", 8, "do not stand before"},
        {head + square + "sheet 1 99999999999 2 1\n", 8, "numbers"},
        {head + square + "sheet 1 2 2 0\n", 8, "material"},
        {head + square + "sheet 1 2 2 1\nsheet 1 2 2 1\n", 9, "do not stand before"},
        {head + square + "sheet 1 4 1 1\n", 8, "columns and rows"},
        {head + "v 0 0 0\nv 1 0 0\nv 0 0 1\nv 2 0 1\nsheet 1 2 2 1\n", 8, "columns and rows"},
        {head + "v 0 0 0\nv 0 0 0\nsheet 1 2 1 1\n", 6, "neither rise nor fall"},
        {head + "v 0 0 0\nv 1 0 0\nv 0.5 0 0\nsheet 1 3 1 1\n", 7, "neither rise nor fall"},
        {head + "v 0 0 0\nv 0 0 2\nv 0 0 1\nsheet 1 1 3 1\n", 7, "neither rise nor fall"},
        {head + rod_start + "0 8 6\n", 4, "numbers"},
        {head + rod_start + "1000000 8 6\n", 4, "numbers"},
        {head + rod_start + "20 2 6\n", 4, "numbers"},
        {head + "rod 0 0 0 1 1 1 -.1 .1 20 8 6\n", 4, "numbers"},
        {head + rods, 29, "too many rods"},
        {head + text_start + "\"abc\n", 4, "quotes"},
        {head + text_start + "abc\n", 4, "quotes"},
        {head + text_start + "\"a\\x\"\n", 4, "quotes"},
        {head + text_start + "\"abc\\", 4, "quotes"},
        {head + text_start + "\"abc\" 5\n", 4, "behind its numbers"},
        {head + "text 105 0 0 0 1 0 0 0 0 1 .1 .1 .1 6 \"a\"\n", 4, "numbers"},
        {head + "text 102 0 0 0 1 0 0 1 0 0 .1 .1 .1 6 \"a\"\n", 4, "right angle"},
        {head + "text 102 0 0 0 2 0 0 0 0 1 .1 .1 .1 6 \"a\"\n", 4, "right angle"},
        {head + letters, 9, "too many letters"},
    };
    for (const Case& c : cases) {
        W3d solid = Sheet_Over({0, 1}, {0, 1}, [](float, float) { return 7; });
        W3d_View view{{1, 2, 3}, {4, 5, 6}};
        const Status status = Read_W3d_Text(c.text, solid, view);
        const std::string label = c.text.substr(0, 200);
        EXPECT_TRUE(status.failed && status.of_file) << label;
        EXPECT_NE(status.message.find(c.part), std::string::npos) << label << "\n" << status.message;
        const std::string start = c.line > 0 ? "line " + std::to_string(c.line) + ":" : "";
        EXPECT_TRUE(status.message.starts_with(start)) << label << "\n" << status.message;
        EXPECT_EQ(solid.vertices.size(), 4u) << label;
        EXPECT_EQ(view.eye, (Vec3{1, 2, 3})) << label;
    }
}

TEST(Solid_File, Files) {
    const std::string file = testing::TempDir() + "solid_file_test.w3d";
    const W3d solid = Sheet_Over(Evenly(-1, 1, 20), Evenly(-1, 1, 10), [](float x, float z) { return x * z; });
    W3d again;
    W3d_View view{{1, 2, 3}, {4, 5, 6}};
    const auto write = [&](std::string_view text) { std::ofstream(file, std::ios::binary) << text; };
    write(W3d_Text_Of(solid, view));
    ASSERT_FALSE(Read_W3d(file, again, view).failed);
    Expect_Same(again, solid);

    write("w3d 1\n\nv 1 2 x\n");
    EXPECT_EQ(Read_W3d(file, again, view).message, "The solid cannot be read: " + file + ", line 3: its numbers are wrong");
    write("something else that is longer than a first line");
    EXPECT_EQ(Read_W3d(file, again, view).message, "The solid cannot be read: " + file + ", this is no solid, or one of another version");
    std::filesystem::remove(file);
    EXPECT_NE(Read_W3d(file, again, view).message.find(file), std::string::npos);
    EXPECT_EQ(again.vertices.size(), 200u);
}

}  // namespace
}  // namespace vntl
