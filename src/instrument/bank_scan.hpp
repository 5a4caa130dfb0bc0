// Scans of a bank of detectors that moves as one: R3A, and R5B with its tubes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "instrument/conversion_tools.hpp"

namespace vntl {

// The mean over all cells and runs of the splines through the frames of each cell, at even steps; the variance of that mean.
// `instrument` "R3A" or "R5B".
Status Convert_Bank_Scan(const Active_Runs& runs, std::string_view instrument, const Numor_Conversion& how,
                         Diffraction_Pattern_Type& pattern, std::vector<std::string>& warnings);

}  // namespace vntl
