// Solids go to a file and come back the same; whatever else a file holds is refused, with the line.
#include "solid/w3d_file.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <tuple>

#include "solids.hpp"

namespace vntl {
namespace {

constexpr const char* written = R"(w3d 1
material 1 1 2 3
material 2 0 0 0
material 3 0 0 0
material 4 0 0 0
material 5 255 255 255
material 6 192 212 30
eye 13.065629 7.6536694 -13.065629
light 0.1 -0 1e-30
mode hidden_lines
background 4 5 6
edges 7 8 9
v -1.5 0.25 1
v -0 gap 1
v -1.5 1e-44 0
v -0 -3 0
v 7 7 7
sheet 1 2 2 5
rod 0.1 0.2 0.3 1 2 -1e+06 0.025 0 7 3 2
text 104 1 2 3 0 0.6 0.8 1 0 0 0.1 0.2 0.3 4 " a \"b\" \\n \n\r2θ # "
end
)";

TEST(Solid_File, All_That_A_File_Holds) {
    W3d solid;
    W3d_View view;
    const Status status = Read_W3d_Text(written, solid, view);
    ASSERT_FALSE(status.failed) << status.message;
    EXPECT_EQ(W3d_Text_Of(solid, view), written);
    EXPECT_EQ(view.eye, (Vec3{13.065629f, 7.6536694f, -13.065629f}));
    EXPECT_EQ(std::tuple(view.light[0], view.mode, view.background, view.edge_colour),
              std::tuple(0.1f, Render_Mode::hidden_lines, WRGB(4, 5, 6), WRGB(7, 8, 9)));
    EXPECT_EQ(solid.Material(5), WRGB(255, 255, 255));
    ASSERT_EQ(solid.vertices.size(), 5u);
    EXPECT_TRUE(std::isnan(solid.vertices[1][1]));
    const W3d_Sheet& sheet = solid.sheets.at(0);
    EXPECT_EQ(std::tuple(sheet.first, sheet.columns, sheet.rows, sheet.material), std::tuple(0u, 2, 2, 5));
    const W3d_Rod& rod = solid.rods.at(0);
    EXPECT_EQ(std::tuple(rod.from, rod.to, rod.radius_from, rod.radius_to, rod.sections, rod.sides, rod.material),
              std::tuple(Vec3{0.1f, 0.2f, 0.3f}, Vec3{1, 2, -1e6f}, 0.025f, 0.0f, 7, 3, 2));
    const W3d_Text& text = solid.texts.at(0);
    EXPECT_EQ(text.text, " a \"b\" \\n \n\r2θ # ");
    EXPECT_EQ(std::tuple(text.font, text.at, text.along, text.upward, text.width, text.height, text.depth, text.material),
              std::tuple(104, Vec3{1, 2, 3}, Vec3{0, 0.6f, 0.8f}, Vec3{1, 0, 0}, 0.1f, 0.2f, 0.3f, 4));

    // Other line ends and blanks, comments, numbers in other writings, and what is told twice.
    ASSERT_FALSE(
        Read_W3d_Text("\tw3d 1 \r\n\n  # a comment\n eye 0 0 -5\nlight\t1 2 3\r\nv 1.0e0 +2 -1\neye 0 0 -6\nend\n\n# more", solid, view)
            .failed);
    EXPECT_EQ(solid.vertices, (std::vector<Vec3>{{1, 2, -1}}));
    EXPECT_EQ(view.eye, (Vec3{0, 0, -6}));
}

TEST(Solid_File, Numbers_Come_Back_Bit_For_Bit) {
    std::mt19937 random(5);
    W3d solid, again;
    W3d_View view{{1, 2, 3}, {4, 5, 6}};
    while (solid.vertices.size() < 20'000) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::fabs(value) < 1e6f) solid.vertices.push_back({value, -value, std::nextafter(value, 0.0f)});
    }
    ASSERT_FALSE(Read_W3d_Text(W3d_Text_Of(solid, view), again, view).failed);
    ASSERT_EQ(again.vertices.size(), solid.vertices.size());
    EXPECT_EQ(std::memcmp(again.vertices.data(), solid.vertices.data(), sizeof(Vec3) * solid.vertices.size()), 0);
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
    const auto after = [&head](const std::string& line, const char* part) { return Case{head + line + "\n", 4, part}; };
    const auto sheet = [&head, &square](const std::string& line, const char* part) { return Case{head + square + line + "\n", 8, part}; };
    const Case cases[] = {
        {"", 0, "no solid"},
        {"w3d 2\n", 0, "no solid"},
        {std::string(1 << 20, '\xff'), 0, "no solid"},
        {head, 3, "the end is missing"},
        {head + "v 1 2", 4, "numbers"},
        {head + end + "v 1 2 3", 5, "behind the end"},
        {"w3d 1\nlight 1 2 3\n" + end, 3, "eye or light"},
        {"w3d 1\neye 1 2 3\n" + end, 3, "eye or light"},
        {"w3d 1\neye 0 0 0\n", 2, "numbers"},
        after("light inf 2 3", "numbers"),
        after("light 1e9 2 3", "numbers"),
        after("ball 1 2 3", "no word"),
        after("v 1x 2 3", "numbers"),
        after("v 1 nan 3", "numbers"),
        after("v gap 2 3", "numbers"),
        after("v 1 2 3 4", "behind its numbers"),
        after("mode shiny", "mode"),
        after("background 1 2 256", "numbers"),
        after("edges 1 2 3.5", "numbers"),
        after("material 7 1 2 3", "numbers"),
        after("sheet 1 2 2 1\n" + square, "do not stand before"),
        sheet("sheet 2 2 2 1", "do not stand before"),
        sheet("sheet 0 2 2 1", "numbers"),
        sheet("sheet 1 50000000 50000000 1", "do not stand before"),
        sheet("sheet 1 99999999999 2 1", "numbers"),
        sheet("sheet 1 2 2 0", "material"),
        {head + square + "sheet 1 2 2 1\nsheet 1 2 2 1\n", 9, "do not stand before"},
        sheet("sheet 1 4 1 1", "columns and rows"),
        {head + "v 0 0 0\nv 1 0 0\nv 0.5 0 0\nsheet 1 3 1 1\n", 7, "neither rise nor fall"},
        {head + "v 0 0 0\nv 0 0 2\nv 0 0 2\nsheet 1 1 3 1\n", 7, "neither rise nor fall"},
        after(rod_start + "1000000 8 6", "numbers"),
        after(rod_start + "20 2 6", "numbers"),
        {head + rods, 29, "too many rods"},
        after(text_start + "\"abc", "quotes"),
        after(text_start + "\"a\\x\"", "quotes"),
        after(text_start + "\"abc\\", "quotes"),
        after(text_start + "\"abc\" 5", "behind its numbers"),
        after("text 105 0 0 0 1 0 0 0 0 1 .1 .1 .1 6 \"a\"", "numbers"),
        after("text 102 0 0 0 1 0 0 1 0 0 .1 .1 .1 6 \"a\"", "right angle"),
        {head + letters, 9, "too many letters"},
    };
    for (const Case& c : cases) {
        W3d solid = Sheet_Over({0, 1}, {0, 1}, [](float, float) { return 7; });
        W3d_View view{{1, 2, 3}, {4, 5, 6}};
        const Status status = Read_W3d_Text(c.text, solid, view);
        const std::string label = c.text.substr(0, 200);
        EXPECT_TRUE(status.failed && status.of_file) << label;
        EXPECT_NE(status.message.find(c.part), std::string::npos) << label << "\n" << status.message;
        EXPECT_TRUE(c.line == 0 || status.message.starts_with("line " + std::to_string(c.line) + ":")) << label << "\n" << status.message;
        EXPECT_EQ(solid.vertices.size(), 4u) << label;
        EXPECT_EQ(view.eye, (Vec3{1, 2, 3})) << label;
    }
}

TEST(Solid_File, Files) {
    const std::string file = testing::TempDir() + "solid_file_test.w3d";
    W3d again;
    W3d_View view;
    const auto write = [&](std::string_view text) { std::ofstream(file, std::ios::binary) << text; };
    write(written);
    ASSERT_FALSE(Read_W3d(file, again, view).failed);
    write("w3d 1\n\nv 1 2 x\n");
    EXPECT_EQ(Read_W3d(file, again, view).message, "The solid cannot be read: " + file + ", line 3: its numbers are wrong");
    write("something else that is longer than a first line");
    EXPECT_EQ(Read_W3d(file, again, view).message, "The solid cannot be read: " + file + ", this is no solid, or one of another version");
    std::filesystem::remove(file);
    EXPECT_NE(Read_W3d(file, again, view).message.find(file), std::string::npos);
    EXPECT_EQ(again.vertices.size(), 5u);
}

}  // namespace
}  // namespace vntl
