#include "patterns/xrdml/xrdml_sum.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/scan_axis.hpp"

namespace vntl {

namespace {

constexpr double same_place = 5e-4;       // degrees or millimetres; goniometers and stages are told to 0.001 or finer
constexpr double same_temperature = 0.5;  // kelvin, by which a steady sample may vary from scan to scan

// How many counts there are from start to end in steps of so much, where those go up in it; 0 where they do not.
std::size_t Counts_Between(double start, double end, double step, double uncertainty) {
    constexpr double most = 1e8;
    const double steps = std::fabs(end - start) / step;
    if (!(step > 0) || !(steps >= 0 && steps < most) || std::fabs(steps - std::round(steps)) > uncertainty) return 0;
    return static_cast<std::size_t>(std::round(steps)) + 1;
}

// A continuous scan tells the middle of its first step: one from 4 on in steps of 0.01313028 starts at 4.00656514. Where that distance from
// a round angle is none that could be chosen by hand, and the range is a whole number of such steps, it tells the step.
std::size_t Counts_Of_Continuous_Scan(double start, double end) {
    constexpr double by_hand = 1e-4, rounding = 2e-8, shortest = 1e-3, longest = 0.2, least_steps = 20;
    const double above = start - std::floor(start * 10 + 1e-9) / 10;
    const double step = 2 * above, steps = std::fabs(end - start) / step;
    const double chosen = above / by_hand;
    if (!(step > shortest && step < longest && steps > least_steps) || std::fabs(chosen - std::round(chosen)) < 1e-3) return 0;
    return Counts_Between(start, end, step, 1e-3 + steps * rounding / step);
}

}  // namespace

Xrdml_Places Places_Of(const Xrdml_Scan& scan) {
    Xrdml_Places places;
    places.reserve(scan.axes.size());
    for (const Xrdml_Axis& axis : scan.axes) {
        Xrdml_Place place{axis.name, Trim(axis.list.given ? axis.list.text : axis.common.text)};
        place.told = axis.Ends(place.from, place.to);
        places.push_back(place);
    }
    std::stable_sort(places.begin(), places.end(), [](const Xrdml_Place& a, const Xrdml_Place& b) { return a.name < b.name; });
    return places;
}

bool Xrdml_Sum::Same(const Xrdml_Place& a, const Xrdml_Place& b, double near) {
    if (!a.told || !b.told) return a.told == b.told && a.text == b.text;
    return std::fabs(a.from - b.from) <= near && std::fabs(a.to - b.to) <= near;
}

const Xrdml_Place* Xrdml_Sum::Find(std::string_view name) const {
    const auto place = std::find_if(places_.begin(), places_.end(), [name](const Xrdml_Place& each) { return each.name == name; });
    return place == places_.end() ? nullptr : &*place;
}

Xrdml_Sum::Xrdml_Sum(const Xrdml_Scan& scan, Xrdml_Places places, Xrdml_Lists& lists, double step)
    : first_(scan), places_(std::move(places)) {
    axis_ = lists.axis;
    whole_ = lists.whole;
    pattern_.xmin = lists.start, pattern_.xmax = lists.end;
    Set_Scan_Axis(pattern_, axis_);
    Set_Positions(lists, step);
    Begin_Counts(lists);
    numbers_.push_back(scan.number);
    time_ = lists.time;
}

void Xrdml_Sum::Set_Positions(Xrdml_Lists& lists, double step) {
    Diffraction_Pattern_Type& p = pattern_;
    const std::size_t n = lists.counts.size();
    p.npts = static_cast<std::int32_t>(n);
    const bool listed = !lists.positions.empty();
    const Xrdml_Place& place = *Find(axis_);
    planned_ = lists.planned;
    if (!whole_ && !listed) {
        if (planned_ < n) planned_ = Counts_Between(place.from, place.to, step, 0.05);
        if (planned_ < n) planned_ = Counts_Of_Continuous_Scan(place.from, place.to);
        step_told_ = planned_ >= n;
    }
    const std::size_t points = std::max(planned_, n);
    if (listed) {
        lists.positions.resize(n);
        p.xmax = lists.positions.back();
    }
    const std::size_t steps = listed ? n : points;
    if (steps > 1) p.step = (p.xmax - p.xmin) / static_cast<float>(steps - 1);
    if (listed) {
        p.x = positions_ = lists.positions;
    } else {
        Assign_Many(p.x, n, 0.0f);
        Set_Grid(p);
    }
    if (points > n) {
        p.npts_claimed = static_cast<std::int32_t>(points);
        if (!listed) Set_Grid_End(p);
    }
    p.constant_step = !listed;
    step_ = std::fabs(place.to - place.from) / static_cast<double>(std::max<std::size_t>(points - 1, 1));
}

// Numbers come before names: a map has thousands of scans that differ in one place.
bool Xrdml_Sum::Takes(const Xrdml_Scan& scan, const Xrdml_Places& places, const Xrdml_Lists& lists) const {
    if (scan.per_second || first_.per_second) return false;  // rates do not add up
    if (lists.counts.size() != Points() || lists.whole != whole_ || lists.positions.size() != positions_.size()) return false;
    if (std::fabs(scan.temperature - first_.temperature) > same_temperature || places.size() != places_.size()) return false;
    const auto in_place = [](const Xrdml_Place& a, const Xrdml_Place& b) { return Same(a, b, same_place); };
    if (!std::equal(places.begin(), places.end(), places_.begin(), in_place) || lists.axis != axis_) return false;
    const double near = std::min(same_place, 0.5 * step_);
    const auto alike = [&](const Xrdml_Place& a, const Xrdml_Place& b) {
        return a.name == b.name && (a.name != axis_ || Same(a, b, near));
    };
    const auto near_by = [near](float a, float b) { return std::fabs(a - b) <= near; };
    return std::equal(places.begin(), places.end(), places_.begin(), alike) &&
           std::equal(positions_.begin(), positions_.end(), lists.positions.begin(), near_by);
}

void Xrdml_Sum::Add(const Xrdml_Scan& scan, const Xrdml_Lists& lists) {
    Add_Counts(lists);
    numbers_.push_back(scan.number);
    time_ = time_ > 0 && lists.time > 0 ? time_ + lists.time : 0;
}

// Of n counts behind a factor f, y is f n and its variance f^2 n.
void Xrdml_Sum::Begin_Counts(Xrdml_Lists& lists) {
    Diffraction_Pattern_Type& p = pattern_;
    p.y = std::move(lists.counts);
    lists.counts.clear();
    Assign_Many(p.sigma, p.y.size(), 0.0f);
    p.has_y = p.has_sigma = p.al_x = p.al_y = p.al_sigma = true;
    const bool one_factor = lists.factors.size() < 2;
    const float all = lists.factors.empty() ? 1.0f : lists.factors.front();
    for (std::size_t i = 0; i < p.y.size(); ++i) {
        const float factor = one_factor ? all : lists.factors[i];
        if (!lists.corrected) p.y[i] *= factor;
        p.sigma[i] = std::fabs(factor * p.y[i]);
    }
}

void Xrdml_Sum::Add_Counts(const Xrdml_Lists& lists) {
    const std::size_t n = std::min(lists.counts.size(), pattern_.y.size());
    const bool one_factor = lists.factors.size() < 2;
    const float all = lists.factors.empty() ? 1.0f : lists.factors.front();
    for (std::size_t i = 0; i < n; ++i) {
        const float factor = one_factor ? all : lists.factors[i];
        const float y = lists.corrected ? lists.counts[i] : factor * lists.counts[i];
        pattern_.y[i] += y;
        pattern_.sigma[i] += std::fabs(factor * y);
    }
}

// Points that were measured downwards are given upwards.
Diffraction_Pattern_Type Xrdml_Sum::Finish() {
    Diffraction_Pattern_Type& p = pattern_;
    if (p.xmax < p.xmin) {
        Turn_Round(p);
        std::swap(p.xmin, p.xmax);
        p.step = -p.step;
    }
    Set_Y_Limits(p);
    p.count_time = static_cast<float>(time_);
    p.TSample = static_cast<float>(first_.temperature);
    p.per_second = first_.per_second;
    if (p.per_second && p.count_time > 0)
        for (float& variance : p.sigma) variance /= p.count_time;
    return std::move(pattern_);
}

bool Xrdml_Sum::Differs(const Xrdml_Sum& other, std::string_view axis) const {
    const Xrdml_Place* const here = Find(axis);
    const Xrdml_Place* const there = other.Find(axis);
    return here != nullptr && there != nullptr && !Same(*here, *there, same_place);
}

bool Xrdml_Sum::Is_As_Warm(const Xrdml_Sum& other) const {
    return std::fabs(first_.temperature - other.first_.temperature) <= same_temperature;
}

}  // namespace vntl
