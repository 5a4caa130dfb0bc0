#include "drawing/fitted_axis.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "drawing/axis.hpp"

namespace vntl {

namespace {

constexpr double rounding = 1e-6;  // of a step
constexpr int most_ticks = 60, most_minor = 400;
constexpr double small_powers = 1e-4;  // numbers below that are powers of ten where large ones are
constexpr double plain_counts = 1e5;   // counts of a logarithmic axis up to that are written out

int Decade_Of(double value) { return static_cast<int>(std::floor(std::log10(value) + 1e-9)); }

// 1, 2 or 5 times a power of ten.
struct Step {
    int mantissa = 1, decade = 0;
    double Value() const { return mantissa * std::pow(10.0, decade); }
    Step Next() const { return mantissa == 1 ? Step{2, decade} : mantissa == 2 ? Step{5, decade} : Step{1, decade + 1}; }
};

// The largest step that is no larger.
Step Step_Within(double value) {
    const int decade = Decade_Of(value);
    const double mantissa = value / std::pow(10.0, decade);
    return {mantissa > 5 - rounding ? 5 : mantissa > 2 - rounding ? 2 : 1, decade};
}

std::string Fixed(double value, int decimals) {
    std::array<char, 400> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals).ptr;
    std::string number(text.data(), end);
    return number.find_first_not_of("-0.") == std::string::npos && number.starts_with('-') ? number.substr(1) : number;
}

// How the numbers of one axis are written, which are multiples of a step.
class Number_Form {
public:
    Number_Form(double largest, const Step& step, const Axis_Room& room) : decimals_(std::max(-step.decade, 0)) {
        if (!(largest > 0)) return;
        const bool powers = room.powers_from < 1e299;
        const int decade = Decade_Of(largest);
        if (largest >= room.powers_from * (1 - rounding) || (powers && largest < small_powers)) {
            constexpr int most_decimals = 3;
            if (decade - step.decade > most_decimals && largest < 1e15 && decimals_ < 10) return;
            exponent_ = decade;
            decimals_ = std::clamp(decade - step.decade, 0, 9);
        } else if (!powers && (decade > 8 || decade < -5)) {
            told_ = decade;
        }
    }

