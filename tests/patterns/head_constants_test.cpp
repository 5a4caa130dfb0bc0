// What head lines tell of wavelengths, dtt1 and dtt2: lines as beamlines and laboratories write them, and lines that tell nothing.
#include "patterns/head_constants.hpp"

#include <unistd.h>

#include <filesystem>

#include "patterns/read_pattern.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

using Pair = std::pair<float, float>;

Pair Told_By(const std::string& head, const std::string& scat_var) {
    Head_Constants constants;
    constants.Take_Lines(head);
    Diffraction_Pattern_Type p;
    p.scat_var = scat_var;
    constants.Give(p);
    return {p.conv[0], p.conv[1]};
}

TEST(Head_Constants, WavelengthsInAnyUnit) {
    const struct {
        const char* line;
        float first, second;
    } table[] = {{"# Calibrated wavelength = 0.413263", 0.413263f, 0},
                 {"# Wavelength: 4.066e-11 m", 0.4066f, 0},
                 {"# Wavelength: 4.066e-11", 0.4066f, 0},  // below 1e-6: metres
                 {"! wavelength 1.5406", 1.5406f, 0},
                 {"' WAVELENGTH = 0.15406 nm", 1.5406f, 0},
                 {"# wavelength [nm] = 0.15406", 1.5406f, 0},
                 {"# Wavelength (\xC3\x85): 1.5406", 1.5406f, 0},
                 {"# Wavelength = 154.06pm", 1.5406f, 0},
                 {"# wavelength_A: 1.5406(2) and more", 1.5406f, 0},
                 {"# \"wavelength\": 4.066e-11, \"dist\": 0.2", 0.4066f, 0},
                 {"; lambda = 1,5406 Angstrom", 1.5406f, 0},
                 {"lambda=  1.49400, T=   0.000", 1.494f, 0},
                 {"! lambda1 = 1.54056, lambda2 = 1.54439", 1.54056f, 1.54439f},
                 {"# Lambda: 1.54056 1.54439 0.5", 1.54056f, 1.54439f},
                 {"# wavelength 1 = 1.54056 A; wavelength 2 = 1.54439 A", 1.54056f, 1.54439f},
                 {"# K-Alpha2 wavelength: 1.54439\n# K-Alpha1 wavelength: 1.54056\n# K-Beta wavelength: 1.39222", 1.54056f, 1.54439f},
                 {"# Wavelength = 0.5\n# Calibrated wavelength = 0.41\n# lambda = 0.7", 0.41f, 0},
                 {"# Wavelength range = 0.5 1.5", 0, 0},
                 {"# wavelength (in pixels) = 3", 0, 0},
                 {"# lambda/2 filter 2.4", 0, 0},
                 {"# wavelength = 0", 0, 0},
                 {"# wavelength = -1.5", 0, 0},
                 {"# wavelength = 12.4keV", 0, 0},
                 {"# wavelength = 1e39", 0, 0},
                 {"# wavelength =", 0, 0},
                 {"# wavelength = 5th", 0, 0},
                 {"# DIFC = 7000", 0, 0}};
    for (const auto& [line, first, second] : table) {
        for (const char* variable : {"2theta", "d-spacing"}) {
            const auto [a, b] = Told_By(line, variable);
            EXPECT_FLOAT_EQ(a, first) << line;
            EXPECT_FLOAT_EQ(b, second) << line;
        }
        EXPECT_EQ(Told_By(std::string(line), "Distance"), Pair()) << line;
    }
    EXPECT_EQ(Told_By("# Wavelength = 2.665 A", "TOF"), Pair());
    std::string many;
    for (int i = 0; i < 1 << 19; ++i) many += "lambda(";  // in no time that grows with the square of the line
    EXPECT_EQ(Told_By(many, "2theta"), Pair());
}

TEST(Head_Constants, TimesOfFlight) {
    const struct {
        const char* line;
        float difc, difa;
    } table[] = {{"# DIFC = 61710.6 [\xC2\xB5/\xC3\x85] L = 157.6 [m] two_theta = 101.4 [deg]", 61710.6f, 0},
                 {"! difC: 7476.91 difA: -1.54", 7476.91f, -1.54f},
                 {"# DIFA 3.5\n# DIFC 22600.25", 22600.25f, 3.5f},
                 {"# DIFC [us/A] = 5000", 5000, 0},
                 // 1 s/km is 1e6 microseconds in 1e13 angstroms
                 {"# twotheta(deg) 86.37 Ltotal(m) 77.85 dtt1 (s/km) 269355756087.0018", 26935.5756f, 0},
                 {"# DIFA = 2", 0, 0},
                 {"# DIFC = -7", 0, 0},
                 {"# modifC = 7", 0, 0}};
    for (const auto& [line, difc, difa] : table) {
        const auto [a, b] = Told_By(line, "TOF");
        EXPECT_FLOAT_EQ(a, difc) << line;
        EXPECT_FLOAT_EQ(b, difa) << line;
        EXPECT_EQ(Told_By(line, "2theta"), Pair()) << line;
    }
    Diffraction_Pattern_Type told;
    told.scat_var = "TOF", told.conv[0] = 3;
    Head_Constants constants;
    constants.Take_Line("DIFC = 7");
    constants.Give(told);
    EXPECT_EQ(told.conv[0], 3) << "what the reader found stays";
}

