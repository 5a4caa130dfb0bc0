#include "patterns/pattern.hpp"

#include <algorithm>
#include <array>
#include <limits>

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

void Set_Y_Limits(Diffraction_Pattern_Type& p) {
    constexpr float most = std::numeric_limits<float>::max();
    constexpr std::size_t lanes = 16;  // of extremes, so that a point does not wait for the one before it
    const std::size_t n = std::min(p.y.size(), static_cast<std::size_t>(std::max(p.npts, 0)));
    std::array<float, lanes> lows, highs;
    lows.fill(most), highs.fill(-most);
    const auto take = [&](std::size_t lane, float y) {  // neither comparison takes a NaN or what is not finite
        lows[lane] = y >= -most && y < lows[lane] ? y : lows[lane];
        highs[lane] = y <= most && y > highs[lane] ? y : highs[lane];
    };
    std::size_t i = 0;
    for (; i + lanes <= n; i += lanes)
        for (std::size_t lane = 0; lane < lanes; ++lane) take(lane, p.y[i + lane]);
    for (; i < n; ++i) take(0, p.y[i]);
    const float low = *std::min_element(lows.begin(), lows.end());
    const float high = *std::max_element(highs.begin(), highs.end());
    p.ymin = low <= high ? low : 0;
    p.ymax = low <= high ? high : 0;
}

}  // namespace vntl
