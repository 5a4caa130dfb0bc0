// The searches as commands run them: on row 1, in the x window that is visible, into the lists of the session and a file each.
//
// The file is written when the search itself has found something, before the limit of the list is looked at; on a failure the list stays.
// Doublets have their ratio of sines in 2theta: where x is anything else, all peaks are kept.
//
//   peak.aps                                              background.xy
//   ! Data file: lab6.xye                                 ! Data file: lab6.xye
//   ! Format:    XYSIGMA                                  ! Format:    XYSIGMA
//   ! peak_position   peak_intensity   background         ! position      background_value
//          21.35825     5120.31738      101.20417               18.02000      102.33333
#pragma once

#include "base/status.hpp"

namespace vntl {

struct Session;

// Detected peaks to lists.peaks and "peak.aps" of the working directory; a peak closer than three steps to the one before is left out.
// The wavelengths of the radiation go to the fit first.
Status Find_Peaks(Session&);

// Peaks that the calculated curve of a refinement does not describe, to the same list and file.
Status Find_Satellites(Session&);

// Points of the background to lists.background and "background.xy" of the working directory.
Status Find_Background(Session&);

}  // namespace vntl
