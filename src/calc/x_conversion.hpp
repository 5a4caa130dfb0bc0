// Steps between the scales of a diffraction pattern: scattering angle, time of flight, spacing d, Q = 2 pi/d and s = 1/d.
//
//   lambda = 2 d sin(theta)            constant wavelength (Bragg, 1913); x is 2 theta in degrees, conv(1) lambda in angstrom
//   t = dtt1 d + dtt2 d^2              time of flight in microseconds; conv(1) dtt1, conv(2) dtt2
//
// Values are single precision, computed in double precision. The steps that turn the order of x round turn every array of the pattern
// with it, so that x ascends again.
#pragma once

#include <array>
#include <span>

#include "base/status.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

enum class X_Step {
    two_theta_to_d,
    tof_to_d,
    d_to_tof,
    d_to_two_theta,  // a spacing below half the wavelength is reached by no angle and gives 180 degrees
    d_q,             // d to Q and Q to d: 2 pi / x
    d_s,             // d to s and s to d: 1 / x
    q_to_s,
    s_to_q,
};

using X_Constants = std::array<float, 5>;  // `conv` of the pattern

// True for the steps under which a rising x falls.
bool Reverses(X_Step step);
bool Turns_Round(std::span<const X_Step> steps);  // the same of several, one after another

// One value: a point, a reflection or the limit of a region. Nothing is checked: 0 gives what the division gives. A time of flight
// beyond the largest that dtt2 < 0 allows gives the spacing of that largest time.
float Convert_X(X_Step step, float x, const X_Constants& constants);
double Convert_Value(X_Step step, double x, const X_Constants& constants);  // the same to about 12 digits

// All points of a pattern, its order, xmin, xmax, ymin, ymax and the mean step. An angle, or with dtt2 a time of flight, at or below 0
// takes the spacing of the point behind it (a time so near to 0 that dtt2 changes nothing has its own). Each step rounds x to single
// precision.
//
// There and back, x returns within 4 units in the last place, a time of flight within 3, but for two cases. An angle returns within half
// a unit and x tan(theta)/theta 2^-24, which is more from 165 degrees on. A spacing next to the largest that dtt2 < 0 allows returns
// within the root of a rounding error.
void Convert_Points(X_Step step, Diffraction_Pattern_Type& pattern);
void Convert_Points(std::span<const X_Step> steps, Diffraction_Pattern_Type& pattern);

// Fails, changing nothing, when the steps would not lead to finite x in rising order; the message names `file_name`.
Status Check_Convertible(std::span<const X_Step> steps, const Diffraction_Pattern_Type& pattern, const std::string& file_name);

}  // namespace vntl
