// Ticks of an axis: a step of 1, 2, 5 or 10 tenths of the decade of the range, in single precision.
//
//   20 .. 80     decade 1, 6.0 of it, step 5      20 25 30 ... 80
//   0.5 .. 0.9   decade -1, 4.0 of it, step 0.05  .50 .55 .60 ... .90
#include "drawing/axis.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vntl {
namespace {

constexpr std::array<int, 10> number_steps = {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};

struct Decade {
    float mantissa;
    int exponent;
};

Decade Decade_Of(float range) {
    Decade d{std::fabs(range), 0};
    while (d.mantissa >= 10 && d.exponent < 39) d = {d.mantissa / 10, d.exponent + 1};
    while (d.mantissa < 1 && d.exponent > -46) d = {d.mantissa * 10, d.exponent - 1};
    return d;
}

float Multiplier(float mantissa, bool third) {
    if (mantissa < 1.3f && !third) return 1;
    if (mantissa < 2.6f) return 2;
    return mantissa < 6.5f ? 5 : 10;
}

float First_Tick(float lo, float step, float eps) {
    const float r = std::fmod(std::fabs(lo), step);
    if (r < eps || step - r < eps) return lo;
    return lo >= 0 ? lo - r + step : lo + r;
}

// Number of ticks, limited; a count that a float cannot hold is as good as the limit.
std::size_t Tick_Count(float hi, float first, float step, float eps) {
    const float quotient = (hi - first + eps) / step;
    if (!(quotient > -1)) return 0;
    if (quotient >= static_cast<float>(max_axis_ticks)) return max_axis_ticks;
    int count = static_cast<int>(quotient);
    if (step <= (hi + eps - first) - static_cast<float>(count - 1) * step) ++count;
    return static_cast<std::size_t>(std::clamp(count, 0, static_cast<int>(max_axis_ticks)));
}

std::string Format(float value, std::chars_format form, int decimals) {
    std::array<char, 80> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), static_cast<double>(value), form, decimals).ptr;
    return std::string(text.data(), end);
}

// "0.50" is written ".50", "-0.5" "-.5", and a final ".0" goes.
std::string Tidy(std::string text) {
    if (text.starts_with("0.") && text.find_first_not_of("0.") != std::string::npos) text.erase(0, 1);
    if (text.starts_with("-0.")) text.erase(1, 1);
    if (text.ends_with(".0")) text.resize(text.size() - 2);
    return text;
}

// As many decimals as tell one tick from the next: ticks are whole multiples of a tenth of the decade of the range.
std::string Scientific(float value, int exponent) {
    const int decade = static_cast<int>(std::floor(std::log10(std::fabs(static_cast<double>(value)))));
    std::string text = Format(value, std::chars_format::scientific, std::clamp(decade - (exponent - 1), 1, 8));
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

}  // namespace

Axis_Ticks Ticks_Of_Axis(float lo, float hi, bool third) {
    if (lo > hi) std::swap(lo, hi);  // a reversed axis has the ticks of its range
    const float range = hi - lo;
    if (!std::isfinite(range) || !(range > 0)) return {};
    const Decade decade = Decade_Of(range);
    Axis_Ticks ticks;
    ticks.exponent = decade.exponent;
    ticks.step = static_cast<float>(static_cast<double>(Multiplier(decade.mantissa, third)) * std::pow(10.0, decade.exponent - 1));
    const float eps = ticks.step / 100000;
    const bool advances = ticks.step > 0 && lo + ticks.step > lo && hi - ticks.step < hi;
    if (!advances) return ticks;
    const float first = First_Tick(lo, ticks.step, eps);
    const std::size_t count = Tick_Count(hi, first, ticks.step, eps);
    for (std::size_t j = 0; j < count; ++j) ticks.values.push_back(first + static_cast<float>(j) * ticks.step);
    return ticks;
}

int Numbered_Every(double spacing, double needed) {
    for (const int step : number_steps)
        if (step * spacing >= needed) return step;
    return number_steps.back();
}

bool Has_Number(float value, float step, int every) { return every == 1 || std::lround(static_cast<double>(value) / step) % every == 0; }

std::string Tick_Text(float value, int exponent, int decimals) {
    if (!std::isfinite(value)) return {};
    if (decimals >= 0) {
        const std::string text = Format(value, std::chars_format::fixed, decimals);
        return text.find_first_not_of("-0.") == std::string::npos ? Format(0, std::chars_format::fixed, decimals) : text;
    }
    const double smallest_step = std::pow(10.0, exponent - 1);
    if (std::fabs(static_cast<double>(value)) < smallest_step / 1000) return "0";  // zero but for the rounding of the sum
    if (exponent < -4 || exponent > 5) return Scientific(value, exponent);
    return Tidy(Format(value, std::chars_format::fixed, exponent <= 0 ? 1 - exponent : 0));
}

}  // namespace vntl
