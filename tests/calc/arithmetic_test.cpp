// Sums, differences and corrections of patterns: numbers by hand, each refusal, and files that are not what they should be.
#include "calc/arithmetic.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "patterns/testing.hpp"

namespace vntl {
namespace {

Diffraction_Pattern_Type Pattern(std::vector<float> y, float x0 = 10, float step = 0.5f) {
    Diffraction_Pattern_Type p;
    EXPECT_TRUE(Allocate_Diffraction_Pattern(p, static_cast<int>(y.size())).ok());
    for (std::size_t i = 0; i < y.size(); ++i) p.x[i] = x0 + step * static_cast<float>(i);
    p.sigma.assign(y.size(), 4);
    p.ycalc = p.bgr = y;
    p.y = std::move(y);
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.step = step;
    p.title = "first";
    Set_Y_Limits(p);
    return p;
}

using Pattern_List = std::vector<const Diffraction_Pattern_Type*>;

TEST(Arithmetic, SumsAndAveragesKeepTheRestOfTheFirst) {
    const auto b = Pattern({10, 20, 30}), c = Pattern({100, 200, 300});
    struct {
        Sum_Mode mode;
        std::vector<float> y;
    } const cases[] = {{Sum_Mode::sum, {111, 218, 333}}, {Sum_Mode::average, {37, 218 / 3.0f, 111}}};
    for (const auto& [mode, y] : cases) {
        auto a = Pattern({1, -2, 3});
        auto expected = a;
        expected.y = y;
        expected.ymin = y.front();
        expected.ymax = y.back();
        EXPECT_TRUE(Sum_Patterns(a, Pattern_List{&b, &c}, mode).ok());
        test::Expect_Same(a, expected, mode == Sum_Mode::sum ? "sum" : "average");
    }
    auto a = Pattern({1, -2, 3});
    auto expected = a;
    expected.y = {-9, -22, -27};
    expected.ymin = -27;
    expected.ymax = -9;
    EXPECT_TRUE(Subtract_Pattern(a, b).ok());
    test::Expect_Same(a, expected, "difference");
}

TEST(Arithmetic, PointsThatDifferAreRefused) {
    const auto good = Pattern({1, 2, 3}), longer = Pattern({1, 2, 3, 4});
    auto moved = good, nan = good;
    moved.x[1] = std::nextafter(moved.x[1], 11.0f);  // by 1e-6
    nan.x[2] = std::numeric_limits<float>::quiet_NaN();
    for (const Pattern_List& others : {Pattern_List{}, {&longer}, {&moved}, {&nan}, {&good, &moved}}) {
        auto first = good;
        const Status summed = Sum_Patterns(first, others, Sum_Mode::average);
        EXPECT_TRUE(summed.failed && summed.message.starts_with("ERROR: ")) << summed.message;
        if (!others.empty()) {
            EXPECT_TRUE(Subtract_Pattern(first, *others.back()).failed);
        }
        test::Expect_Same(first, good, summed.message);
    }
}

// Lines by hand: halves and quarters between the points, level beyond them, a step where two points stand at one place.
TEST(Arithmetic, SubtractsTheLineThroughPoints) {
    const std::vector<float> x = {9, 10, 10.5f, 11, 11.5f, 12, 13};
    const struct {
        std::vector<Background_Mark> points;
        std::vector<float> line;
    } cases[] = {{{{10, 4}, {12, 8}}, {4, 4, 5, 6, 7, 8, 8}},
                 {{{10, 4}, {11, 8}, {11, 0}, {12, 2}}, {4, 4, 6, 8, 1, 2, 2}},
                 {{{0, 0}, {20, 40}}, {18, 20, 21, 22, 23, 24, 26}},
                 {{{10, 4}}, {}},
                 {{}, {}}};
    for (const auto& [points, line] : cases) EXPECT_EQ(Line_Through(points, x), line) << points.size();

    auto a = Pattern({7, 4, 5});
    auto expected = a;
    ASSERT_TRUE(Subtract_Background(a, std::vector<float>{5, 6, 2}).ok());
    expected.y = expected.ycalc = expected.bgr = {2, -2, 3};
    expected.ymin = -2;
    expected.ymax = 3;
    test::Expect_Same(a, expected, "less its background");
    auto plain = Pattern({7, 4, 5});
    plain.ycalc = plain.bgr = {0, 0, 0};
    ASSERT_TRUE(Subtract_Background(plain, std::vector<float>{5, 6, 2}).ok());
    expected.ycalc = expected.bgr = {0, 0, 0};
    test::Expect_Same(plain, expected, "without a curve of its own");
    expected.ycalc = expected.bgr = a.bgr;
    for (const std::vector<float>& wrong : {std::vector<float>{1, 2}, {1, 2, -std::numeric_limits<float>::max()}}) {
        a.y[2] = std::numeric_limits<float>::max();
        expected.y[2] = a.y[2];
        EXPECT_TRUE(Subtract_Background(a, wrong).failed);
        test::Expect_Same(a, expected, "refused");
    }
}

TEST(Arithmetic, ScalesVariancesBySquares) {
    struct {
        bool variance;
        float factor, sigma, ymin, ymax;
    } const cases[] = {{true, 2, 16, -4, 6}, {false, 2, 8, -4, 6}, {true, -2, 16, -6, 4}, {false, -2, 8, -6, 4}, {true, 0, 0, 0, 0}};
    for (const auto& [variance, factor, sigma, ymin, ymax] : cases) {
        auto p = Pattern({1, -2, 3});
        p.sigma_is_variance = variance;
        p.ycalc = p.bgr = p.y;
        PRF_Info_Add_Type info;
        info.refl_position = {10, 11};
        info.nexcl = 1;
        info.excl_min[0] = 10, info.excl_max[0] = 10.5f;
        Shift_And_Multiply(p, info, 0.25f, factor);
        EXPECT_TRUE(p.ycalc == p.y && p.bgr == p.y);
        EXPECT_EQ(info.refl_position, (std::vector<float>{10.25f, 11.25f}));
        EXPECT_EQ(std::pair(info.excl_min[0], info.excl_max[0]), std::pair(10.25f, 10.75f));
        EXPECT_EQ(p.x, (std::vector<float>{10.25f, 10.75f, 11.25f}));
        EXPECT_EQ(p.y, (std::vector<float>{factor, -2 * factor, 3 * factor}));
        EXPECT_EQ(p.sigma, std::vector<float>(3, sigma)) << factor;
        EXPECT_EQ(std::pair(p.ymin, p.ymax), std::pair(ymin, ymax)) << factor;
    }
}

class Efficiency_File : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(folder); }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::string Written(const std::string& text) const {
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

