// XYSIGMA and .gr: files written by the test from known numbers; the counting of records; grids checked against the cubic that made them.
#include <sstream>

#include "patterns/testing.hpp"
#include "patterns/xysigma.hpp"

namespace vntl::test {
namespace {

std::string Records(int n, const char* rest = "10") {
    return Lines(n, 1, [=](int i) { return Printed("%.2f %d %s", 10 + 0.1 * i, 100 + i, rest); });
}

template <bool gr>
Status Of_Columns(std::string_view text, Diffraction_Pattern_Type& p) {
    return Read_Xysigma(text, gr, p);
}

Diffraction_Pattern_Type Good(const std::string& text, bool gr = false) {
    return test::Good(gr ? Of_Columns<true> : Of_Columns<false>, text);
}

TEST(Xysigma, TheRecordCountedLastIsNotPartOfThePattern) {
    EXPECT_EQ(Good(Records(101)).npts, 100);
    EXPECT_EQ(Good(Records(101) + "0 0 0\n").npts, 101);
    EXPECT_EQ(Good(Records(9) + "0 0 0\n" + Records(5)).npts, 14);  // a line of zeros ends the data from the 11th record on
    EXPECT_EQ(Good(Records(10) + "0 0 0\n" + Records(5)).npts, 10);
}

TEST(Xysigma, FieldsBecomeVariancesAndCalculatedIntensities) {
    const auto p = Good("a title\n" + Records(20, "2 77"));
    EXPECT_EQ(p.title, "a title");
    EXPECT_EQ(p.sigma[3], 4);  // 2 squared
    EXPECT_EQ(p.ycalc[3], 77);
    EXPECT_FLOAT_EQ(p.x[3], 10.3f);
    EXPECT_EQ(p.y[3], 103);
    EXPECT_FALSE(p.constant_step);
    EXPECT_FLOAT_EQ(p.xmax, p.x.back());
    // The sum of all steps, the record counted last included, through the number of points less one: 19 x 0.1 / 18.
    EXPECT_NEAR(p.step, 1.9 / 18, 1e-5);

    const auto without = Good(Records(20, "0"));
    EXPECT_EQ(without.sigma[3], 103);  // no uncertainties in the file: the variance is the intensity
    EXPECT_EQ(Good("0.0 0 0\n" + Records(20, "0")).sigma[0], 0);
    EXPECT_EQ(Good("9.0 5 0\n" + Records(20)).sigma[0], 1);  // one zero among others
    EXPECT_EQ(Good("! Legend_X r.l.u.\n" + Records(20, "2 77")).ycalc[3], 0);
}

TEST(Xysigma, AFileWithoutAHeadHasNoTitle) {
    EXPECT_EQ(Good(Replace_All(Records(20), " ", ";")).title, "");
    EXPECT_EQ(Good("2 crystals\n" + Records(20)).title, "2 crystals");
    const auto p = Good(Records(20));
    EXPECT_EQ(p.title, "");
    EXPECT_EQ(p.x[0], 10);
    EXPECT_EQ(p.npts, 19);
}

TEST(Xysigma, TheFixedHead) {
    const std::string head = "XYDATA\nTITLE mine\nINTER %s\nTEMP 35.5\n# not counted\nx\ny\n";
    const auto with = [&](const std::string& inter, const std::string& data) {
        std::string text = head;
        text.replace(text.find("%s"), 2, inter);
        return Good(text + data);
    };
    const auto p = with("2.0 3.0 0 0.0", Records(20));
    EXPECT_EQ(p.title, "mine");
    EXPECT_EQ(p.TSample, 35.5f);
    EXPECT_FLOAT_EQ(p.x[1], 20.2f);
    EXPECT_EQ(p.y[1], 303);
    EXPECT_EQ(p.sigma[1], 900);
    EXPECT_FLOAT_EQ(with("-2.0 3.0 0 0.0", Records(20)).x[1], 10.1f);  // a factor that is not positive counts as 1
    EXPECT_TRUE(with("1 1 2 0.0", Records(20)).constant_step);
}

TEST(Xysigma, InterpolationOntoAGridFollowsALine) {
    // A natural cubic spline reproduces a straight line; the step of the file is 0.1 and the grid's is 0.25.
    const auto p = Good("XYDATA\nINTER 1 1 1 0.25\na\nb\nc\nd\n" + Records(41));
    EXPECT_FLOAT_EQ(p.step, 0.25f);
    EXPECT_EQ(p.npts, static_cast<int>(3.9 / 0.25 + 1.05));
    for (std::size_t i = 0; i < p.x.size(); ++i) EXPECT_NEAR(p.y[i], 100 + (p.x[i] - 10) / 0.1, 0.02) << i;
    const auto fine = Good("XYDATA\nINTER 1 1 1 0.001\na\nb\nc\nd\n" + Records(41));  // more points than lines: the file's own number
    EXPECT_EQ(fine.npts, 40);
    EXPECT_EQ(Good("XYDATA\nINTER 1 1 1 0.0\na\nb\nc\nd\n" + Records(41)).npts, 40);
}

TEST(Xysigma, PairDistributionFunctions) {
    const auto p =
        Good("any 1 2 3\n ... title=Nickel (sim)\n#L r(A) G(r)\n1.0 2.0 9 0.5\n1.1 -3.0 9 0.5\n1.2 4.0 9 0.5\n1.3 5.0 9 0.5\n", true);
    EXPECT_EQ(p.npts, 3);
    EXPECT_EQ(p.title, "Nickel (sim)");
    EXPECT_EQ(p.sigma[1], 0.25f);
    EXPECT_EQ(p.scat_var, "Distance");
    EXPECT_EQ(p.legend_x, "Distance R(Angstroms)");
    EXPECT_EQ(p.legend_y, "G(R)x1000");
    EXPECT_EQ(p.ymin, -3);
}

TEST(Xysigma, PairDistributionsWithoutTheirMark) {
    const std::string records[] = {"0.01 2.0\n0.02 -3.0\n0.03 4\n", "0.01 2.0 0.5\n0.02 -3 0.5\n0.03 4 1\n",
                                   "0.01 2.0 0.1 0.5\n0.02 -3 0.1 0.5\n0.03 4 .1 1\n"};
    for (const std::string head : {"", "#### start data\n#S 1\n", "# r G(r)\n\n", "r(A) G\n", "! TITLE x\n; 1 2\n"})
        for (const std::string& data : records) {
            const auto p = Good(head + data, true);
            EXPECT_EQ(p.x, (std::vector<float>{0.01f, 0.02f})) << head << data;
            EXPECT_EQ(p.sigma[1], &data == records ? 3.0f : 0.25f) << head << data;
            EXPECT_EQ(p.ycalc[1], 0);
            EXPECT_EQ(p.scat_var + p.legend_x + p.legend_y, "DistanceDistance R(Angstroms)G(R)x1000");
        }
}

TEST(Xysigma, ColumnsApartByAnySeparator) {
    const auto blanks = Good("a title\n" + Records(20, "2 77"));
    std::string text = Records(20, "2 77");
    for (const char* separator : {",", " , ", "\t", ", ", ";", " ; ", "; "}) {
        const auto p = Good("a title\n" + Replace_All(text, " ", separator));
        EXPECT_EQ(p.x, blanks.x) << separator;
        EXPECT_EQ(p.y, blanks.y) << separator;
        EXPECT_EQ(p.sigma, blanks.sigma) << separator;
        EXPECT_EQ(p.ycalc, blanks.ycalc) << separator;
        EXPECT_EQ(p.title, "a title") << separator;
    }
    const auto commas = Good("2theta;I;sigma\n" + Replace_All(Replace_All(text, " ", ";"), ".", ","));
    EXPECT_EQ(commas.x, blanks.x);
    EXPECT_EQ(commas.ycalc, blanks.ycalc);
    EXPECT_EQ(Good("XYDATA\nINTER 1 2 0 0\na\nb\nc\nd\n" + Replace_All(Records(20), " ", ";")).y[1], 202);
    EXPECT_EQ(Good(Replace_All(Records(20, ""), " ", ";")).sigma[3], 103);  // "10.00;100;" has no uncertainty
    // What was read as blanks and commas have it is read so still, whatever a head of it holds.
    EXPECT_EQ(Good("12;30 o'clock\n12;31\n" + Records(20)).npts, 19);
    for (const char* odd : {"12;x;3\n", "12 13;1;2\n", "x;1\n"})
        Expect_Faults(Of_Columns<false>,
                      {{Replace_All(Records(20), " ", ";") + odd + "20;1;2\n", " Error reading a profile DATA file of XYSigma format"}});
}

TEST(Xysigma, HeadsAndRemarksOfAnyMark) {
    for (const std::string mark : {"'", "%", ";", "*", "//", "#", "!"}) {
        const std::string head = mark + " 10 20 30\n" + mark + "Legend_X  r\n" + mark + "1;2;3\n";
        for (const char* separator : {" ", ",", "\t", ";"}) {
            const std::string records = Replace_All(Records(20), " ", separator);
            const auto p = Good(head + records.substr(0, 13) + mark + " half way 12\n" + records.substr(13));
            EXPECT_EQ(p.npts, 19) << mark << separator;
            EXPECT_EQ(p.title, mark + " 10 20 30");
            EXPECT_EQ(p.legend_x, "r");
        }
    }
}

TEST(Xysigma, EveryFault) {
    const std::string points = " Error in Intensity/Profile file, Number of points negative or zero!";
    const std::string head = " Error reading a profile DATA file of XYSigma format";
    Expect_Faults(Of_Columns<false>, {{"", points},
                                      {"1 2 3\n", points},
                                      {"1 2 3\n2 3 4\n", points},
                                      {"no numbers\nat all\n", head},
                                      {"XYDATA\na\nb\n", head},
                                      {"XYDATA\nINTER a b c\na\nb\nc\nd\n" + Records(20), " Error reading"},
                                      {Records(20) + "12 x 4\n" + Records(5), " Error reading X,Y, Sigma Ycalc in profile DATA file"},
                                      {Records(20) + "nan 1 4\n", " Error in Intensity file, check your instr parameter!"}});
    Expect_Faults(Of_Columns<true>, {{"a\nb\n#L r(A) G(r)\n", points}, {"a\nb\nno numbers\n", head}});
    EXPECT_EQ(Good(Records(20) + "12.5 nan 4\n13 1 1\n").ymax, 119);  // a gap in y is kept, and not counted for the range
}

TEST(Xysigma, LongLines) { EXPECT_EQ(Good(std::string(5'000'000, 'x') + "\n" + Records(20)).title.size(), 180u); }

// The numbers of a real file, cut by the standard library, line by line.
TEST(Xysigma, RealFilesHoldWhatTheirLinesSay) {
    for (const char* name : {"xye/lactose_x3.xye", "xye/pg3_20254_tof.xye", "gr/300K.gr", "gr/550K.gr"}) {
        std::istringstream file(Real_File(name));
        if (file.str().empty()) GTEST_SKIP() << name;
        const auto p = Good(file.str(), *name == 'g');
        std::vector<std::array<double, 2>> lines;
        for (std::string line; std::getline(file, line);) {
            std::istringstream words(line);
            double x = 0, y = 0;
            if (line.starts_with("#L r")) lines.clear();
            if (words >> x >> y) lines.push_back({x, y});
        }
        ASSERT_EQ(p.npts + 1, static_cast<int>(lines.size())) << name;
        for (std::size_t i = 0; i < p.x.size(); ++i) {
            ASSERT_FLOAT_EQ(p.x[i], static_cast<float>(lines[i][0])) << name << i;
            ASSERT_FLOAT_EQ(p.y[i], static_cast<float>(lines[i][1])) << name << i;
        }
    }
}

}  // namespace
}  // namespace vntl::test
