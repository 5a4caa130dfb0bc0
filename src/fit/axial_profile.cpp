#include "fit/axial_profile.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>

#include "fit/gauss_legendre.hpp"

namespace vntl {

namespace {

constexpr double degree = std::numbers::pi / 180;
constexpr float gauss_height = 0.93943727f, lorentz_height = 0.63661975f, widths_of_gauss = 6;

// Value and derivatives by 2theta0 (radians), s and h.
struct Varied {
    double value = 0;
    std::array<double, 3> by{};
};
enum By { by_position, by_s, by_h };

Varied operator*(double factor, Varied v) {
    v.value *= factor;
    for (double& d : v.by) d *= factor;
    return v;
}
Varied operator+(Varied a, const Varied& b) {
    a.value += b.value;
    for (std::size_t i = 0; i < a.by.size(); ++i) a.by[i] += b.by[i];
    return a;
}
Varied operator*(const Varied& a, const Varied& b) {
    Varied product{a.value * b.value, {}};
    for (std::size_t i = 0; i < product.by.size(); ++i) product.by[i] = a.by[i] * b.value + a.value * b.by[i];
    return product;
}
// A function of slope `slope` that has the value `value` there.
Varied Chain(double value, double slope, const Varied& inner) {
    Varied result = slope * inner;
    result.value = value;
    return result;
}

// phi where z = tan(2theta0) sin(phi); the end of the quarter where z does not come so far.
Varied Phi_Of(const Varied& z, const Varied& tangent) {
    const Varied sine = z * Chain(1 / tangent.value, -1 / (tangent.value * tangent.value), tangent);
    if (sine.value >= 1) return {std::numbers::pi / 2, {}};
    return Chain(std::asin(sine.value), 1 / std::sqrt(1 - sine.value * sine.value), sine);
}

// A ray before its share is known: its angle, and its weight.
struct Weighted_Ray {
    Varied delta, weight;
};

// Where the rays between two phi arrive. `rays(z)` is how many there are.
template <class Rays>
void Add_Rays(double position, const Varied& tangent, const Varied& from, const Varied& to, int points, Rays rays,
              std::vector<Weighted_Ray>& all) {
    const Varied span = to + -1.0 * from;
    if (!(span.value > 0)) return;
    const double c0 = std::cos(position), s0 = std::sin(position);
    const Gauss_Rule& rule = Gauss_Legendre(points);
    for (std::size_t i = 0; i < rule.node.size(); ++i) {
        const Varied phi = from + rule.node[i] * span;
        const double sine = std::sin(phi.value), cosine = std::cos(phi.value);
        const Varied z = tangent * Chain(sine, cosine, phi);
        const double q2 = 1 + z.value * z.value, q = std::sqrt(q2);
        // cos(delta) = c0 q, and sin(delta) = s0 cos(phi).
        Varied delta{std::acos(std::clamp(c0 * q, -1.0, 1.0)), {}};
        for (std::size_t k = 0; k < delta.by.size(); ++k)
            delta.by[k] = ((k == by_position ? s0 * q : 0) - c0 * z.value * z.by[k] / q) / (s0 * cosine);
        const Varied density = Chain(1 / q2, -2 * z.value / (q2 * q2), z);
        all.push_back({delta, rule.weight[i] * (span * (rays(z) * density))});
    }
}

// So many points that they stand closer than a fraction of the width, where they are furthest apart.
int Points_For(double range, double width) {
    constexpr double least = 3, a_width = 9, most = 2048;
    return static_cast<int>(std::min(least + a_width * range / width, most));
}

float Exp2(float t) {
    // t is not above 0. 2^t = 2^n 2^f with |f| <= 1/2; the series of the latter to its seventh power.
    const float at = std::max(t, -125.0f);
    const auto n = static_cast<std::int32_t>(at - 0.5f);
    const float f = 0.69314718f * (at - static_cast<float>(n));
    const float series =
        1 + f * (1 + f * (0.5f + f * (0.16666667f + f * (0.041666667f + f * (0.0083333333f + f * (0.0013888889f + f * 0.00019841270f))))));
    return series * std::bit_cast<float>((n + 127) << 23);
}

// What a loop over points adds up.
struct Sums {
    float *value, *by_position, *by_width, *by_eta, *by_s, *by_h;
};

// Constants of a peak in the loops.
struct Shape {
    float h, inverse, eta;
};

template <bool with_divergence>
void Add(const Shape& shape, const Axial_Ray& ray, float lorentz, float lorentz_by_d, float lorentz_by_h, float gauss, float gauss_by_d,
         float gauss_by_h, std::size_t j, const Sums& sums) {
    const float eta = shape.eta, rest = 1 - eta;
    const float value = eta * lorentz + rest * gauss, by_d = eta * lorentz_by_d + rest * gauss_by_d;
    sums.value[j] += ray.share * value;
    sums.by_position[j] += ray.share_by_position * value + ray.share * ray.offset_by_position * by_d;
    sums.by_width[j] += ray.share * (eta * lorentz_by_h + rest * gauss_by_h);
    sums.by_eta[j] += ray.share * (lorentz - gauss);
    if constexpr (with_divergence) {
        sums.by_s[j] += ray.share_by_s * value + ray.share * ray.offset_by_s * by_d;
        sums.by_h[j] += ray.share_by_h * value + ray.share * ray.offset_by_h * by_d;
    }
}

// The points from `begin` to `end`, within six widths of the ray or not.
template <bool with_divergence, bool with_gauss>
void Add_Points(const Shape& shape, const Axial_Ray& ray, std::span<const float> distance, std::size_t begin, std::size_t end,
                const Sums& sums) {
    const float h2 = shape.h * shape.h;
    for (std::size_t j = begin; j < end; ++j) {
        const float d = distance[j] - ray.offset;
        const float bottom = 1 / (h2 + 4 * d * d);
        const float lorentz = lorentz_height * shape.h * bottom;
        const float lorentz_by_d = 8 * d * bottom * lorentz;  // by the place of the ray, which is against d
        const float lorentz_by_h = lorentz_height * (4 * d * d - h2) * bottom * bottom;
        float gauss = 0, gauss_by_d = 0, gauss_by_h = 0;
        if constexpr (with_gauss) {
            const float r = d * shape.inverse, r2 = r * r;
            gauss = gauss_height * shape.inverse * Exp2(-4 * r2);
            gauss_by_d = 5.545178f * r * shape.inverse * gauss;
            gauss_by_h = (5.545178f * r2 - 1) * shape.inverse * gauss;
        }
        Add<with_divergence>(shape, ray, lorentz, lorentz_by_d, lorentz_by_h, gauss, gauss_by_d, gauss_by_h, j, sums);
    }
}

template <bool with_divergence>
void Draw(const Axial_Peak& peak, std::span<const float> distance, Profile_Curve& curve) {
    const Shape shape{peak.fwhm, 1 / peak.fwhm, peak.eta};
    const Sums sums{curve.value.data(),  curve.by_position.data(), curve.by_width.data(),
                    curve.by_eta.data(), curve.by_s.data(),        curve.by_h.data()};
    const float reach = widths_of_gauss * peak.fwhm;
    for (const Axial_Ray& ray : Axial_Rays(peak)) {
        const auto first = std::ranges::lower_bound(distance, ray.offset - reach);
        const auto last = std::upper_bound(first, distance.end(), ray.offset + reach);
        const auto begin = static_cast<std::size_t>(first - distance.begin()), end = static_cast<std::size_t>(last - distance.begin());
        Add_Points<with_divergence, false>(shape, ray, distance, 0, begin, sums);
        Add_Points<with_divergence, true>(shape, ray, distance, begin, end, sums);
        Add_Points<with_divergence, false>(shape, ray, distance, end, distance.size(), sums);
    }
}

}  // namespace

std::vector<Axial_Ray> Axial_Rays(const Axial_Peak& peak) {
    constexpr double least_sine = 1e-6;
    const double position = peak.position * degree, s0 = std::sin(position), c0 = std::cos(position);
    if (!peak.divergent || !(s0 > least_sine) || std::fabs(c0) < least_sine) return {Axial_Ray{}};
    const Varied s{peak.divergence.s, {0, 1, 0}}, h{peak.divergence.h, {0, 0, 1}}, a = s + h;
    const double side = peak.divergence.s > peak.divergence.h ? 1 : peak.divergence.s < peak.divergence.h ? -1 : 0;
    const Varied b = side * (s + -1.0 * h), both = a + -1.0 * b;  // |s - h|, and 2 min(s, h)
    const Varied tangent{s0 / std::fabs(c0), {std::copysign(1 / (c0 * c0), c0), 0, 0}};
    const Varied start{}, bend = Phi_Of(b, tangent), end = Phi_Of(a, tangent);

    const auto angle_at = [&](const Varied& phi) {
        const double z = tangent.value * std::sin(phi.value);
        return std::acos(std::clamp(c0 * std::sqrt(1 + z * z), -1.0, 1.0)) / degree;
    };
    const double at_bend = std::fabs(angle_at(bend) - peak.position), at_end = std::fabs(angle_at(end) - peak.position);
    const double width = peak.fwhm;
    std::vector<Weighted_Ray> all;
    Add_Rays(
        position, tangent, start, bend, Points_For(at_bend, width), [&](const Varied&) { return both; }, all);
    Add_Rays(
        position, tangent, bend, end, Points_For(at_end, width), [&](const Varied& z) { return a + -1.0 * z; }, all);

    Varied total;
    for (const Weighted_Ray& ray : all) total = total + ray.weight;
    if (!(total.value > 0)) return {Axial_Ray{}};
    const Varied inverse = Chain(1 / total.value, -1 / (total.value * total.value), total);
    std::vector<Axial_Ray> rays;
    for (const Weighted_Ray& ray : all) {
        const Varied share = ray.weight * inverse;
        const auto single = [](double value) { return static_cast<float>(value); };
        rays.push_back({.offset = single((ray.delta.value - position) / degree),
                        .share = single(share.value),
                        .offset_by_position = single(ray.delta.by[by_position]),
                        .share_by_position = single(share.by[by_position] * degree),
                        .offset_by_s = single(ray.delta.by[by_s] / degree),
                        .share_by_s = single(share.by[by_s]),
                        .offset_by_h = single(ray.delta.by[by_h] / degree),
                        .share_by_h = single(share.by[by_h])});
    }
    return rays;
}

void Draw_Profile(const Axial_Peak& peak, bool with_divergence, std::span<const float> x, Profile_Curve& curve) {
    std::vector<float> distance(x.size());
    for (std::size_t j = 0; j < x.size(); ++j) distance[j] = x[j] - peak.position;
    for (std::vector<float>* values : {&curve.value, &curve.by_position, &curve.by_width, &curve.by_eta}) values->assign(x.size(), 0);
    for (std::vector<float>* values : {&curve.by_s, &curve.by_h}) values->assign(with_divergence ? x.size() : 0, 0);
    with_divergence ? Draw<true>(peak, distance, curve) : Draw<false>(peak, distance, curve);
}

}  // namespace vntl
