// Ranges of one measurement, of unlike step and time, as one pattern in counts a second.
//
// Where one range alone has points, these are taken as they stand. Where ranges overlap, the points are those of the finer one, the other
// is interpolated there, and the rates are averaged with the time that stands behind each as weight: the rate that all their counts in all
// their time give, which unlike weights by the counts found is not drawn to the low ones. The time of a rate R with the variance V is R /
// V.
#pragma once

#include <span>
#include <string>

#include "base/status.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// Why patterns cannot be merged, a sentence; blank where they can: two or more over one axis, with one wavelength, and each with a time a
// step or in counts a second. Each rises in x.
std::string Why_Not_Merged(std::span<const Diffraction_Pattern_Type> ranges);

// One pattern of all of them: `per_second`, variances, x that rises. Its title is the part that their titles share, its facts are those of
// the first one. `ranges` can be merged.
Diffraction_Pattern_Type Merge_Ranges(std::span<const Diffraction_Pattern_Type> ranges);

}  // namespace vntl
