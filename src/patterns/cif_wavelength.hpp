// The wavelengths of a powder CIF, in angstroms, uncertainties in brackets or not:
//
//   _diffrn_radiation_wavelength 1.5406(2)       or        loop_
//                                                          _diffrn_radiation_wavelength_id
//                                                          _diffrn_radiation_wavelength
//                                                          _diffrn_radiation_wavelength_wt
//                                                          'Cu K\a1'  1.540562  1.0
//                                                          'Cu K\a2'  1.544390  0.5
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// Sets conv: the stronger line of a doublet, the other, and the ratio of their weights; of lines without weights the shorter is the
// stronger. `data` lies in the block of the pattern; where that block tells no wavelength, the first one that does counts. Without any
// conv stays.
void Take_Cif_Wavelengths(std::string_view text, const char* data, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
