// CPI, a text format of Sietronics: a head of ten lines, and an intensity a line.
//
//   SIETRONICS XRD SCAN
//   3.01                     xmin
//   90.00
//   0.02                     step
//   Cu
//   1,5406                   conv(1), here with a decimal comma
//   11/10/2012 14:41:24
//   2,0                      seconds a step or degrees a minute: files do not say which
//   a comment                title: whatever line stands in front of the mark
//   SCANDATA
//   60.0000000
//   -2.6382979               processed intensities may be negative
//
// Lines between the step and the comment may be missing; each is known by what it looks like.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Cpi(std::string_view head);

// Reads the pattern of a file: x in degrees, variances |y|. The intensities that are there are the points; fewer than start, step and end
// tell make `npts_claimed`. Fails where the mark, start or step are missing, and without intensities.
Status Read_Cpi(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
