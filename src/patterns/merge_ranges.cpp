#include "patterns/merge_ranges.hpp"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "base/text.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/sound_points.hpp"

namespace vntl {

namespace {

constexpr double same_place = 0.02;       // of a step: points nearer than that are one
constexpr float same_wavelength = 1e-4f;  // angstrom

// A point of rates: y counts a second, its variance, and the time that stands behind it.
struct Rate {
    double x = 0, y = 0, variance = 0, time = 0;
};
using Rates = std::vector<Rate>;

Rates Rates_Of(const Diffraction_Pattern_Type& p) {
    Rates rates;
    rates.reserve(p.x.size());
    const double time = p.count_time > 0 ? p.count_time : 1, factor = p.per_second ? 1 : 1 / time;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        Rate rate{p.x[i], p.y[i] * factor, p.sigma[i] * factor * factor, time};
        if (rate.y > 0 && rate.variance > 0) rate.time = rate.y / rate.variance;
        rates.push_back(rate);
    }
    return rates;
}

double Mean_Step(const Rates& rates) { return (rates.back().x - rates.front().x) / static_cast<double>(rates.size() - 1); }

// The rate at x, which lies within the points or hardly beside them, between its neighbours.
Rate Between(const Rates& rates, double x) {
    const auto behind = std::lower_bound(rates.begin(), rates.end(), x, [](const Rate& rate, double at) { return rate.x < at; });
    if (behind == rates.begin()) return rates.front();
    if (behind == rates.end()) return rates.back();
    const Rate &a = *(behind - 1), &b = *behind;
    const double w = (x - a.x) / (b.x - a.x), v = 1 - w;
    return {x, v * a.y + w * b.y, v * v * a.variance + w * w * b.variance, v * a.time + w * b.time};
}

Rate Mean(const Rate& a, const Rate& b) {
    const double time = a.time + b.time, v = a.time / time, w = b.time / time;
    return {a.x, v * a.y + w * b.y, v * v * a.variance + w * w * b.variance, time};
}

// `b` begins behind the beginning of `a`.
Rates Joined(const Rates& a, const Rates& b) {
    const Rates &finer = Mean_Step(a) <= Mean_Step(b) ? a : b, &coarser = &finer == &a ? b : a;
    const double play = same_place * Mean_Step(finer);
    const double from = b.front().x - play, to = std::min(a.back().x, b.back().x) + play;
    const auto inside = [&](const Rate& rate) { return rate.x >= from && rate.x <= to; };
    Rates joined;
    joined.reserve(a.size() + b.size());
    for (const Rate& rate : finer) joined.push_back(inside(rate) ? Mean(rate, Between(coarser, rate.x)) : rate);
    // The coarser one's own points, and those of an overlap that holds none of the finer one's.
    const bool met = std::any_of(finer.begin(), finer.end(), inside);
    for (const Rate& rate : coarser)
        if (!met || !inside(rate)) joined.push_back(rate);
    std::sort(joined.begin(), joined.end(), [](const Rate& one, const Rate& other) { return one.x < other.x; });
    return joined;
}

std::string Shared_Title(std::span<const Diffraction_Pattern_Type> ranges) {
    std::string title = ranges.front().title;
    for (const Diffraction_Pattern_Type& range : ranges) {
        const auto end = std::mismatch(title.begin(), title.end(), range.title.begin(), range.title.end()).first;
        title.erase(end, title.end());
    }
    std::string_view text = Trim(title);
    for (const std::string_view rest : {"range", ","})
        if (text.ends_with(rest)) text = Trim_Right(text.substr(0, text.size() - rest.size()));
    return std::string(text);
}

// What the head told of the first range, without what holds for that one alone.
std::shared_ptr<const Head_Facts> Shared_Facts(std::span<const Diffraction_Pattern_Type> ranges, bool one_time) {
    Fact_List facts;
    facts.Add("Ranges merged", static_cast<double>(ranges.size()));
    if (ranges.front().facts != nullptr)
        for (const Head_Fact& fact : *ranges.front().facts)
            if (one_time || !fact.name.starts_with("Time a step")) facts.Add(fact.name, fact.value);
    return facts.Done();
}

}  // namespace

std::string Why_Not_Merged(std::span<const Diffraction_Pattern_Type> ranges) {
    if (ranges.size() < 2) return "There is one range alone";
    const Diffraction_Pattern_Type& first = ranges.front();
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        const Diffraction_Pattern_Type& range = ranges[i];
        const std::string name = "range " + std::to_string(i + 1);
        if (range.scat_var != first.scat_var || range.legend_x != first.legend_x) return "The ranges have different axes";
        if (std::fabs(range.conv[0] - first.conv[0]) > same_wavelength) return "The ranges have different wavelengths";
        if (!range.per_second && !(range.count_time > 0)) return "The head tells no time a step of " + name;
        if (range.x.size() < 2 || range.sigma.size() != range.x.size() || !range.sigma_is_variance || !Has_Sound_Points(range))
            return "The points of " + name + " are not in order";
    }
    return {};
}

Diffraction_Pattern_Type Merge_Ranges(std::span<const Diffraction_Pattern_Type> ranges) {
    std::vector<Rates> parts;
    for (const Diffraction_Pattern_Type& range : ranges) parts.push_back(Rates_Of(range));
    std::stable_sort(parts.begin(), parts.end(), [](const Rates& a, const Rates& b) { return a.front().x < b.front().x; });
    Rates all = std::move(parts.front());
    for (std::size_t i = 1; i < parts.size(); ++i) all = Joined(all, parts[i]);

    Diffraction_Pattern_Type merged;
    static_cast<Pattern_Head&>(merged) = ranges.front();
    merged.title = Shared_Title(ranges);
    merged.bank = 0;
    merged.npts_claimed = 0;
    const bool one_time =
        std::all_of(ranges.begin(), ranges.end(), [&](const auto& range) { return range.count_time == merged.count_time; });
    if (!one_time) merged.count_time = 0;
    merged.facts = Shared_Facts(ranges, one_time);
    merged.per_second = true;
    merged.legend_y = "Intensity (counts/s)";
    merged.constant_step = false;
    merged.al_ycalc = merged.al_bgr = merged.al_istat = merged.has_ycalc = merged.has_bgr = false;
    if (Allocate_Measured(merged, all.size()).failed) return merged;
    for (std::size_t i = 0; i < all.size(); ++i) {
        merged.x[i] = static_cast<float>(all[i].x);
        merged.y[i] = static_cast<float>(all[i].y);
        merged.sigma[i] = static_cast<float>(all[i].variance);
    }
    merged.xmin = merged.x.front();
    merged.xmax = merged.x.back();
    merged.step = (merged.xmax - merged.xmin) / static_cast<float>(all.size() - 1);
    Set_Y_Limits(merged);
    return merged;
}

}  // namespace vntl
