// RAW, the binary files of STOE diffractometers: "RAW_1.0" and a digit. Records of 512 bytes, little endian; the first one is the head.
//
//   16 date   32 title   112 comment   310 i2 anode   318, 320 i2 kV, mA   322, 326 f4 K-alpha 1 and 2   376, 378 i2 ranges planned, done
//   480 i2[8] number of the record, from 1, in which each range has its head; its counts begin with the next record
//   range: 34 i2 points   38 i2 counts of 4 (0) or 2 (1) bytes   40 f4 factor that they were multiplied by, where it is above 1
//          44, 52, 60 f4 2theta of begin, end and step   48, 56, 64 the same of omega   68 f4 seconds a step   120, 124 i4 least, largest
//          count
//
// The least and largest count show whether the counts are read as they were written; a warning tells where they do not. Where 2theta
// stands still, the scan is one of omega.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Stoe_Raw(std::string_view head);

// Reads every range that was measured. One that cannot be read goes to the notes; it fails when no range can be read. A file cut within its
// points gives those that are there.
Status Read_Stoe_Raw(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
