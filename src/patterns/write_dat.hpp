// Writing of free-format files: a range, and the intensities at its points, from the first one in equal steps.
//
//       10.000000      0.050000     10.550000  Si standard     (3(1X,F14.6),2X,A): xmin, step, xmax, title
//   12.0000 13.0000 11.0000 ...                                (10F8.N), N = 4 below 100, 3 below 1000, 2 below 10000, else 1
//
// Other programs read this file in columns or in free form. So that both find the same numbers each field keeps a blank in front: N falls
// until it does, and then the fields grow wider. The step has as many decimals as it takes for the range to have its number of points.
#pragma once

#include <string>

#include "patterns/pattern.hpp"

namespace vntl {

// The file's text. The pattern has two points at least, and rising x. Intensities of points that stand in equal steps are written as they
// are, those of others are taken from a natural cubic spline through them.
std::string Dat_Text(const Diffraction_Pattern_Type& pattern);

}  // namespace vntl
