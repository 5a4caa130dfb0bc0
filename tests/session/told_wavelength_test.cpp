// Wavelengths in titles and names of files: what tells one, and what only looks like it. The lines of tubes against the energies that the
// evaluation of 2003 publishes beside its wavelengths, by hc = 12.398419843320026 keV angstrom of the present units.
#include "session/told_wavelength.hpp"

#include <gtest/gtest.h>

#include "calc/anode_lines.hpp"

namespace vntl {
namespace {

TEST(Told_Wavelengths, AreFoundInTitlesAndNames) {
    struct {
        const char* text;
        double wavelength;
    } const told[] = {
        {"LaB6 SRM660a 1.594 A", 1.594},
        {"HRPT 300K, 1.4940 A, Ge(533)", 1.494},
        {"D20 1.2247\xC3\x85 60K", 1.2247},
        {"Na2Ca3Al2F14 1.8857 \xE2\x84\xAB", 1.8857},
        {"Si 2.4 \xC5 at SINQ", 2.4},
        {"NaCl lambda=1.5406", 1.5406},
        {"NaCl lambda1 = 1.54056, lambda2 = 1.54439", 1.54056},
        {"\xCE\xBB = 0.82653(2) \xC3\x85, T = 100.5 K", 0.82653},
        {"Wavelength (A): 1.5403", 1.5403},
        {"Wavelength: 0.15406 nm", 1.5406},
        {"wavelength 2 A, 1.5 K", 2},
        {"CeO2 wl=0.71073", 0.71073},
        {"lab6_wl0.4137.xye", 0.4137},
        {"PbSO4_1.909A_300K.dat", 1.909},
        {"BT1-1.5403A-sample4.gsas", 1.5403},
        {"T300_0.41326ang_step0.005.xy", 0.41326},
        {"0.495 Angstrom, capillary 0.5 mm", 0.495},
        {"Al2O3 1,5406 \xC3\x85 (1,5406 \xC3\x85)", 1.5406},
        {"a=5.43 A, lambda 0.6999 A", 0.6999},
        {"Corundum CuKa", 1.5418711},
        {"Corundum Cu K\xCE\xB1", 1.5418711},
        {"corundum Cu K-alpha1, 40 kV 40 mA", 1.5405929},
        {"Fe2O3 (Co Ka1,2)", 1.7902757},
        {"Fe2O3_MoKa_298K.xye", 0.7107471},
        {"Ag Kalpha 2", 0.5638131},
    };
    for (const auto& [text, wavelength] : told) EXPECT_NEAR(Told_Wavelength(text), wavelength, 2e-7) << text;
    EXPECT_FLOAT_EQ(Told_Wavelength("Si 1.594 A", "wl0.4.xye"), 1.594f);
    EXPECT_FLOAT_EQ(Told_Wavelength("Si at 5 K", "si_wl0.4.xye"), 0.4f);
}

TEST(Told_Wavelengths, AreNotMadeOfOtherNumbers) {
    for (const char* text : {"",
                             "T = 1.594 K",
                             "d = 1.594 A",
                             "d(111) 3.135 A",
                             "d-spacing 3.2 \xC3\x85",
                             "a=5.43 A",
                             "a = b = 3.905 A, c = 3.99 A",
                             "cell edge 4.157 \xC3\x85",
                             "cell 5.43 5.43 5.43 A",
                             "superlattice 3x3x5.43 A",
                             "LaB6 4.157 A 1.5406 A",
                             "12.05.2021 A",
                             "run 1.5.2 A",
                             "2021-05-12 1.5 K",
                             "Qmax 1.25 A-1",
                             "1.25 A^-1",
                             "1.25 \xC3\x85\xE2\x81\xBB\xC2\xB9",
                             "volume 9.55 A3",
                             "band 0.55-2.45 A",
                             "wavelength range 0.5 to 2.45 A",
                             "lambda = 1.0 - 3.0 A",
                             "lambda/2 contribution",
                             "lambda 2",
                             "lambda2 = 1.54439",
                             "wavelength 0.02",
                             "wavelength 15.4 A",
                             "40 kV 40.00 mA",
                             "magnet 2.50 A",
                             "sample 3A",
                             "phase 1 A",
                             "zeolite 5A pores 4.21 \xC3\x85 wide pores",
                             "0.95 nm particles",
                             "50 nm film",
                             "Ca0.55Ag0.45",
                             "Li0.35A",
                             "x = 0.35 A site",
                             "CuKb",
                             "Cu Kbeta 1",
                             "Cu potassium",
                             "CuKagawa",
                             "Ag2O",
                             "flambda 1.5",
                             "twl 1.5",
                             "1..5 A",
                             "........",
                             "lambda=",
                             "lambda (",
                             "\xC3",
                             "lambda=99999999999999999999999999999999999.5"})
        EXPECT_EQ(Told_Wavelength(text), 0) << text;
}

TEST(Anode_Wavelengths, AreThoseOfThePublishedEnergies) {
    struct {
        const char* anode;
        double kev1, kev2;  // K-L3 and K-L2
    } const energies[] = {{"Cr", 5.4148045, 5.4055384}, {"Fe", 6.4040062, 6.3910264}, {"Co", 6.9303780, 6.9155380},
                          {"Cu", 8.0478227, 8.0278416}, {"Mo", 17.479372, 17.37429},  {"Ag", 22.162917, 21.990300}};
    constexpr double hc = 12.398419843320026, parts = 1.5e-6;  // what K-L2 of molybdenum is known to, 12 of 700,000
    ASSERT_EQ(std::size(energies), anode_lines.size());
    for (std::size_t i = 0; i < anode_lines.size(); ++i) {
        EXPECT_EQ(anode_lines[i].anode, energies[i].anode);
        EXPECT_NEAR(anode_lines[i].alpha1 * energies[i].kev1 / hc, 1, parts) << energies[i].anode;
        EXPECT_NEAR(anode_lines[i].alpha2 * energies[i].kev2 / hc, 1, parts) << energies[i].anode;
    }
    EXPECT_NEAR(anode_lines[3].Mean(), 1.5418711, 5e-8);
}

}  // namespace
}  // namespace vntl
