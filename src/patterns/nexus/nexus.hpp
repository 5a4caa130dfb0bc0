// NeXus: an HDF5 file, groups within groups, of which one of the class NXdata is there to be plotted.
//
//   /                    @default = "entry"
//     entry              @NX_class = "NXentry", @default = "data"
//       title, start_time
//       sample           NXsample: name (title), temperature (TSample)
//       instrument
//         source         NXsource: probe (radiation), lines of a tube
//         monochromator  NXmonochromator: wavelength, or energy: 12.398 / keV (conv(1))
//       data             @NX_class = "NXdata", @signal = "I", @axes = "two_theta" or [".", "two_theta"], @uncertainties
//         I              npts, or frames x npts: each frame is a pattern
//         I_errors       standard deviations
//         two_theta      npts, npts + 1 (edges of bins), or frames x npts;  @units = "deg", "rad", "1/nm", "1/angstrom", "angstrom", "us"
//         ...
//
// Older files mark the signal itself (@signal = 1, @axes = "x:y") and its axis (@axis = 1). Where no `default` leads to such data, the
// first ones found from the root down are taken. An axis of frames tells the title of each, and its temperature where it is one.
//
// The program vantrelo-nexus looks into the file, for the library may not survive a damaged one; it stands beside this program or in the
// libexec of its installation. What it tells is in nexus_stream.hpp.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one: the signature of HDF5, in front or
// behind a block of the user's of 512, 1024 or 2048 bytes.
bool Is_Nexus(std::string_view head);

// Reads every pattern of a file, at most 2000 frames of one. Fails with a sentence where there is none, where the library did not survive
// the file, or did not end within 20 seconds.
Status Read_Nexus(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

// The patterns of what vantrelo-nexus told of a file.
Status Read_Nexus_Stream(std::string_view stream, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
