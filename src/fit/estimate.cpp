#include "fit/estimate.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/text.hpp"

namespace vntl {

namespace {

constexpr float usual_reach = 0.5f;   // units of x
constexpr float steps_of_reach = 10;  // of an estimated peak

// Where the straight line between two points has the height y.
float Crossing(const Diffraction_Pattern_Type& p, std::size_t i, float y) {
    const float rise = p.y[i + 1] - p.y[i];
    return rise == 0 ? p.x[i] : p.x[i] + (y - p.y[i]) / rise * (p.x[i + 1] - p.x[i]);
}

float Reach_Of(const Diffraction_Pattern_Type& pattern) {
    const float step = pattern.step > 0 || pattern.x.size() < 2 ? pattern.step : pattern.x[1] - pattern.x[0];
    return steps_of_reach * step;
}

void Fill_Unknown_Widths(std::vector<Fit_Peak>& peaks) {
    float sum = 0;
    int known = 0;
    for (const Fit_Peak& peak : peaks) {
        if (!(peak.shift_width.value > 0)) continue;
        sum += peak.shift_width.value;
        ++known;
    }
    for (Fit_Peak& peak : peaks)
        if (!(peak.shift_width.value > 0)) peak.shift_width.value = sum / static_cast<float>(std::max(known, 1));
}

}  // namespace

Status Calc_FWHM_Peak(const Diffraction_Pattern_Type& p, float xi, float yi, float ybi, float w, float& width) {
    width = -1;
    const std::size_t npts = std::min(p.x.size(), p.y.size());
    const auto outside = Status::Fail("The index for X(i1) <= x < X(i1+1) was zero!");
    if (npts < 2 || !(xi >= p.x.front() && xi < p.x[npts - 1])) return outside;
    const auto after = std::upper_bound(p.x.begin(), p.x.begin() + static_cast<std::ptrdiff_t>(npts), xi);
    const auto i1 = static_cast<std::size_t>(after - p.x.begin()) - 1;

    const float half = (yi - ybi) / 2 + ybi;
    const float points = std::round((w > 0 ? w : usual_reach) / (p.x[1] - p.x[0]));
    const auto n = static_cast<std::size_t>(std::clamp(points, 0.0f, static_cast<float>(npts)));
    float left = p.x[i1], right = p.x[i1];
    const std::size_t first = i1 > n ? i1 - n : 0, last = std::min(i1 + n, npts - 1);
    for (std::size_t i = i1 + 1; i-- > first;) {
        if (!(p.y[i] < half)) continue;
        left = Crossing(p, i, half);
        break;
    }
    for (std::size_t i = i1; i <= last; ++i) {
        if (!(p.y[i] < half)) continue;
        right = i > 0 ? Crossing(p, i - 1, half) : p.x[i];
        break;
    }
    width = right - left;
    return Status::Done();
}

std::vector<Fit_Peak> Estimate_Fit_Peaks(const Diffraction_Pattern_Type& pattern, std::span<const Detected_Peak> detected) {
    const std::string variable = Lower(pattern.scat_var);
    const bool angles = Contains(variable, "2theta"), measured = angles || Contains(variable, "tof");
    const float reach = Reach_Of(pattern);
    std::vector<Fit_Peak> peaks;
    for (const Detected_Peak& found : detected.first(std::min<std::size_t>(detected.size(), max_fit_peaks))) {
        Fit_Peak peak;
        peak.pos = {found.x, 1};
        peak.intensity = {found.y, 1};
        peak.is_height = true;
        peak.top = found.y;
        peak.shift_width.flag = 1;
        float width = 0;
        if (measured && Calc_FWHM_Peak(pattern, found.x, found.y, found.bgr, reach, width).ok()) {
            peak.shift_width.value = width;
            peak.marked = true;
            if (angles) peak.half_x = found.x - width / 2;
            if (angles) peak.half_y = (found.y - found.bgr) / 2 + found.bgr;
        }
        peaks.push_back(peak);
    }
    Fill_Unknown_Widths(peaks);
    return peaks;
}

}  // namespace vntl