    std::string Of(double value) const {
        if (told_) return Tick_Text(static_cast<float>(value), *told_);
        if (!exponent_) return Fixed(value, std::min(decimals_, 12));
        if (value == 0) return "0";
        return Fixed(value / std::pow(10.0, *exponent_), decimals_) +
               "\xC2\xB7"
               "10^" +
               std::to_string(*exponent_);
    }

private:
    int decimals_;
    std::optional<int> exponent_, told_;
};

// Multiples of a step in a range; none where there are too many.
std::vector<double> Multiples(double lo, double hi, double step, int most) {
    const double first = std::ceil(lo / step - rounding), last = std::floor(hi / step + rounding);
    std::vector<double> values;
    if (!(last - first < most)) return values;
    for (double k = first; k <= last; ++k) values.push_back(k * step);
    return values;
}

// Small steps between numbered ones: fifths of 1 and 5, quarters of 2, or else halves of 1 and 2.
std::optional<double> Minor_Step(const Step& step, double least) {
    const double value = step.Value(), fine = value / (step.mantissa == 2 ? 4 : 5);
    if (fine >= least) return fine;
    if (step.mantissa != 5 && 0.5 * value >= least) return 0.5 * value;
    return {};
}

bool Among(const std::vector<Axis_Tick>& ticks, double at, double near) {
    return std::any_of(ticks.begin(), ticks.end(), [&](const Axis_Tick& tick) { return std::fabs(tick.at - at) < near; });
}

// --- even scales -----------------------------------------------------------------------------------------------------------------

Fitted_Ticks Even_Ticks(double lo, double hi, const Axis_Room& room) {
    constexpr double most_steps = 12;
    Fitted_Ticks found;
    Step step = Step_Within((hi - lo) / most_steps).Next();
    const double largest = std::max(std::fabs(lo), std::fabs(hi));
    if (step.Value() < largest * 1e-7) return found;  // closer than single precision tells apart
    constexpr int longest_search = 12;
    for (int tried = 0; tried < longest_search; ++tried) {
        const Number_Form form(largest, step, room);
        double widest = 0;
        found.major.clear();
        for (const double value : Multiples(lo, hi, step.Value(), most_ticks)) {
            found.major.push_back({value, form.Of(value)});
            widest = std::max(widest, room.needs(found.major.back().text));
        }
        if (step.Value() >= widest && !found.major.empty()) break;
        if (const double next = step.Next().Value(); next > hi - lo) break;
        step = step.Next();
    }
    // Two numbers at the ends of a narrow axis may still be in each other's way: the first one then stands alone.
    if (found.major.size() > 1 && step.Value() < room.needs(found.major.front().text)) found.major.resize(1);
    if (const auto fine = Minor_Step(step, room.minor))
        for (const double value : Multiples(lo, hi, *fine, most_minor))
            if (!Among(found.major, value, 0.01 * *fine)) found.minor.push_back(value);
    return found;
}

// --- counts ----------------------------------------------------------------------------------------------------------------------

// A scale of counts: where they lie, and what lies there.
struct Count_Scale {
    Axis_Scale kind;
    double Place(double count) const {
        return kind == Axis_Scale::root ? std::copysign(std::sqrt(std::fabs(count)), count) : std::log(std::max(count, 1.0));
    }
    double Count(double place) const {
        return kind == Axis_Scale::root ? std::copysign(place * place, place) : std::exp(std::clamp(place, 0.0, 700.0));
    }
};

class Count_Ticks {
public:
    Count_Ticks(double lo, double hi, Axis_Scale kind, const Axis_Room& room)
        : scale_{kind}, room_(room), lo_(lo), hi_(hi), low_(scale_.Count(lo)), high_(scale_.Count(hi)) {}

    Fitted_Ticks Find() {
        if (!(high_ > low_)) return {};
        if (scale_.kind == Axis_Scale::root)
            Find_Roots();
        else if (high_ / low_ >= least_decades_ratio)
            Find_Decades();
        else
            Find_Steps(low_, high_);
        std::ranges::sort(found_.major, {}, &Axis_Tick::at);
        return std::move(found_);
    }

private:
    static constexpr double least_decades_ratio = 8;  // below it round steps tell more than 1, 2, 5

    // Each with an exponent of its own: counts that stand on one such axis differ by decades.
    std::string Text_Of(double count, double step) const { return Number_Form(std::fabs(count), Step_Within(step), room_).Of(count); }

    bool Inside(double at) const {
        const double edge = rounding * (hi_ - lo_);
        return at >= lo_ - edge && at <= hi_ + edge && (scale_.kind == Axis_Scale::root || at >= -edge);
    }

    // Unless it stands too near to a number that there is.
    void Add(double count, std::string text) {
        const double at = scale_.Place(count), needs = room_.needs(text);
        if (!Inside(at)) return;
        if (!Among(found_.major, at, needs * (1 - rounding))) found_.major.push_back({at, std::move(text)});
    }
    void Add_Minor(double count) {
        const double at = scale_.Place(count);
        if (Inside(at) && !Among(found_.major, at, 1e-4 * (hi_ - lo_)) && found_.minor.size() < most_minor) found_.minor.push_back(at);
    }

