#include "calc/x_conversion.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "base/extremes.hpp"

namespace vntl {
namespace {

// --- a sine without branches, so that loops over points run on vectors of numbers: 2.2 ns a point, std::sin 8.3 ---------------------
//
// The coefficients interpolate at Chebyshev nodes. Compared with 50 digits at 2001 places of the interval, the relative error of the
// sine is below 1e-13: single precision rounds at 6e-8.

constexpr double to_nearest = 6755399441055744.0;  // 1.5 * 2^52: adding it rounds to a whole number

inline double Nearest(double v) { return (v + to_nearest) - to_nearest; }

// c[k] + c[k + 1] z + ...
template <std::size_t k = 0, std::size_t n>
inline double Polynomial(const std::array<double, n>& c, double z) {
    if constexpr (k + 1 == n)
        return c[k];
    else
        return c[k] + z * Polynomial<k + 1>(c, z);
}

// sin(pi v)
inline double Sine_Of_Half_Turns(double v) {
    constexpr std::array c{3.141592653589635,   -5.167712779987959,    2.550164035906745,    -0.5992644339357286,
                           0.08214479467064854, -0.007364005472115722, 0.0004474920849077101};
    const double turns = Nearest(v), r = v - turns;  // -1/2 to 1/2
    const double odd = 0.5 * turns - Nearest(0.5 * turns);
    return (1 - 8 * odd * odd) * r * Polynomial(c, r * r);
}

// asin(a/b) in radians, a right angle of its sign where |a| > |b|.
inline double Arc_Sine(double a, double b) { return std::asin(std::clamp(a / b, -1.0, 1.0)); }

// --- the laws ------------------------------------------------------------------------------------------------------------------

// a = dtt2/dtt1^2, with which r = dtt1 d solves a r^2 + r = t.
double Curvature(const X_Constants& c) {
    const double dtt1 = c[0], dtt2 = c[1];
    return dtt2 / dtt1 / dtt1;
}

// Whether dtt2 shows at the time t: nearer to 0 it changes nothing that single precision holds, and r is t.
bool Is_Curved_At(double t, const X_Constants& c) {
    constexpr double least = 3e-8;  // of a t
    return !(std::fabs(Curvature(c) * t) < least);
}

// Calls `use` with the law of a step, a function of x, whose constants are worked out beforehand. Of the two roots r of a time it is the
// one that goes to t with a, in the form that cancels nothing, up to the time at which it ends.
template <class Use>
auto With_Law(X_Step step, const X_Constants& c, Use use) {
    constexpr double two_pi = 2 * std::numbers::pi;
    const double c1 = c[0], c2 = c[1];
    switch (step) {
        case X_Step::two_theta_to_d:
            return use([half = 0.5 * c1](double x) { return half / Sine_Of_Half_Turns(x * (1.0 / 360)); });
        case X_Step::d_to_two_theta:
            return use([half = 0.5 * c1](double x) { return 360 / std::numbers::pi * Arc_Sine(half, x); });
        case X_Step::d_to_tof:
            return use([c1, c2](double x) { return x * (c1 + c2 * x); });
        case X_Step::tof_to_d: {
            const double a = Curvature(c), latest = a < 0 ? -0.25 / a : std::numeric_limits<double>::infinity();
            return use([c1, a, latest](double t) {
                const double held = t > latest ? latest : t;
                return 2 * held / (1 + std::sqrt(std::fabs(1 + 4 * a * held))) / c1;
            });
        }
        case X_Step::d_q:
            return use([](double x) { return two_pi / x; });
        case X_Step::d_s:
            return use([](double x) { return 1 / x; });
        case X_Step::q_to_s:
            return use([](double x) { return x / two_pi; });
        default:
            return use([](double x) { return x * two_pi; });
    }
}

// The root for times at or below 0, which is far from 0.
double Other_Root(double t, const X_Constants& c) {
    const double a = Curvature(c), square = 1 + 4 * a * t;
    return -(1 + std::sqrt(square > 0 ? square : 0)) / (2 * a) / static_cast<double>(c[0]);
}

// An angle, or a time that dtt2 bends, has a spacing of its own only above 0.
bool Has_Spacing(X_Step step, double x, const X_Constants& c) {
    return x > 0 || !(step == X_Step::two_theta_to_d || (step == X_Step::tof_to_d && Is_Curved_At(x, c)));
}

template <class Values>
auto Points(Values& x, std::int32_t npts) {
    return std::span{x.data(), std::min(x.size(), static_cast<std::size_t>(std::max(npts, 0)))};
}

void Convert_Each(X_Step step, const X_Constants& constants, std::span<float> x) {
    With_Law(step, constants, [x](auto law) {
        for (float& value : x) value = static_cast<float>(law(static_cast<double>(value)));
    });
}

// A point without a spacing of its own takes that of the point behind it.
void Convert_With_Neighbours(X_Step step, const X_Constants& constants, std::span<float> x) {
    if (step != X_Step::two_theta_to_d && step != X_Step::tof_to_d) return Convert_Each(step, constants, x);
    std::vector<std::size_t> others;
    for (std::size_t i = x.size(); i > 0; --i)
        if (!Has_Spacing(step, x[i - 1], constants) && i < x.size()) others.push_back(i - 1);
    Convert_Each(step, constants, x);
    for (const std::size_t i : others) x[i] = x[i + 1];
}

void Set_Limits(Diffraction_Pattern_Type& p) {
    const Extremes x = Finite_Extremes(Points(p.x, p.npts)), y = Finite_Extremes(Points(p.y, p.npts));
    p.xmin = x.low;
    p.xmax = x.high;
    p.ymin = y.low;
    p.ymax = y.high;
    if (p.npts > 0 && !y.Found()) p.ymin = p.ymax = 0;  // as after any other change
}

// The mean step of the new scale. Only Q and s keep an even grid even.
void Set_Step(std::span<const X_Step> steps, Diffraction_Pattern_Type& p) {
    const auto keeps_even = [](X_Step step) { return step == X_Step::q_to_s || step == X_Step::s_to_q; };
    p.constant_step = p.constant_step && std::all_of(steps.begin(), steps.end(), keeps_even);
    if (p.npts > 1) p.step = (p.xmax - p.xmin) / static_cast<float>(p.npts - 1);
}

// --- what a conversion would lead to -------------------------------------------------------------------------------------------

// x of a pattern where the order of its points shows: the ends, and between them the place at which a law turns back.
using Samples = std::vector<float>;

// Only points with a spacing of their own count; nothing when all points would get one value.
Samples Ends(X_Step step, const X_Constants& c, std::span<const float> x) {
    const auto first = std::find_if(x.begin(), x.end(), [&](float value) { return Has_Spacing(step, value, c); });
    if (first == x.end() || (x.end() - first == 1 && x.size() > 1)) return {};
    return {*first, x.back()};
}

void Add_Turn(X_Step step, const X_Constants& c, Samples& x) {
    float turn = std::numeric_limits<float>::quiet_NaN();
    if (step == X_Step::two_theta_to_d) turn = 180;
    if (step == X_Step::d_to_tof) turn = -c[0] / (2 * c[1]);
    if (x.front() < turn && turn < x.back()) x.insert(std::upper_bound(x.begin(), x.end(), turn), turn);
}

// Takes the samples through a step; why that leads to no pattern, empty when it does.
std::string_view Refusal(X_Step step, const X_Constants& c, Samples& x) {
    const bool apart = x.front() < x.back(), holds_zero = x.front() <= 0 && x.back() >= 0;
    if ((step == X_Step::d_q || step == X_Step::d_s) && holds_zero) return "x = 0 lies in its range, and has no reciprocal";
    if (step == X_Step::two_theta_to_d && x.back() > 360) return "its angles go beyond a full turn";
    Add_Turn(step, c, x);
    for (float& value : x) value = Convert_X(step, value, c);
    if (Reverses(step)) std::reverse(x.begin(), x.end());
    if (!std::all_of(x.begin(), x.end(), [](float value) { return std::isfinite(value); })) return "its constants lead to no finite x";
    if (!std::is_sorted(x.begin(), x.end()) || (apart && !(x.front() < x.back()))) return "its points would lose their order";
    return {};
}

}  // namespace

bool Reverses(X_Step step) {
    return step == X_Step::two_theta_to_d || step == X_Step::d_to_two_theta || step == X_Step::d_q || step == X_Step::d_s;
}

bool Turns_Round(std::span<const X_Step> steps) { return std::ranges::count_if(steps, Reverses) % 2 == 1; }

double Convert_Value(X_Step step, double x, const X_Constants& constants) {
    if (step == X_Step::tof_to_d && !Has_Spacing(step, x, constants)) return Other_Root(x, constants);
    return With_Law(step, constants, [x](auto law) { return law(x); });
}

float Convert_X(X_Step step, float x, const X_Constants& constants) {
    return static_cast<float>(Convert_Value(step, static_cast<double>(x), constants));
}

void Convert_Points(std::span<const X_Step> steps, Diffraction_Pattern_Type& pattern) {
    const std::span<float> x = Points(pattern.x, pattern.npts);
    for (const X_Step step : steps) Convert_With_Neighbours(step, pattern.conv, x);
    if (Turns_Round(steps)) Turn_Round(pattern);
    Set_Limits(pattern);
    Set_Step(steps, pattern);
}

void Convert_Points(X_Step step, Diffraction_Pattern_Type& pattern) { Convert_Points(std::span(&step, 1), pattern); }

Status Check_Convertible(std::span<const X_Step> steps, const Diffraction_Pattern_Type& pattern, const std::string& file_name) {
    const std::span<const float> points = Points(pattern.x, pattern.npts);
    if (steps.empty() || points.empty()) return Status::Done();
    const auto fail = [&file_name](std::string_view reason) {
        return Status::Fail(file_name + " cannot be converted:\n" + std::string(reason));
    };
    Samples x = Ends(steps.front(), pattern.conv, points);
    if (x.empty()) return fail("fewer than two of its points lie above 0");
    for (const X_Step step : steps)
        if (const std::string_view reason = Refusal(step, pattern.conv, x); !reason.empty()) return fail(reason);
    return Status::Done();
}

}  // namespace vntl
