#include "patterns/sound_points.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <vector>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

using Pattern = Diffraction_Pattern_Type;
using Order = std::vector<std::uint32_t>;  // places of points, from 0

constexpr std::size_t largest_searched = 256u << 20;  // bytes of a file in which a line is looked for

bool Is_Number(float value) { return std::isfinite(value); }

bool Has_Numbers(const Pattern& p, std::size_t i) { return Is_Number(p.x[i]) && (p.y.empty() || Is_Number(p.y[i])); }

// The entries at the places of `kept`.
template <class T>
void Keep(std::vector<T>& array, const Order& kept) {
    if (array.empty()) return;
    std::vector<T> fresh(kept.size());
    std::transform(kept.begin(), kept.end(), fresh.begin(), [&](std::uint32_t place) { return array[place]; });
    array.swap(fresh);
}

void Keep_Points(Pattern& p, const Order& kept) {
    for (auto* array : {&p.x, &p.y, &p.sigma, &p.ycalc, &p.bgr}) Keep(*array, kept);
    for (auto* array : {&p.istat, &p.nd}) Keep(*array, kept);
    p.npts = static_cast<std::int32_t>(kept.size());
}

// What depends on the points that are left: where they begin and end, and that their steps are no longer known to be alike.
void Renew_Range(Pattern& p) {
    p.constant_step = false;
    Set_Y_Limits(p);
    if (p.x.empty()) return;
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    if (p.x.size() > 1) p.step = (p.xmax - p.xmin) / static_cast<float>(p.x.size() - 1);
}

double Sum(const std::vector<float>& array, std::size_t first, std::size_t last) {
    return std::accumulate(array.begin() + static_cast<std::ptrdiff_t>(first), array.begin() + static_cast<std::ptrdiff_t>(last), 0.0);
}

// The points from `first` to before `last` become the point `place`.
void Merge(Pattern& p, std::size_t first, std::size_t last, std::size_t place) {
    const auto count = static_cast<double>(last - first);
    p.x[place] = p.x[first];
    for (auto* array : {&p.y, &p.ycalc, &p.bgr})
        if (!array->empty()) (*array)[place] = static_cast<float>(Sum(*array, first, last) / count);
    if (!p.sigma.empty()) {
        double variance = 0;
        for (std::size_t i = first; i < last; ++i)
            variance += p.sigma_is_variance ? p.sigma[i] : static_cast<double>(p.sigma[i]) * p.sigma[i];
        variance /= count * count;
        p.sigma[place] = static_cast<float>(p.sigma_is_variance ? variance : std::sqrt(variance));
    }
    if (!p.istat.empty()) p.istat[place] = p.istat[first];
    if (!p.nd.empty()) {
        long long detectors = 0;
        for (std::size_t i = first; i < last; ++i) detectors += p.nd[i];
        p.nd[place] = static_cast<std::int32_t>(std::clamp<long long>(detectors, INT32_MIN, INT32_MAX));
    }
}

}  // namespace

// Written so that the compiler takes several points at a time: no way out of the loops, and numbers known by the bits of their exponent.
bool Has_Sound_Points(const Pattern& p) {
    constexpr std::uint32_t exponent = 0x7f800000u;
    const std::size_t n = p.x.size();
    std::uint32_t faults = 0;
    const float* const x = p.x.data();
    for (std::size_t i = 1; i < n; ++i) faults |= x[i] > x[i - 1] ? 0u : 1u;
    for (const float y : p.y) faults |= (std::bit_cast<std::uint32_t>(y) & exponent) == exponent ? 1u : 0u;
    return faults == 0 && (n == 0 || (Is_Number(x[0]) && Is_Number(x[n - 1])));
}

std::optional<Fall> First_Fall(const Pattern& p) {
    std::optional<float> highest;
    float last = 0;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        const float x = p.x[i];
        if (Has_Numbers(p, i)) {
            if (highest && !(x > *highest)) return Fall{static_cast<int>(i + 1), x, *highest, last};
            highest = x;
        }
        if (Is_Number(x)) last = x;
    }
    return {};
}

int Line_Of_Fall(const std::string& path, const Fall& fall) {
    Text_File file;
    if (file.Open(path, largest_searched).failed) return 0;
    Line_Cursor lines(file.Text());
    bool behind = false;  // the number told last is the last x
    for (std::string_view line; lines.Next(line);) {
        line = Trim_Left(line);
        float value = 0;
        if (Parse_Float(line.data(), line.data() + line.size(), value) == line.data() || !Is_Number(value)) continue;
        if (behind && value == fall.at) return lines.Number();
        behind = value == fall.last;
    }
    return 0;
}

int Leave_Out_Points_Without_Numbers(Pattern& p) {
    Order kept;
    for (std::size_t i = 0; i < p.x.size(); ++i)
        if (Has_Numbers(p, i)) kept.push_back(static_cast<std::uint32_t>(i));
    const int left_out = static_cast<int>(p.x.size() - kept.size());
    if (left_out == 0) return 0;
    Keep_Points(p, kept);
    Renew_Range(p);
    return left_out;
}

void Sort_By_X(Pattern& p) {
    Order order(p.x.size());
    std::iota(order.begin(), order.end(), 0u);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) { return p.x[a] < p.x[b]; });
    Keep_Points(p, order);
    Order kept;
    for (std::size_t first = 0, last = 0; first < p.x.size(); first = last) {
        while (last < p.x.size() && p.x[last] == p.x[first]) ++last;
        const auto place = kept.size();
        if (last - first > 1 || place != first) Merge(p, first, last, place);
        kept.push_back(static_cast<std::uint32_t>(place));
    }
    Keep_Points(p, kept);
    Renew_Range(p);
}

}  // namespace vntl
