// Profile files of a Rietveld refinement: observed and calculated intensities, background, reflections of each phase, excluded regions.
#pragma once

#include <string>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"

namespace vntl {

inline constexpr int max_phases = 16;  // rows of reflection ticks that a plot has room for

// Fills fresh records. x, reflections and regions come with the refinement's zero and displacement taken off. On success refl_code
// (row of the tick) and refl_phase lie in 1 to nphases. The arrays of reflections have nreflections entries.
Status Read_Prf(const std::string& path, Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info);

}  // namespace vntl
