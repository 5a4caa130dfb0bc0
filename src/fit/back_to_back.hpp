// The peak shape of a pulsed source: two exponentials back to back, exp(alpha t) before t = 0 and exp(-beta t) behind it, together of area
// 1, convoluted with a pseudo-Voigt of full width at half maximum H, (1 - eta) Gaussian + eta Lorentzian (R. B. Von Dreele, J. D. Jorgensen
// and C. G. Windsor, J. Appl. Cryst. 15, 1982, 581-589, for the Gaussian). At the distance D from the position of the peak, with
// N = alpha beta/(2 (alpha + beta)) and the variance S = H^2/(8 ln 2):
//
//   Gaussian    N (e^u erfc(y) + e^v erfc(z)),  u = (alpha/2)(alpha S + 2 D),  y = (alpha S + D)/sqrt(2 S)
//                                               v = (beta/2)(beta S - 2 D),    z = (beta S - D)/sqrt(2 S)
//   Lorentzian  -(2 N/pi) Im(E(p) + E(q)),      p = alpha (D + i H/2),  q = beta (-D + i H/2),  E(w) = e^w E1(w)
#pragma once

#include <span>
#include <vector>

namespace vntl {

// In the unit of x, and its inverse.
struct Back_To_Back {
    double alpha = 0, beta = 0;
    double fwhm = 0;  // H; below a millionth of both decay lengths it counts as that: the shape is the pure exponentials
    double eta = 0;
    bool lorentzian = true;  // without it eta is not looked at, and the shape is the Gaussian one

    bool operator==(const Back_To_Back&) const = default;
};

// The shape at some points, and its derivatives. by_eta is empty without the Lorentzian part.
struct Shape_Curve {
    std::vector<float> value, by_delta, by_alpha, by_beta, by_variance, by_eta;
};

// At x, which rises, of a peak at `position`. Every value is NaN where alpha or beta is not positive or a number is not finite: there is
// no such shape, and a solver that tried it goes back.
void Draw_Shape(const Back_To_Back& shape, double position, std::span<const float> x, Shape_Curve& curve);

}  // namespace vntl
