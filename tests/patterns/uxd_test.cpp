// UXD: sections of each kind with each separator, written from known numbers; files of several ranges.
#include "patterns/uxd.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

const std::string head =
    "; converted\n_SAMPLE='Corundum plate'\n_WL1=1.540600\n_WL2=1.544390\n_WL3=1.392220\n_WLRATIO=0.500000\n; (Data for Range number 1)\n"
    "_STEPTIME=4.0\n_STEPSIZE=0.5\n_STEPCOUNT=6\n_START=10.0\n_THETA=5.0\n_KV=45\n";

Diffraction_Pattern_Type Good(const std::string& text) { return test::Good(Read_Uxd, text); }
std::vector<float> Intensities(const std::string& section) { return Good(head + section).y; }
const std::vector<float> six = {16, 25, 36, 49, 64, 81};

TEST(Uxd, HeaderAndCounts) {
    const auto p = Good(head + "_COUNTS\n      16      25\n\n      36      49      64\n   81\n");
    EXPECT_EQ(p.title, "Corundum plate");
    EXPECT_EQ(p.npts, 6);
    EXPECT_EQ(p.y, six);
    EXPECT_EQ(p.sigma, six);
    EXPECT_EQ(p.x, (std::vector<float>{10, 10.5f, 11, 11.5f, 12, 12.5f}));
    EXPECT_EQ(p.xmin, 10);
    EXPECT_EQ(p.xmax, 12.5f);
    EXPECT_EQ(p.step, 0.5f);
    EXPECT_EQ(p.conv, (std::array<float, 5>{1.5406f, 1.54439f, 0.5f, 0, 0}));
    EXPECT_EQ(p.ymin, 16);
    EXPECT_EQ(p.ymax, 81);
    EXPECT_TRUE(p.sigma_is_variance);
    EXPECT_EQ(p.nd.size(), 6u);
    EXPECT_TRUE(Good("_STEPSIZE=0.1\n_STEPCOUNT=1\n_COUNTS\n5\n").title.empty());
}

TEST(Uxd, VariancesOfRates) {
    const auto p = Good(head + "_2THETACPS\n10 16\n10.5 25\n");
    EXPECT_EQ(p.y, (std::vector<float>{16, 25}));
    EXPECT_EQ(p.sigma, (std::vector<float>{4, 6.25f}));
    EXPECT_EQ(Good(Replace_All(head, "_STEPTIME=4.0\n", "") + "_CPS\n16 25\n").sigma[1], 25);  // no step time: as if it were a second
}

TEST(Uxd, TheFirstLineTellsTheSeparator) {
    EXPECT_EQ(Intensities("_COUNTS\n16;25;36\n49;64;81\n"), six);
    EXPECT_EQ(Intensities("_COUNTS\n16\t25\t36\n49\t64\t81\n"), six);
    EXPECT_EQ(Intensities("_COUNTS\n16, 25, 36,\n49,64,81\n"), six);
    EXPECT_EQ(Intensities("_COUNTS\n\t16 25 36\n\t49 64 81\n"), six);
    EXPECT_EQ(Intensities("_2THETACOUNTS\n10;16\n10.5;25\n11;36\n11.5;49\n12;64\n12.5;81\n"), six);
    EXPECT_EQ(Intensities("_2THETACOUNTS\n10 16 25 36\n11.5 49 64 81\n"), six);
    // A TAB goes before a semicolon and that before a comma: the rest of a field is not read.
    EXPECT_EQ(Intensities("_COUNTS\n16,1;25\n"), (std::vector<float>{16, 25}));
    EXPECT_EQ(Intensities("_COUNTS\n16 1\t25 2\n"), (std::vector<float>{16, 25}));
}

TEST(Uxd, WhatStandsInFrontOfTheNumbersAndBehind) {
    EXPECT_EQ(Intensities("_COUNTS=\n16 25 36 49 64 81\n"), six);
    EXPECT_EQ(Intensities("_COUNTS=1\na line of text\n\n16 25 36 49 64 81\n"), six);
    EXPECT_EQ(Intensities("_COUNTS\n_DETECTOR=1\n\n16 25 36 49 64 81\n"), six);
    EXPECT_EQ(Intensities("_COUNTS\n16 25 36 49 64 81 100\n121\n"), six);
    EXPECT_EQ(Intensities("_COUNTS\n16 25\nend 1\n36\n"), (std::vector<float>{16, 25}));
    EXPECT_EQ(Intensities("_COUNTS\n" + std::string(126, ' ') + "16 25 36\n"), (std::vector<float>{16, 25}));  // 132 columns
}

TEST(Uxd, ThePatternEndsAtItsLastNumber) {
    const auto p = Good("_START=10\n_STEPSIZE=0.02\n_COUNTS\n1 2 3\n");
    EXPECT_EQ(p.y, (std::vector<float>{1, 2, 3}));
    EXPECT_FLOAT_EQ(p.xmax, 10.04f);
    EXPECT_EQ(p.npts_claimed, 0);                                                // no count was told
    EXPECT_EQ(Good("_START=159\n_STEPSIZE=0.5\n_COUNTS\n1 2 3 4 5\n").npts, 3);  // and none goes beyond 160 degrees

    const auto short_of_six = Good(head + "_COUNTS\n16 25\n");
    EXPECT_EQ(short_of_six.npts, 2);
    EXPECT_EQ(short_of_six.npts_claimed, 6);
    EXPECT_EQ(short_of_six.xmax, 10.5f);
    EXPECT_EQ(short_of_six.ymin, 16);
    EXPECT_EQ(Good(head + "_COUNTS\n16 25 36 49 64 81 100\n").npts_claimed, 0);
    EXPECT_EQ(Good("_STEPSIZE=0.1\n_STEPCOUNT=2000000000\n_COUNTS\n1 2\n").npts_claimed, 2000000000);
}

