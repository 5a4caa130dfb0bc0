#include "patterns/raw_ranges.hpp"

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "base/text.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr double farthest = 1e5;  // degrees or millimetres
constexpr double least_step = 1e-7;
constexpr double longest_wave = 100;
constexpr double least_time = 1e-9, longest_time = 1e8;  // seconds a step

// Points that are worked on at a time: they stay in the fast memory of the processor.
constexpr std::size_t block = 2048;

struct Limits {
    float least = std::numeric_limits<float>::infinity(), most = -std::numeric_limits<float>::infinity();

    void Take(const float* y, std::size_t n) {
        float low = least, high = most;
        for (std::size_t i = 0; i < n; ++i) {
            low = y[i] < low ? y[i] : low;
            high = y[i] > high ? y[i] : high;
        }
        least = low, most = high;
    }
};

template <class Count>
void Take_Counts(const char* records, std::size_t stride, std::size_t n, float* y) {
    if constexpr (std::is_same_v<Count, float>)
        if (stride == sizeof(float)) {
            std::memcpy(y, records, n * sizeof(float));
            return;
        }
    for (std::size_t i = 0; i < n; ++i) {
        Count count;
        std::memcpy(&count, records + i * stride, sizeof count);
        y[i] = static_cast<float>(count);
    }
}

}  // namespace

bool Scan_Grid::Is_Sound(double points) const {
    const bool numbers = std::isfinite(start) && std::isfinite(step) && std::fabs(start) <= farthest;
    return numbers && std::fabs(step) >= least_step && std::fabs(step) * points <= 2 * farthest;
}

float Wavelength_Of(double told) { return told > 0 && told < longest_wave ? static_cast<float>(told) : 0; }

float Seconds_Of(double told) { return told > least_time && told < longest_time ? static_cast<float>(told) : 0; }

void Add_Told(Fact_List& facts, std::string_view name, double value) {
    if (Is_Told(value)) facts.Add(name, value);
}

void Add_Setting(Fact_List& facts, std::string_view name, double value) {
    if (value > 0) Add_Told(facts, name, value);
}

void Add_Date(Fact_List& facts, std::string_view date, std::string_view time) {
    if (!date.empty()) facts.Add("Date", std::string(date) + ' ' + std::string(time));
}

template <class Count>
Status Set_Points(Diffraction_Pattern_Type& p, Scan_Grid grid, std::string_view records, std::size_t stride, std::size_t n, float divisor) {
    if (!grid.Is_Sound(static_cast<double>(n))) return Status::Fail("The head tells no sound start and step");
    if (const Status status = Allocate_Measured(p, n); status.failed) return status;
    Limits limits;
    float *const x = p.x.data(), *const y = p.y.data(), *const sigma = p.sigma.data();
    for (std::size_t first = 0; first < n; first += block) {
        const std::size_t last = std::min(n, first + block);
        Take_Counts<Count>(records.data() + first * stride, stride, last - first, y + first);
        if (divisor != 1)
            for (std::size_t i = first; i < last; ++i) y[i] /= divisor;
        for (std::size_t i = first; i < last; ++i)
            x[i] = static_cast<float>(grid.start + static_cast<double>(static_cast<std::int32_t>(i)) * grid.step);
        for (std::size_t i = first; i < last; ++i) sigma[i] = std::fabs(y[i]);
        limits.Take(y + first, last - first);
    }
    if (grid.step < 0) Turn_Round(p);
    p.step = static_cast<float>(std::fabs(grid.step));
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.ymin = limits.least <= limits.most ? limits.least : 0;
    p.ymax = limits.least <= limits.most ? limits.most : 0;
    p.constant_step = p.sigma_is_variance = true;
    p.radiation = "xrays_cw";
    return Status::Done();
}

template Status Set_Points<float>(Diffraction_Pattern_Type&, Scan_Grid, std::string_view, std::size_t, std::size_t, float);
template Status Set_Points<std::int32_t>(Diffraction_Pattern_Type&, Scan_Grid, std::string_view, std::size_t, std::size_t, float);
template Status Set_Points<Count_By_Root>(Diffraction_Pattern_Type&, Scan_Grid, std::string_view, std::size_t, std::size_t, float);
template Status Set_Points<std::int16_t>(Diffraction_Pattern_Type&, Scan_Grid, std::string_view, std::size_t, std::size_t, float);

std::size_t Points_There(Diffraction_Pattern_Type& p, double claimed, std::size_t bytes, std::size_t stride) {
    const auto room = static_cast<double>(bytes / stride);
    if (claimed > room) p.npts_claimed = static_cast<std::int32_t>(std::min(claimed, most_claimed));
    return static_cast<std::size_t>(std::clamp(claimed, 0.0, room));
}

void Range_List::Take(const Status& status, Diffraction_Pattern_Type&& pattern) {
    ++count_;
    if (status.failed) {
        if (faults_.size() < most_ranges) faults_.push_back("Range " + std::to_string(count_) + ": " + status.message);
        return;
    }
    pattern.bank = static_cast<std::int32_t>(count_);
    patterns_.push_back(std::move(pattern));
}

Status Range_List::Done(std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    if (patterns_.empty()) return Status::Fail(faults_.empty() ? "This file holds no range" : faults_.front());
    if (count_ + 1 == told_) faults_.push_back("Range " + std::to_string(told_) + ": The file ends before it");
    if (count_ + 1 < told_)
        faults_.push_back("Ranges " + std::to_string(count_ + 1) + " to " + std::to_string(told_) + ": The file ends before them");
    for (Diffraction_Pattern_Type& pattern : patterns_) {
        if (std::max(count_, told_) > 1)
            pattern.title = Numbered(pattern.title, static_cast<std::size_t>(pattern.bank));
        else
            pattern.bank = 0;
    }
    notes.failed.insert(notes.failed.end(), faults_.begin(), faults_.end());
    patterns = std::move(patterns_);
    return Status::Done();
}

}  // namespace vntl
