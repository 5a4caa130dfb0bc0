#include "patterns/pattern.hpp"

#include <algorithm>
#include <span>

#include "base/extremes.hpp"
#include "base/huge_pages.hpp"

namespace vntl {

Status Allocate_Diffraction_Pattern(Diffraction_Pattern_Type& p, std::int32_t n) {
    if (n < 1) return Status::Fail(" Attempt to allocate Diffraction_Pattern with 0-dimension ");
    const auto size = static_cast<std::size_t>(n);
    p.npts = n;
    for (auto* reals : {&p.x, &p.y, &p.sigma, &p.ycalc, &p.bgr}) Assign_Many(*reals, size, 0.0f);
    for (auto* integers : {&p.istat, &p.nd}) Assign_Many(*integers, size, 0);
    p.has_y = p.has_ycalc = p.has_bgr = p.has_sigma = true;
    p.al_x = p.al_y = p.al_ycalc = p.al_bgr = p.al_sigma = p.al_istat = true;
    return Status::Done();
}

Status Allocate_Diffraction_Pattern(Diffraction_Pattern_Type& pattern) { return Allocate_Diffraction_Pattern(pattern, pattern.npts); }

std::size_t Point_At(const Diffraction_Pattern_Type& pattern, float x) {
    return static_cast<std::size_t>(std::upper_bound(pattern.x.begin(), pattern.x.end(), x) - pattern.x.begin());
}

void Turn_Round(Diffraction_Pattern_Type& p) {
    const auto turn = [&p](auto& array) {
        const auto count = std::min(array.size(), static_cast<std::size_t>(std::max(p.npts, 0)));
        std::reverse(array.begin(), array.begin() + static_cast<std::ptrdiff_t>(count));
    };
    for (auto* reals : {&p.x, &p.y, &p.sigma, &p.ycalc, &p.bgr}) turn(*reals);
    for (auto* integers : {&p.istat, &p.nd}) turn(*integers);
}

void Set_Y_Limits(Diffraction_Pattern_Type& p) {
    const std::size_t n = std::min(p.y.size(), static_cast<std::size_t>(std::max(p.npts, 0)));
    const Extremes y = Finite_Extremes(std::span(p.y).first(n));
    p.ymin = y.Found() ? y.low : 0;
    p.ymax = y.Found() ? y.high : 0;
}

}  // namespace vntl