TEST(Uxd, SeveralRanges) {
    const std::string text = head + "_COUNTS\n1 2 3 4 5\n; (Data for Range number 2)\n_STEPSIZE=0.25\n_2THETA=20\n_COUNTS\n7 8 9\n" +
                             "; (Data for Range number 3)\n_STEPCOUNT=2\n_START=30\n_2THETACPS\n30 4\n30.25 8\n";
    std::vector<Diffraction_Pattern_Type> ranges;
    ASSERT_TRUE(Read_Uxd_Ranges(text, ranges).ok());
    ASSERT_EQ(ranges.size(), 3u);
    EXPECT_EQ(ranges[0].npts, 5);
    EXPECT_EQ(ranges[0].npts_claimed, 6);
    EXPECT_EQ(ranges[0].title, "Corundum plate, range 1");
    EXPECT_EQ(ranges[1].y, (std::vector<float>{7, 8, 9}));  // no step count: the points that it holds
    EXPECT_EQ(ranges[1].x, (std::vector<float>{20, 20.25f, 20.5f}));
    EXPECT_EQ(ranges[2].title, "Corundum plate, range 3");
    EXPECT_EQ(ranges[2].sigma, (std::vector<float>{1, 2}));
    EXPECT_FLOAT_EQ(ranges[2].conv[0], 1.5406f);
    ranges[0].title = "Corundum plate";
    Expect_Same(Good(text), ranges[0], "the first range");

    ASSERT_TRUE(Read_Uxd_Ranges(head + "_COUNTS\n1 2 3\n", ranges).ok());
    ASSERT_EQ(ranges.size(), 1u);
    EXPECT_EQ(ranges[0].title, "Corundum plate");
    // A range without numbers is left out, a title of full width keeps its number.
    const std::string wide = "_SAMPLE='" + std::string(120, 'x') + "'\n";
    ASSERT_TRUE(Read_Uxd_Ranges(wide + "_STEPSIZE=1\n_COUNTS\n1 2\n; a\n_COUNTS\n; none\n_COUNTS\n3\n", ranges).ok());
    ASSERT_EQ(ranges.size(), 2u);
    EXPECT_EQ(ranges[1].y, std::vector<float>{3});
    EXPECT_TRUE(ranges[1].title.ends_with("x, range 3"));
}

TEST(Uxd, RangesReserveWhatTheFileCanStandFor) {
    std::string text = "_STEPSIZE=0.01\n";
    for (int i = 0; i < 1000; ++i) text += "_STEPCOUNT=30000\n_COUNTS\n1 2\n;\n";
    std::vector<Diffraction_Pattern_Type> ranges;
    ASSERT_TRUE(Read_Uxd_Ranges(text, ranges).ok());
    ASSERT_EQ(ranges.size(), 1000u);
    std::size_t points = 0;
    for (const auto& range : ranges) points += range.x.size();
    EXPECT_EQ(points, 2000u);
}

TEST(Uxd, EveryFault) {
    const std::string header = " Error on Socabim UXD Intensity file, check your mode parameter!";
    const std::string data = " Error on Socabim UXD Intensity file, check your instr parameter!";
    const std::string points = " Error in Intensity file, Number of points negative or zero!";
    const std::pair<std::string, std::string> cases[] = {{"", header},
                                                         {head, header},
                                                         {"_STEPSIZE=wide\n_COUNTS\n1\n", header},
                                                         {"_STEPCOUNT=2.5\n_COUNTS\n1\n", header},
                                                         {"_START=1e99\n_COUNTS\n1\n", header},
                                                         {head + "_COUNTS\n", data},
                                                         {head + "_COUNTS=\n\n", data},
                                                         {head + "_COUNTS\nnothing\n", data},
                                                         {head + "_CPS\n_DETECTOR=1\n5\n", data},
                                                         {"_START=10\n_COUNTS\n1 2\n", points},
                                                         {"_STEPSIZE= \n_STEPCOUNT=-1\n_COUNTS\n1 2\n", points},
                                                         {"_START=170\n_STEPSIZE=0.1\n_COUNTS\n1 2\n", points},
                                                         {"_STEPSIZE=0.1\n_STEPCOUNT=3000000000\n_COUNTS\n1 2\n", points},
                                                         {"_STEPSIZE=0.000001\n_COUNTS\n1 2\n", points}};
    for (const auto& [text, message] : cases) {
        Diffraction_Pattern_Type p;
        EXPECT_EQ(Read_Uxd(text, p).message, message) << text;
        std::vector<Diffraction_Pattern_Type> ranges;
        EXPECT_EQ(Read_Uxd_Ranges(text, ranges).message, message) << text;
    }
}

TEST(Uxd, ARealFile) {
    const std::string text = Real_File("uxd/bt86.uxd");
    if (text.empty()) GTEST_SKIP();
    const auto p = Good(text);
    EXPECT_EQ(p.title, "BT86");
    EXPECT_EQ(p.xmin, 3);
    EXPECT_FLOAT_EQ(p.step, 0.015592f);
    EXPECT_EQ(p.conv[1], 1.54439f);
    EXPECT_EQ(p.y[0], 187);
    ASSERT_EQ(p.npts, 2374);           // of no step count
    EXPECT_NEAR(p.xmax, 40.0, 0.005);  // its last line is "40.00 269"
    EXPECT_EQ(p.y[2373], 269);
}

}  // namespace
}  // namespace vntl::test
