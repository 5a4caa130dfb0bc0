// The wavelengths of a block of a powder CIF, in angstroms, uncertainties in brackets or not:
//
//   _diffrn_radiation_wavelength 1.5406(2)       or        loop_
//                                                          _diffrn_radiation_wavelength_id
//                                                          _diffrn_radiation_wavelength
//                                                          _diffrn_radiation_wavelength_wt
//                                                          'Cu K\a1'  1.540562  1.0
//                                                          'Cu K\a2'  1.544390  0.5
#pragma once

#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

// Items by their names as Cif_Name gives them.
bool Is_Cif_Wavelength(std::string_view name);
bool Is_Cif_Wavelength_Weight(std::string_view name);

class Cif_Radiation {
public:
    // Takes one line by the words that tell it, nothing where that is no wavelength.
    void Add(std::string_view wavelength, std::string_view weight);

    bool Empty() const { return lines_.empty(); }

    // Sets conv: the stronger line of a doublet, the other, and the ratio of their weights; of lines without weights the shorter is the
    // stronger. Without any line conv stays.
    void Give(Diffraction_Pattern_Type& pattern) const;

private:
    struct Line {
        double wavelength = 0, weight = 0;
    };
    std::vector<Line> lines_;
};

}  // namespace vntl
