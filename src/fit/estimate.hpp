// Starting values of a fit from detected peaks.
#pragma once

#include <span>

#include "base/status.hpp"
#include "fit/fit_state.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// A detected peak: y at its top, and the background under it.
struct Detected_Peak {
    float x, y, bgr;
};

// Width of the peak at xi between the points where the pattern crosses the half of its height yi over the background ybi, each at most w
// away (0: half a unit of x); a side without a crossing ends at the peak. -1 and a failure for a position outside the pattern.
Status Calc_FWHM_Peak(const Diffraction_Pattern_Type& pattern, float xi, float yi, float ybi, float w, float& width);

// Peaks of a fit: their widths measured where the pattern is one of 2theta or time of flight; a width that cannot be measured is the mean
// of the others. Position, intensity and width are to be refined. At most max_fit_peaks.
std::vector<Fit_Peak> Estimate_Fit_Peaks(const Diffraction_Pattern_Type& pattern, std::span<const Detected_Peak> detected);

}  // namespace vntl
