// Calibration of the detectors of powder diffractometers: where each stands, how many of the neutrons it counts, and which may be used.
//
//   R3A  free text               R5B  angles               R8  angles           R22  1600
//        25 positions                 a position a tube        9 positions           1600 positions
//        25 efficiencies              zones                    effic                 1600 factors
//                                     first last cell          64 of each bank
//                                     efficiencies
//                                     of each tube's cells
//
// Positions are added to the angle of a frame; those of R8 shift its banks. A position of R3A below 0 switches its detector off, unless
// most of them are; so does an efficiency, or a factor, that is not above 0. Efficiencies of R5B stand for all cells of each tube, or for
// those of its zone alone; a zone "0 0" is that of a dead tube. R22 tells by what counts are multiplied: the record holds the reciprocals.
// Numbers may stand on as many lines as they like (of R3A each list ends a line), words in letters of any case with text behind, comments
// behind "!" or "#"; "25*1.0" is a number 25 times.
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
// could be read; the message is that of the part that could not, with file, line and reason below it.
Status Read_Calibration_File(const std::string& file, std::string_view instrument, Calibration_Detector_Type& cal);

// The same of a text; `file` is the name that messages tell.
Status Read_Calibration_Text(std::string_view text, const std::string& file, std::string_view instrument, Calibration_Detector_Type& cal);

}  // namespace vntl
