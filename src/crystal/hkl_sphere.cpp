#include "crystal/hkl_sphere.hpp"

namespace vntl {

// Along a row the distance is least at some l, which need not be whole. What is left is a quadratic of h and k, whose matrix is the inverse
// of the upper block of the direct metric tensor; the same once more leaves one of h.
Hkl_Sphere::Hkl_Sphere(const Crystal_Cell_Type& cell, S_Limits limits) {
    constexpr double slack = 1e-6;  // more than rounding to single precision
    const auto radius_squared = [](float s) { return 4.0 * s * s; };
    outer_ = radius_squared(limits.high) * (1 + slack);
    inner_ = limits.low > 0 ? radius_squared(limits.low) * (1 - slack) : 0;
    const Tensor3 &gd = cell.GD, &gr = cell.GR;
    const double area = gd[0][0] * gd[1][1] - gd[0][1] * gd[0][1];
    hh_ = gd[1][1] / area;
    hk_ = -gd[0][1] / area;
    kk_ = gd[0][0] / area;
    h_side_ = gd[0][0];
    k_centre_ = gd[0][1] / gd[0][0];
    k_side_ = 1 / kk_;
    ll_ = gr[2][2];
    l_of_h_ = -gr[0][2] / ll_;
    l_of_k_ = -gr[1][2] / ll_;
}

Index_Range Hkl_Sphere::Of_K(int h) const {
    const double left = outer_ - static_cast<double>(h) * h / h_side_;
    return left < 0 ? Index_Range{} : Around(k_centre_ * h, std::sqrt(left * k_side_));
}

std::array<Index_Range, 2> Hkl_Sphere::Of_L(int h, int k) const {
    const double x = h, y = k, from_row = hh_ * x * x + 2 * hk_ * x * y + kk_ * y * y, centre = l_of_h_ * x + l_of_k_ * y;
    if (outer_ < from_row) return {};
    const Index_Range whole = Around(centre, std::sqrt((outer_ - from_row) / ll_));
    if (inner_ <= from_row) return {whole, {}};
    const double half = std::sqrt((inner_ - from_row) / ll_);
    const int below = static_cast<int>(std::floor(centre - half)), above = static_cast<int>(std::ceil(centre + half));
    return {Index_Range{whole.low, std::min(below, whole.high)}, Index_Range{std::max(above, below + 1), whole.high}};
}

}  // namespace vntl
