// RAS, the text files of Rigaku diffractometers: lines *KEY "value", and columns of x, y and attenuation factor.
//
//   *RAS_DATA_START
//   *RAS_HEADER_START
//   *FILE_SAMPLE "Corundum"                    title, else *FILE_MEMO, *FILE_COMMENT or *FILE_PART_ID
//   *HW_XG_WAVE_LENGTH_ALPHA1 "1.540593"       conv(1); ALPHA2 conv(2), BETA conv(4)
//   *MEAS_COND_XG_WAVE_TYPE "Ka1"              Ka, or one line alone: Ka1 leaves conv(2) at 0, Kb makes the beta line conv(1)
//   *MEAS_DATA_COUNT "1401.0000000000"         points
//   *MEAS_SCAN_AXIS_X_INTERNAL "TwoThetaTheta" what x is
//   *MEAS_SCAN_SPEED "0.2500"                  with *MEAS_SCAN_SPEED_UNIT "deg/min": 60 step / speed seconds a step
//   *MEAS_SCAN_STEP "0.0200000000"
//   *MEAS_SCAN_UNIT_Y "counts"                 or cps
//   *HW_COUNTER_NAME-0 "<Shift-JIS>|Detector"  names in two languages
//   *RAS_HEADER_END
//   *RAS_INT_START
//   2.0000 7994.0000 1.0000
//   *RAS_INT_END                               a next scan has a header of its own
//   *RAS_DATA_END
//
// Rows may lack their third column. y is what it is where the factor is 1 (or 0, for none). Whether y was multiplied by any other factor
// the file does not tell: y stays, and a warning is given. Rows end at the next line with a star, whatever it says.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Ras(std::string_view head);

// Reads every scan of a file, in its order, at most as many as the program has rows; x in degrees, or millimetres of a length, y in counts
// or counts a second, variances from counting. The title of one of several ends with its number. A scan without readable rows is told in
// `notes.failed` where others can be read, and otherwise fails. A file cut within its rows keeps those that are whole.
Status Read_Ras(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
