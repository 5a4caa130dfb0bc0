// Search for peaks and for points of the background in a window of a pattern.
//
// The counts are carried by a cubic spline to a grid of twice the density, differentiated and smoothed. A peak is a place where the
// derivative goes from above to below zero with a large enough drop; a shoulder an inflection of the derivative's flank that stands out of
// the noise; a point of the background the lowest of an interval where the derivative is flat. All in double precision.
#pragma once

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/pkb.hpp"

namespace vntl {

enum class Search_Mode { peaks, satellites, background };

inline constexpr int largest_iterations = 100;

struct Search_Parameters {
    float peak_threshold = 0.02f;     // of the largest drop of the derivative; and over the background
    float shoulder_threshold = 2.0f;  // times the noise of the derivative
    float bkg_threshold = 0.05f;      // of the range of the derivative's slope
    int Iterations = 3;               // passes of smoothing, 0 to largest_iterations
    int search_radiation = 1;         // 1 single peaks; K-alpha doublets of 2 Cu, 3 Mo, 4 Co
};

// Wavelengths of a kind of radiation, in angstrom, the intensity ratio of its doublet, and lambda 2 / lambda 1 as the search for
// doublets takes it, 0 for none.
struct Search_Radiation {
    float lambda1, lambda2, ratio;
    double doublet_ratio;
};
// `lambda_of_pattern` is conv(1) of the pattern: the wavelength of single peaks.
Search_Radiation Radiation_Of_Search(int search_radiation, float lambda_of_pattern);

// Searches the points with x_from <= x <= x_to. "satellites" looks at max(0, y - ycalc + bgr): what a refinement leaves; it fails
// without a calculated curve and background. Fails when fewer than two points of the background or no peak is found; np = 0 without
// failure when every peak is dropped in the end. Doublets are told apart by positions in degrees of 2theta. `result` changes only on
// success.
Status Search_Pattern(const Diffraction_Pattern_Type& pattern, float x_from, float x_to, Search_Mode mode,
                      const Search_Parameters& parameters, PKB_Type& result);

}  // namespace vntl
