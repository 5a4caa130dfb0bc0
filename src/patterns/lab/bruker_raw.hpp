// RAW, the binary files of Bruker and Siemens diffractometers in four versions. Little endian, texts in Latin-1 and filled up with NULs or
// blanks. An angle of -1e6, a temperature of 65535, 0 or -1 and a drive at 9999 are not known.
//
//   "RAW "      blocks of 156 bytes and their counts, one behind the other; the letters of a later block may be left out
//       4 u4 points   8 f4 seconds a step   12 f4 step   24 f4 2theta   40 sample   72, 76 f4 K-alpha 1 and 2   152 u4 another one follows
//   "RAW2"      a head of 256 bytes, and for each range one of its own told length (at 0) and its counts
//       4 u2 ranges   8 sample   40 comment   190, 194, 198, 206 f4 K-alpha 1, 2, ratio, K-beta
//       range: 2 u2 points   8 f4 seconds a step   12 f4 step   16 f4 2theta   46 u2 kelvin
//   "RAW1.01"   a head of 712 bytes, and for each range one of 304, supplementary records and the points
//       8 u4 done, active, aborted, interrupted   12 u4 ranges   326 sample   624, 632, 640, 648 f8 K-alpha 1, 2, K-beta, ratio
//       range: 4 u4 points   8.. f8 theta, 2theta, chi, phi, x, y, z   176 f8 step   192 f4 seconds a step   196 u4 kind of scan
//              248 u4 drives that vary   252 u4 bytes of a point: 4 for the count, 8 for each of them   256 u4 bytes of supplementary
//              records
//   "RAW4.00"   segments (u4 kind, u4 length) from 61 on, and for each range a head of 160 bytes, segments and the points
//       40 u4 ranges   56 u4 length of the segments; kind 10 is a text (key at 12), 30 the tube, 50 a drive, others are passed over
//       range: 32 kind of scan   72, 80 f8 start, step   88 u4 points   92 f4 seconds a step   136 u4 bytes of a point   140 u4 of segments
//
// Counts are f4, the first thing of a point; they may be negative where the pattern was worked on. A scan of another axis than 2theta
// (rocking curve, chi, phi, x, y, z) is one over that axis. Where drives contradict the start of a range, the start counts. A ratio of 0 is
// that of a single line. Each range is a pattern of its own.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Bruker_Raw(std::string_view head);

// Reads every range of a file. One that cannot be read, or that the file ends before, goes to the notes; it fails when no range can be
// read. A file cut within its points gives those that are there.
Status Read_Bruker_Raw(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