    const std::filesystem::path folder = std::filesystem::temp_directory_path() / ("vntl_efficiency" + std::to_string(::getpid()));
    const std::string file = folder / efficiency_file_name;
};

TEST_F(Efficiency_File, GoesToDiskAndBack) {
    const std::vector<Efficiency_Line> lines = {{1, 0, 1}, {2, -0.25f, 0.98f}, {4, 12.5f, 1234.5678f}};
    Written(std::string(100000, 'x'));
    ASSERT_TRUE(Write_Efficiency_File(file, lines).ok());
    EXPECT_EQ(test::Text_Of(file),
              "    1       0.00000       1.00000\n    2      -0.25000       0.98000\n    4      12.50000    1234.56775\n");
    Efficiency read;
    ASSERT_TRUE(Read_Efficiency_File(file, 5, read).ok());
    EXPECT_EQ(read.shift, (std::vector<float>{0, -0.25f, 0, 12.5f, 0}));
    EXPECT_EQ(read.efficiency, (std::vector<float>{1, 0.98f, 1, 1234.56775f, 1}));
    auto p = Pattern({10, 49, 30});
    const auto before = p;
    Apply_Efficiency(p, read);
    EXPECT_EQ(p.x, (std::vector<float>{10, 10.25f, 11}));
    EXPECT_EQ(p.y, (std::vector<float>{10, 49 / 0.98f, 30}));
    EXPECT_EQ(p.sigma, before.sigma);
    EXPECT_EQ(std::pair(p.ymin, p.ymax), std::pair(10.0f, 49 / 0.98f));
}

TEST_F(Efficiency_File, TakesWhatItCanAndRefusesTheRest) {
    const auto million = [] {
        std::string text;
        for (int i = 0; i < 1000000; ++i) text += "2 0.5 " + std::to_string(i + 2) + '\n';
        return text;
    }();
    struct {
        const char* what;
        std::string text;
        bool failed;
        std::vector<float> shift, efficiency;
    } const cases[] = {
        {"empty", "", false, {0, 0, 0}, {1, 1, 1}},
        {"any order, last wins", "3 0.5 2\n1,0.25,4\n3 1.5 8\n1 9 9\n", false, {0.25f, 0, 1.5f}, {4, 1, 8}},
        {"no line end", "2 0.5 2", false, {0, 0.5f, 0}, {1, 2, 1}},
        {"stops at a word", "1 0.5 2\nend\n2 0.5 2\n", false, {0.5f, 0, 0}, {2, 1, 1}},
        {"words alone", "efficiency of the detectors\n", false, {0, 0, 0}, {1, 1, 1}},
        {"too small", "1 0 0.00009\n2 0 -3\n3 0 0.0002\n", false, {0, 0, 0}, {1, 1, 0.0002f}},
        {"a million lines, three are read", million, false, {0, 0.5f, 0}, {1, 4, 1}},
        {"a line without end", "1 0.5 2" + std::string(10000000, ' '), false, {0.5f, 0, 0}, {2, 1, 1}},
        {"point 0", "1 0.5 2\n0 0.5 2\n", true, {}, {}},
        {"beyond n", "4 0.5 2\n", true, {}, {}},
        {"negative", "-1 0.5 2\n", true, {}, {}},
        {"shift not finite", "1 NaN 2\n", true, {}, {}},
        {"shift infinite", "1 1e39 2\n", true, {}, {}},
    };
    for (const auto& [what, text, failed, shift, efficiency] : cases) {
        Efficiency read;
        const Status status = Read_Efficiency_File(Written(text), 3, read);
        EXPECT_EQ(status.failed, failed) << what << ": " << status.message;
        EXPECT_EQ(status.message.empty(), !failed) << what;
        if (failed) continue;
        EXPECT_EQ(read.shift, shift) << what;
        EXPECT_EQ(read.efficiency, efficiency) << what;
    }
    for (const char* text : {"1 0 NaN\n", "1 0 1e39\n", "1 0 -Inf\n", "99999999999 0 1\n", "1 0\n2 0\n", "\0\0\0\n", "1*3\n"}) {
        Efficiency read;
        if (Read_Efficiency_File(Written(text), 3, read).failed) continue;
        auto p = Pattern({10, 20, 30});
        Apply_Efficiency(p, read);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isfinite(p.x[i]) && std::isfinite(p.y[i])) << text;
    }
    Efficiency read;
    const Status missing = Read_Efficiency_File(folder / "missing.eff", 3, read);
    EXPECT_TRUE(missing.message.starts_with("ERROR opening the file ") && missing.message.ends_with("missing.eff")) << missing.message;
    EXPECT_TRUE(Read_Efficiency_File(folder, 3, read).failed);  // a directory
    EXPECT_TRUE(Write_Efficiency_File(folder, {}).failed);
    EXPECT_TRUE(Write_Efficiency_File(folder / "no folder" / "a.eff", {}).failed);
}

}  // namespace
}  // namespace vntl
