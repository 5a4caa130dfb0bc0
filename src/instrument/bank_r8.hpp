// Runs of R8: nine banks of 64 cells that stand still.
#pragma once

#include "instrument/conversion_tools.hpp"

namespace vntl {

inline constexpr std::size_t r8_banks = 9, r8_cells = 64;

// The mean over all banks and runs of the splines through the active cells of a bank, and the variance of that mean. Where a cell is dead
// nothing is told from the active cell before it to that behind it.
Status Convert_R8(const Active_Runs& runs, const Numor_Conversion& how, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
