// Wavelengths of the K-alpha lines of X-ray tubes, in angstrom.
//
// Measured values of R. D. Deslattes, E. G. Kessler Jr., P. Indelicato, L. de Billy, E. Lindroth and J. Anton, "X-ray transition energies:
// new approach to a comprehensive evaluation", Reviews of Modern Physics 75 (2003) 35-99. Their standard uncertainties, in units of
// 1e-8 angstrom, K-alpha1 and K-alpha2: Cr 300, 300; Fe 300, 300; Co 100, 100; Cu 50, 50; Mo 41, 1200; Ag 76, 260.
#pragma once

#include <array>
#include <string_view>

namespace vntl {

struct Anode_Lines {
    std::string_view anode;
    double alpha1, alpha2;

    // Where the two lines are not told apart: they come as 2 to 1.
    constexpr double Mean() const { return (2 * alpha1 + alpha2) / 3; }
};

inline constexpr float alpha2_to_alpha1 = 0.5f;  // intensities

inline constexpr std::array<Anode_Lines, 6> anode_lines = {{{"Cr", 2.2897260, 2.2936510},
                                                            {"Fe", 1.9360410, 1.9399730},
                                                            {"Co", 1.7889960, 1.7928350},
                                                            {"Cu", 1.54059290, 1.54442740},
                                                            {"Mo", 0.70931715, 0.713607},
                                                            {"Ag", 0.55942178, 0.5638131}}};

}  // namespace vntl
