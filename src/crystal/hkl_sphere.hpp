// Which h k l lie between two radii of reciprocal space, and their S = sin(theta)/lambda = 1/(2 d).
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "crystal/cell.hpp"
#include "crystal/hkl_asu.hpp"

namespace vntl {

struct S_Limits {
    float low = 0, high = 0;

    bool Hold(float s) const { return low <= s && s <= high; }
};

// 1/d^2 as a function of l, with h and k fixed. Sums are double, S is rounded once.
class L_Quadratic {
public:
    L_Quadratic(const Tensor3& gr, double h, double k)
        : constant_(gr[0][0] * (h * h) + gr[1][1] * (k * k) + 2 * gr[0][1] * (h * k)),
          linear_(2 * (gr[0][2] * h + gr[1][2] * k)),
          square_(gr[2][2]) {}

    double Square(double l) const { return std::max(constant_ + square_ * (l * l) + linear_ * l, 0.0); }
    float S(double l) const { return static_cast<float>(0.5 * std::sqrt(Square(l))); }

private:
    double constant_, linear_, square_;
};

// Ranges that leave out nothing between the limits; at their ends S decides.
class Hkl_Sphere {
public:
    Hkl_Sphere(const Crystal_Cell_Type& cell, S_Limits limits);

    Index_Range Of_H() const { return Around(0, std::sqrt(outer_ * h_side_)); }
    Index_Range Of_K(int h) const;
    // Two stretches, the second one empty where the inner sphere does not part the row.
    std::array<Index_Range, 2> Of_L(int h, int k) const;

private:
    static Index_Range Around(double centre, double half) {
        return {static_cast<int>(std::ceil(centre - half)), static_cast<int>(std::floor(centre + half))};
    }

    double outer_, inner_;      // squares of the radii
    double h_side_;             // a^2, the square of the largest h on a sphere of radius 1
    double k_centre_, k_side_;  // of the rows of h: the middle over h; the square of half their breadth, where they are broadest
    double hh_, hk_, kk_;       // the square of the distance between a row and the origin, as a quadratic of h and k
    double l_of_h_, l_of_k_;    // the l nearest to the origin
    double ll_;                 // c*^2
};

}  // namespace vntl
