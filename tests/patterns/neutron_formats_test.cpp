// R3B, NLS, G41, R3A in both forms, DMC and variable time: files written column by column from known numbers, and every fault.
#include <sstream>

#include "patterns/dmc.hpp"
#include "patterns/g41.hpp"
#include "patterns/nls.hpp"
#include "patterns/r3a.hpp"
#include "patterns/r3b.hpp"
#include "patterns/testing.hpp"
#include "patterns/time_variable.hpp"

namespace vntl::test {
namespace {

const std::string usual = " Error in Intensity file, check your instr parameter!";
const std::string wide = " Error in  Intensity file, check your instr parameter!";
const std::string none = " Error in Intensity file, Number of points negative or zero!";

double Count(int i) { return 1000 + 7 * i % 13; }
int Detectors(int i) { return i % 4; }  // 0 now and then

std::string Eights(int n, double add = 0) {
    return Lines(n, 10, [=](int i) { return Printed("%8.1f", Count(i) + add); });
}
std::string Pairs(int n, const char* count) {
    return Lines(n, 10, [=](int i) { return Printed("%2d", Detectors(i)) + Printed(count, Count(i)); });
}

Diffraction_Pattern_Type Good(const Reader& read, const std::string& text) {
    const auto p = test::Good(read, text);
    EXPECT_TRUE(p.sigma_is_variance);
    for (const auto& [habit, changed] : Habits(text)) Expect_Same(test::Good(read, changed), p, habit);
    return p;
}

void Expect_Detector_Points(const Diffraction_Pattern_Type& p, double xmin, double step, double factor) {
    for (int i = 0; i < p.npts; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int nd = std::max(Detectors(i), 1);
        ASSERT_FLOAT_EQ(p.x[at], static_cast<float>(xmin + i * step)) << i;
        ASSERT_EQ(p.y[at], Count(i)) << i;
        ASSERT_EQ(p.nd[at], nd) << i;
        ASSERT_FLOAT_EQ(p.sigma[at], static_cast<float>(Count(i) * factor / nd)) << i;
    }
}

// A pattern that ends at the last number of its file.
void Expect_Short_Of(const Diffraction_Pattern_Type& p, int held, int claimed, float xmax) {
    EXPECT_EQ(p.npts, held);
    EXPECT_EQ(p.npts_claimed, claimed);
    EXPECT_FLOAT_EQ(p.xmax, xmax);
    EXPECT_FLOAT_EQ(p.x.back(), xmax);
}

// Monitor in columns 1 to 13, start in 24 to 31, then from column 77 step, set temperature, a value of no use and sample temperature.
std::string R3b_Head(const std::string& count, const std::string& start = "  10.000", const std::string& step = "    .050") {
    return "dropped\nTbFe2   \nin a can\n     1500000." + std::string(10, '*') + start + std::string(45, 'x') + step +
           "  300.000   99.000  298.500\n" + count + "\n";
}

TEST(R3b, AFileValueForValue) {
    const auto p = Good(Read_R3b, R3b_Head("  23") + Pairs(23, "%8.0f") + "   -1000\n");
    EXPECT_EQ(p.npts, 23);
    Expect_Detector_Points(p, 10, 0.05, 1);
    EXPECT_EQ(p.title, "TbFe2 in a can");
    EXPECT_EQ(p.monitor, 1500000);
    EXPECT_EQ(p.TSetting, 300);
    EXPECT_EQ(p.TSample, 298.5f);
    EXPECT_FLOAT_EQ(p.xmax, 11.1f);
    EXPECT_EQ(p.ymin, 1000);
    EXPECT_EQ(p.ymax, 1012);
    // Three digits without a point: the last three of the start are decimals. A negative count has a positive variance.
    const auto q = Good(Read_R3b, R3b_Head("1", "   10500") + " 2     -40\nend\n");
    EXPECT_EQ(q.xmin, 10.5f);
    EXPECT_EQ(q.sigma[0], 20);
    const auto early = Good(Read_R3b, R3b_Head("  29") + Pairs(23, "%8.0f") + "   -1000\n");  // its last line is short
    Expect_Short_Of(early, 23, 29, 11.1f);
    Expect_Detector_Points(early, 10, 0.05, 1);
}

TEST(R3b, Faults) {
    const std::string points = Pairs(23, "%8.0f");
    Expect_Faults(Read_R3b, {{"", wide},
                             {"one\ntwo\n", wide},
                             {"one\ntwo\nthree\n", usual},
                             {R3b_Head("  23", "  ten   ") + points + "end\n", usual},
                             {R3b_Head("  23", "inf     ") + points + "end\n", usual},
                             {R3b_Head("  2x") + points + "end\n", usual},
                             {R3b_Head("   0") + points + "end\n", none},
                             {R3b_Head("") + points + "end\n", none},
                             {R3b_Head("  -5") + points + "end\n", none},
                             {R3b_Head("  41") + points + "end\n", wide},
                             {R3b_Head("   9") + "\nend\n", wide},
                             {R3b_Head("  23") + "  number\n" + points + "end\n", wide},
                             {R3b_Head("  23") + points, usual}});  // the closing line is missing
}

std::string Nls_Blocks(int n) {
    std::string text;
    for (int i = 0; i < n; ++i)
        text += Eights(10, 10 * i) + Lines(10, 10, [i](int k) { return Printed("%8.2f", k == 0 ? 0 : i + k / 4.0); });
    return text;
}

TEST(Nls, TheLastBlockMayBeMissing) {
    const auto p = Good(Read_Nls, "  ! LaB6\n! more\n 5.0 0.02, 5.78\n" + Nls_Blocks(4));
    EXPECT_EQ(p.npts, 40);
    EXPECT_EQ(p.title, "! LaB6");
    for (int i = 0; i < 40; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const double deviation = i % 10 == 0 ? 1 : i / 10 + i % 10 / 4.0;
        EXPECT_FLOAT_EQ(p.x[at], static_cast<float>(5 + i * 0.02));
        EXPECT_EQ(p.y[at], Count(i % 10) + i / 10 * 10) << i;
        // The first standard deviation counts as it stands, what is not measured counts as 1.
        EXPECT_FLOAT_EQ(p.sigma[at], static_cast<float>(i == 0 ? 0 : deviation * deviation)) << i;
    }
    EXPECT_EQ(p.xmax, 5.78f);
    EXPECT_EQ(p.npts_claimed, 0);
    // Of 40 points told three whole blocks have to be there; the fourth ends where one of its two lines does.
    const std::string head = "! LaB6\n5.0 0.02 5.78\n";
    for (const auto& [rest, held] : {std::pair{std::string(), 30},
                                     {Eights(10), 30},
                                     {"end\n", 30},
                                     {Eights(10) + "end\n", 30},
                                     {Eights(7) + Eights(7, -990), 37},
                                     {Eights(10) + Eights(4, -990), 34}})
        Expect_Short_Of(Good(Read_Nls, head + Nls_Blocks(3) + rest), held, 40, static_cast<float>(5 + 0.02 * (held - 1)));
    // Points that fill no block stand in a short one.
    EXPECT_EQ(Good(Read_Nls, "5 1 20\n" + Nls_Blocks(1) + Eights(6) + Eights(6)).npts, 16);
    EXPECT_EQ(Good(Read_Nls, "5 1 20\n" + Nls_Blocks(2)).npts_claimed, 0);
    Expect_Short_Of(Good(Read_Nls, "5 1 20\n" + Nls_Blocks(1)), 10, 16, 14);
}

TEST(Nls, Faults) {
    const std::string block = Nls_Blocks(1);
    Expect_Faults(Read_Nls, {{"", wide},
                             {"! a\n! b\n", wide},
                             {"! a\nno range\n", wide},
                             {"5 1e39 20\n", wide},
                             {"5 0 5\n", none},
                             {"5 1 3\n", none},
                             {"5 1e-9 20\n", none},
                             {"5 1 20\n", " Error in (NLS) Intensity file, check your instr parameter!1"},
                             {"5 0.1 7.9\n" + block, " Error in (NLS) Intensity file, check your instr parameter!1"},
                             {"5 0.1 7.9\n" + block + Eights(10), " Error in (NLS) Intensity file, check your instr parameter!2"},
                             {"5 0.1 7.9\n  counts\n" + block, " Error in (NLS) Intensity file, check your instr parameter!1"}});
}

std::string G41_File(const std::string& counts, const std::string& range = "10 0.1 10.9") {
    return "CeO2\nx\ny\n ! note\n!\n" + counts + "\n" + range + "\n1 2 3 4 5\n6 7, 8 9 10\n";
}

TEST(G41, VariancesFromCountsOrDeviations) {
    const auto p = Good(Read_G41, G41_File("10 1.5 2.5 0 3000. 2000."));
    EXPECT_EQ(p.title, "CeO2");
    EXPECT_EQ(p.npts, 10);
    EXPECT_EQ(p.TSample, 1.5f);
    EXPECT_EQ(p.TSetting, 2.5f);
    EXPECT_EQ(p.monitor, 3000);
    EXPECT_EQ(p.y[6], 7);
    EXPECT_FLOAT_EQ(p.sigma[6], 10.5f);
    EXPECT_FLOAT_EQ(p.x[9], 10.9f);
    EXPECT_EQ(Good(Read_G41, G41_File("10 1.5 2.5 0 3000. 1.0")).sigma[6], 7);
    EXPECT_EQ(Good(Read_G41, G41_File("10 1.5 2.5 0 0.5 2000.")).sigma[6], 7);
    const auto q = Good(Read_G41, G41_File("10 1.5 2.5 1 3000. 2000.") + "4*0.5 3 0 2*0.0001\n2 2\n");
    EXPECT_EQ(q.sigma, (std::vector<float>{.25f, .25f, .25f, .25f, 9, 1, 1, 1, 4, 4}));
}

TEST(G41, Faults) {
    const std::string bad = usual + " ";
    Expect_Faults(Read_G41, {{"", bad},
                             {"a\nb\nc\n! d\n", bad},
                             {G41_File("ten 1 2 0 1 1"), bad},
                             {G41_File("10 nan 2 0 1 1"), bad},
                             {G41_File("10 1 2 0.5 1 1"), bad},
                             {G41_File("99999999999 1 2 0 1 1"), bad},
                             {G41_File("0 1 2 0 1 1"), none},
                             {G41_File("2000000000 1 2 0 1 1"), none},
                             {G41_File("10 1 2 0 1 1", "10 step 20"), bad},
                             {G41_File("11 1 2 0 1 1"), bad},
                             {G41_File("10 1 2 1 1 1") + "1 2 3\n", bad}});
}

std::string R3a_Head(const std::string& step, const std::string& monitors = "  20000.  10000.") {
    return "Nb3Sn\n" + std::string(16, 'x') + step + "\n   6.000 more\n" + monitors + "\n";
}

TEST(R3a, TheMarkerAndTheLineAboveItAreNotPoints) {
    const auto p = Good(Read_R3a, R3a_Head("    .050") + Pairs(50, "%6.0f") + "   -1000 and more\n 1   99\n");
    EXPECT_EQ(p.npts, 40);
    EXPECT_EQ(p.title, "Nb3Sn");
    EXPECT_EQ(p.monitor, 20000);
    EXPECT_FLOAT_EQ(p.xmax, 7.95f);
    EXPECT_EQ(p.ymax, 1012);
    Expect_Detector_Points(p, 6, 0.05, 2);
    for (const char* monitors : {"  20000.      .5", "  20000.", "  20000.       0"})
        Expect_Detector_Points(Good(Read_R3a, R3a_Head("    .050", monitors) + Pairs(50, "%6.0f") + " 1-1000.\n"), 6, 0.05, 1);
}

TEST(R3a, ScansWithoutPointsAndWithoutMarkers) {
    for (const char* lines : {"   -1000\n", " 1  1000 1  1000\n   -1000\n"}) {
        const auto p = Good(Read_R3a, R3a_Head("    .050") + lines);
        EXPECT_EQ(p.npts, 0) << lines;
        EXPECT_GT(p.ymin, p.ymax);
        EXPECT_GT(p.xmax, p.xmin);  // so that the missing points are told, not a range
    }
    // The step tells 360 lines: of 400 as many are read and the last one is left out; fewer are all of the pattern. The marker in line 361
    // is not seen.
    const auto full = Good(Read_R3a, R3a_Head("    .050") + Pairs(3600, "%6.0f") + "   -1000\n");
    EXPECT_EQ(full.npts, 3590);
    Expect_Detector_Points(full, 6, 0.05, 2);
    EXPECT_EQ(full.npts_claimed, 0);
    for (const int held : {20, 27, 3585})
        for (const char* end : {"", "\n\n"}) {
            const auto few = Good(Read_R3a, R3a_Head("    .050") + Pairs(held, "%6.0f") + end);
            Expect_Short_Of(few, held, 3590, static_cast<float>(6 + 0.05 * (held - 1)));
            Expect_Detector_Points(few, 6, 0.05, 2);
        }
    EXPECT_EQ(Good(Read_R3a, R3a_Head("  1.0E-9") + Pairs(30, "%6.0f") + "   -1000\n").npts, 20);  // a marker bounds any step
}

TEST(R3a, Faults) {
    const std::string lines = Pairs(20, "%6.0f") + "   -1000\n";
    Expect_Faults(Read_R3a, {{"", usual},
                             {"title\n", usual},
                             {R3a_Head("  step  ") + lines, usual},
                             {R3a_Head("     nan") + lines, usual},
                             {R3a_Head("    .050", "one") + lines, usual},
                             {R3a_Head("    .050", "     inf       2") + lines, usual},
                             {R3a_Head("   0.000") + lines, none},
                             {R3a_Head("   -.050") + lines, none},
                             {R3a_Head("  50.000") + lines, none},
                             {R3a_Head("  1.0E-9") + Pairs(20, "%6.0f"), none},
                             {R3a_Head("    .050") + "x1    10\n" + lines, usual}});
}

TEST(R3a, TheOldForm) {
    const auto p = Good(Read_R3a_Old, " 10. 0.1 12.4 \n" + Pairs(25, "%6.0f"));
    EXPECT_EQ(p.npts, 25);
    Expect_Short_Of(Good(Read_R3a_Old, " 10. 0.1 12.4 \n" + Pairs(22, "%6.0f")), 22, 25, 12.1f);
    EXPECT_EQ(p.title, " No title: data format -> old R3A");
    EXPECT_EQ(p.xmax, 12.4f);
    Expect_Detector_Points(p, 10, 0.1, 1);
    Expect_Faults(Read_R3a_Old, {{"", usual},
                                 {"title\n10 0.1 20\n", usual},
                                 {"10 0.1 5\n", none},
                                 {"10 1e-7 20\n", none},
                                 {"10 0.1 12.5\n" + Pairs(20, "%6.0f"), usual},
                                 {"10 0.1 12.4\n 1 12.34.5\n", usual}});
}

TEST(Dmc, DeviationsAreTakenWhereTheyFollow) {
    const std::string head = "Ni, HRPT\nlambda= 1.494\n  2.95 0.05 4.15 18000000., sample=\"Ni\"\n";
    const auto p = Good(Read_Dmc, head + Eights(25) + Eights(25, -990) + " Filelist='a'\n");
    EXPECT_EQ(p.npts, 25);
    EXPECT_EQ(p.title, "Ni, HRPT");
    EXPECT_EQ(p.ymin, 1000);
    for (int i = 0; i < 25; ++i) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_FLOAT_EQ(p.x[at], static_cast<float>(2.95 + 0.05 * i));
        EXPECT_EQ(p.y[at], Count(i));
        EXPECT_EQ(p.sigma[at], (Count(i) - 990) * (Count(i) - 990));
    }
    for (const char* behind : {"", "\n  \n", " Filelist='a'\n", "  bMon=0.;\n"}) {
        const auto q = Good(Read_Dmc, head + Eights(25) + behind);
        EXPECT_EQ(q.sigma, q.y) << behind;
    }
    for (const char* end : {"", "\n  \n"}) {
        const auto early = Good(Read_Dmc, head + Eights(13) + end);
        Expect_Short_Of(early, 13, 25, 3.55f);
        EXPECT_EQ(early.sigma, early.y);
    }
    // Deviations that are missing are the roots of the counts.
    for (const std::string end : {"", "\n\n", " Filelist='a'\n a4=2.9 3.; Npkt=1600\n"})
        for (const int measured : {10, 17, 20}) {
            const auto q = Good(Read_Dmc, head + Eights(25) + Eights(measured, -990) + end);
            EXPECT_EQ(q.npts, 25);
            EXPECT_EQ(q.npts_claimed, 0);
            for (int i = 0; i < 25; ++i)
                EXPECT_EQ(q.sigma[static_cast<std::size_t>(i)], i < measured ? (Count(i) - 990) * (Count(i) - 990) : Count(i)) << measured;
        }
    EXPECT_EQ(Good(Read_Dmc, "t\nx\n0 0.05 0.95\n" + Eights(20)).npts, 20);
}

TEST(Dmc, Faults) {
    const std::string low = " Number of points too low! check your instr parameter!";
    const std::string third = " Error reading 2theta_min,step,2theta_max (third line), check your instr parameter!";
    const std::string range = "t\nx\n0 0.05 1.2\n";
    Expect_Faults(
        Read_Dmc,
        {{"", " Error in Intensity file (first line), check your instr parameter!"},
         {"t\n", " Error in Intensity file (second line), check your instr parameter!"},
         {"t\nx\n", third},
         {"t\nx\n0 step 1\n", third},
         {"t\nx\n0 1e-10 1\n", third},
         {range, " Error in Intensity file (intensities), check your instr parameter!"},
         {"t\nx\n0 0 0\n", third},
         {"t\nx\n0 0.05 0.9\n" + Eights(19), low},
         {"t\nx\n5 0.05 1\n", low},
         {range + "  counts\n", " Error in Intensity file (intensities), check your instr parameter!"},
         {range + Eights(25) + Eights(10) + "  sigma\n" + Eights(5), " Error in Intensity file (sigmas), check your instr parameter!"},
         {range + Eights(25) + Eights(10) + "    10.0  sigma\n", " Error in Intensity file (sigmas), check your instr parameter!"}});
}

TEST(Dmc, ARealFile) {
    const std::string text = Real_File("dmc/hrpt.dat");
    if (text.empty()) GTEST_SKIP();
    const auto p = Good(Read_Dmc, text);
    EXPECT_EQ(p.npts, 3200);
    EXPECT_EQ(p.xmin, 2.948f);
    EXPECT_EQ(p.step, 0.05f);
    EXPECT_NEAR(p.x.back(), 162.898, 1e-4);
    EXPECT_EQ(p.title, "HRPT, NdNi4MgDx_V_HI,a4=3.0,N18");
    std::istringstream lines(text);
    std::string line, field;
    for (int i = 0; i < 3; ++i) std::getline(lines, line);
    for (std::size_t i = 0; i < 6400; ++i) {
        if (i % 10 == 0) std::getline(lines, line);
        const float value = std::stof(line.substr(8 * (i % 10), 8));
        ASSERT_EQ(i < 3200 ? p.y[i] : p.sigma[i - 3200], i < 3200 ? value : value * value) << i;
    }
}

TEST(Time_Variable, IntensitiesOnTheMeanTime) {
    const auto time = [](int i) { return 1.0 + i % 3; };  // 12 points: the mean is 2
    const std::string head = "Quartz\na\nb\nc\n10 0.5 15.5\n";
    const auto p =
        Good(Read_Time_Variable, head + Lines(12, 5, [&](int i) { return Printed("%6.1f", time(i)) + Printed("%10.0f", Count(i)); }));
    EXPECT_EQ(p.npts, 12);
    EXPECT_EQ(p.title, "Quartz");
    EXPECT_FALSE(p.constant_step);
    for (int i = 0; i < 12; ++i) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_FLOAT_EQ(p.x[at], static_cast<float>(10 + 0.5 * i));
        EXPECT_FLOAT_EQ(p.y[at], static_cast<float>(Count(i) * 2 / time(i)));
        EXPECT_EQ(p.sigma[at], p.y[at]);
    }
    const auto with = [](const std::string& t) { return "a\nb\nc\nd\n1 1 2\n     1        10" + t + "        10\n"; };
    Expect_Faults(Read_Time_Variable, {{"", wide},
                                       {"a\nb\nc\n", wide},
                                       {"a\nb\nc\nd\n1 1\n", wide},
                                       {"a\nb\nc\nd\n2 1 0\n", wide},
                                       {"a\nb\nc\nd\n0 1e-9 9\n", wide},
                                       {head, wide},
                                       {with("     x"), wide},
                                       {with("   inf"), wide},
                                       {with("   nan"), wide},
                                       {with("     0"), " Zero time in *.DAT "},
                                       {with("      "), " Zero time in *.DAT "}});
}

