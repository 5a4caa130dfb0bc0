#include "patterns/lab/raw_ranges.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <limits>
#include <type_traits>
#include <utility>

#include "base/huge_pages.hpp"
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

// The extremes of numbers, in lanes that a processor takes at once; a NaN changes none.
struct Limits {
    static constexpr std::size_t lanes = 8;
    std::array<float, lanes> least, most;

    Limits() {
        least.fill(std::numeric_limits<float>::infinity());
        most.fill(-std::numeric_limits<float>::infinity());
    }
    void Take(const float* y, std::size_t n) {
        for (std::size_t i = 0; i + lanes <= n; i += lanes) Take_Lanes(y + i, lanes);
        Take_Lanes(y + n / lanes * lanes, n % lanes);
    }
    float Least() const { return *std::min_element(least.begin(), least.end()); }
    float Most() const { return *std::max_element(most.begin(), most.end()); }

private:
    void Take_Lanes(const float* y, std::size_t n) {
        for (std::size_t k = 0; k < n; ++k) {
            least[k] = y[k] < least[k] ? y[k] : least[k];
            most[k] = y[k] > most[k] ? y[k] : most[k];
        }
    }
};

// The values of a rule at 0, 1, 2, ..., for the vector to take them in without zeros written first.
template <class Rule>
struct Rule_Iterator {
    using iterator_category = std::random_access_iterator_tag;
    using value_type = float;
    using difference_type = std::ptrdiff_t;
    using pointer = const float*;
    using reference = float;

    Rule rule;
    int i;

    float operator*() const { return rule(i); }
    Rule_Iterator& operator++() { return ++i, *this; }
    Rule_Iterator& operator--() { return --i, *this; }
    Rule_Iterator& operator+=(std::ptrdiff_t n) { return i += static_cast<int>(n), *this; }
    friend bool operator==(const Rule_Iterator& a, const Rule_Iterator& b) { return a.i == b.i; }
    friend std::ptrdiff_t operator-(const Rule_Iterator& a, const Rule_Iterator& b) { return a.i - b.i; }
};

template <class Rule>
void Append(std::vector<float>& values, int n, const Rule& rule) {
    values.insert(values.end(), Rule_Iterator<Rule>{rule, 0}, Rule_Iterator<Rule>{rule, n});
}

template <class Count>
Count Count_At(const char* record) {
    Count count;
    std::memcpy(&count, record, sizeof count);
    return count;
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
    if (n < 1 || static_cast<double>(n) > most_claimed) return Status::Fail(no_points_told);
    for (auto* reals : {&p.x, &p.y, &p.sigma}) {
        Reserve_Many(*reals, n);
        Bring_In(reals->data(), n * sizeof(float));
    }
    Limits limits;
    for (std::size_t first = 0; first < n; first += block) {
        const int here = static_cast<int>(std::min(n - first, block));
        const char* const counts = records.data() + first * stride;
        if (stride == sizeof(Count) && divisor == 1)
            Append(p.y, here,
                   [counts](int i) { return static_cast<float>(Count_At<Count>(counts + static_cast<std::size_t>(i) * sizeof(Count))); });
        else
            Append(p.y, here,
                   [=](int i) { return static_cast<float>(Count_At<Count>(counts + static_cast<std::size_t>(i) * stride)) / divisor; });
        const float* const y = p.y.data() + first;
        const double start = grid.start + static_cast<double>(first) * grid.step, step = grid.step;
        Append(p.x, here, [=](int i) { return static_cast<float>(start + i * step); });
        Append(p.sigma, here, [y](int i) { return std::fabs(y[i]); });
        limits.Take(y, static_cast<std::size_t>(here));
    }
    p.npts = static_cast<std::int32_t>(n);
    p.has_y = p.has_sigma = p.al_x = p.al_y = p.al_sigma = true;
    if (grid.step < 0) Turn_Round(p);
    p.step = static_cast<float>(std::fabs(grid.step));
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    const bool numbers = limits.Least() <= limits.Most();
    p.ymin = numbers ? limits.Least() : 0;
    p.ymax = numbers ? limits.Most() : 0;
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
        if (first_fault_.empty()) first_fault_ = status.message;
        if (faults_.size() < most_ranges) faults_.push_back("Range " + std::to_string(count_) + ": " + status.message);
        return;
    }
    pattern.bank = static_cast<std::int32_t>(count_);
    patterns_.push_back(std::move(pattern));
}

Status Range_List::Done(std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    const bool several = std::max(count_, told_) > 1;
    if (patterns_.empty()) return Status::Fail(faults_.empty() ? "This file holds no range" : several ? faults_.front() : first_fault_);
    if (count_ + 1 == told_) faults_.push_back("Range " + std::to_string(told_) + ": The file ends before it");
    if (count_ + 1 < told_)
        faults_.push_back("Ranges " + std::to_string(count_ + 1) + " to " + std::to_string(told_) + ": The file ends before them");
    for (Diffraction_Pattern_Type& pattern : patterns_) {
        if (several)
            pattern.title = Numbered(pattern.title, static_cast<std::size_t>(pattern.bank));
        else
            pattern.bank = 0;
    }
    notes.failed.insert(notes.failed.end(), faults_.begin(), faults_.end());
    patterns = std::move(patterns_);
    return Status::Done();
}

}  // namespace vntl
