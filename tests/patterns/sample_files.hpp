// A file of each format of instrument files, written from its layout: for the readers, for recognition, and for the whole program.
#pragma once

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace vntl::test {

template <class... Values>
std::string Printed(const char* layout, Values... values) {
    char text[400];
    std::snprintf(text, sizeof text, layout, values...);
    return text;
}

// `n` fields, so many to a line, each from `field(i)`.
template <class Field>
std::string Lines(int n, int a_line, Field field) {
    std::string text;
    for (int i = 0; i < n; ++i) {
        text += field(i);
        if ((i + 1) % a_line == 0 || i + 1 == n) text += '\n';
    }
    return text;
}

// n numbers of a bumpy pattern by the layout of one; in front of each, where it has a layout, a small integer (detectors, a time).
inline std::string Bumps(int n, int a_line, const char* layout, const char* integer = nullptr, double factor = 1) {
    return Lines(n, a_line, [=](int i) {
        const std::string front = integer == nullptr ? "" : Printed(integer, 1 + i % 3);
        return front + Printed(layout, factor * (900 + 300 * std::sin(0.05 * i)));
    });
}

// Rows of x, y and a deviation, as many of them as the layout has.
inline std::string Columns(int n, const char* layout = "%.3f %.0f %.1f\n", double start = 10, double step = 0.05) {
    std::string text;
    for (int i = 0; i < n; ++i) text += Printed(layout, start + step * i, 100.0 + i % 17, 10.5);
    return text;
}

struct Sample_File {
    int code;          // of the format
    std::string name;  // with the format's extension
    std::string text;
    int patterns = 1;
};

constexpr const char* sample_title = "K\xC3\xA4se, 300 K";  // where a format has a place for one

// Files of about n points.
inline std::vector<Sample_File> Sample_Files(int n) {
    const std::string title = std::string(sample_title) + '\n';
    const double last = 10 + 0.05 * (n - 1);
    const std::string range = Printed("  10.000   0.050 %8.3f\n", last);
    const std::string pairs = Bumps(n, 10, "%6.0f", "%2d"), counts = Bumps(n, 10, "%8.0f"), free = Bumps(n, 8, " %.0f");
    const std::string flights = Columns(n, "%.2f %.5f %.5f\n", 2000, 10);
    const auto bank = [&](const char* rest, const std::string& records, int number = 1) {
        return Printed("BANK %d %d %d ", number, n, n / 10) + rest + '\n' + records;
    };
    const auto g41 = [&](int kind) {
        return title + "2.42 A\n20'\n! a remark\n" + Printed("%d 1.5 2 %d 1e5 1e5\n", n, kind) + range + free;
    };
    const std::string r3b_head = Printed("%13.0f%10s%8.3f%45s%9.3f%9.3f%9.3f%9.3f\n%4d\n", 1.5e6, "", 10.0, "", 0.1, 40.0, 0.0, 40.2, n);
    const std::string r3a_head = Printed("%16s%8.3f\n%8.3f\n%8.0f%8.0f\n", "", 0.02, 6.0, 20000.0, 10000.0);
    const std::string nls =
        Lines(n / 10, 1, [](int) { return Bumps(10, 10, "%8.0f") + Bumps(10, 10, "%8.1f", nullptr, 0.03).substr(0, 80); });
    const std::string uxd = "_SAMPLE='" + std::string(sample_title) + "'\n_STEPTIME=1.0\n_STEPSIZE=0.05\n" + Printed("_STEPCOUNT=%d\n", n);
    const std::string waves = "LabdaAlpha1,           1.54060,/\n", block = "\n_pd_proc_intensity_total\n_pd_calc_intensity_total\n\n";
    const std::string csv = Printed("Data angle range,10,%.2f\nScan step size,0.05\nNo. of points,%d\n", last, n);
    const std::string xrdml =
        "xrdMeasurements>\n<xrdMeasurement>\n<kAlpha1 unit=\"Angstrom\">1.5406</kAlpha1>\n<kAlpha2 unit=\"Angstrom\">1.5444</kAlpha2>\n"
        "<kBeta unit=\"Angstrom\">1.3922</kBeta>\n<ratioKAlpha2KAlpha1>0.5</ratioKAlpha2KAlpha1>\n<scan>\n<dataPoints>\n"
        "<positions axis=\"2Theta\" unit=\"deg\">\n<startPosition>10</startPosition>\n" +
        Printed("<endPosition>%.2f</endPosition>\n</positions>\n<intensities unit=\"counts\">", last) + free +
        "</intensities>\n</dataPoints>\n</scan>\n</xrdMeasurement>\n</xrdMeasurements>\n";
    return {
        {1, "free.dat", "! TITLE " + title + " a title\n" + range + free},
        {1, "free line by line.sub", range + Bumps(n, 1, " %.2f")},
        {1, "free in columns.bac", title + range + counts},
        {1, "free with commas.sim", Printed("0 1 %d ", n - 1) + title + Bumps(n, 20, "%.0f, ")},
        {1, "free.MDI", title + Printed("10.0 0.05 1.0 CU 1.54 %.2f %d\n", last, n) + free},
        {1, "small.mdi", title + Printed("10.0 0.05 1.0 CU 1.54 %.2f %d\n", last, n) + free},
        {2, "r3b.dat", "D1  26-FEB-98\n" + title + "vanadium can\n" + r3b_head + Bumps(n, 10, "%8.0f", "%2d") + "   -1000\n"},
        {3, "nls.dat", "! " + title + "! second\n" + range + nls},
        {4, "g41.dat", g41(0)},
        {4, "g41 deviations.dat", g41(1) + Bumps(n, 8, " %.1f", nullptr, 0.03)},
        {5, "r3a.dat", title + r3a_head + pairs + "   -1000\n"},
        {6, "old r3a.dat", range + pairs},
        {7, "dmc.dat", title + "lambda=1.494, T=1.5\n" + range + Bumps(n, 10, "%7.0f.") + Bumps(n, 10, "%8.1f", nullptr, 0.03)},
        {8, "ranges.uxd", "; a remark\n" + uxd + "_START=10.0\n_COUNTS\n" + counts + "; 2\n_START=50.0\n_COUNTS\n" + counts, 2},
        {8, "theta.uxd", uxd + "_2THETACOUNTS = \n" + Columns(n, "%.2f %.0f\n")},
        {9, "xydata.xys", "XYDATA\nTITLE " + title + "INTER 1 1 0 0\nb\nc\nd\n" + Columns(n)},
        {9, "plain.xye", Columns(n)},
        {9, "two columns.xy", title + Columns(n, "%8.3f %8.0f\n")},
        {9, "commas.xye", "x,y,e " + title + Columns(n, "%.3f,%.0f,%.1f\n")},
        {9, "tabs.xye", "% " + title + Columns(n, "%.3f\t%.0f\t%.1f\n")},
        {9, "semicolons.xye", "// 1 2 3\n' 4 5\n" + Columns(n, "%.3f;%.0f;%.1f\n")},
        {9, "decimal commas.xye", "x;y\n" + Columns(n, "%.0f,05;%.0f,5;%.1f\n", 10, 1)},
        {9, "pairs.gr", "History\ntemp=300 title=" + title + "#L r(A) G(r)\n" + Columns(n, "%.2f %.3f 0 %.2f\n")},
        {10, "std.gsas", title + bank("CONST 1000 2 0 0 STD", pairs)},
        {10, "no type.gsa", title + bank("CONST 1000 2 0 0", pairs)},
        {10, "today.fxye", "# remarks\n# \nthe title\nInstrument parameter file:x\n" + bank("CONS 1000 2 0 0 FXYE", Columns(n))},
        {10, "small.gsa", "title\nbank" + bank("const 1000 2 0 0 esd", Bumps(n, 5, "%7.0f.     83.")).substr(4)},
        {11, "ralf.gss",
         title + bank("RALF 64000 32 64000 0.0008 ALT",
                      Lines(n, 4, [](int i) { return Printed("%8d%7d%5d", 64000 + 32 * i, 900 + i % 17, 83); }))},
        {11, "several.gda", title + bank("SLOG 2597 20767 0.0004 0 FXYE", flights) + bank("SLOG 9 9 0.1 0 FXYE", flights, 4), 2},
        {11, "far out.gss", title + bank("CONST 20000 10 0 0 STD", counts)},
        {11, "time map.gss",
         title + "TIME_MAP 1 4 1 TIME_MAP 100\n       1   10000      10  900000\n" + bank("TIME_MAP 1 0 0 0 STD", counts)},
        {12, "lab.csv",
         "Title 1," + title + "K-Alpha1 wavelength,1.5406\n" + csv + "[Scan points]\nAngle,Intensity\n" + Columns(n, "%.2f,%.0f\n")},
        {12, "today.csv", "[Measurement conditions]\n" + csv + "[Scan points]\nAngle,Intensity\n" + Columns(n, "%.2f,%.0f\n")},
        {12, "lab.udf",
         "SampleIdent," + title + waves + Printed("DataAngleRange, 10.0, %.2f,/\nScanStepSize, 0.05,/\nRawScan\n", last) +
             Bumps(n, 8, "%8.0f,")},
        {12, "lab.jcp",
         "## TITLE= " + title +
             Printed("## FIRSTX= 10.0\n## LASTX= %.2f\n## DELTAX= 0.05\n## NPOINTS= %d\n## XYDATA= X++<Y..Y>\n", last, n / 5 * 5) +
             Lines(n / 5, 1, [](int i) { return Printed("%9.3f ", 10 + 0.25 * i) + Bumps(5, 9, "%11.3f").substr(0, 55); }) + "## END=\n"},
        {12, "lab.xrdml", "<?xml version=\"1.0\"?>\n<" + xrdml},
        {13, "time.dat", title + "Cu\n12-MAR-91\n40 kV\n" + range + Bumps(n, 5, "%10.0f", "%6d")},
        {14, "isis.dat", title + "fac_y 1000.0\n! a remark\nBANK 1 RALF\n" + flights + "\nBANK 2\n" + flights, 2},
        {14, "isis plain.dat", title + "BANK 1\n# remark\n" + Columns(n)},
        {15, "powder.cif",
         "data_x\n_pd_block_id " + title + Printed("_pd_proc_number_of_points %d\n", n) + "loop_\n_pd_proc_point_id\n_pd_proc_d_spacing" +
             block + Columns(n, "1 %.3f %.0f(10) 90\n")},
        {15, "no block.cif",
         "  \n" + Printed("_pd_proc_number_of_points %d\n", n) + "loop_\n_pd_proc_2theta_corrected" + block +
             Columns(n, "%.3f %.0f(10) 90\n")},
    };
}

}  // namespace vntl::test