// What is no plain number goes another way than most lines do: signs, exponents, commas, implied places, more digits than a float has.
TEST(Fixed_Columns, UnusualNumbersReadAsTheUsual) {
    const std::string head = "t\nx\n0 1 29\n";
    const std::string plain = "123456781.2345670.333333     0.5            12.516777216      7.      0. 0009.90\n";
    const std::string unusual = "     -12     +13    1.E21234567899999999    .125   1 2 3     1,2,.3333333\n";
    const auto p = Good(Read_Dmc, head + plain + unusual + "       .12.34567\n");
    const std::vector<float> expected = {12345678, 1.234567f, .333333f, .5f,  0,     12.5f, 16777216, 7, 0,         9.9f, -12,
                                         13,       100,       12345678, 1e8f, .125f, 123,   1,        2, .3333333f, 0,    12.34567f};
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(p.y[i], expected[i]) << i;
}

// Letters of titles by Latin-1 and UTF-8; titles longer than any record holds.
TEST(Titles, OfAllFormats) {
    const std::string dmc = "\nx\n0 1 19\n" + Eights(20), g41 = "\nx\ny\n1 1 1 0 1 1\n0 1 0\n5\n",
                      time = "\nx\ny\nz\n0 1 0\n     1        10\n";
    const std::string r3a = R3a_Head("    .050").substr(5) + "   -1000\n";
    const std::string nls = "\n0 1 0\n       1\n       1\n";
    for (const auto& [read, rest] :
         {std::pair{&Read_Dmc, dmc}, {Read_G41, g41}, {Read_Time_Variable, time}, {Read_R3a, r3a}, {Read_Nls, nls}}) {
        EXPECT_EQ(Good(read, "! K\xC3\xA4se" + rest).title, "! K\xC3\xA4se");
        EXPECT_EQ(Good(read, "!" + std::string(3'000'000, 'x') + rest).title.size(), read == Read_Nls ? 132u : 180u);
    }
}

}  // namespace
}  // namespace vntl::test
