// Recognition by content: a file of each format written here from its layout, large and small, and what is none of them.
#include "patterns/recognise.hpp"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <random>

#include "patterns/testing.hpp"

namespace vntl {
namespace {

[[gnu::format(printf, 1, 2)]] std::string Print(const char* format, ...) {
    char text[400];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}

// A format without what stands for a value that is left out; false when there is nothing of that kind in it.
constexpr std::string_view left_out = "%.0s";
bool Leaves_Out(std::string& format) {
    const std::size_t at = format.find(left_out);
    if (at != std::string::npos) format.erase(at, left_out.size());
    return at != std::string::npos;
}

// n numbers of a bumpy pattern, each by its format, so many to a line. The format gets a small integer (detectors, a time) and the count.
std::string List(int n, int a_line, const char* format, double factor = 1) {
    std::string text, each = format;
    const bool count_alone = Leaves_Out(each);
    for (int i = 0; i < n; ++i) {
        const double count = factor * (900 + 300 * std::sin(0.05 * i));
        text += count_alone ? Print(each.c_str(), count) : Print(each.c_str(), 1 + i % 3, count);
        if ((i + 1) % a_line == 0 || i + 1 == n) text += '\n';
    }
    return text;
}

std::string Range(int n) { return Print("  10.000   0.050 %8.3f\n", 10 + 0.05 * (n - 1)); }

constexpr const char* alone = "%.0s%8.0f";  // the count without the integer

std::string R3b(int n) {
    return "D1  26-FEB-98\nTb Fe2 at 40 K\nvanadium can\n" +
           Print("%13.0f%10s%8.3f%45s%9.3f%9.3f%9.3f%9.3f\n%4d\n", 1.5e6, "", 10.0, "", 0.1, 40.0, 0.0, 40.2, n) + List(n, 10, "%2d%8.0f") +
           "   -1000\n";
}
std::string Nls(int n) {
    std::string text = "! LaB6\n! second\n" + Range(n);
    for (int i = 0; i < n / 10; ++i) text += List(10, 10, alone) + List(10, 10, alone, 0.03);
    return text;
}
std::string G41(int n, int kind) {
    std::string text =
        "CeO2\n2.42 A\n20'\n! a remark\n" + Print("%d 1.5 2.0 %d 100000. 100000.\n", n, kind) + Range(n) + List(n, 8, "%.0s %.0f");
    return kind == 0 ? text : text + List(n, 8, "%.0s %.1f", 0.03);
}
std::string R3a(int n) {
    return "Nb3Sn, 6 K\n" + Print("%16s%8.3f\n%8.3f\n%8.0f%8.0f\n", "", 0.05, 6.0, 20000.0, 10000.0) + List(n, 10, "%2d%6.0f") +
           "   -1000\n";
}
std::string R3a_Old(int n) { return Range(n) + List(n, 10, "%2d%6.0f"); }
std::string Dmc(int n) {
    return "HRPT, a sample\nlambda=1.494, T=1.5\n" + Range(n) + List(n, 10, "%.0s%7.0f.") + List(n, 10, "%.0s%8.1f", 0.03);
}
std::string Uxd(int n) {
    return "; a remark\n_SAMPLE='q'\n_STEPTIME=1.0\n_STEPSIZE=0.02\n_START=10.0\n_COUNTS\n" + List(n, 8, "%.0s%10.0f");
}
std::string Bank(const char* words, const std::string& rows) { return "Garnet, 300 K\n" + Print("BANK %s\n", words) + rows; }
std::string Columns(int n, const char* format = "%.3f %.0f %.1f\n", double start = 10, double step = 0.05) {
    std::string text, each = format;
    const bool two = Leaves_Out(each);
    for (int i = 0; i < n; ++i)
        text += two ? Print(each.c_str(), start + step * i, 100.0 + i % 17) : Print(each.c_str(), start + step * i, 100.0 + i % 17, 10.5);
    return text;
}
std::string Variable_Time(int n) { return "Quartz\nCu\n12-MAR-91\n40 kV\n" + Range(n) + List(n, 5, "%6.1d%10.0f"); }
std::string Isis(int n) {
    return "a title\nfac_y 1000.0\n! a remark\nBANK 1 RALF\n" + Columns(n, "%.2f %.5f %.5f\n", 2000, 10) + "\nBANK 2\n" +
           Columns(n, "%.2f %.5f %.5f\n", 2000, 10);
}

struct Case {
    int code;
    std::string what, text;
};

std::vector<Case> Good_Files(int n) {
    const std::string pairs = List(n, 10, "%2d%6.0f"), counts = List(n, 10, alone);
    const std::string claims = Print("1 %d %d ", n, n / 10);
    const auto bank = [&](const char* rest, const std::string& rows) { return Bank((claims + rest).c_str(), rows); };
    const std::string udf_head =
        "SampleIdent,q,/\nLabdaAlpha1,           1.54060,/\nDataAngleRange,  10.0,  50.0,/\nScanStepSize,  0.020,/\nRawScan\n";
    const std::string csv_head = "Title 1,q\nK-Alpha1 wavelength,1.5406\nData angle range,10,50\n";
    return {
        {1, "free format", "! TITLE x\n a title\n" + Range(n) + List(n, 8, "%.0s %.0f")},
        {1, "free format, a count a line", Range(n) + List(n, 1, "%.0s %.2f")},
        {1, "free format in columns", "a title\n" + Range(n) + counts},
        {1, "free format, commas, a title behind", Print("0, 1, %d the title\n", n - 1) + List(n, 20, "%.0s%.0f, ")},
        {2, "R3B", R3b(n)},
        {3, "NLS", Nls(n / 10 * 10)},
        {4, "G41", G41(n, 0)},
        {4, "G41 with deviations", G41(n, 1)},
        {5, "R3A", R3a(n)},
        {6, "old R3A", R3a_Old(n)},
        {7, "DMC", Dmc(n)},
        {8, "UXD", Uxd(n)},
        {8, "UXD with 2theta", "_FILEVERSION=2\n_2THETACOUNTS = \n" + Columns(n, "%.2f %.0f%.0s\n")},
        {9, "XYDATA", "XYDATA\nINTER 1 1 0 0\na\nb\nc\nd\n" + Columns(n)},
        {9, "columns", Columns(n)},
        {9, "two columns", "a title\n" + Columns(n, "%8.3f %8.0f%.0s\n")},
        {9, "commas", "x,y,e\n" + Columns(n, "%.3f,%.0f,%.1f\n")},
        {9, "TABs", "% x\n" + Columns(n, "%.3f\t%.0f\t%.1f\n")},
        {9, "semicolons", "// 1 2 3\n' 4 5\n" + Columns(n, "%.3f;%.0f;%.1f\n")},
        {9, "decimal commas", "x;y\n" + Replace_All(Columns(n, "%.3f;%.1f;%.1f\n"), ".", ",")},
        {9, "pair distribution", "History\ntemp=300\n#L r(A) G(r)\n" + Columns(n, "%.2f %.3f 0 %.2f\n")},
        {10, "GSAS", bank("CONST 1000 2 0 0 STD", pairs)},
        {10, "GSAS without a type", bank("CONST 1000 2 0 0", pairs)},
        {10, "GSAS of today", "# remarks\n# \nthe title\nInstrument parameter file:x\n" + bank("CONS 1000 2 0 0 FXYE", Columns(n))},
        {10, "GSAS in small letters", "title\nbank " + claims + "const 1000 2 0 0 esd\n" + counts},
        {11, "GSAS RALF", bank("RALF 81743 65 81743 0.0008 ALT", List(n, 4, "%.0s   81743%7.0f   83"))},
        {11, "GSAS SLOG", bank("SLOG 2597 20767 0.0004 0 FXYE", Columns(n, "%.2f %.5f %.5f\n", 2000, 10))},
        {11, "GSAS CONST far out", bank("CONST 20000 10 0 0 STD", counts)},
        {11, "GSAS TIME_MAP", bank("TIME_MAP 1 0 0 0 STD", counts)},
        {12, "CSV", csv_head + "[Scan points]\nAngle,Intensity\n" + Columns(n, "%.2f,%.0f%.0s\n")},
        {12, "CSV of today", "[Measurement conditions]\nTitle 1,q\n"},
        {12, "UDF", udf_head + List(n, 8, "%.0s%8.0f,")},
        {12, "JCP", "## TITLE= q\n##$WAVELENGTH ALPHA1= 1.54060\n## XYDATA= X++<Y..Y>\n" + counts},
        {12, "XRDML", "<?xml version=\"1.0\"?>\n<xrdMeasurements>\n<xrdMeasurement/>\n"},
        {12, "XRDML with a prefix", "\n<p:xrdMeasurements xmlns:p=\"x\">\n"},
        {13, "variable time", Variable_Time(n)},
        {14, "ISIS", Isis(n)},
        {14, "ISIS without a factor", "a title\nBANK 1\n# remark\n" + Columns(n)},
        {15, "CIF", "data_x\n_pd_block_id a\n_pd_proc_number_of_points 5\nloop_\n_pd_proc_point_id\n_pd_proc_d_spacing\n\n" + Columns(n)},
        {15, "CIF under remarks", "# remark\n\ndata_x\n_cell_length_a 5.4\n"},
        {15, "CIF without a block", "  \nloop_\n_pd_proc_2theta_corrected\n_pd_proc_intensity_total\n\n" + Columns(n)},
    };
}

TEST(Recognise, AFileOfEachFormat) {
    for (const int n : {40, 403, 6000}) {
        for (const Case& c : Good_Files(n)) {
            EXPECT_EQ(Recognised_By_Content(c.text), c.code) << c.what << ' ' << n;
            const std::string crlf = Replace_All(c.text, "\n", "\r\n"), cr = Replace_All(c.text, "\n", "\r");
            EXPECT_EQ(Recognised_By_Content(crlf), c.code) << c.what << " CR LF " << n;
            EXPECT_EQ(Recognised_By_Content(cr), c.code) << c.what << " CR " << n;
            EXPECT_EQ(Recognised_By_Content("\xEF\xBB\xBF" + c.text), c.code) << c.what << " mark " << n;
            EXPECT_EQ(Recognised_By_Content(Replace_All(c.text, "\n", "  \n")), c.code) << c.what << " blanks " << n;
        }
    }
}

TEST(Recognise, WhatIsNoPattern) {
    std::mt19937 random(7);
    std::string noise(5000, '\0'), letters(5000, ' '), digits(5000, ' ');
    for (char& c : noise) c = static_cast<char>(random());
    for (char& c : letters) c = static_cast<char>(' ' + random() % 95);
    for (char& c : digits) c = " \n0123456789.-"[random() % 14];
    const std::string texts[] = {"",
                                 "\n\n\n",
                                 " ",
                                 "BANK",
                                 "BANK of England\nfounded 1694\n",
                                 "<svg width=\"1\"><path d=\"M 1 2 3 4\"/></svg>\n",
                                 "<?xml version=\"1.0\"?>\n<a/>\n",
                                 "\x89PNG\r\n\x1A\n" + noise,
                                 "\xFF\xD8\xFF\xE0" + noise,
                                 noise,
                                 letters,
                                 digits,
                                 std::string(100000, '\0'),
                                 "#include <cstdio>\n\nint main() {\n    const int table[] = {1, 2, 3};\n    return table[0];\n}\n",
                                 "Dear reader,\n\n1. The first thing\n2. The second one\n3. The third\n4. The fourth\n",
                                 "12 apples\n13 pears\n14 plums\n15 cherries\n16 nuts\n",
                                 "1 2 3\n",
                                 "10.0 0.05 90.0\n",
                                 "10.0 0.05 90.0\n1 2 3 4 5\n",
                                 "data_frames = 3\n_private = 4\n",
                                 "import numpy\ndata_x = 1\n_x = 2\n",
                                 "h k l d\n" + List(300, 5, "%.0s %.0f"),
                                 "_START of it all\n",
                                 "name,age\nAda,36\nCarl,77\n"};
    for (const std::string& text : texts) EXPECT_EQ(Recognised_By_Content(text), 0) << text.substr(0, 40);
}

TEST(Recognise, SizeAndShapeDoNotMatter) {
    // A file of the first 64 KB and no more, long lines, many lines: an answer at once.
    EXPECT_EQ(Recognised_By_Content(Columns(200000)), 9);
    EXPECT_EQ(Recognised_By_Content(Columns(200000).substr(0, recognised_head)), 9);
    for (const char* unit : {"\n", "1 ", "BANK\n#\n", "BANK 1\n1 2 3\n", "!\n", "_", "1,", "loop_\n", ";", "-"}) {
        std::string text;
        while (text.size() < 2 * recognised_head) text += unit;
        EXPECT_EQ(Recognised_By_Content(text), 0) << unit;
    }
}

TEST(Recognise, EveryFormatIsDescribed) {
    for (int code = 1; code <= 15; ++code) EXPECT_FALSE(How_Recognised(code).empty()) << code;
    for (const int code : {-1, 0, 16}) EXPECT_TRUE(How_Recognised(code).empty()) << code;
}

TEST(Recognise, RealFiles) {
    const std::pair<const char*, int> files[] = {{"gsas/fap_lab_std.gsas", 10},
                                                 {"gsas/garnet_cwn_std_pairs.gsas", 10},
                                                 {"gsas/lamno3_50k_esd.gsas", 10},
                                                 {"gsas/alumina_esd.gsa", 10},
                                                 {"gsas/gem05984_ralf_alt.gss", 11},
                                                 {"gsas/pg3_22049_tof.gsa", 11},
                                                 {"gsas/vulcan_435.gda", 11},
                                                 {"gsas/11bm_fxye_head.fxye", 10},
                                                 {"xye/lactose_x3.xye", 9},
                                                 {"xye/pg3_20254_tof.xye", 9},
                                                 {"uxd/bt86.uxd", 8},
                                                 {"xrdml/empyrean.xrdml", 12},
                                                 {"dmc/hrpt.dat", 7},
                                                 {"gr/300K.gr", 9},
                                                 {"gr/550K.gr", 9},
                                                 {"cif_powder/cod_1517474.cif", 15},
                                                 {"fit/doublet.xy", 9},
                                                 {"symmetry/settings.tsv", 0},
                                                 {"symmetry/reflections_01.tsv", 0},
                                                 {"structures/twin_3a.ins", 0}};
    for (const auto& [name, code] : files) {
        const std::string file = test::Real_File(name);
        if (file.empty()) GTEST_SKIP() << name;
        EXPECT_EQ(Recognised_By_Content(test::Text_Of(file)), code) << name;
    }
}

}  // namespace
}  // namespace vntl
