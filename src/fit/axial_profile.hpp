// The shape of a peak over an angle: a pseudo-Voigt, and what axial divergence makes of it.
//
// G(d) = (0.93943727/H) exp(-(1.6651093 d/H)^2) within 6 widths, L(d) = 0.63661975 H/(H^2 + 4 d^2), pV = eta L + (1 - eta) G. A ray that
// leaves the plane of the circle by z times its radius arrives at delta, cos(delta) = cos(2theta0) sqrt(1 + z^2); with half lengths s and h
// of sample and detector over the radius, min(2 min(s, h), s + h - z)/((1 + z^2) sin(delta)) of the rays do so (L. W. Finger, D. E. Cox and
// A. P. Jephcoat, J. Appl. Cryst. 27, 1994, 892-900, there over delta). z ends where delta reaches 0 or 180 degrees; in
// z = tan(2theta0) sin(phi) the integrand is smooth to that end, so that few points of a Gauss rule carry it.
#pragma once

#include <span>
#include <vector>

namespace vntl {

// Half lengths over the radius, not negative.
struct Axial_Divergence {
    double s = 0, h = 0;

    bool operator==(const Axial_Divergence&) const = default;
};

// A peak at one set of parameters; degrees.
struct Axial_Peak {
    float position = 0, fwhm = 0, eta = 0;
    bool divergent = false;
    Axial_Divergence divergence = {};

    bool operator==(const Axial_Peak&) const = default;
};

// Directions in which rays arrive: offsets from the peak in degrees, and their shares, which add up to 1; with their derivatives by the
// peak's position (of offset and position together: a peak without divergence has 1), s and h. Not divergent: one direction.
struct Axial_Ray {
    float offset = 0, share = 1;
    float offset_by_position = 1, share_by_position = 0;
    float offset_by_s = 0, share_by_s = 0, offset_by_h = 0, share_by_h = 0;
};
std::vector<Axial_Ray> Axial_Rays(const Axial_Peak& peak);

// The shape, of area 1, and its derivatives at some points, a value a point.
struct Profile_Curve {
    std::vector<float> value, by_position, by_width, by_eta;
    std::vector<float> by_s, by_h;  // where they are wanted
};
void Draw_Profile(const Axial_Peak& peak, bool with_divergence, std::span<const float> x, Profile_Curve& curve);

}  // namespace vntl
