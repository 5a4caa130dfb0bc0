// Files of peaks for other programs, byte for byte against those that tests/data/external/peak_files.f90 wrote for the same cases.
#include "external/peaks_file.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

#include "base/free_form.hpp"
#include "base/text.hpp"

namespace vntl {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), infinite = std::numeric_limits<float>::infinity();

std::string Text_Of(const std::string& name) {
    std::ifstream file(std::string(TEST_DATA "/external/") + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// As the program of the tables makes them: no two sums that a compiler could round as one.
std::vector<Peak_Mark> Some_Peaks(int n, float scale) {
    std::vector<Peak_Mark> peaks;
    for (int i = 1; i <= n; ++i) {
        const float k = static_cast<float>(i), bend = static_cast<float>(i * 37 % 64) / 4096;
        peaks.push_back({scale * (5 + k * 0.3125f + bend), static_cast<float>(i * i) * 1.04f, static_cast<float>(i - 3) / 3});
    }
    return peaks;
}

Points_Source Lab6() {
    Points_Source source;
    source.file_name = "lab6 run 7.xye";
    source.path = "/data/november/" + source.file_name;
    source.instr = "XYSIGMA   ";
    source.scat_var = source.xspace = "2theta";
    source.date = Date_Text(5, 11, 2026, 9, 7, 30);
    source.wavelengths = Wavelengths_Of_Source(2, {});
    return source;
}

// One case after the other of cases.txt.
class Cases {
public:
    std::string kind;
    int count = 0;

    bool Next() {
        int radiation = 0;
        float scale = 0;
        std::array<float, 5> conv{};
        source = Lab6();
        if (reader.At_End() || !reader.Read(kind, count, scale, radiation, conv[0], conv[1], conv[2], source.scat_var, source.xspace))
            return false;
        source.wavelengths = Wavelengths_Of_Source(radiation, conv);
        wavelength = conv[0];
        peaks = Some_Peaks(count, scale);
        return true;
    }

    Status Write(std::string& text) {
        const std::pair<std::string_view, Status (Cases::*)(std::string&)> writers[] = {
            {"free", &Cases::Free}, {"background", &Cases::Background}, {"dicvol", &Cases::Dicvol},
            {"ito", &Cases::Ito},   {"treor", &Cases::Treor},           {"vecfind", &Cases::Vecfind}};
        for (const auto& [name, writer] : writers)
            if (name == kind) return (this->*writer)(text);
        return Status::Fail("no such kind: " + kind);
    }

    const Status& status() const { return reader.status(); }

private:
    Status Free(std::string& text) { return Free_Peaks_File(source, peaks, text); }
    Status Background(std::string& text) {
        std::vector<Background_Mark> points;
        for (const Peak_Mark& peak : peaks) points.push_back({peak.x, peak.y});
        return Background_File(source, points, text);
    }
    Status Dicvol(std::string& text) {
        Dicvol_Input in;
        int systems[6], zero[2], option = 0;
        reader.Read(in.title, in.lines, in.itype, std::span<int>(systems), in.amax, in.bmax, in.cmax, in.bemin, in.bemax, in.volmin,
                    in.volmax, in.wavelength, in.weight, in.density, in.density_error, in.eps, in.fom, in.impurity_lines,
                    std::span<int>(zero), option);
        bool* const flags[] = {&in.cubic, &in.tetragonal, &in.hexagonal, &in.orthorhombic, &in.monoclinic, &in.triclinic};
        for (std::size_t i = 0; i < std::size(flags); ++i) *flags[i] = systems[i] == 1;
        in.zero_search = zero[0] == 1;
        in.zero_refinement = zero[1] == 1;
        in.option = option == 1;
        return Dicvol_File(source, in, peaks, text);
    }
    Status Ito(std::string& text) {
        Ito_Input in;
        reader.Read(in.title, in.wavelength, in.zero_shift);
        return Ito_File(in, peaks, text);
    }
    Status Treor(std::string& text) {
        Treor_Input in;
        reader.Read(in.title, in.spacing, in.cem, in.volume, in.beta, in.wavelength, in.merit);
        return Treor_File(source, in, peaks, text);
    }
    Status Vecfind(std::string& text) {
        Vecfind_Input in = Vecfind_Input_Of(source, "", "a title", wavelength);
        std::string told[6];
        int output = 0, special = 0;
        reader.Read(in.title, told[0], told[1], told[2], told[3], told[4], told[5], output, special);
        std::string* const fields[] = {&in.lattice, &in.cell, &in.tolerance, &in.k_range, &in.points, &in.wavelength};
        for (std::size_t i = 0; i < std::size(fields); ++i)
            if (told[i] != "-") *fields[i] = told[i];
        in.output = static_cast<Vecfind_Output>(output - 1);
        in.special_only = special == 1;
        return Vecfind_File(source, in, peaks, text);
    }

    std::string cases = Text_Of("cases.txt");
    Free_Form_Reader reader{cases};
    Points_Source source;
    std::vector<Peak_Mark> peaks;
    float wavelength = 0;
};

// The two sums of Adler-32.
std::pair<int, int> Sums(std::string_view text) {
    constexpr int base = 65521;
    int a = 1, b = 0;
    for (const char c : text) {
        a = (a + static_cast<unsigned char>(c)) % base;
        b = (b + a) % base;
    }
    return {a, b};
}

TEST(Peaks_File, EqualsThoseOfAFortranProgram) {
    constexpr int shown_peaks = 30;
    const std::string output = Text_Of("output.txt");
    Cases cases;
    int done = 0;
    std::size_t at = 0;
    for (; cases.Next(); ++done) {
        const std::size_t head_end = output.find('\n', at);
        ASSERT_NE(head_end, std::string::npos);
        const std::string head = output.substr(at, head_end - at);
        SCOPED_TRACE("case " + std::to_string(done + 1) + ": " + head);
        std::string kind, text;
        int count = 0, size = 0, a = 0, b = 0;
        ASSERT_TRUE(Free_Form_Reader(head).Read(kind, count, size, a, b));
        ASSERT_EQ(kind, cases.kind);
        ASSERT_EQ(count, cases.count);
        const Status status = cases.Write(text);
        ASSERT_TRUE(status.ok()) << status.message;
        ASSERT_TRUE(cases.status().ok()) << cases.status().message;
        at = head_end + 1;
        if (count <= shown_peaks) {
            EXPECT_EQ(text, output.substr(at, static_cast<std::size_t>(size)));
            at += static_cast<std::size_t>(size);
        }
        EXPECT_EQ(text.size(), static_cast<std::size_t>(size));
        EXPECT_EQ(Sums(text), std::pair(a, b));
    }
    EXPECT_EQ(at, output.size());
    EXPECT_GT(done, 30);
}

// The bounds are those of the descriptor: F6.1 holds "9999.9" and "-999.9", I4 "9999" and "-999".
TEST(Peaks_File, RefusesByNameWhatColumnsCannotHold) {
    const std::vector<Peak_Mark> peaks = Some_Peaks(4, 1);
    std::string t = "as it was";
    const auto with = [&](float Peak_Mark::*part, float value) {
        std::vector<Peak_Mark> changed = peaks;
        changed[2].*part = value;
        return changed;
    };
    const auto dicvol = [&](auto member, auto value) {
        Dicvol_Input input;
        input.lines = 4;
        input.*member = value;
        return Dicvol_File(Lab6(), input, peaks, t);
    };
    const auto treor = [&](float Treor_Input::*member, float value) {
        Treor_Input input;
        input.*member = value;
        return Treor_File(Lab6(), input, peaks, t);
    };
    const auto ito = [&](float Ito_Input::*member, float value) {
        Ito_Input input;
        input.*member = value;
        return Ito_File(input, peaks, t);
    };
    Points_Source source = Lab6();
    source.wavelengths[1] = nan;
    const std::vector<Background_Mark> background = {{1, 2}, {1, -1e8f}};
    const std::string no_number = ": it is no finite number.", takes = ": its columns take ";
    const std::pair<Status, std::string> cases[] = {
        {Ito_File({}, with(&Peak_Mark::x, 12000.5f), t), "the position of peak 3, 12000.5" + takes + "-999.99999 to 9999.99999."},
        {Ito_File({}, with(&Peak_Mark::x, -1000), t), "the position of peak 3, -1000" + takes + "-999.99999 to 9999.99999."},
        {Free_Peaks_File(Lab6(), with(&Peak_Mark::y, 1e9f), t),
         "the intensity of peak 3, 1e+09" + takes + "-99999999.99999 to 999999999.99999."},
        {Treor_File(Lab6(), {}, with(&Peak_Mark::bgr, nan), t), "the background of peak 3" + no_number},
        {Treor_File(Lab6(), {}, with(&Peak_Mark::y, 1000000.5f), t),
         "the intensity of peak 3, 1000000.5" + takes + "-99999.99999 to 999999.99999."},
        {Vecfind_File(Lab6(), {}, with(&Peak_Mark::x, infinite), t), "the position of peak 3" + no_number},
        {Vecfind_File(Lab6(), {}, std::vector<Peak_Mark>(100000), t), "the number of peaks, 100000" + takes + "-9999 to 99999."},
        {Background_File(Lab6(), background, t), "the value of background point 2, -1e+08" + takes + "-99999999.99999 to 999999999.99999."},
        {dicvol(&Dicvol_Input::amax, 9999.96f), "Amax, 9999.96" + takes + "-999.9 to 9999.9."},
        {dicvol(&Dicvol_Input::bmax, -1000.0f), "Bmax, -1000" + takes + "-999.9 to 9999.9."},
        {dicvol(&Dicvol_Input::cmax, infinite), "Cmax" + no_number},
        {dicvol(&Dicvol_Input::bemin, 1e4f), "BEmin, 10000" + takes + "-999.9 to 9999.9."},
        {dicvol(&Dicvol_Input::bemax, nan), "BEmax" + no_number},
        {dicvol(&Dicvol_Input::volmin, -1e6f), "VOLmin, -1e+06" + takes + "-999999.9 to 9999999.9."},
        {dicvol(&Dicvol_Input::volmax, 1e7f), "VOLmax, 1e+07" + takes + "-999999.9 to 9999999.9."},
        {dicvol(&Dicvol_Input::wavelength, 7046.5f), "Wavelength, 7046.5" + takes + "-9.99999 to 99.99999."},
        {dicvol(&Dicvol_Input::weight, 10000.0f), "Mol. weight, 10000" + takes + "-999.999 to 9999.999."},
        {dicvol(&Dicvol_Input::density, -nan), "Density" + no_number},
        {dicvol(&Dicvol_Input::density_error, -infinite), "Density error" + no_number},
        {dicvol(&Dicvol_Input::eps, 12345.5f), "EPS, 12345.5" + takes + "-999.999 to 9999.999."},
        {dicvol(&Dicvol_Input::fom, 1e30f), "FOM, 1e+30" + takes + "-999.999 to 9999.999."},
        {dicvol(&Dicvol_Input::impurity_lines, 10000), "impurity lines, 10000" + takes + "-999 to 9999."},
        {Dicvol_File(source, {}, peaks, t), "wavelength 2" + no_number},
        {ito(&Ito_Input::wavelength, 10000), "Wavelength, 10000" + takes + "-999.99999 to 9999.99999."},
        {ito(&Ito_Input::zero_shift, -1000), "zero shift, -1000" + takes + "-999.99999 to 9999.99999."},
        {treor(&Treor_Input::wavelength, 100), "Wavelength, 100" + takes + "-9.99999 to 99.99999."},
        {treor(&Treor_Input::beta, 1000), "Beta_max, 1000" + takes + "-99.99 to 999.99."},
        {treor(&Treor_Input::volume, 1e6f), "Vol_max, 1e+06" + takes + "-99999 to 999999."},
        {treor(&Treor_Input::cem, 9999.6f), "Cell edge max, 9999.6" + takes + "-999 to 9999."},
        {treor(&Treor_Input::merit, nan), "F.O.M." + no_number},
    };
    for (const auto& [status, told] : cases) {
        EXPECT_TRUE(status.failed) << told;
        EXPECT_EQ(status.message, "The file cannot hold " + told);
    }
    EXPECT_EQ(t, "as it was");
}

// dtt1 and dtt2 of a pattern by time of flight stand in the comment for wavelengths, which no program reads.
TEST(Peaks_File, ConstantsOfTimeOfFlightWidenTheCommentAlone) {
    Points_Source source = Lab6();
    source.wavelengths = {7046.5f, -12.25f, 0};
    const std::vector<Peak_Mark> peaks = Some_Peaks(2, 1);
    std::string dicvol, treor;
    ASSERT_TRUE(Dicvol_File(source, {}, peaks, dicvol).ok());
    ASSERT_TRUE(Treor_File(source, {}, peaks, treor).ok());
    for (const std::string& text : {dicvol, treor})
        EXPECT_TRUE(Contains(text, "\n! WAVE:      7046.50000      -12.25000        0.00000\n")) << text;
}

TEST(Peaks_File, TextsOfAUserStayOnTheirLines) {
    const std::string bad = std::string("a\nEND\r\nb") + '\0' + "\tc";
    Points_Source source = Lab6();
    source.path = source.file_name = source.instr = bad;
    Dicvol_Input dicvol;
    Ito_Input ito;
    Treor_Input treor;
    Vecfind_Input vecfind;
    for (std::string* field : {&dicvol.title, &ito.title, &treor.title, &vecfind.title, &vecfind.lattice, &vecfind.cell, &vecfind.tolerance,
                               &vecfind.k_range, &vecfind.points, &vecfind.wavelength})
        *field = bad;
    const std::vector<Peak_Mark> peaks = Some_Peaks(1, 1);
    std::string texts[6];
    const Status statuses[] = {Free_Peaks_File(source, peaks, texts[0]),     Background_File(source, {}, texts[1]),
                               Dicvol_File(source, dicvol, peaks, texts[2]), Ito_File(ito, peaks, texts[3]),
                               Treor_File(source, treor, peaks, texts[4]),   Vecfind_File(source, vecfind, peaks, texts[5])};
    const std::ptrdiff_t lines[] = {4, 3, 10, 6, 13, 13}, uses[] = {2, 2, 3, 1, 3, 8};
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        ASSERT_TRUE(statuses[i].ok()) << statuses[i].message;
        const std::string marked = Replace_All(texts[i], "a END  b  c", "\x01");
        EXPECT_EQ(std::count(marked.begin(), marked.end(), '\x01'), uses[i]) << texts[i];
        EXPECT_EQ(std::count(marked.begin(), marked.end(), '\n'), lines[i]) << texts[i];
        EXPECT_EQ(texts[i].find('\0'), std::string::npos);
    }
    ito.title = "\r\n";  // a blank title too
    ASSERT_TRUE(Ito_File(ito, peaks, texts[3]).ok());
    EXPECT_TRUE(texts[3].starts_with("ITO input parameters\n"));
}

TEST(Peaks_File, VecfindBeginsWithWhatTheTitleTells) {
    const std::string cell = Vecfind_Input().cell;
    struct Case {
        std::string note, title, used, lattice, cell;  // blank `used`: the note
    };
    const Case cases[] = {
        {"", "PbSO4", "PbSO4", "P", cell},
        {"  ", "a\nb  ", "a b", "P", cell},
        {"MnO CELL: 4.43 4.43 4.43 90 90 90.5 SPGR: F m -3 m", "SPGR: I", "", "F m -3 m",
         "   4.43000   4.43000   4.43000   90.0000   90.0000   90.5000"},
        {"SPGR: P n m aCELL:8.48,5.398,6.958,90,1.2D2,90 TEMP: 10", "", "", "P n m a",
         "   8.48000   5.39800   6.95800   90.0000  120.0000   90.0000"},
        {"SPGR: F d -3 m:1 TEMP: 293", "", "", "F d -3 m:1", cell},
        {"SPGR: CELL: 8.48 Chi2: 1.9", "", "", "P", cell},
        {"CELL: 4 4 4 90 90", "", "", "P", cell},
        {"CELL: 4 4 -4 90 90 90", "", "", "P", cell},
        {"CELL: 4 4 4 90 90 180", "", "", "P", cell},
        {"CELL: 4 nan 4 90 90 90", "", "", "P", cell},
        {"CELL: 12345 4 4 90 90 90", "", "", "P", cell},
        {"cell: 4 4 4 90 90 90 spgr: I", "", "", "P", cell},
    };
    for (const Case& c : cases) {
        const Vecfind_Input input = Vecfind_Input_Of(Lab6(), c.note, c.title, 1.5f);
        EXPECT_EQ(std::tie(input.title, input.lattice, input.cell), std::tie(c.used.empty() ? c.note : c.used, c.lattice, c.cell))
            << c.note;
    }
    Points_Source source = Lab6();
    const auto wavelength = [&](float value) { return Vecfind_Input_Of(source, "", "", value).wavelength; };
    EXPECT_EQ(wavelength(1.540599f), "       1.54060");
    for (const float value : {nan, -infinite, 1e8f}) EXPECT_EQ(wavelength(value), "");
    for (const auto& [scat_var, tolerance] : {std::pair("2theta", "  0.300 "), {"TOF  ", " 2000.00 "}, {"Energy", ""}, {"", ""}}) {
        source.scat_var = scat_var;
        EXPECT_EQ(Vecfind_Input_Of(source, "", "", 1).tolerance, tolerance);
    }
}

// Those that no pattern of a user has are seen here alone.
TEST(Peaks_File, KnowsWhichUnitsAProgramUnderstands) {
    const std::string_view words[] = {"FreeFormat", "Vecfind_Format", "DicvolFormat", "ItoFormat", "TreorFormat"};
    for (const auto& [xspace, expected] : {std::pair("2theta", "yyyyy"),
                                           {"----", "yyyyy"},
                                           {"d-space", "yyyny"},
                                           {"d-spacing", "yyyny"},
                                           {"Energy", "ynnnn"},
                                           {"", "ynnnn"}}) {
        std::string said;
        for (const std::string_view word : words) said += Can_Say(*Peaks_Format_Of(word), xspace) ? 'y' : 'n';
        EXPECT_EQ(said, expected) << xspace;
    }
    EXPECT_EQ(Dicvol_Itype_Of("TOF", "TOF"), 4);
    EXPECT_EQ(Dicvol_Itype_Of("TOF", "d-space"), 3);
    EXPECT_FALSE(Peaks_Format_Of("dicvolformat"));
}

}  // namespace
}  // namespace vntl
