// Calibration of the detectors of powder diffractometers: where each stands, how many of the neutrons it counts, and which may be used.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

struct Calibration_Detector_Type {
    std::string cal_instrument;    // "R3A", "R5B", "R8" or "R22"
    int ndet = 0;                  // detectors
    int npoints_det = 0;           // points of a detector
    std::vector<float> cal_pos;    // of each detector, degrees; R22: of each point
    std::vector<float> cal_effic;  // npoints_det of each detector, a detector after the other; counts are divided by it. 1 by default
    std::vector<bool> cal_active;  // the cell is usable; in the order of cal_effic, true by default
    std::vector<int> cal_index;    // R22: points (from 0) in the order of rising positions

    std::size_t Cell(int point, int detector) const {  // both from 0
        return static_cast<std::size_t>(detector) * static_cast<std::size_t>(npoints_det) + static_cast<std::size_t>(point);
    }
};

// Reads a calibration by the first of R3A, R5B, R8, R22 that the instrument's name holds. On failure `cal` is filled as far as the file
// could be read.
Status Read_Calibration_File(const std::string& file, std::string_view instrument, Calibration_Detector_Type& cal);

// The same of a text; `file` is the name that messages tell.
Status Read_Calibration_Text(std::string_view text, const std::string& file, std::string_view instrument, Calibration_Detector_Type& cal);

}  // namespace vntl
