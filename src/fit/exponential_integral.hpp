// The exponential integral of a complex argument, scaled: E(w) = e^w E1(w), the integral of e^-t/(t + w) over t from 0 to infinity.
//
// w lies in the upper half of the plane. On the negative real axis, the cut of E1, the value is the limit from above, so that
// Im E(w) = -pi e^w there. Relative error about 1e-12.
#pragma once

#include <complex>
#include <span>

namespace vntl {

std::complex<double> Scaled_Exponential_Integral(std::complex<double> w);

// E along a line parallel to the real axis, w = rate*delta + i*height, for a rising delta: real and imaginary parts. The rate may be
// negative, the height is positive. Relative error below 1e-9; where points are close, a small part of the time that each would take.
void Scaled_Exponential_Integral_On_Line(double rate, double height, std::span<const double> delta, std::span<double> re,
                                         std::span<double> im);

}  // namespace vntl
