// CSV, UDF, JCP and XRDML of a laboratory diffractometer: files written here from known numbers in their columns, every message, and what
// other programs and newer instruments make of the formats.
#include <sstream>

#include "base/text_file.hpp"
#include "patterns/jcp.hpp"
#include "patterns/panalytical_csv.hpp"
#include "patterns/reading.hpp"
#include "patterns/udf.hpp"
#include "patterns/xrdml/xrdml.hpp"

namespace vntl::test {
namespace {

int Count(int i) { return 100 + (i * 37) % 900; }

// Every good file of the formats below: n counts of the same kind, from 10 in steps of 0.02, copper radiation.
void Expect_Counts(const Diffraction_Pattern_Type& p, int n, bool constant_step) {
    ASSERT_EQ(p.npts, n);
    ASSERT_EQ(p.x.size(), static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const auto at = static_cast<std::size_t>(i);
        ASSERT_NEAR(p.x[at], 10 + 0.02 * i, 2e-5) << i;
        ASSERT_EQ(p.y[at], Count(i)) << i;
        ASSERT_EQ(p.sigma[at], Count(i)) << i;
    }
    EXPECT_FLOAT_EQ(p.conv[0], 1.5406f);
    EXPECT_FLOAT_EQ(p.conv[1], 1.5444f);
    EXPECT_FLOAT_EQ(p.conv[2], 0.5f);
    EXPECT_EQ(p.xmin, 10);
    EXPECT_NEAR(p.step, 0.02, 1e-6);
    EXPECT_TRUE(p.sigma_is_variance);
    EXPECT_EQ(p.constant_step, constant_step);
    EXPECT_EQ(p.TSample, 0);
    EXPECT_GT(p.ymax, p.ymin);
}

std::string Csv(int told, int held) {
    std::string text = "[Measurement conditions]\nTitle 1,Corundum\nK-Alpha1 wavelength,1.54060\nK-Alpha2 wavelength,1.54440\n";
    text += "Ratio K-Alpha2/K-Alpha1,0.50000\nData angle range,10.0000,29.9800\nScan step size,0.0200\n";
    text += Printed("No. of points,%d\n[Scan points]\nAngle,Intensity\n", told);
    for (int i = 0; i < held; ++i) text += Printed("%.4f,%d\n", 10 + 0.02 * i, Count(i));
    return text;
}

TEST(Panalytical_Csv, FieldsStandInTheirColumns) {
    const auto p = Good(Read_Panalytical_Csv, Csv(1000, 998));
    Expect_Counts(p, 998, false);  // what the file holds, not what it claims
    EXPECT_EQ(p.npts_claimed, 1000);
    EXPECT_EQ(p.xmax, p.x.back());
    const auto whole = Good(Read_Panalytical_Csv, Csv(1000, 1000));
    EXPECT_FLOAT_EQ(whole.xmax, 29.98f);
    EXPECT_EQ(whole.npts_claimed, 0);
    EXPECT_EQ(Good(Read_Panalytical_Csv, Csv(5, 9)).npts, 5);
    EXPECT_EQ(Good(Read_Panalytical_Csv, Csv(9, 5) + "end\n11.0,1\n").npts, 5);
    EXPECT_EQ(Good(Read_Panalytical_Csv, Replace_All(Csv(9, 5), "10.0200,", "10.0200  ")).y[1], Count(1));
}

TEST(Panalytical_Csv, DecimalCommasWithAnotherSeparatorOrInQuotes) {
    const std::string text = Csv(50, 50);
    std::string commas = Replace_All(Replace_All(text, ",", ";"), ".", ",");
    commas = Replace_All(commas, "No, of", "No. of");
    Expect_Counts(Good(Read_Panalytical_Csv, commas), 50, false);
    Expect_Counts(Good(Read_Panalytical_Csv, Replace_All(commas, ";", "\t")), 50, false);
    Expect_Counts(Good(Read_Panalytical_Csv, Replace_All(Replace_All(text, ",", ";"), ";Cor", ",Cor")), 50, false);

    std::string quoted;
    Line_Cursor lines(commas);
    for (std::string_view line; lines.Next(line);) quoted += '"' + Replace_All(line, ";", "\",\"") + "\"\n";
    Expect_Counts(Good(Read_Panalytical_Csv, quoted), 50, false);

    const std::string bare = "No. of points,9\n[Scan points]\nAngle;I\n10,5;7\n10,75;8,5\n";  // neither range nor step nor a told separator
    const auto p = Good(Read_Panalytical_Csv, bare);
    EXPECT_EQ(p.x, (std::vector<float>{10.5f, 10.75f}));
    EXPECT_EQ(p.y[1], 8.5f);
    EXPECT_EQ(p.xmax, 10.75f);
    EXPECT_EQ(p.step, 0.25f);
}

TEST(Panalytical_Csv, TitlesWithoutTheirCommaAndQuotes) {
    for (const auto& [line, title] : {std::pair{"Title 1,Corundum", "Corundum"},
                                      {"Title 1, a, b ", "a, b"},
                                      {"Title 1,\"a, \"\"b\"\"\"", "a, \"b\""},
                                      {"\"Title 1\",\"a, b\"", "a, b"},
                                      {"\"Title 1,a\"", "a"},
                                      {"Title 1;a; b", "a; b"},
                                      {"Title 1\ta", "a"},
                                      {"Title 1 a", "a"},
                                      {"Title 1,", ""},
                                      {"Title 1", ""}})
        EXPECT_EQ(Good(Read_Panalytical_Csv, Replace_All(Csv(5, 5), "Title 1,Corundum", line)).title, title) << line;
}

TEST(Panalytical_Csv, EveryFault) {
    const std::string end = " Error reading a profile CSV-DATA file: end of file";
    const std::string points = " Error in (Csv)Intensity file, Number of points negative or zero!";
    Expect_Faults(Read_Panalytical_Csv, {{"", end},
                                         {"Title 1,x\nNo. of points,3\n", end},
                                         {"No. of points,3\n[Scan points]\n", end},
                                         {"No. of points,3\n[Scan points]\nAngle\n", end},
                                         {"Scan step size,nan\nNo. of points,3\n[Scan points]\nAngle\n1,2\n", end},
                                         {Csv(0, 5), points},
                                         {Csv(2'000'000'000, 5), points},
                                         {"No. of points,1e300\n[Scan points]\nA\n1,2\n", end},
                                         {"No. of points,3\n[Scan points]\nAngle\nno point\n", points}});
}

std::string Udf(int n, const char* wavelength = "           ") {
    std::string text = Printed("SampleIdent,Corundum,/\nLabdaAlpha1,%s1.54060,/\nLabdaAlpha2,%s1.54440,/\n", wavelength, wavelength);
    text += Printed("RatioAlpha21, 0.50000,/\nDataAngleRange,  10.0000, %.4f,/\nScanStepSize,    0.0200,/\nRawScan\n", 10 + 0.02 * (n - 1));
    for (int i = 0; i < n; ++i) text += Printed("%8d%s", Count(i), i + 1 == n ? "/\n" : i % 8 == 7 ? "\n" : ",");
    return text;
}

TEST(Udf, RowsOfEightAndARest) {
    for (const int n : {8, 16, 21, 23}) {
        const auto p = Good(Read_Udf, Udf(n));
        Expect_Counts(p, n, true);
        EXPECT_EQ(p.title, "SampleIdent,Corundum,/");
        EXPECT_FLOAT_EQ(p.xmax, static_cast<float>(10 + 0.02 * (n - 1)));
    }
    // A wavelength in front of its column or across it; a field with a point, a blank one, one ended by a comma.
    Expect_Counts(Good(Read_Udf, Udf(21, " ")), 21, true);
    Expect_Counts(Good(Read_Udf, Udf(21, "     ")), 21, true);
    const auto p = Good(Read_Udf, "x\nDataAngleRange,1,5\nScanStepSize,1\nRawScan\n    12.5,        ,   1.5e1,-3, 7\n");
    EXPECT_EQ(p.y, (std::vector<float>{12.5f, 0, 15, -3, 7}));
    EXPECT_EQ(p.sigma[3], 3);
    const auto early = Good(Read_Udf, "x\nDataAngleRange,1,5\nScanStepSize,1\nRawScan\n      12,      13,  \n");
    EXPECT_EQ(early.y, (std::vector<float>{12, 13}));  // what its line lacks is no count of 0
    EXPECT_EQ(early.npts_claimed, 5);
    EXPECT_EQ(early.xmax, 2);
}

TEST(Udf, EveryFault) {
    const std::string range = "x\nDataAngleRange,1,9\n";
    for (const std::string& text :
         {std::string(), std::string("x\n"), range, range + "RawScan\n1\n", range + "ScanStepSize,0\nRawScan\n1\n",
          range + "ScanStepSize,-1\nRawScan\n1\n", range + "ScanStepSize,1e-9\nRawScan\n1\n", range + "ScanStepSize,1\nRawScan\n1\n",
          range + "ScanStepSize,1\nRawScan\n   abc\n 1\n", range + "ScanStepSize,inf\nRawScan\n1\n", "x\nDataAngleRange,1\n" + Udf(8)})
        Expect_Faults(Read_Udf, {{text, " Error reading a profile UDF-DATA file: end of file"}});
}

std::string Jcp(int told, int rows) {
    std::string text = "##TITLE= Corundum\n##$WAVELENGTH ALPHA1= 1.54060\n##$WAVELENGTH ALPHA2= 1.54440\n";
    text += "##$INTENSITY RATIO ALPHA2/ALPHA1= 0.50000\n## FIRSTX= 10.000\n## LASTX= 29.980\n## DELTAX= 0.020\n";
    text += Printed("## NPOINTS= %d\n## XYDATA= X++<Y..Y>\n", told);
    for (int r = 0; r < rows; ++r) {
        text += Printed("%9.3f ", 10 + 0.1 * r);
        for (int k = 0; k < 5; ++k) text += Printed("%11.3f", static_cast<double>(Count(5 * r + k)));
        text += '\n';
    }
    return text + "## END=\n";
}

TEST(Jcp, OfTheLastRowOnlyTheFirstPointCounts) {
    for (const auto& [told, rows, kept] : {std::array{1, 1, 1}, {10, 2, 6}, {11, 3, 11}, {15, 3, 11}}) {
        const auto p = Good(Read_Jcp, Jcp(told, rows));
        if (kept > 1) Expect_Counts(p, kept, false);
        EXPECT_EQ(p.npts, kept) << told;
        EXPECT_EQ(p.title, "##TITLE= Corundum");
        EXPECT_EQ(p.xmax, 29.98f);
    }
    for (const auto& [from, to] : {std::pair{"= ", "="}, {"= ", " =   "}, {"## ", "##"}, {"##$", "## $"}, {" ALPHA", "ALPHA"}}) {
        const auto p = Good(Read_Jcp, Replace_All(Jcp(11, 3), from, to));
        Expect_Counts(p, 11, false);
        EXPECT_EQ(p.xmax, 29.98f) << to;
    }
}

TEST(Jcp, EveryFault) {
    const std::string data = " Error reading a profile XRDML-DATA file: end of file",
                      points = " Error reading a profile  file: end of file", words = " Error reading a profile JCP-DATA file: end of file",
                      told = "x\n## NPOINTS= 3\n";
    Expect_Faults(Read_Jcp, {{Jcp(20, 3), data},
                             {told + "## XYDATA= X++<Y..Y>\n", data},
                             {"x\n## NPOINTS= many\n", data},
                             {Jcp(0, 3), points},
                             {Jcp(-3, 3), points},
                             {Jcp(2'000'000'000, 3), points},
                             {told + "## END=\n", points},
                             {"", words},
                             {told, words}});
}

const std::string wavelengths =
    "<usedWavelength>\n<kAlpha1 unit=\"Angstrom\">1.54060</kAlpha1>\n<kAlpha2 unit=\"Angstrom\">1.54440</kAlpha2>\n"
    "<kBeta unit=\"Angstrom\">1.39220</kBeta>\n<ratioKAlpha2KAlpha1>0.5000</ratioKAlpha2KAlpha1>\n</usedWavelength>\n";
const std::string positions =
    "<positions axis=\"2Theta\" unit=\"deg\">\n<startPosition>10.0000</startPosition>\n<endPosition>10.0800</endPosition>\n</positions>\n"
    "<positions axis=\"Omega\" unit=\"deg\">\n<startPosition>5.0000</startPosition>\n<endPosition>5.0400</endPosition>\n</positions>\n";

std::string Scan(const std::string& list, const std::string& tag = "intensities", const std::string& where = positions) {
    return "<scan>\n<dataPoints>\n" + where + "<" + tag + " unit=\"counts\">" + list + "</" + tag + ">\n</dataPoints>\n</scan>\n";
}
std::string Xrdml(const std::string& scans) {
    return "<?xml version=\"1.0\"?>\n<xrdMeasurements>\n<xrdMeasurement>\n" + wavelengths + scans +
           "</xrdMeasurement>\n</xrdMeasurements>\n";
}
std::vector<float> Sum_Of(const std::string& scans) { return Good(Read_Xrdml, Xrdml(scans)).y; }

TEST(Xrdml, TheSumOfAllScans) {
    const std::string five = Printed("%d %d %d %d %d", Count(0), Count(1), Count(2), Count(3), Count(4));
    for (const char* tag : {"intensities", "counts"}) {
        const auto p = Good(Read_Xrdml, Xrdml(Scan(five, tag)));
        Expect_Counts(p, 5, true);
        EXPECT_FLOAT_EQ(p.conv[3], 1.3922f);
        EXPECT_FLOAT_EQ(p.xmax, 10.08f);
    }
    const auto two = Good(Read_Xrdml, Xrdml(Scan("1 2 3 4 5") + Scan("10 20 30 40 50")));
    EXPECT_EQ(two.y, (std::vector<float>{11, 22, 33, 44, 55}));
    EXPECT_EQ(two.sigma, two.y);
    EXPECT_EQ(Sum_Of(Scan("1 2 3 4 5") + Scan("10 20 30 40 50", "intensities", "")), two.y);
    EXPECT_EQ(Sum_Of(Scan("7 7", "counts") + Scan("1 2 3 4 5")).size(), 5u);                          // intensities go first
    EXPECT_EQ(Sum_Of(Scan("1 2") + "</xrdMeasurement>\n<xrdMeasurement>" + Scan("5 5")).front(), 1);  // the first measurement alone
}

TEST(Xrdml, WhatNewerFilesHold) {
    const auto plain = Good(Read_Xrdml, Xrdml(Scan("1 2 3 4 5")));
    const auto same = [&](const std::string& text, const char* what) { Expect_Same(Good(Read_Xrdml, text), plain, what); };
    std::string prefixed = Replace_All(Replace_All(Xrdml(Scan("1 2 3 4 5")), "<", "<m:"), "<m:/", "</m:");
    same(prefixed, "prefix");
    same(Replace_All(Xrdml(Scan("1 2 3 4 5")), "axis=\"2Theta\" unit=\"deg\"", "unit='deg' axis='2Theta'"), "attributes");
    same(Xrdml(Scan("\n 1 2\n\t3 4\n5\n")), "several lines");
    same(Replace_All(Xrdml(Scan("1 2 3 4 5")), "\n", " "), "one line");
    same(Replace_All(Xrdml(Scan("1 2 3 4 5")), "<startPosition>", "<!-- <startPosition>4</startPosition> --><startPosition>"), "comment");
    same(Xrdml("<!-- " + Scan("9 9 9 9 9") + "-->" + Scan("1 2 <!-- 7 -->3 4 5")), "comments about lists");
    same(Xrdml(Scan("1 2 3 4 5")) + "<!-- not closed", "an open comment");

    std::string many;
    for (int i = 0; i < 200'000; ++i) many += Printed("%d ", Count(i));
    EXPECT_EQ(Sum_Of(Scan(many)).back(), Count(199'999));

    // Attenuated counts: 3 behind a factor of 10 are 30 with a standard deviation of 10 sqrt(3).
    const std::string factors = "<beamAttenuationFactors>1 1 10 10 1</beamAttenuationFactors>\n";
    const auto attenuated = Good(Read_Xrdml, Xrdml(Scan("1 2 3 4 5", "counts", positions + factors)));
    EXPECT_EQ(attenuated.y, (std::vector<float>{1, 2, 30, 40, 5}));
    EXPECT_EQ(attenuated.sigma, (std::vector<float>{1, 2, 300, 400, 5}));
    EXPECT_EQ(Good(Read_Xrdml, Xrdml(Scan("1 2 3 4 5", "intensities", positions + factors))).y, plain.y);

    // Scans over another range, or of another step, do not belong to the sum.
    const std::string moved = Replace_All(positions, "10.0800", "10.1200");
    EXPECT_EQ(Sum_Of(Scan("1 2 3 4 5") + Scan("9 9 9 9 9", "intensities", moved)), plain.y);
    EXPECT_EQ(Sum_Of(Scan("1 2 3 4 5") + Scan("9 9 9")), plain.y);

    const std::string listed = "<positions axis=\"2Theta\" unit=\"deg\"><listPositions>10 11 13 16 20</listPositions></positions>\n";
    const auto points = Good(Read_Xrdml, Xrdml(Scan("1 2 3 4 5", "counts", listed) + Scan("1 1 1 1 1", "counts", listed)));
    EXPECT_EQ(points.x, (std::vector<float>{10, 11, 13, 16, 20}));
    EXPECT_EQ(points.y, (std::vector<float>{2, 3, 4, 5, 6}));
    EXPECT_EQ(points.step, 2.5f);
    EXPECT_EQ(points.xmax, 20);
    EXPECT_FALSE(points.constant_step);
}

TEST(Xrdml, EveryFault) {
    const std::string good = Xrdml(Scan("1 2 3 4 5"));
    const std::string before = " Error reading a profile XRDML-DATA file: end of file while trying to read ";
    const std::string none = " Error reading a profile XRDML-DATA file: npts <= 0 !!! ";
    const std::string listed = "<positions axis=\"2Theta\" unit=\"deg\"><listPositions>10 11</listPositions></positions>\n";
    const std::string factors = "<beamAttenuationFactors>1 2</beamAttenuationFactors>";
    const auto without = [&](const char* part) { return Replace_All(good, part, ""); };
    Expect_Faults(Read_Xrdml, {{"", before + "the wavelength K-Alpha1"},
                               {without("</kAlpha1>"), before + "the wavelength K-Alpha1"},
                               {without("<kAlpha2 unit=\"Angstrom\">"), before + "the wavelength K-Alpha2"},
                               {without("<kBeta unit=\"Angstrom\">"), before + "the wavelength K-Beta"},
                               {without("<ratioKAlpha2KAlpha1>"), before + "the ratio K-Alpha2/K-Alpha1"},
                               {without("axis=\"2Theta\""), before + "the positions of the axis 2Theta"},
                               {without("<startPosition>"), before + "the start position"},
                               {without("<endPosition>"), before + "the end position"},
                               {Xrdml(Scan("1 2 three")), before + "the intensities"},
                               {Replace_All(good, "1.54060", "1.5x"), before + "the wavelength K-Alpha1"},
                               {Xrdml(Scan("1 2 3", "counts", listed)), before + "the list of positions"},
                               {Xrdml(Scan("1 2 3", "counts", positions + factors)), before + "the attenuation factors"},
                               {Xrdml(Scan("  ")), none},
                               {Xrdml(positions), none}});
}

std::string Axis(const std::string& name, const std::string& place) {
    return "<positions axis=\"" + name + "\" unit=\"deg\">\n" + place + "</positions>\n";
}
std::string Moved(const std::string& name, double from, double to) {
    return Axis(name, Printed("<startPosition>%.4f</startPosition>\n<endPosition>%.4f</endPosition>\n", from, to));
}
std::string Fixed(const std::string& name, double at) { return Axis(name, Printed("<commonPosition>%.4f</commonPosition>\n", at)); }
std::string Listed(const std::string& name, const char* places) {
    return Axis(name, Printed("<listPositions>%s</listPositions>\n", places));
}

TEST(Xrdml, TheAngleThatIsScannedIsTheAxis) {
    struct Case {
        const char* scan_axis;
        std::string where;
        const char* legend;  // blank: 2theta
        float first, last;
    };
    const std::string still = Fixed("2Theta", 44.7);
    for (const Case& c : {
             Case{"Phi", still + Fixed("Omega", 22) + Moved("Phi", -180, 180), "Phi(degrees)", -180, 180},
             Case{"Omega", still + Moved("Omega", 22, 23) + Fixed("Phi", 5), "Omega(degrees)", 22, 23},
             Case{"", still + Moved("Chi", 1, 5), "Chi(degrees)", 1, 5},
             Case{"Omega", Moved("2Theta", 44.7, 44.7) + Moved("Omega", 22, 23), "Omega(degrees)", 22, 23},
             Case{"Omega", still + Listed("Omega", "22 22.5 22.75 22.8 23"), "Omega(degrees)", 22, 23},
             Case{"Psi", Listed("2Theta", "44.7 44.7 44.7 44.7 44.7") + Listed("Psi", "0 1 2 3 5"), "Psi(degrees)", 0, 5},
             Case{"Phi", Moved("Phi", 0, 8), "Phi(degrees)", 0, 8},  // 2Theta is not told at all
             Case{"Gonio", Fixed("Phi", 260.6) + Moved("2Theta", 10, 20) + Moved("Omega", 5, 10), "", 10, 20},
             Case{"Omega-2Theta", Moved("Omega", 5, 10) + Moved("2Theta", 10, 20), "", 10, 20},
             Case{"2Theta", Fixed("Omega", 4) + Listed("2Theta", "10 11 12 13 20"), "", 10, 20},
             Case{"", positions, "", 10, 10.08f},
         }) {
        const std::string tag = *c.scan_axis == 0 ? "<scan>" : Printed("<scan mode=\"Continuous\" scanAxis=\"%s\">", c.scan_axis);
        const auto p = Good(Read_Xrdml, Replace_All(Xrdml(Scan("1 2 3 4 5", "counts", c.where)), "<scan>", tag));
        SCOPED_TRACE(c.where);
        EXPECT_EQ(p.legend_x, c.legend);
        EXPECT_EQ(p.scat_var, *c.legend == 0 ? "" : "Angle");
        EXPECT_EQ(p.xmin, c.first);
        EXPECT_EQ(p.xmax, c.last);
        EXPECT_NEAR(p.x.back(), c.last, 1e-4);
        EXPECT_EQ(p.npts, 5);
    }
    // Scans of a pole figure at another tilt are other measurements, those at the same one are summed.
    const auto turned = [&](double chi) { return Scan("1 2 3", "counts", still + Fixed("Chi", chi) + Moved("Phi", 0, 2)); };
    EXPECT_EQ(Sum_Of(turned(5) + turned(10) + turned(5)), (std::vector<float>{2, 4, 6}));
    EXPECT_EQ(Sum_Of(turned(5) + Scan("1 2 3", "counts", Fixed("Chi", 5) + Moved("2Theta", 0, 2))), (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(Good(Read_Xrdml, Xrdml("<scan>" + positions + "</scan>" + turned(5))).xmax, 2);  // a scan without counts is none
    const std::string before = " Error reading a profile XRDML-DATA file: end of file while trying to read ";
    Expect_Faults(Read_Xrdml, {{Xrdml(Scan("1 2 3", "counts", still)), before + "the start position"},
                               {Xrdml(Scan("1 2 3", "counts", Axis("2Theta", "") + Moved("Omega", 1, 2))), before + "the start position"},
                               {Xrdml(Scan("1 2 3", "counts", Moved("Phi", 1, 2))), before + "the positions of the axis 2Theta"}});
}

Reading All_Of(const std::string& text) {
    const Reading content = Read_By(Read_Xrdml_Scans, text);
    EXPECT_TRUE(content.status.ok()) << content.status.message;
    return content;
}
std::string Titles(const Reading& content) {
    std::string titles;
    for (const auto& p : content.patterns) titles += p.title + "; ";
    return titles;
}
std::string First_Counts(const Reading& content) {
    std::string counts;
    for (const auto& p : content.patterns) counts += Printed("%g ", p.y.at(0));
    return counts;
}
std::string Measured(const std::string& scans, const char* attributes = "") {
    return Replace_All(Xrdml("<sample><name>Si</name></sample>" + scans), "<xrdMeasurement>", Printed("<xrdMeasurement %s>", attributes));
}
std::string Scanned(const char* attributes, const std::string& scan) {
    return Replace_All(scan, "<scan>", Printed("<scan %s>", attributes));
}

// What adds up and what does not: the first counts of the patterns that come out, in the order of the file.
TEST(Xrdml, ScansAtTheSamePositionsOfAllAxesAddUp) {
    const auto at = [](const std::string& further, int count) { return Scan(Printed("%d 2 3 4 5", count), "counts", positions + further); };
    const auto warm = [&](const char* kelvin, int count) {
        return Replace_All(at("", count), "</dataPoints>",
                           Printed("<nonAmbientPoints><nonAmbientValues type=\"Temperature\" unit=\"K\">%s"
                                   "</nonAmbientValues></nonAmbientPoints></dataPoints>",
                                   kelvin));
    };
    const std::string z = "<positions axis=\"Z\" unit=\"mm\"><commonPosition>%.3f</commonPosition></positions>\n";
    const auto height = [&](double mm, int count) { return at(Printed(z.c_str(), mm), count); };
    const std::string tilted = Replace_All(positions, ">5.0000<", ">5.0100<");
    struct Case {
        std::string scans;
        const char* counts;
        const char* titles;
    };
    for (const Case& c : {
             Case{at("", 1) + at("", 10), "11 ", "Si; "},
             Case{at(Fixed("Phi", 0), 1) + at(Fixed("Phi", 90), 10) + at(Fixed("Phi", 0), 100), "101 10 ",
                  "Si, Phi 0, range 1; Si, Phi 90, range 2; "},
             Case{height(9.607, 1) + height(9.608, 10), "1 10 ", "Si, Z 9.607 mm, range 1; Si, Z 9.608 mm, range 2; "},
             Case{height(9.607, 1) + height(9.6072, 10), "11 ", "Si; "},
             Case{at("", 1) + Scan("10 2 3 4 5", "counts", tilted), "1 10 ", "Si, range 1; Si, range 2; "},
             Case{at("", 1) + Scan("10 2 3 4", "counts"), "1 10 ", "Si, range 1; Si, range 2; "},
             Case{warm("300 300.2", 1) + warm("300.1", 10) + warm("400", 100), "11 100 ", "Si, 300.1 K, range 1; Si, 400 K, range 2; "},
             Case{at("", 1) + "</xrdMeasurement><xrdMeasurement>" + wavelengths + at("", 10), "1 10 ", "Si, range 1; Si, range 2; "},
             Case{at("", 1) + Scan("1 2 three 4 5", "counts"), "1 ", "Si; "},
         }) {
        const Reading content = All_Of(Measured(c.scans));
        EXPECT_EQ(First_Counts(content), c.counts) << c.scans;
        EXPECT_EQ(Titles(content), c.titles);
    }
    const auto two = All_Of(Measured(warm("300", 1) + warm("300", 10)));
    EXPECT_EQ(two.patterns.at(0).TSample, 300);
    EXPECT_EQ(Fact(two.patterns.at(0), "Scans added up"), "1, 2");
    const auto faulty = All_Of(Measured(at("", 1) + Scan("1 2 three 4 5", "counts")));
    ASSERT_EQ(faulty.notes.failed.size(), 1u);
    EXPECT_TRUE(faulty.notes.failed[0].starts_with("Scan 2: ")) << faulty.notes.failed[0];

    std::string figure, area;
    for (int i = 0; i < 30; ++i) {
        figure +=
            Scanned("scanAxis=\"Phi\"", Scan("1 2 3", "intensities", Fixed("2Theta", 28.4) + Fixed("Psi", 2.5 * i) + Moved("Phi", 0, 360)));
        area += Scan("1 2 3 4 5", "counts", Moved("2Theta", 10, 14) + Moved("Omega", 5 + 0.01 * i, 7 + 0.01 * i));
    }
    const auto poles = All_Of(Measured(figure, "measurementType=\"Texture pole figure\"")).patterns;
    ASSERT_EQ(poles.size(), 30u);
    EXPECT_EQ(poles[29].title, "Si, Psi 72.5, range 30");
    EXPECT_EQ(poles[29].bank, 30);
    EXPECT_EQ(poles[29].legend_x, "Phi(degrees)");
    const auto map = All_Of(Measured(area, "measurementType=\"Area measurement\" measurementStepAxis=\"Omega\"")).patterns;
    ASSERT_EQ(map.size(), 30u);
    EXPECT_EQ(map[1].title, "Si, Omega 5.01 to 7.01, range 2");
    EXPECT_EQ(map[1].legend_x, "");

    const auto height_scan =
        Good(Read_Xrdml,
             Measured(Scanned("scanAxis=\"Z\"", Scan("1 2 3", "counts", Fixed("2Theta", 0) + Replace_All(Moved("Z", 8, 9), "deg", "mm")))));
    EXPECT_EQ(height_scan.legend_x, "Z(mm)");
    EXPECT_EQ(height_scan.scat_var, "Position");
    const auto down = Good(Read_Xrdml, Measured(Scan("1 2 3", "counts", Moved("2Theta", 12, 10))));
    EXPECT_EQ(down.x, (std::vector<float>{10, 11, 12}));
    EXPECT_EQ(down.y, (std::vector<float>{3, 2, 1}));
    EXPECT_EQ(down.step, 1);
}

// The range of a scan is told as it was meant, so that missing counts must not stretch those that are there.
TEST(Xrdml, MissingCountsLeaveTheOthersWhereTheyAre) {
    const auto aborted = [](const std::string& scan) { return Scanned("status=\"Aborted\"", scan); };
    const std::string whole = Scan("1 2 3 4 5"), three = Scan("7 8 9"), range = Moved("2Theta", 10, 10.08);
    const std::string factors = "<beamAttenuationFactors>1 1 2 2 2</beamAttenuationFactors>",
                      listed = Listed("2Theta", "10 10.02 10.04 10.06 10.08");
    const auto cut = [](std::string text) { return text.substr(0, text.rfind(" 9") + 1) + "1"; };
    struct Case {
        std::string text;
        std::size_t patterns;
        std::vector<float> y;  // of the last one
        int claimed;
        const char* warning;
    };
    const char* const spread = "Scan 1 was aborted, and its step is not told: 3 points fill the whole range, which may be wrong";
    for (const Case& c : {
             Case{Measured(whole + aborted(three)), 1, {1, 2, 3, 4, 5}, 0, "Scan 2 was aborted and is left out"},
             Case{Measured(aborted(three) + whole + aborted(three)), 1, {1, 2, 3, 4, 5}, 0, "Scans 1, 3 were aborted and are left out"},
             Case{Measured(aborted(Scan("7 8 9", "counts", range + factors))),
                  1,
                  {7, 8, 18},
                  5,
                  "Scan 1 was aborted: 3 of 5 points are there"},
             Case{Measured(aborted(Scan("7 8 9", "counts", listed))), 1, {7, 8, 9}, 5, "Scan 1 was aborted: 3 of 5 points are there"},
             Case{Measured(aborted(three)), 1, {7, 8, 9}, 0, spread},
             Case{cut(Measured(whole + Scan("7 8 9"))), 2, {7, 8}, 5, ""},
             Case{cut(Measured(Scan("7 8 9", "counts", range + factors))), 1, {7, 8}, 5, ""},
         }) {
        const Reading content = All_Of(c.text);
        ASSERT_EQ(content.patterns.size(), c.patterns) << c.text;
        const auto& p = content.patterns.back();
        EXPECT_EQ(p.y, c.y);
        EXPECT_EQ(p.npts_claimed, c.claimed);
        EXPECT_EQ(content.notes.warnings, *c.warning == 0 ? std::vector<std::string>() : std::vector<std::string>{c.warning});
        EXPECT_NEAR(p.x.at(1), c.warning == spread ? 10.04 : 10.02, 1e-5) << c.text;
        EXPECT_EQ(p.xmax, p.x.back());
    }
}

TEST(Xrdml, FactorsTimesAndFacts) {
    const auto with = [](const std::string& element, const char* tag) {
        return Measured(Scan("4 2", tag, Moved("2Theta", 10, 11) + element));
    };
    const auto common = Good(Read_Xrdml, with("<commonBeamAttenuationFactor>10</commonBeamAttenuationFactor>", "counts"));
    EXPECT_EQ(common.y, (std::vector<float>{40, 20}));
    EXPECT_EQ(common.sigma, (std::vector<float>{400, 200}));
    const std::string damped =
        Scan("4 2", "counts", Moved("2Theta", 10, 11) + "<commonBeamAttenuationFactor>10</commonBeamAttenuationFactor>");
    EXPECT_EQ(Good(Read_Xrdml, Measured(damped + damped)).sigma, (std::vector<float>{800, 400}));
    // Steps of 0.0002: what lies 0.0003 beside is another place, though a goniometer tells no finer than 0.001.
    const auto fine = [](double from) { return Scan("1 2 3", "counts", Moved("2Theta", from, from + 0.0004)); };
    EXPECT_EQ(All_Of(Measured(fine(10) + fine(10.0003))).patterns.size(), 2u);
    EXPECT_EQ(All_Of(Measured(fine(10) + fine(10))).patterns.size(), 1u);
    const std::string hot =
        "<nonAmbientPoints><nonAmbientValues type=\"Temperature\" unit=\"Celsius\">26 27.7</nonAmbientValues></nonAmbientPoints>";
    EXPECT_FLOAT_EQ(Good(Read_Xrdml, with(hot, "counts")).TSample, 300);
    // 40 behind a factor of 10 were 4 counts.
    const auto corrected = Good(Read_Xrdml, with("<beamAttenuationFactors>10 1</beamAttenuationFactors>", "intensities"));
    EXPECT_EQ(corrected.y, (std::vector<float>{4, 2}));
    EXPECT_EQ(corrected.sigma, (std::vector<float>{40, 2}));

    const std::string time = "<commonCountingTime unit=\"seconds\">2.5</commonCountingTime>";
    EXPECT_EQ(Good(Read_Xrdml, with(time, "counts")).count_time, 2.5f);
    EXPECT_EQ(Fact(Good(Read_Xrdml, with(time, "counts")), "Time a step (s)"), "2.5");
    EXPECT_TRUE(Read_By(Read_Xrdml_Scans, Replace_All(with(time, "counts"), "unit=\"counts\"", "unit=\"percent\"")).status.failed);
    const std::string timed = Scan("4 2", "counts", Moved("2Theta", 10, 11) + time);
    EXPECT_EQ(Good(Read_Xrdml, Measured(timed + timed)).count_time, 5);
    const auto uneven = All_Of(with("<countingTimes>1 3</countingTimes><divergenceCorrections>1 1.1</divergenceCorrections>", "counts"));
    EXPECT_EQ(uneven.patterns.at(0).count_time, 2);
    EXPECT_EQ(uneven.patterns.at(0).y, (std::vector<float>{4, 2}));
    EXPECT_EQ(uneven.notes.warnings.size(), 2u);
    EXPECT_TRUE(All_Of(with("<countingTimes>3 3</countingTimes><divergenceCorrections>1 1</divergenceCorrections>", "counts"))
                    .notes.warnings.empty());

    const std::string odd = Replace_All(Measured(timed), "<name>Si</name>", "<name><![CDATA[a <b>]]> &amp; \xC2\xB0&#67;\n x</name>");
    const auto p = Good(Read_Xrdml, odd);
    EXPECT_EQ(p.title,
              "a <b> & \xC2\xB0"
              "C x");
    std::string wide = "\xFF\xFE";
    for (const char c : Measured(timed)) wide += {c, '\0'};
    EXPECT_TRUE(Is_Xrdml(wide) && Is_Xrdml(odd) && !Is_Xrdml("the xrdMeasurement of a file"));
    Expect_Same(Good(Read_Xrdml, wide), Good(Read_Xrdml, Measured(timed)), "UTF-16");
}

TEST(Xrdml, ARealFile) {
    const std::string text = Real_File("xrdml/empyrean.xrdml");
    if (text.empty()) GTEST_SKIP();
    const auto p = Good(Read_Xrdml, text);
    ASSERT_EQ(p.npts, 196);
    EXPECT_FLOAT_EQ(p.xmin, 30.05f);
    EXPECT_FLOAT_EQ(p.xmax, 41.75f);
    EXPECT_FLOAT_EQ(p.step, 0.06f);
    EXPECT_FLOAT_EQ(p.conv[0], 1.540598f);
    EXPECT_FLOAT_EQ(p.conv[3], 1.39225f);
    EXPECT_EQ(p.y[0], 8);
    EXPECT_EQ(p.y[2], 6);
}

TEST(Xrdml, RealFilesOfEveryVersion) {
    const std::string directory = "formats/samples/panalytical_xrdml";
    const std::string attenuated = Real_File(directory + "20_counts_attenuated.xrdml"),
                      export_text = Real_File(directory + "16_repeated_export.xy");
    if (attenuated.empty()) GTEST_SKIP();
    const auto old = Good(Read_Xrdml, Real_File(directory + "10.xrdml"));
    EXPECT_EQ(old.npts, 750);
    EXPECT_FLOAT_EQ(old.step, 0.02f);
    EXPECT_EQ(old.title, "B10135");
    EXPECT_EQ(old.count_time, 10);
    EXPECT_EQ(Fact(old, "Anode") + Fact(old, "Voltage (kV)") + Fact(old, "Current (mA)") + Fact(old, "Goniometer radius (mm)"),
              "Cu4540320.00");
    EXPECT_EQ(Fact(old, "Divergence slit (incident beam)"), "Slit Fixed 1/8\xC2\xB0, height 0.19 mm");

    const auto counts = Good(Read_Xrdml, attenuated);
    EXPECT_EQ(counts.npts, 994);
    EXPECT_EQ(counts.y[0], 182 * 20991);
    EXPECT_EQ(counts.sigma[0], 182.0f * 182 * 20991);

    // The same scan as its maker's program exports it, and the first half of the file: its counts stay where they were.
    const std::string repeated = Real_File(directory + "16_repeated.xrdml");
    const auto whole = Good(Read_Xrdml, repeated), half = Good(Read_Xrdml, repeated.substr(0, repeated.find("<intensities") + 5000));
    EXPECT_EQ(half.npts_claimed, 4489);
    EXPECT_GT(half.npts, 900);
    std::istringstream rows(export_text);
    double x = 0, y = 0;
    std::size_t i = 0;
    for (; rows >> x >> y; ++i) {
        ASSERT_NEAR(whole.x.at(i), x, 2e-5);
        ASSERT_EQ(whole.y[i], y);
        ASSERT_NEAR(i < half.x.size() ? half.x[i] : x, x, 2e-5);
    }
    EXPECT_EQ(i, 4489u);
}

}  // namespace
}  // namespace vntl::test