    // Steps of counts: as many as have room at the upper end of the range, where they are closest.
    Step Find_Steps(double low, double high) {
        Step step = Step_Within((high - low) / 12).Next();
        constexpr int longest_search = 12;
        for (int tried = 0; tried < longest_search; ++tried) {
            const double top = std::floor(high / step.Value() + rounding) * step.Value(), below = top - step.Value();
            if (below < low) break;
            if (scale_.Place(top) - scale_.Place(below) >= room_.needs(Text_Of(top, step.Value()))) break;
            step = step.Next();
        }
        auto values = Multiples(low, high, step.Value(), most_ticks);
        std::reverse(values.begin(), values.end());
        for (const double value : values) Add(value, Text_Of(value, step.Value()));
        for (double divisor : {5.0, 2.0}) {
            const double fine = step.Value() / (divisor == 5 && step.mantissa == 2 ? 4 : divisor);
            if (scale_.Place(high) - scale_.Place(std::max(high - fine, low)) < room_.minor) continue;
            for (const double value : Multiples(low, high, fine, most_minor)) Add_Minor(value);
            break;
        }
        return step;
    }

    std::string Power_Text(int mantissa, int decade) const {
        const bool powers = room_.powers_from < 1e299 && high_ >= plain_counts;
        if (!powers) return Tick_Text(static_cast<float>(mantissa * std::pow(10.0, decade)), decade > 8 ? decade : 0);
        const std::string power = "10^" + std::to_string(decade);
        return mantissa == 1 ? power : std::to_string(mantissa) + "\xC2\xB7" + power;
    }

    void Find_Decades() {
        const int first = Decade_Of(std::max(low_, 1.0)), last = Decade_Of(high_);
        const double decade = std::log(10.0), needs = room_.needs(Power_Text(1, last));
        const int every = Numbered_Every(decade, needs);
        for (int k = first; k <= last; ++k)
            if (k % every == 0) Add(std::pow(10.0, k), Power_Text(1, k));
        if (every == 1 && std::log(2.0) >= room_.needs(Power_Text(2, last)))
            for (int k = first; k <= last; ++k)
                for (const int mantissa : {2, 5}) Add(mantissa * std::pow(10.0, k), Power_Text(mantissa, k));
        for (int k = first; k <= last; ++k) {
            if (every > 1) Add_Minor(std::pow(10.0, k));
            if (std::log(10.0 / 9.0) < 0.4 * room_.minor) continue;
            for (int mantissa = 2; mantissa <= 9; ++mantissa) Add_Minor(mantissa * std::pow(10.0, k));
        }
    }

    // Steps from the top, and between the lowest of them and zero, where roots lie far apart, 1, 2 and 5 times powers of ten.
    void Find_Roots() {
        if (high_ <= 0) return Mirror();
        Add(0, "0");
        const Step step = Find_Steps(std::max(low_, 0.0), high_);
        Add_Ladder(step, 1, high_);
        if (!(low_ < 0)) return;
        for (const double value : Multiples(low_, 0, step.Value(), most_ticks)) Add(value, Text_Of(value, step.Value()));
        Add_Ladder(step, -1, -low_);
    }

    // All of the range lies below zero.
    void Mirror() {
        found_ = Count_Ticks(-hi_, -lo_, scale_.kind, room_).Find();
        for (Axis_Tick& tick : found_.major) {
            tick.at = -tick.at;
            if (tick.text != "0") tick.text.insert(0, "-");
        }
        for (double& at : found_.minor) at = -at;
    }

    void Add_Ladder(const Step& step, double sign, double far) {
        constexpr int decades = 4;
        for (const int mantissa : {1, 5, 2})
            for (int k = step.decade; k > step.decade - decades; --k) {
                const double value = mantissa * std::pow(10.0, k);
                if (value < step.Value() && value <= far)
                    Add(sign * value, Text_Of(sign * value, std::pow(10.0, std::min(k, step.decade))));
            }
    }

    Count_Scale scale_;
    const Axis_Room& room_;
    double lo_, hi_, low_, high_;
    Fitted_Ticks found_;
};

}  // namespace

Fitted_Ticks Fit_Ticks(double lo, double hi, Axis_Scale scale, const Axis_Room& room) {
    if (lo > hi) std::swap(lo, hi);
    if (!std::isfinite(hi - lo) || !(hi > lo)) return {};
    return scale == Axis_Scale::even ? Even_Ticks(lo, hi, room) : Count_Ticks(lo, hi, scale, room).Find();
}

}  // namespace vntl
