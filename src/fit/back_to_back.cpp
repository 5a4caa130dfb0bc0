#include "fit/back_to_back.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

#include "fit/exponential_integral.hpp"

namespace vntl {

namespace {

constexpr double variance_of_fwhm2 = 0.18033688011112042;  // 1/(8 ln 2)
constexpr double two_by_root_pi = 2 * std::numbers::inv_sqrtpi;

// Points are taken in blocks that stay in the cache. A block has members of its own, so that its loops run on vectors.
constexpr std::size_t block_points = 256;
struct Block {
    std::array<double, block_points> delta;
    std::array<std::array<double, block_points>, 4> parts;
    std::array<float, block_points> value, by_delta, by_alpha, by_beta, by_variance, by_eta;
};

// e^x for least_exponent <= x <= 0, without a branch: 2^n e^r with |r| <= ln 2/2 and a Taylor series for e^r. Relative error 1e-14.
constexpr double least_exponent = -690;
inline double Exp(double x) {
    constexpr double ln2_high = 0x1.62e42feep-1, ln2_low = 0x1.a39ef35793c76p-33;
    constexpr double to_integer = 0x1.8p52;  // added to a number it leaves the nearest integer in the lower bits
    const double shifted = x * std::numbers::log2e + to_integer, n = shifted - to_integer;
    const double r = (x - n * ln2_high) - n * ln2_low;
    double sum = ((((1.0 / 39916800) * r + 1.0 / 3628800) * r + 1.0 / 362880) * r + 1.0 / 40320) * r + 1.0 / 5040;
    sum = (((sum * r + 1.0 / 720) * r + 1.0 / 120) * r + 1.0 / 24) * r + 1.0 / 6;
    sum = ((sum * r + 0.5) * r + 1) * r + 1;
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(sum) + (std::bit_cast<std::uint64_t>(shifted) << 52));
}

// e^(x^2) erfc(x) for x >= 0: 1/(1 + 2x) times a polynomial in (x - k)/(x + k), the form of M. M. Shepherd and J. G. Laframboise
// (Math. Comp. 36, 1981, 249-253), with k = 2.5 and coefficients of a Chebyshev expansion of our own. Relative error 3e-13.
inline double Scaled_Erfc(double x) {
    constexpr double k = 2.5;
    constexpr double c[] = {1.2648381843669514,     -0.12235676308615802,   -0.09902453959180446,   0.1576299192477598,
                            -0.1029670554287337,    0.032760889334893156,   0.0009318848626993435,  -0.00438204709880982,
                            0.0004919187849831778,  0.0006319906001701327,  -8.868346181702664e-05, -0.00011318930837425663,
                            6.7513725847172e-06,    2.2209270042309877e-05, 1.8796817821159145e-06, -3.8145594294846726e-06,
                            -8.959273835134402e-07, 3.891478609187613e-07,  1.388885742154607e-07};
    const double q = 1 - 2 * k / (x + k);
    double sum = c[18];
    sum = ((((((sum * q + c[17]) * q + c[16]) * q + c[15]) * q + c[14]) * q + c[13]) * q + c[12]) * q + c[11];
    sum = ((((((sum * q + c[10]) * q + c[9]) * q + c[8]) * q + c[7]) * q + c[6]) * q + c[5]) * q + c[4];
    sum = (((sum * q + c[3]) * q + c[2]) * q + c[1]) * q + c[0];
    return sum / (1 + 2 * x);
}

// The Gaussian form. As u = y^2 - D^2/(2 S), e^u erfc(y) is g times the scaled erfc of y with g = exp(-D^2/(2 S)), which cannot overflow;
// for y < 0 it is 2 e^u less that of |y|, and u < 0 there. At most one of y and z is negative. Each long chain of operations has a loop of
// its own: in one loop the processor would wait for its results.
void Draw_Gaussian(const Back_To_Back& shape, Block& block, std::size_t count) {
    constexpr double nothing = 1e-30;
    const double a = shape.alpha, b = shape.beta, variance = variance_of_fwhm2 * shape.fwhm * shape.fwhm;
    const double s = std::sqrt(2 * variance), per_s = 1 / s, n = a * b / (2 * (a + b));
    auto& [g, tail, of_y, of_z] = block.parts;
    for (std::size_t j = 0; j < count; ++j) {
        const double delta = block.delta[j], in_s = delta * per_s;
        const double u = a * (0.5 * a * variance + delta), v = b * (0.5 * b * variance - delta);
        g[j] = std::max(-in_s * in_s, least_exponent);
        tail[j] = std::clamp(std::min(u, v), least_exponent, 0.0);
    }
    for (std::size_t j = 0; j < count; ++j) g[j] = Exp(g[j]);
    for (std::size_t j = 0; j < count; ++j) tail[j] = 2 * Exp(tail[j]);
    for (std::size_t j = 0; j < count; ++j) of_y[j] = Scaled_Erfc(std::fabs(a * variance + block.delta[j]) * per_s);
    for (std::size_t j = 0; j < count; ++j) of_z[j] = Scaled_Erfc(std::fabs(b * variance - block.delta[j]) * per_s);
    auto &front = of_y, &back = of_z, &factor = tail;  // e^u erfc(y), e^v erfc(z), N
    for (std::size_t j = 0; j < count; ++j) {
        const double left = a * variance + block.delta[j] < 0, right = b * variance - block.delta[j] < 0;
        front[j] = left * tail[j] + (1 - 2 * left) * g[j] * of_y[j];
        back[j] = right * tail[j] + (1 - 2 * right) * g[j] * of_z[j];
        factor[j] = n * (front[j] + back[j]) > nothing ? n : 0.0;
    }
    for (std::size_t j = 0; j < count; ++j) {
        const double f = factor[j], delta = block.delta[j], omega = f * (front[j] + back[j]);
        const double slope = -two_by_root_pi * g[j];  // e^u erfc'(y), and e^v erfc'(z) as well
        block.value[j] = static_cast<float>(omega);
        block.by_delta[j] = static_cast<float>(f * (a * front[j] - b * back[j]));
        block.by_alpha[j] = static_cast<float>(f * (2 * omega / (a * a) + (a * variance + delta) * front[j] + 0.5 * s * slope));
        block.by_beta[j] = static_cast<float>(f * (2 * omega / (b * b) + (b * variance - delta) * back[j] + 0.5 * s * slope));
        block.by_variance[j] = static_cast<float>(0.5 * f * (a * a * front[j] + b * b * back[j] + slope * (a + b) * per_s));
    }
}

// Blends the Lorentzian form into what Draw_Gaussian left.
void Blend_Lorentzian(const Back_To_Back& shape, Block& block, std::size_t count) {
    const double a = shape.alpha, b = shape.beta, h = shape.fwhm, eta = shape.eta, n = a * b / (2 * (a + b));
    const std::span<const double> delta = std::span(block.delta).first(count);
    auto& [re_p, im_p, re_q, im_q] = block.parts;
    Scaled_Exponential_Integral_On_Line(a, 0.5 * a * h, delta, re_p, im_p);
    Scaled_Exponential_Integral_On_Line(-b, 0.5 * b * h, delta, re_q, im_q);
    const double scale = -2 * std::numbers::inv_pi * n, variance_by_h = 2 * variance_of_fwhm2 * h;
    const auto blend = [eta](float gaussian, double lorentzian) {
        return static_cast<float>((1 - eta) * static_cast<double>(gaussian) + eta * lorentzian);
    };
    for (std::size_t j = 0; j < count; ++j) {
        const double i_p = scale * im_p[j], i_q = scale * im_q[j], r_p = scale * re_p[j], r_q = scale * re_q[j];
        const double omega = i_p + i_q, d = block.delta[j];
        block.by_eta[j] = static_cast<float>(omega - static_cast<double>(block.value[j]));
        block.value[j] = blend(block.value[j], omega);
        block.by_delta[j] = blend(block.by_delta[j], a * i_p - b * i_q);
        block.by_alpha[j] = blend(block.by_alpha[j], 2 * n * omega / (a * a) + d * i_p + 0.5 * h * r_p);
        block.by_beta[j] = blend(block.by_beta[j], 2 * n * omega / (b * b) - d * i_q + 0.5 * h * r_q);
        block.by_variance[j] = blend(block.by_variance[j], 0.5 * (a * r_p + b * r_q) / variance_by_h);
    }
}

bool Has_Shape(const Back_To_Back& shape, double position) {
    const auto positive = [](double rate) { return rate > 0 && std::isfinite(rate); };
    return positive(shape.alpha) && positive(shape.beta) && shape.fwhm >= 0 && std::isfinite(shape.fwhm) && std::isfinite(position) &&
           (!shape.lorentzian || std::isfinite(shape.eta));
}

}  // namespace