// Whole files, by the readers that take comments; a title above several banks tells no dtt1.
TEST(Head_Constants, ReachThePatternThroughItsReader) {
    const std::string path = (std::filesystem::temp_directory_path() / ("vantrelo_heads" + std::to_string(::getpid()))).string();
    const auto columns = [](double start) { return Lines(20, 1, [=](int i) { return Printed("%.2f %d 10", start + 0.1 * i, 100 + i); }); };
    std::string counts;
    for (int i = 0; i < 20; ++i) counts += "  100";
    const auto bank = [](int number) {
        std::string text = "BANK " + std::to_string(number) + " 20 20 SLOG 5000 7000 0.0004 0 FXYE\n";
        return text + Lines(20, 1, [](int i) { return Printed("%14.3f %9.3f %9.3f", 5000.0 + 100 * i, 10.0, 1.0); });
    };
    const struct {
        const char* mode;
        std::string text;
        float first, second;
    } files[] = {{"XYSIGMA", "# a\n# Calibrated wavelength = 0.41\n" + columns(10), 0.41f, 0},
                 {"XYSIGMA", "/*\n lambda = 0.041 nm\n*/\n" + columns(10), 0.41f, 0},
                 {"XYSIGMA", "' DIFC = 7000 DIFA = 2\n" + columns(5000), 7000, 2},
                 {"XYSIGMA", "' DIFC = 7000\n" + columns(10), 0, 0},
                 {"XYSIGMA", "XYDATA\nTITLE x\nINTER 1 1 0 0\n# lambda 0.41\n!\n!\n!\n" + columns(10), 0.41f, 0},
                 {"FreeFormat", "! lambda = 1.494\n10 0.1 11.9\n" + counts + "\n", 1.494f, 0},
                 {"FreeFormat", "! DIFC = 7000\n5000 10 5190\n" + counts + "\n", 7000, 0},
                 {"GSAS", "title\n# Calibrated wavelength = 0.413263\n" + bank(1), 0.413263f, 0},
                 {"GSASTOF", "Wavelength: 2.665 Angstrom\n# DIFC = 7000\n" + bank(1), 7000, 0},
                 {"GSASTOF", "title DIFC = 7000\n" + bank(1) + bank(2), 0, 0},
                 {"GSASTOF2", "title\n# DIFC = 7000\n" + bank(1) + "# tth 90deg, DIFC 8000\n" + bank(2), 8000, 0},
                 {"GSASTOF2", "title\n# DIFC = 7000\n" + bank(1) + bank(2), 0, 0},
                 {"ISIS", "title\n# DIFC = 7000\n# DIFA = 1\nBANK 1\n" + columns(5000), 7000, 1}};
    for (const auto& [mode, text, first, second] : files) {
        std::ofstream(path, std::ios::binary) << text;
        Diffraction_Pattern_Type p;
        const Status status = Read_Pattern(path, p, mode);
        ASSERT_TRUE(status.ok()) << mode << status.message << text;
        EXPECT_FLOAT_EQ(p.conv[0], first) << mode << text;
        EXPECT_FLOAT_EQ(p.conv[1], second) << mode << text;
    }
    // Each bank has its own, above its line or below it.
    for (const std::string mode : {"GSASTOF", "ISIS"}) {
        const auto next = [&](int number) { return mode == "ISIS" ? "BANK\n" + columns(5000) : bank(number); };
        std::ofstream(path, std::ios::binary) << "title\n# DIFC = 7000\n" + next(1) + "# DIFC 8000 DIFA 2\n" + next(2) + next(3);
        std::vector<Diffraction_Pattern_Type> banks;
        Read_Notes messages;
        ASSERT_TRUE(Read_Pattern_Mult(path, banks, isis_capacity, mode, messages).ok()) << mode;
        ASSERT_EQ(banks.size(), 3u) << mode;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(banks[i].conv[0], std::vector<float>({7000, 8000, 0})[i]) << mode << i;
            EXPECT_EQ(banks[i].conv[1], i == 1 ? 2 : 0) << mode << i;
        }
    }
    std::filesystem::remove(path);
}

// Figures as the lists of the files' sources have them.
TEST(Head_Constants, RealFiles) {
    const struct {
        const char *name, *mode;
        float first;
    } files[] = {{"formats/samples/pyfai_2th_wavelength_m.xy", "XYSIGMA", 0.4066f},
                 {"formats/samples/aps11bm_head.fxye", "GSAS", 0.413263f},
                 {"formats/samples/ess_dream_tof.xye", "XYSIGMA", 26935.5756f},
                 {"gsas/pg3_22049_tof.gsa", "GSASTOF", 22585.8f},
                 {"dmc/hrpt.dat", "DMC", 1.494f},
                 {"cif_powder/cod_1517474.cif", "CIF", 2.0785f}};
    for (const auto& [name, mode, first] : files) {
        if (Real_File(name).empty()) GTEST_SKIP() << name;
        Diffraction_Pattern_Type p;
        const Status status = Read_Pattern(Real_Path(name), p, mode);
        ASSERT_TRUE(status.ok()) << name << status.message;
        EXPECT_FLOAT_EQ(p.conv[0], first) << name;
        if (std::string_view(name).ends_with(".fxye")) {
            EXPECT_FLOAT_EQ(p.TSample, 6.778f) << "of its remarks";
            EXPECT_EQ(p.title.substr(0, 5), "/data") << "the title that the reader found stays";
        }
    }
}

}  // namespace
}  // namespace vntl::test
