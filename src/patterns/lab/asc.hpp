// ASC, an older text format of Rigaku diffractometers: lines *KEY = value, groups of counts between *BEGIN and *END. Also named .dat.
//
//   *TYPE        =  Raw                 or *CLASS, among the first lines
//   *SAMPLE      =  Corundum            title, else *MEMO or *COMMENT
//   *SCAN_AXIS   =  2theta/theta        beta: a pole figure, whose groups are profiles over that angle
//   *TARGET      =  29                  atomic number of the anode
//   *XRAY_CHAR   =  K-ALPHA             K-ALPHA1 leaves conv(2) at 0
//   *WAVE_LENGTH1=  1.54059             conv(1); WAVE_LENGTH2 conv(2)
//   *SPEED_DIM   =  sec./step           or deg./min.: 60 step / speed seconds a step
//   *YUNIT       =  counts              or cps
//   *BEGIN
//   *START       =  4                   xmin
//   *STOP        =  80
//   *STEP        =  0.01
//   *SPEED       =  0.6
//   *COUNT       =  7601                points
//   767, 794, 798, 809
//   *END
//   *EOF
//
// What a group tells holds for it alone, above what stands in front of all groups.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Asc(std::string_view head);

// Reads every group, in the order of the file, at most as many as the program has rows; x in degrees, y in counts or counts a second,
// variances from counting. The title of one of several ends with its number. A group without counts, start or step is told in
// `notes.failed` where others can be read, and otherwise fails. All counts that are there are points, whatever *COUNT says.
Status Read_Asc(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
