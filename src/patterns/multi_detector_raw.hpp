// Raw file of a neutron powder diffractometer with a bank of detectors, as 3T2 and G4.4: the bank moves in equal steps, and at each
// position every detector counts.
//
//   Y2O3 in vanadium, 6 mm                      1  title of the run
//   3T2   lambda :  1.2252                      2  wavelength in angstroms behind "lambda :"
//   cryostat                                    3  any text
//     3    4    6.000    0.050                  4  detectors, positions, 2theta of detector 1 at the first of them, step (degrees)
//   detectors shift :   6.000                   5  2theta from one detector to the next (degrees), below 0 where they count downwards
//   alpha1 divergency :  10.0                   6  of the collimator before the monochromator (minutes)
//   monitor value :  100000.                    7  counts of the monitor at a position
//   omega :   0.000                             8  angle of the sample (degrees)
//   sample temperature :  295.0                 9  kelvin
//   sample owner : N. N.                       10  any text
//   before the shutdown                        11  any text
//   descriptors : efficiencies counts          12  blocks of numbers behind: these two, or counts alone
//    1.0210   .9980  1.0020                        of each detector: how many of the neutrons it counts
//     1021     998    1003                         at the first position: counts of detectors 1, 2, 3
//     ...                                          and so on, position after position
//
// Lines 5 to 10 and 12 have what they tell behind their colon. The numbers of the blocks stand in free form, and are exactly as many as
// line 4 tells. Each detector gives a pattern of its own; with the correction its counts are divided by its efficiency. One that is 0 or
// below tells of no measurement and counts as 1, and so do all where the file has none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

inline constexpr int most_detectors = 2000;

// Reads the text of a file; `name` is the one that the titles tell.
Status Read_Multi_Detector_Text(std::string_view text, std::string_view name, bool correct,
                                std::vector<Diffraction_Pattern_Type>& patterns);

// The same of a file. On failure `patterns` stays as it was.
Status Read_Multi_Detector_Raw(const std::string& path, bool correct, std::vector<Diffraction_Pattern_Type>& patterns);

}  // namespace vntl
