// RAS, ASC, CPI, CHI and MDI: files written from their layouts, the faults of other writers, and real files against what stands beside
// them.
#include "patterns/lab/lab_text.hpp"

#include <tuple>

#include "patterns/columns/chi.hpp"
#include "patterns/free_format.hpp"
#include "patterns/lab/asc.hpp"
#include "patterns/lab/cpi.hpp"
#include "patterns/lab/ras.hpp"
#include "patterns/reading.hpp"

namespace vntl::test {
namespace {

Diffraction_Pattern_Type Only(Read_All read, const std::string& text) { return Only(Read_By(read, text)); }

// The text with a line in the place of another one.
std::string With(const std::string& text, const std::string& old_line, const std::string& line) {
    EXPECT_TRUE(Contains(text, old_line)) << old_line;
    return Replace_All(text, old_line, line);
}

const std::string ras_head =
    "*RAS_HEADER_START\n*FILE_SAMPLE \"K\xC3\xA4se\"\n*FILE_MEMO \"a memo\"\n*HW_COUNTER_NAME-0 \"\x83\x7C\x83^|Detector\"\n"
    "*HW_XG_TARGET_NAME \"Cu\"\n*HW_XG_WAVE_LENGTH_ALPHA1 \"1.540593\"\n*HW_XG_WAVE_LENGTH_ALPHA2 \"1.544414\"\n"
    "*HW_XG_WAVE_LENGTH_BETA \"1.392250\"\n*MEAS_COND_AXIS_NAME-0 \"Z\"\n*MEAS_COND_AXIS_POSITION-0 \"-1.5000\"\n"
    "*MEAS_COND_AXIS_UNIT-0 \"mm\"\n*MEAS_COND_XG_VOLTAGE \"40.0000000000\"\n*MEAS_COND_XG_WAVE_TYPE \"Ka\"\n"
    "*MEAS_DATA_COUNT \"3.0000000000\"\n*MEAS_SCAN_AXIS_X \"2-Theta\"\n*MEAS_SCAN_AXIS_X_INTERNAL \"TwoTheta\"\n"
    "*MEAS_SCAN_SPEED \"0.5\"\n*MEAS_SCAN_SPEED_UNIT \"deg/min\"\n*MEAS_SCAN_STEP \"0.0200\"\n*MEAS_SCAN_UNIT_Y \"counts\"\n"
    "*RAS_HEADER_END\n";
const std::string ras_rows = "*RAS_INT_START\n10.0000 16.5000 1.0000\n10.0200 25.0000 1.0000\n10.0400 36.0000 1.0000\n*RAS_INT_END\n";
const std::string ras = "*RAS_DATA_START\n" + ras_head + ras_rows + "*RAS_DATA_END\n*DSC_DATA_END\n1 2 3\n";

const std::string asc_head =
    "*TYPE\t\t=  Raw\n*CLASS =  ASCII CLASS\n*SAMPLE\t\t=  K\xC3\xA4se\n*COMMENT =\n\n*SCAN_AXIS =  2theta/theta\n*TARGET =  42\n"
    "*XRAY_CHAR =  K-ALPHA\n*WAVE_LENGTH1 =  0.70930\n*WAVE_LENGTH2 =  0.71359\n*SPEED_DIM =  sec./step\n*YUNIT =  counts\n\n";
const std::string asc_group =
    "*BEGIN\n*GROUP =  0\n*START =  4\n*STOP =  4.05\n*STEP =  0.01\n*SPEED =  0.5\n*KV =  40\n*COUNT =  6\n16, 25, 36, 49\n64, 81\n*END\n";
const std::string asc = asc_head + asc_group + "\n*EOF\n";

const std::string cpi =
    "SIETRONICS XRD SCAN\n3.00\n3.04\n0.01\nCu\n1,5406\n11/10/2012 14:41:24\n2,0\nK\xC3\xA4se\nSCANDATA\n60.5\n-2.5\n40,25\n30\n20\n";

const std::string chi_rows = "  1.0000000E+00  1.6000000E+01\n  2.0000000E+00 -2.5000000E+01\n  3.0000000E+00  3.6000000E+01\n";
const std::string chi = "K\xC3\xA4se.tif\n2-Theta Angle (Degrees)\nIntensity\n          3\n" + chi_rows;

struct Kind {
    const char* name;
    Read_All read;
    bool (*is)(std::string_view);
    std::string text;
};
const std::vector<Kind>& Kinds() {
    static const std::vector<Kind> kinds = {
        {"RAS", Read_Ras, Is_Ras, ras}, {"ASC", Read_Asc, Is_Asc, asc}, {"CPI", Read_Cpi, Is_Cpi, cpi}, {"CHI", Read_Chi, Is_Chi, chi}};
    return kinds;
}

TEST(Lab_Text, FilesAreRecognisedByTheirOwnReaderAlone) {
    for (const Kind& kind : Kinds()) {
        for (const Kind& other : Kinds()) EXPECT_EQ(kind.is(other.text), &kind == &other) << kind.name << " of " << other.name;
        for (const auto& [habit, text] : Habits(kind.text)) EXPECT_TRUE(kind.is(text)) << kind.name << habit;
        for (const int n : {40, 403})
            for (const Sample_File& sample : Sample_Files(n)) EXPECT_FALSE(kind.is(sample.text)) << kind.name << " of " << sample.name;
        for (const char* text :
             {"", "*", "# remarks\n1 2\n3 4\n", "a\nb\nc\n100\n1 2\n2 3\n", "*SAMPLE = a\n*COLOR = b\n1, 2\n", "title\n\n\n0 1\n1 2\n2 3\n",
              "t\n\n\n3\n3 5\n2 6\n1 7\n", "t\n2theta\ncounts\n0 1 10\n1 2 3 4 5 6 7 8 9 10 11\n"})
            EXPECT_FALSE(kind.is(text)) << kind.name << text;
    }
    EXPECT_TRUE(Is_Chi("title\n\n\n  1000\n 1 2\n 2 3\n") && Is_Chi("# chi_Q chi_I\n0.1 5\n0.2 6\n"));
}

TEST(Lab_Text, HabitsOfWritersDoNotMatter) {
    for (const Kind& kind : Kinds()) {
        const auto plain = Only(kind.read, kind.text);
        EXPECT_TRUE(Contains(plain.title, "K\xC3\xA4se")) << plain.title;
        auto habits = Habits(kind.text);
        habits.emplace_back("mark", "\xEF\xBB\xBF" + kind.text);
        habits.emplace_back("filled up", habits[3].second + std::string(600, '\0'));  // behind a last line without its end
        for (const auto& [habit, text] : habits) Expect_Same(Only(kind.read, text), plain, kind.name + habit);
    }
}

TEST(Lab_Text, WhatIsNoneOfTheKindIsRefused) {
    const std::string group = "*TYPE = Raw\n*BEGIN\n*START = 1\n";
    const std::tuple<Read_All, std::string, std::string> cases[] = {
        {Read_Ras, "10 20\n", "no RAS file"},
        {Read_Ras, "*RAS_DATA_START\n*RAS_HEADER_START\n*FILE_SAMPLE \"a", "ends within the head of range 1"},
        {Read_Ras, "*RAS_DATA_START\n", "holds no scan"},
        {Read_Ras, "*RAS_DATA_START\n*RAS_INT_START\nnothing\n", "Range 1 of this RAS file holds no points"},
        {Read_Asc, "10 20\n", "no ASC file"},
        {Read_Asc, asc_head, "holds no counts"},
        {Read_Asc, group + "*STEP = 1\n*COUNT = 2\n*END\n", "Range 1 of this ASC file holds no counts"},
        {Read_Asc, group + "1, 2\n*END\n", "tells no start or no step"},
        {Read_Cpi, "10 20\n", "no CPI file"},
        {Read_Cpi, cpi.substr(0, cpi.find("SCANDATA")), "no line SCANDATA"},
        {Read_Cpi, With(cpi, "0.01\n", "0\n"), "no start, end and step"},
        {Read_Cpi, cpi.substr(0, cpi.find("60.5")), "no intensities"},
        {Read_Chi, "title\n2-Theta\n", "ends within its head"},
        {Read_Chi, "1 2\n2 3\n3 4\n4 5\n5 6\n", "no number of rows in line 4"},
        {Read_Chi, "t\n\n\n5\n1\n2\n", "no rows of two numbers"}};
    for (const auto& [read, text, message] : cases) {
        const Reading reading = Read_By(read, text);
        EXPECT_TRUE(reading.status.failed && reading.patterns.empty());
        EXPECT_TRUE(Contains(reading.status.message, message)) << reading.status.message;
    }
    std::string wide = "\xFF\xFE";
    for (const char c : ras) wide += {c, '\0'};
    for (const Kind& kind : Kinds())
        for (const std::string& text : {wide, wide.substr(2)}) {
            EXPECT_TRUE(Contains(Read_By(kind.read, text).status.message, "UTF-16"));
            EXPECT_FALSE(kind.is(text));
        }
}

TEST(Lab_Text, BytesOfShiftJisAreNoRubbish) {
    EXPECT_EQ(English_Part("\x83\x7C\x81[\x83^|Standard slit"), "Standard slit");  // the second byte of the first letter is a bar
    EXPECT_EQ(Readable("Si \x95W\x8F\x80 (111)"), "Si  (111)");
    EXPECT_EQ(Readable("\xB6\xB7\xB8 a"), "a");     // half-width kana
    EXPECT_EQ(Readable("K\xE4se"), "K\xC3\xA4se");  // Latin-1
    EXPECT_EQ(Readable("Å, 標準"), "Å, 標準");      // UTF-8
    EXPECT_EQ(Readable("Si\x83"), "Si");            // cut within a letter
}

TEST(Ras, OneScan) {
    const auto p = Only(Read_Ras, ras);
    EXPECT_EQ(p.x, (std::vector<float>{10, 10.02f, 10.04f}));
    EXPECT_EQ(p.y, (std::vector<float>{16.5f, 25, 36}));
    EXPECT_EQ(p.sigma, p.y);
    EXPECT_TRUE(p.constant_step && p.sigma_is_variance && !p.per_second);
    EXPECT_EQ(p.bank, 0);
    EXPECT_FLOAT_EQ(p.step, 0.02f);
    EXPECT_EQ(p.ymax, 36);
    EXPECT_FLOAT_EQ(p.count_time, 2.4f);  // 60 * 0.02 / 0.5
    EXPECT_EQ(p.conv, (std::array<float, 5>{1.540593f, 1.544414f, 0, 1.39225f, 0}));
    EXPECT_EQ(Fact(p, "HW_COUNTER_NAME-0"), "Detector");
    EXPECT_EQ(Fact(p, "Voltage (kV)"), "40");
    EXPECT_EQ(Fact(p, "Position of Z"), "-1.5 mm");

    EXPECT_NEAR(Only(Read_Ras, With(ras, "\"0.0200\"", "\"0.5\"")).step, 0.02, 1e-6);  // which the rows know better
    EXPECT_FALSE(Only(Read_Ras, With(ras, "10.0200", "10.0300")).constant_step);
    EXPECT_EQ(Only(Read_Ras, With(ras, "\"Ka\"", "\"Ka1\"")).conv[1], 0);
    EXPECT_EQ(Only(Read_Ras, With(ras, "\"Ka\"", "\"Kb\"")).conv[0], 1.39225f);
    EXPECT_EQ(Only(Read_Ras, With(ras, "K\xC3\xA4se", " ")).title, "a memo");
    const auto rates = Only(Read_Ras, With(With(ras, "counts", "cps"), "deg/min", "sec/step"));
    EXPECT_TRUE(rates.per_second);
    EXPECT_EQ(rates.count_time, 0.5f);
    EXPECT_EQ(rates.sigma[1], 50);  // 25 / 0.5
    const auto z = Only(Read_Ras, With(ras, "\"TwoTheta\"", "\"Z\""));
    EXPECT_EQ(z.scat_var, "Position");
    EXPECT_EQ(z.legend_x, "Z(mm)");
    EXPECT_EQ(Only(Read_Ras, With(ras, "\"TwoTheta\"", "\"Phi\"")).scat_var, "Angle");
    EXPECT_EQ(Only(Read_Ras, With(With(ras, "\"2-Theta\"", "\"Z\""), "*MEAS_SCAN_AXIS_X_INTERNAL \"TwoTheta\"\n", "")).legend_x, "Z(mm)");
    EXPECT_FLOAT_EQ(Only(Read_Ras, With(ras, "deg/min", "deg/sec")).count_time, 0.04f);  // 0.02 / 0.5
}

TEST(Ras, RowsOfEveryKind) {
    struct Case {
        const char* what;
        std::string rows;
        int npts, claimed;
        std::size_t warnings;
    };
    const Case cases[] = {
        {"two columns", "10 1\n10.02 2\n10.04 3\n*RAS_INT_END\n", 3, 0, 0},
        {"TABs and commas", "10\t1\t1\n10.02, 2, 1\n\n10.04\t3\t0\n*RAS_INT_END\n", 3, 0, 0},
        {"attenuated", "10 1 1\n10.02 2 9.8\n10.04 3 1\n*RAS_INT_END\n", 3, 0, 1},
        {"more than told", "10 1\n10.02 2\n10.04 3\n10.06 4\n*RAS_INT_END\n", 4, 0, 0},
        {"cut between rows", "10 1 1\n10.02 2 1\n", 2, 3, 0},
        {"cut within x", "10 1 1\n10.02 2 1\n10.", 2, 3, 0},
        {"cut within y", "10 1.25 1\n10.02 2.", 1, 3, 0},
        {"cut within the factor", "10 1.25 1.00\n10.02 2.25 1.", 2, 3, 0},
        {"a damaged row", "10 1 1\n10.02 x 1\n10.04 3 1\n*RAS_INT_END\n", 1, 3, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Reading reading = Read_By(Read_Ras, ras_head + "*RAS_INT_START\n" + c.rows);
        ASSERT_EQ(reading.patterns.size(), 1u);
        EXPECT_EQ(reading.patterns.front().npts, c.npts);
        EXPECT_EQ(reading.patterns.front().npts_claimed, c.claimed);
        EXPECT_EQ(reading.notes.warnings.size(), c.warnings);
    }
}

TEST(Ras, ScansThatCannotBeReadAreTold) {
    const std::string empty = ras_head + "*RAS_INT_START\n*RAS_INT_END\n";
    const Reading reading =
        Read_By(Read_Ras, "*RAS_DATA_START\n" + ras_head + ras_rows + empty + ras_head + ras_rows + ras_head.substr(0, 60));
    ASSERT_EQ(reading.patterns.size(), 2u);
    EXPECT_EQ(reading.patterns[1].title, "K\xC3\xA4se, range 3");
    EXPECT_EQ(reading.patterns[1].bank, 3);
    EXPECT_EQ(reading.notes.failed,
              (std::vector<std::string>{"Range 2 of this RAS file holds no points", "This RAS file ends within the head of range 4"}));
}

TEST(Asc, GroupsAndTheirHeads) {
    const auto p = Only(Read_Asc, asc);
    EXPECT_EQ(p.y, (std::vector<float>{16, 25, 36, 49, 64, 81}));
    EXPECT_EQ(p.sigma, p.y);
    EXPECT_FLOAT_EQ(p.x[5], 4.05f);
    EXPECT_EQ(p.count_time, 0.5f);
    EXPECT_EQ(p.conv, (std::array<float, 5>{0.7093f, 0.71359f, 0, 0, 0}));
    EXPECT_EQ(Fact(p, "Anode"), "Mo");
    EXPECT_EQ(Fact(p, "Voltage (kV)"), "40");

    EXPECT_FLOAT_EQ(Only(Read_Asc, With(asc, "sec./step", "deg./min.")).count_time, 1.2f);  // 60 * 0.01 / 0.5
    EXPECT_EQ(Only(Read_Asc, With(asc, "counts", "cps")).sigma[0], 32);                     // 16 / 0.5
    EXPECT_EQ(Only(Read_Asc, With(asc, "K-ALPHA", "K-ALPHA1")).conv[1], 0);
    EXPECT_FLOAT_EQ(Only(Read_Asc, With(asc, "*STEP =  0.01\n", "")).step, 0.01f);  // from start, end and counts

    const Reading pole =
        Read_By(Read_Asc, With(asc_head, "2theta/theta", "beta") + asc_group + With(asc_group, "=  4\n", "=  6\n") + "*EOF\n");
    ASSERT_EQ(pole.patterns.size(), 2u);
    EXPECT_EQ(pole.patterns[0].scat_var, "Angle");
    EXPECT_EQ(pole.patterns[0].legend_x, "Beta(degrees)");
    EXPECT_EQ(pole.patterns[1].xmin, 6);
    EXPECT_EQ(pole.patterns[1].title, "K\xC3\xA4se, range 2");
}

TEST(Asc, CountsThatAreThereAreThePoints) {
    const std::string open = asc_head + asc_group.substr(0, asc_group.find("16,"));
    const std::tuple<std::string, int, int, std::size_t> cases[] = {{"16, 25, 36", 2, 6, 0},  // cut: the last one may lack digits
                                                                    {"16, 25, 36\n", 3, 6, 0},
                                                                    {"16, 25, 36, 49, 64, 81", 6, 0, 0},
                                                                    {"16,25\n36,49,64,81,100\n*END\n", 7, 0, 1},
                                                                    {"16, 25, rubbish, 36\n*END\n", 2, 6, 0},
                                                                    {"16, 25\n*EOF\n", 2, 6, 0}};
    for (const auto& [counts, npts, claimed, warnings] : cases) {
        const Reading reading = Read_By(Read_Asc, open + counts);
        ASSERT_EQ(reading.patterns.size(), 1u) << counts;
        EXPECT_EQ(reading.patterns.front().npts, npts) << counts;
        EXPECT_EQ(reading.patterns.front().npts_claimed, claimed) << counts;
        EXPECT_EQ(reading.notes.warnings.size(), warnings) << counts;
    }
    const Reading bad = Read_By(Read_Asc, asc_head + With(asc_group, "16, 25, 36, 49\n64, 81\n", "") + asc_group);
    ASSERT_EQ(bad.patterns.size(), 1u);
    EXPECT_EQ(bad.patterns.front().bank, 2);
    EXPECT_EQ(Read_By(Read_Asc, asc_head + With(asc_group, "*END\n", "") + asc_group + "*EOF\n" + asc_group).patterns.size(), 2u);
    EXPECT_EQ(bad.notes.failed, std::vector<std::string>{"Range 1 of this ASC file holds no counts"});
}

TEST(Cpi, HeadAndIntensities) {
    const auto p = Only(Read_Cpi, cpi);
    EXPECT_EQ(p.y, (std::vector<float>{60.5f, -2.5f, 40.25f, 30, 20}));
    EXPECT_EQ(p.sigma[1], 2.5f);
    EXPECT_FLOAT_EQ(p.xmax, 3.04f);
    EXPECT_EQ(p.conv[0], 1.5406f);
    EXPECT_EQ(Fact(p, "Anode"), "Cu");
    EXPECT_EQ(Fact(p, "Date"), "11/10/2012 14:41:24");
    EXPECT_EQ(p.npts_claimed, 0);

    struct Case {
        const char* gone;
        std::string title, anode;
        float wave;
    };
    const Case cases[] = {{"Cu\n", "K\xC3\xA4se", "", 1.5406f},
                          {"1,5406\n", "K\xC3\xA4se", "Cu", 0},
                          {"11/10/2012 14:41:24\n", "K\xC3\xA4se", "Cu", 1.5406f},
                          {"K\xC3\xA4se\n", "", "Cu", 1.5406f},
                          {"1,5406\n11/10/2012 14:41:24\n2,0\nK\xC3\xA4se\n", "", "Cu", 0}};
    for (const Case& c : cases) {
        const auto less = Only(Read_Cpi, With(cpi, c.gone, ""));
        EXPECT_EQ(std::tuple(less.title, Fact(less, "Anode"), less.conv[0]), std::tuple(c.title, c.anode, c.wave)) << c.gone;
        EXPECT_EQ(less.y, p.y) << c.gone;
    }
    const std::tuple<std::string, int, int> ends[] = {{"30\n20\n", 5, 0}, {"30\n2", 5, 0}, {"30,55", 4, 5},
                                                      {"30", 3, 5},       {"", 3, 5},      {"3", 3, 5}};
    for (const auto& [end, npts, claimed] : ends) {
        const auto cut = Only(Read_Cpi, With(cpi, "30\n20\n", end));
        EXPECT_EQ(std::pair(cut.npts, cut.npts_claimed), std::pair(npts, claimed)) << end;
    }
}

TEST(Chi, TheLabelTellsWhatXIs) {
    struct Case {
        const char *label, *scat_var, *legend;
        float first;  // of x = 1
        std::size_t warnings = 0;
    };
    const Case cases[] = {{"2-Theta Angle (Degrees)", "", "", 1},
                          {"", "", "", 1},
                          {"2-Theta Angle (Radians)", "", "", 57.29578f},
                          {"Q (Inverse Nanometres)", "q-space", "Q(1/Angstrom)", 0.1f},
                          {"Q (Inverse Angstroms)", "q-space", "Q(1/Angstrom)", 1},
                          {"q_nm^-1", "q-space", "Q(1/Angstrom)", 0.1f},
                          {"D-spacing (Angstroms)", "d-spacing", "d-spacing(Angstroms)", 1},
                          {"D-spacing (nm)", "d-spacing", "d-spacing(Angstroms)", 10},
                          {"2-Theta of a radial mean", "", "", 1},
                          {"Azimuthal Angle (Degrees)", "Angle", "Azimuthal Angle (Degrees)", 1},
                          {"Radial Distance (mm)", "Position", "Radial Distance (mm)", 1},
                          {"Unique", "", "", 1, 1}};
    for (const Case& c : cases) {
        const Reading reading = Read_By(Read_Chi, With(chi, "2-Theta Angle (Degrees)", c.label));
        ASSERT_EQ(reading.patterns.size(), 1u) << c.label;
        const auto& p = reading.patterns.front();
        EXPECT_EQ(std::tuple(p.scat_var, p.legend_x), std::tuple(c.scat_var, c.legend)) << c.label;
        EXPECT_FLOAT_EQ(p.x[0], c.first) << c.label;
        EXPECT_EQ(p.sigma, (std::vector<float>{16, 25, 36}));
        EXPECT_EQ(reading.notes.warnings.size(), c.warnings) << c.label;
    }
    const auto q = Only(Read_Chi, "# chi_Q chi_I\n0.1 5\n0.2 6\n");
    EXPECT_EQ(q.scat_var, "q-space");
    EXPECT_EQ(q.x, (std::vector<float>{0.1f, 0.2f}));
}

TEST(Chi, RowsThatAreThereAreThePoints) {
    const std::string head = "title\n\n\n 4\n";
    const std::tuple<std::string, int, int> cases[] = {{head + "2., 5.9e-2\n3., 6\n4., 7\n5., 8\n", 4, 0},
                                                       {head + "1 2\n2 3\n", 2, 4},
                                                       {head + "1 2\n2 3\n3 4\n4 5\n5 6\n", 5, 0},
                                                       {head + "1 2\n2 3\n\n3 4\nend 5\n4 5\n", 3, 4},
                                                       {head + "1 2.55\n2 3.", 1, 4},
                                                       {head + "1 2.55\n2 3.55", 2, 4},
                                                       {head + "1 2.55\n2 3.55\n3", 2, 4},
                                                       {"t\n\n\n 4000000000\n1 2\n2 3\n", 2, 2147483647}};
    for (const auto& [text, npts, claimed] : cases) {
        const auto p = Only(Read_Chi, text);
        EXPECT_EQ(std::pair(p.npts, p.npts_claimed), std::pair(npts, claimed)) << text;
    }
    const Reading curves = Read_By(Read_Chi, "title\n\n\n 2 3\n1 10 20 30\n2 11 21 31\n");
    ASSERT_EQ(curves.patterns.size(), 3u);
    EXPECT_EQ(curves.patterns[2].title, "title, range 3");
    EXPECT_EQ(curves.patterns[2].y, (std::vector<float>{30, 31}));
    EXPECT_EQ(curves.patterns[2].x, (std::vector<float>{1, 2}));
}

TEST(Mdi, AFullHead) {
    const std::string head = "03/14/08 DIF corundum\n10.0 0.5 1.5 CU 1.54056 20.0 ";
    std::string counts;
    for (int i = 0; i < 21; ++i) counts += std::to_string(100 + i) + (i % 8 == 7 ? "\n" : " ");
    const std::tuple<std::string, int, int> cases[] = {
        {"21\n" + counts + "\n", 21, 0},   {"21\n" + counts + "-1\n", 21, 0},
        {"20\n" + counts + "-1\n", 21, 0}, {"24\n" + counts + "\n", 21, 24},
        {"24\n" + counts + "12", 21, 24},  {"21\n" + counts.substr(0, counts.size() - 1) + std::string(9, '\0'), 21, 0},
        {"4\n1 2 3\n4\n", 4, 0},           {"1000000000\n" + counts, 21, 1000000000}};
    for (const auto& [text, npts, claimed] : cases) {
        Diffraction_Pattern_Type p;
        ASSERT_TRUE(Read_Free_Format(head + text, true, p).ok()) << text;
        EXPECT_EQ(std::pair(p.npts, p.npts_claimed), std::pair(npts, claimed)) << text;
        EXPECT_EQ(p.y.back() == -1, false);
        EXPECT_FLOAT_EQ(p.xmax, 10 + 0.5f * static_cast<float>(npts - 1));
        EXPECT_EQ(p.sigma, p.y);
        EXPECT_EQ(p.conv[0], 1.54056f);
        EXPECT_EQ(p.count_time, 1.5f);
        EXPECT_EQ(std::tuple(Fact(p, "Anode"), Fact(p, "Date")), std::tuple("CU", "03/14/08"));
        EXPECT_EQ(p.title, "03/14/08 DIF corundum");
    }
    Diffraction_Pattern_Type p;
    EXPECT_TRUE(Read_Free_Format(head + "21\nnone\n", true, p).failed);
    EXPECT_TRUE(Read_Free_Format(head + '\n' + counts.substr(0, 40), true, p).failed);  // without points as many as the range tells
}

// Numbers of the files' own heads, and of the list that lies beside them.
TEST(Lab_Text, RealFiles) {
    struct Case {
        const char* name;
        Read_All read;
        std::vector<int> npts;
        float xmin, xmax;
        std::vector<float> first;  // of y
        float time, wave;
        const char* title;
    };
    const Case cases[] = {
        {"rigaku_ras_multilayer.ras", Read_Ras, {1401}, 2, 30, {7994, 7788, 7984}, 4.8f, 1.540593f, "MB120718Si3"},
        {"rigaku_ras_two_scans.ras",
         Read_Ras,
         {1501, 2501},
         26.5f,
         32.5f,
         {51.4986f, 45.4986f, 40.5014f},
         5.983396f,
         1.540593f,
         "MEAS_KHP2_00061, range 1"},
        {"rigaku_asc_four_columns.asc", Read_Asc, {7601}, 4, 80, {767, 794, 798}, 0.6f, 1.54059f, "JC170705CuPcAuCrSi5"},
        {"sietronics_decimal_comma.cpi", Read_Cpi, {37}, 3.01f, 3.73f, {60, 50, 40}, 0, 1.5406f, "08-946 Sample"},
        {"fit2d_chi_count_too_large.chi",
         Read_Chi,
         {75},
         0.010486433f,
         28.34483f,
         {27.862846f, 28.738375f, 30.297205f},
         0,
         0,
         "\\\\psf\\Home\\Programming\\Dioptas\\Dioptas_main\\ExampleData\\LaB6_p49_001.tif: 2-thet"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string text = Real_File(std::string("formats/samples/") + c.name);
        if (text.empty()) GTEST_SKIP();
        const Reading reading = Read_By(c.read, text);
        ASSERT_EQ(reading.patterns.size(), c.npts.size());
        for (std::size_t i = 0; i < c.npts.size(); ++i) EXPECT_EQ(reading.patterns[i].npts, c.npts[i]);
        const auto& p = reading.patterns.front();
        EXPECT_FLOAT_EQ(p.x.front(), c.xmin);
        EXPECT_FLOAT_EQ(p.x.back(), c.xmax);
        EXPECT_EQ(std::vector<float>(p.y.begin(), p.y.begin() + 3), c.first);
        EXPECT_FLOAT_EQ(p.count_time, c.time);
        EXPECT_FLOAT_EQ(p.conv[0], c.wave);
        EXPECT_EQ(p.title, c.title);
        EXPECT_TRUE(reading.notes.warnings.empty() && reading.notes.failed.empty());
    }
}

}  // namespace
}  // namespace vntl::test
