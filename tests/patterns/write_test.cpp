// The writers of .dat and .xys: columns as gfortran 12 prints them by the same edit descriptors, and what is written reads back to the
// same bytes.
#include "patterns/free_format.hpp"
#include "patterns/testing.hpp"
#include "patterns/write_dat.hpp"
#include "patterns/write_xys.hpp"
#include "patterns/xysigma.hpp"

namespace vntl::test {
namespace {

using Pattern = Diffraction_Pattern_Type;
using Of = std::function<double(int)>;

Pattern Made(int n, const Of& x, const Of& y, const std::string& title = "Si standard") {
    Pattern p;
    EXPECT_TRUE(Allocate_Diffraction_Pattern(p, n).ok());
    for (int i = 0; i < n; ++i) {
        const auto at = static_cast<std::size_t>(i);
        p.x[at] = static_cast<float>(x(i));
        p.y[at] = static_cast<float>(y(i));
        p.sigma[at] = std::fabs(p.y[at]);
    }
    p.xmin = p.x.front(), p.xmax = p.x.back();
    p.title = title, p.scat_var = "2theta", p.legend_x = "2theta(degrees)";
    return p;
}

Of Steps(double start, double step) {
    return [=](int i) { return start + step * i; };
}
Of Sine(double height) {
    return [=](int i) { return height * std::sin(0.37 * i); };
}

std::vector<std::string> Lines_Of(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char c : text) c == '\n' ? lines.emplace_back() : lines.back() += c;
    return lines;
}

std::string Xys(const Pattern& p, float slope = 0, float at_0 = 0) { return Xys_Text(p, {p.xmin, p.xmax, slope, at_0}, "si.xys"); }

Status Read_Dat(std::string_view text, Pattern& p) {
    const Status status = Read_Free_Format(text, false, p);
    p.legend_x = "2theta(degrees)";
    return status;
}
Status Read_Xys(std::string_view text, Pattern& p) { return Read_Xysigma(text, false, p); }

TEST(Write_Dat, ColumnsAsFortranPrintsThem) {
    std::vector<double> y = {12, 13.5, 0.00004, -0.00003, -9.9999, 99.9, 7, 8, 9, 10, 11, 12.25};
    const auto text = [&] { return Dat_Text(Made(12, Steps(10.05, 0.05), [&](int i) { return y[static_cast<std::size_t>(i)]; })); };
    EXPECT_EQ(text(),
              "      10.050000       0.050000      10.600000  Si standard\n"
              " 12.0000 13.5000  0.0000 -0.0000 -9.9999 99.9000  7.0000  8.0000  9.0000 10.0000\n"
              " 11.0000 12.2500\n");
    y[5] = 100;
    EXPECT_EQ(Lines_Of(text())[1], "  12.000  13.500   0.000  -0.000 -10.000 100.000   7.000   8.000   9.000  10.000");
}

TEST(Write_Dat, TheDecimalsFallUntilNoFieldTouchesTheOneBeforeIt) {
    const struct {
        double smallest, largest;
        const char* last_field;  // of the largest value
    } cases[] = {{0, 99.9, " 99.9000"},     {0, 99.99996, " 100.000"}, {0, 100, " 100.000"},
                 {0, 1000, " 1000.00"},     {0, 10000, " 10000.0"},    {0, 100000, " 100000."},
                 {-9.9999, 50, " 50.0000"}, {-10, 50, "  50.000"},     {-99999, 50, "     50."},
                 {0, 1e7, " 10000000."},    {-1e7, 5, "         5."},  {-1e30, 5, "                               5."}};
    for (const auto& c : cases) {
        const auto y = [&](int i) { return i == 0 ? c.smallest : c.largest; };
        const std::string line = Lines_Of(Dat_Text(Made(10, Steps(10, 1), y)))[1];
        EXPECT_TRUE(line.ends_with(c.last_field)) << line;
        EXPECT_EQ(line.find('*'), std::string::npos) << line;
        EXPECT_EQ(line.size() % 10, 0u) << line;
    }
}

TEST(Write_Dat, TheHeadGivesTheNumberOfPointsAndTheirPlaces) {
    const struct {
        double start, step;
        int npts;
        const char* step_text;
    } cases[] = {{10, 0.05, 2000, "0.050000"},   {5, 0.0001, 100000, "0.000100"}, {3, 1.0 / 7000, 20000, "0.0001428571"},
                 {25000, 1.1, 5000, "1.100000"}, {1e7, 3, 12, "3.000000"},        {0.5, 2e-5, 300, "0.000020"}};
    for (const auto& c : cases) {
        const Pattern p = Made(c.npts, Steps(c.start, c.step), Sine(50));
        const std::string text = Dat_Text(p);
        EXPECT_NE(text.find(' ' + std::string(c.step_text)), std::string::npos) << text.substr(0, 60);
        const Pattern back = Good(Read_Dat, text);
        ASSERT_EQ(back.npts, p.npts) << c.step;
        for (std::size_t i = 0; i < p.x.size(); i += 97) EXPECT_NEAR(back.x[i], p.x[i], 0.02 * c.step + 3e-7 * p.xmax) << i;
        EXPECT_EQ(back.title, "Si standard");
    }
}

// A natural spline through a straight line is that line; a smooth curve is met up to the fourth power of the step.
TEST(Write_Dat, UnequalStepsComeBackAsEqualOnes) {
    const auto x = [](int i) { return 10 + 0.1 * i + 0.03 * std::sin(i); };
    for (const bool line : {true, false}) {
        const auto curve = [=](double at) { return line ? 3 * at : 500 + 300 * std::sin(at); };
        const Pattern back = Good(Read_Dat, Dat_Text(Made(200, x, [&](int i) { return curve(x(i)); })));
        ASSERT_EQ(back.npts, 200);
        for (std::size_t i = 5; i + 5 < back.y.size(); ++i) EXPECT_NEAR(back.y[i], curve(back.x[i]), 0.01) << i;
    }
    Pattern twins = Made(20, Steps(10, 1), Sine(50));  // what a conversion of x may leave
    twins.x[6] = twins.x[5];
    for (const float y : Good(Read_Dat, Dat_Text(twins)).y) EXPECT_LT(std::fabs(y), 80);
}

TEST(Write_Xys, ColumnsAsFortranPrintsThem) {
    Pattern p = Made(3, Steps(10, 0.5), [](int i) { return 104 - 50 * i; });
    EXPECT_EQ(Xys(p), R"(XYDATA
TITLE: Si standard
! File saved from Vantrelo-2006
! File name: si.xys
! Scattering variable: 2theta
     2theta(degrees)     Intensity     Sigma
       10.0000          104.0000         10.1980
       10.5000           54.0000          7.3485
       11.0000            4.0000          2.0000
)");
    p.x = {-0.25f, 5, 123456.789f};
    p.y = {-3.5f, 0, 1e7f};
    p.sigma = {0, -1, 1e7f};
    p.xmin = p.x.front(), p.xmax = p.x.back();
    EXPECT_EQ(Lines_Of(Xys(p))[6], "       -0.2500           -3.5000          0.0000");
    EXPECT_EQ(Lines_Of(Xys(p))[7], "        5.0000            0.0000          0.0000");
    EXPECT_EQ(Lines_Of(Xys(p))[8], "   123456.7891     10000000.0000       3162.2776");
    p.sigma_is_variance = false;
    EXPECT_EQ(Lines_Of(Xys(p))[8], "   123456.7891     10000000.0000   10000000.0000");
    p.y[0] = -1.5e12f, p.sigma[0] = 1.5e12f, p.x[2] = 1.5e12f;
    EXPECT_EQ(Lines_Of(Xys(p))[6], "       -0.2500  -1.500000027E+12  1.50000003E+12");
    p.xmax = p.x[2];
    EXPECT_EQ(Lines_Of(Xys(p))[8].substr(0, 16), " 1.5000000E+12  ");
    p.sigma.clear();
    EXPECT_EQ(Lines_Of(Xys(p))[7], "        5.0000            0.0000          0.0000");
}

TEST(Write_Xys, TheRangeIncludesBothEndsAndALineIsTakenOff) {
    const Pattern p = Made(11, Steps(10, 1), [](int i) { return 100 + i; });
    const auto points = [&](float lo, float hi) { return Lines_Of(Xys_Text(p, {lo, hi}, "n")).size() - 7; };
    EXPECT_EQ(points(10, 20), 11u);
    EXPECT_EQ(points(10.5f, 13), 3u);
    EXPECT_EQ(points(21, 20), 0u);
    EXPECT_EQ(points(-1e9f, 9.9f), 0u);
    for (const float y : Good(Read_Xys, Xys(p, 1, 80)).y) EXPECT_EQ(y, 10);
}

TEST(Write_Xys, NeighboursStayApart) {
    for (const double step : {0.0001, 0.00003, 1e-6, 1e-9, 1e-17}) {
        const Pattern back = Good(Read_Xys, Xys(Made(50, Steps(0, step), Sine(5))));
        ASSERT_EQ(back.npts, 50);
        for (std::size_t i = 1; i < back.x.size(); ++i) EXPECT_NEAR((back.x[i] - back.x[i - 1]) / step, 1, 0.51) << step;
    }
}

// What a user saves, opens and saves again is the same file, however often.
TEST(Write_Pattern, WhatIsReadBackIsWrittenAgainToTheSameBytes) {
    std::vector<Pattern> patterns = {Made(300, Steps(10, 0.05), [](int i) { return std::floor(400 + Sine(399)(i)); }),
                                     Made(300, Steps(-0.01, 0.0001), Sine(70), "\"Quoted, \x01 and\r\nbroken"),
                                     Made(300, Steps(100, 0.0001), Sine(1e7), "300 K: TITLE of Legend_X"),
                                     Made(5000, Steps(25000, 1.25), Sine(7000), "  : a colon first"),
                                     Made(
                                         400, [](int i) { return 2000 * std::pow(1.002, i); }, Sine(1.5e9), ""),
                                     Made(100, Steps(0.7, 1.0 / 3000), Sine(0.02)),
                                     Made(40, Steps(1e7, 0.5e7), Sine(1e-3))};
    patterns[1].scat_var = patterns[5].scat_var = "d-spacing";
    patterns[5].legend_x = "d-spacing(Angstroms)";
    patterns[3].scat_var = "TOF";
    patterns[4].sigma.clear();
    patterns[6].legend_x = "";
    for (const Pattern& p : patterns) {
        const std::string first = Dat_Text(p), columns = Xys(p);
        EXPECT_EQ(Dat_Text(Good(Read_Dat, first)), first) << first.substr(0, 200);
        Pattern back = Good(Read_Xys, columns);
        EXPECT_EQ(back.npts, p.npts);
        if (p.sigma.empty()) back.sigma.clear();  // of a row beyond those that keep it
        EXPECT_EQ(Xys(back), columns) << columns.substr(0, 400);
    }
}

}  // namespace
}  // namespace vntl::test
