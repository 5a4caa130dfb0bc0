// Runs of powder diffractometers as one pattern.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/status.hpp"
#include "instrument/calibration.hpp"
#include "instrument/numor.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

struct Numor_Conversion {
    std::optional<float> vnorm = {};                 // monitor to normalise to; below 0 (R3B, R22): counts of |vnorm| seconds
    const Calibration_Detector_Type* cal = nullptr;  // of the detectors
    int bank = 0;                                    // R8: this one alone, 1 to 9; 0 all
    int threads = 0;                                 // 0: as many as OpenMP chooses. The result does not depend on it
};

inline constexpr int most_converted_points = 500000;

// Makes a pattern of those runs that are `active` (one flag a run). R3B and R22: their sum. R3A and R5B: the mean over all cells and runs
// of the splines through the frames of a cell. R8: the same of the cells of nine banks. x rises, whichever way scans went. A pattern
// without points (a scan without a step) is no failure; of another instrument nothing is filled. `warnings`: what the pattern cannot be
// trusted in. Refused, with the pattern as it was: runs of several instruments, wavelengths or sizes; a calibration of another instrument
// or size, or without an active cell; frames at one angle; a monitor or time of 0 by which counts were to be divided; more than
// most_converted_points.
Status PowderNumors_To_DiffPattern(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active,
                                   Diffraction_Pattern_Type& pattern, const Numor_Conversion& how, std::vector<std::string>& warnings);

// Adds the active runs into one: monitor, time and counts add up, the rest is that of the first. Wavelengths and starts may differ by
// 0.1, and all have the same number of counts and frames. With a calibration counts are divided by the efficiency of their cell.
Status Add_Numors(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active, Powder_Numor_Type& sum);
Status Add_Numors_Cal(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active, Powder_Numor_Type& sum,
                      const Calibration_Detector_Type& cal);

}  // namespace vntl