void Draw_Shape(const Back_To_Back& shape, double position, std::span<const float> x, Shape_Curve& curve) {
    for (std::vector<float>* values : {&curve.value, &curve.by_delta, &curve.by_alpha, &curve.by_beta, &curve.by_variance, &curve.by_eta})
        values->assign(values == &curve.by_eta && !shape.lorentzian ? 0 : x.size(), std::numeric_limits<float>::quiet_NaN());
    if (!Has_Shape(shape, position)) return;

    constexpr double narrowest = 1e-6;
    Back_To_Back drawn = shape;
    drawn.fwhm = std::max(shape.fwhm, narrowest / std::max(shape.alpha, shape.beta));
    Block block;
    for (std::size_t begin = 0; begin < x.size(); begin += block_points) {
        const std::size_t count = std::min(block_points, x.size() - begin);
        for (std::size_t j = 0; j < count; ++j) block.delta[j] = static_cast<double>(x[begin + j]) - position;
        Draw_Gaussian(drawn, block, count);
        if (shape.lorentzian) Blend_Lorentzian(drawn, block, count);
        const auto take = [&](const auto& from, std::vector<float>& to) {
            std::copy_n(from.begin(), count, to.begin() + static_cast<std::ptrdiff_t>(begin));
        };
        take(block.value, curve.value);
        take(block.by_delta, curve.by_delta);
        take(block.by_alpha, curve.by_alpha);
        take(block.by_beta, curve.by_beta);
        take(block.by_variance, curve.by_variance);
        if (shape.lorentzian) take(block.by_eta, curve.by_eta);
    }
}

}  // namespace vntl
