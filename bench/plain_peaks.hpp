// Peak shapes and models of a fit written plainly, in double precision, one point after the other: what the program's own models are
// measured against. What depends on the parameters alone is computed once a set of parameters.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <map>
#include <numbers>
#include <span>
#include <utility>
#include <vector>

#include "fit/peak_model.hpp"

namespace vntl::plain {

constexpr double degree = std::numbers::pi / 180;

// A peak shape of area 1 and its derivatives. Constant wavelength: by position, width, eta, S_L, D_L. Time of flight: by the distance
// from the peak, width, eta, alpha, beta.
struct Shape {
    double value = 0, by_position = 0, by_width = 0, by_eta = 0, by_first = 0, by_second = 0;
};

inline Shape Pseudo_Voigt(double d, double width, double eta) {
    const double r = d / width, h2 = width * width, bottom = h2 + 4 * d * d, q = 1.6651093 * r;
    const double gauss = std::fabs(r) <= 6 ? 0.93943727 / width * std::exp(-q * q) : 0;
    const double lorentz = 0.63661975 * width / bottom;
    return {.value = eta * lorentz + (1 - eta) * gauss,
            .by_position = eta * 5.092958 * width * d / (bottom * bottom) + (1 - eta) * 5.545178 * d * gauss / h2,
            .by_width = eta * 0.63661975 * (4 * d * d - h2) / (bottom * bottom) + (1 - eta) * (2 * q * q - 1) * gauss / width,
            .by_eta = lorentz - gauss};
}

inline double Pseudo_Voigt_Value(double d, double width, double eta) {
    const double r = d / width, q = 1.6651093 * r;
    const double gauss = std::fabs(r) <= 6 ? 0.93943727 / width * std::exp(-q * q) : 0;
    return eta * 0.63661975 * width / (width * width + 4 * d * d) + (1 - eta) * gauss;
}

struct Gauss_Legendre {
    std::vector<double> node, weight;  // of the positive half
};

// The n-point rule for an even n: roots of the Legendre polynomial by Newton's method.
inline Gauss_Legendre Gauss_Rule(int n) {
    Gauss_Legendre rule;
    for (int i = 0; i < n / 2; ++i) {
        double u = std::cos(std::numbers::pi * (i + 0.75) / (n + 0.5)), slope = 1;
        for (int step = 0; step < 20; ++step) {
            double last = 1, p = u;
            for (int k = 2; k <= n; ++k) last = std::exchange(p, ((2 * k - 1) * u * p - (k - 1) * last) / k);
            slope = n * (u * p - last) / (u * u - 1);
            u -= p / slope;
        }
        rule.node.push_back(u);
        rule.weight.push_back(2 / ((1 - u * u) * slope * slope));
    }
    return rule;
}

// Axial divergence after Finger, Cox and Jephcoat (J. Appl. Cryst. 27, 1994, 892-900): s and h are sample and detector half heights over
// the distance between them.
struct Axial {
    double s = 0, h = 0;
    bool one = false;  // S_L describes it alone: s and h are half of it each

    double a() const { return s + h; }
    double b() const { return s - h; }
};

// What depends on the peak's position alone. Angles in degrees.
struct Axial_Limits {
    double lowest = 0, inflection = 0;
    const Gauss_Legendre* rule = nullptr;
};

// A node of the sum: where the symmetric peak stands there, its weight, and the derivatives of that by s and h.
struct Axial_Node {
    double angle, weight, by_s, by_h;
};

class Axial_Sum {
public:
    static Axial_Limits Limits(const Axial& axial, double centre) {
        const double c0 = std::cos(centre * degree), a = axial.a(), b = axial.b();
        const double c1 = std::sqrt(b * b + 1) * c0, c2 = std::sqrt(a * a + 1) * c0;
        const bool no_inflection =
            std::fabs(c1) > 1 || std::fabs(c1) <= std::fabs(c0) || axial.s <= 1e-6 || axial.h <= 1e-6 || std::fabs(b) <= 0.0002;
        Axial_Limits limits;
        limits.inflection = no_inflection ? centre : std::acos(c1) / degree;
        limits.lowest = std::fabs(c2) > 1 ? (c2 <= 0 ? 180 : 0) : std::acos(c2) / degree;
        const auto& rules = Rules();
        const auto rule = rules.lower_bound(static_cast<int>(std::fabs(centre - limits.lowest) * 1000));
        limits.rule = rule != rules.end() ? &rule->second : &rules.rbegin()->second;
        return limits;
    }

    // `side` is 1 or -1. Angles above 90 degrees mirror those below.
    static Axial_Node Node(const Axial& axial, const Axial_Limits& limits, double centre, std::size_t i, int side) {
        const double w = limits.rule->weight[i], c0 = std::cos(centre * degree);
        const double angle = (centre + limits.lowest) / 2 + side * limits.rule->node[i] * (centre - limits.lowest) / 2;
        const double c = std::max(std::fabs(std::cos(angle * degree)), 1e-15), under = c * c - c0 * c0;
        const double g = under > 1e-15 ? std::fabs(c0) / std::sqrt(under) : 0;
        const bool outer = std::fabs(angle - limits.lowest) <= std::fabs(limits.inflection - limits.lowest);
        const double weight = outer ? std::fabs((axial.a() * g - 1) / c) : 2 * std::min(axial.s, axial.h) * g / c;
        Axial_Node node{angle, w * weight, w * g / c, w * g / c};
        if (c > std::fabs(std::cos(limits.inflection * degree))) return node;
        (axial.h <= axial.s ? node.by_h : node.by_s) *= 2;
        (axial.h <= axial.s ? node.by_s : node.by_h) = 0;
        return node;
    }

private:
    // By their number of nodes.
    static const std::map<int, Gauss_Legendre>& Rules() {
        static const auto rules = [] {
            std::map<int, Gauss_Legendre> made;
            for (const int n : {6, 10, 20, 40, 60, 80, 100, 150, 200, 300, 400, 600, 800, 1000}) made[n] = Gauss_Rule(n);
            return made;
        }();
        return rules;
    }
};

// A model at one observation. dpv holds a derivative a parameter, or nothing where they are not wanted.
class Model {
public:
    virtual ~Model() = default;
    virtual void Prepare(std::span<const double> pv) = 0;
    virtual double Value(double x, std::span<double> dpv) const = 0;

protected:
    Model(const Fit_Constants& constants, Parameter_Layout layout) : constants_(constants), layout_(layout) {}

    double Background(std::span<const double> pv, double x, std::span<double> dpv) const {
        const auto& nodes = constants_.node_x;
        std::size_t i = 0;
        for (std::size_t k = 0; k + 1 < nodes.size(); ++k)
            if (x >= nodes[k] && x <= nodes[k + 1]) {
                i = k;
                break;
            }
        const double t = (x - nodes[i]) / (nodes[i + 1] - nodes[i]);
        const auto first = static_cast<std::size_t>(layout_.Node(static_cast<int>(i)));
        if (!dpv.empty()) {
            dpv[first] = 1 - t;
            dpv[first + 1] = t;
        }
        return pv[first] + t * (pv[first + 1] - pv[first]);
    }

    Fit_Constants constants_;
    Parameter_Layout layout_;
};

class Constant_Wavelength : public Model {
public:
    // With `keep_nodes` the nodes of the axial sum are computed once a set of parameters and peak, not once a point.
    Constant_Wavelength(const Fit_Constants& constants, Parameter_Layout layout, bool keep_nodes)
        : Model(constants, layout), keep_nodes_(keep_nodes) {}

    void Prepare(std::span<const double> pv) override {
        pv_ = pv;
        divergent_ = pv[1] + pv[2] >= 1e-5;
        axial_.one = pv[2] < 0.0002;
        axial_.s = axial_.one ? (pv[1] - pv[2]) / 2 : pv[1];
        axial_.h = axial_.one ? (pv[1] + pv[2]) / 2 : pv[2];
        lines_.clear();
        for (int peak = 0; peak < layout_.peaks; ++peak) {
            const auto at = static_cast<std::size_t>(layout_.Peak(peak));
            const double sine = std::sin(pv[at] / 2 * degree), first = pv[at + 1] / (1 + pv[0]);
            lines_.push_back(Line_At(pv[at], first, at, 1));
            const double sine2 = sine * constants_.lambda_ratio;
            if (!constants_.two_wavelengths || sine2 >= 1) continue;
            lines_.push_back(Line_At(2 * std::asin(sine2) / degree, first * pv[0], at,
                                     constants_.lambda_ratio * std::cos(pv[at] / 2 * degree) / std::sqrt(1 - sine2 * sine2)));
            lines_.back().second = true;
        }
    }

    double Value(double x, std::span<double> dpv) const override {
        double y = Background(pv_, x, dpv), all = 0, second = 0;
        for (const Line& line : lines_) {
            const double d = x - line.centre;
            if (std::fabs(2 * d / line.width) >= 80) continue;
            const Shape shape = Shape_Of(line, x, !dpv.empty());
            const double share = line.intensity * shape.value;
            all += share;
            if (line.second) second += share;
            if (!dpv.empty()) Add_Derivatives(line, shape, dpv);
        }
        if (!dpv.empty() && constants_.two_wavelengths) dpv[0] = second / pv_[0] - all / (1 + pv_[0]);
        return y + all;
    }

private:
    struct Line {
        double centre, intensity, width, eta;
        std::array<double, 4> width_by;  // U, V, W, Z
        std::size_t at;                  // the peak's first parameter
        double centre_by_position;
        bool second, symmetric;
        Axial_Limits limits;
        std::vector<Axial_Node> nodes;
    };

    Line Line_At(double centre, double intensity, std::size_t at, double centre_by_position) const {
        const double theta = centre / 2 * degree, tangent = std::tan(theta), cosine = std::cos(theta);
        const double gauss = std::sqrt((pv_[3] * tangent + pv_[4]) * tangent + pv_[5]);
        Line line{};
        line.centre = centre;
        line.intensity = intensity;
        line.width = gauss + pv_[6] / cosine + pv_[at + 2];
        line.eta = std::max(pv_[7] + pv_[8] * centre + pv_[at + 3], 1e-6);
        if (gauss > 0.0001) line.width_by = {tangent * tangent / (2 * gauss), tangent / (2 * gauss), 1 / (2 * gauss), 0};
        if (pv_[6] > 1e-6) line.width_by[3] = 1 / cosine;
        line.at = at;
        line.centre_by_position = centre_by_position;
        line.symmetric = !divergent_ || std::fabs(centre - 90) < 0.4;
        if (line.symmetric) return line;
        line.limits = Axial_Sum::Limits(axial_, centre);
        for (std::size_t i = 0; keep_nodes_ && i < line.limits.rule->node.size(); ++i)
            for (const int side : {1, -1}) line.nodes.push_back(Axial_Sum::Node(axial_, line.limits, centre, i, side));
        return line;
    }

    Shape Shape_Of(const Line& line, double x, bool derivatives) const {
        if (!line.symmetric) return Axial_Shape(line, x, derivatives);
        if (derivatives) return Pseudo_Voigt(x - line.centre, line.width, line.eta);
        return {.value = Pseudo_Voigt_Value(x - line.centre, line.width, line.eta)};
    }

    Shape Axial_Shape(const Line& line, double x, bool derivatives) const {
        Shape sum;
        double weights = 0, by_s = 0, by_h = 0, weights_by_s = 0, weights_by_h = 0;
        const auto add = [&](const Axial_Node& node) {
            weights += node.weight;
            if (!derivatives) {
                sum.value += node.weight * Pseudo_Voigt_Value(x - node.angle, line.width, line.eta);
                return;
            }
            const Shape shape = Pseudo_Voigt(x - node.angle, line.width, line.eta);
            sum.value += node.weight * shape.value;
            sum.by_position += node.weight * shape.by_position;
            sum.by_width += node.weight * shape.by_width;
            sum.by_eta += node.weight * shape.by_eta;
            by_s += node.by_s * shape.value;
            by_h += node.by_h * shape.value;
            weights_by_s += node.by_s;
            weights_by_h += node.by_h;
        };
        if (keep_nodes_)
            for (const Axial_Node& node : line.nodes) add(node);
        else
            for (std::size_t i = 0; i < line.limits.rule->node.size(); ++i)
                for (const int side : {1, -1}) add(Axial_Sum::Node(axial_, line.limits, line.centre, i, side));
        if (weights <= 1e-6) return {};
        for (double* value : {&sum.value, &sum.by_position, &sum.by_width, &sum.by_eta}) *value /= weights;
        // The sum is normalised by its own weights, and so are these.
        const double s = (by_s - sum.value * weights_by_s) / weights, h = (by_h - sum.value * weights_by_h) / weights;
        sum.by_first = axial_.one ? (s + h) / 2 : s;
        sum.by_second = axial_.one ? (h - s) / 2 : h;
        return sum;
    }

    void Add_Derivatives(const Line& line, const Shape& shape, std::span<double> dpv) const {
        const double i = line.intensity;
        dpv[1] += i * shape.by_first;
        dpv[2] += i * shape.by_second;
        for (std::size_t k = 0; k < 4; ++k) dpv[3 + k] += i * shape.by_width * line.width_by[k];
        dpv[7] += i * shape.by_eta;
        dpv[8] += i * shape.by_eta * line.centre;
        dpv[line.at] += i * shape.by_position * line.centre_by_position;
        dpv[line.at + 1] += i * shape.value / pv_[line.at + 1];
        dpv[line.at + 2] += i * shape.by_width;
        dpv[line.at + 3] += i * shape.by_eta;
    }

    bool keep_nodes_;
    std::span<const double> pv_;
    bool divergent_ = false;
    Axial axial_;
    std::vector<Line> lines_;
};

// Complementary error function by a rational Chebyshev form, relative error 1.2e-7.
inline double Erfc(double x) {
    const double t = 1 / (1 + std::fabs(x) / 2);
    constexpr double c[] = {-1.26551223, 1.00002368,  0.37409196, 0.09678418,  -0.18628806,
                            0.27886807,  -1.13520398, 1.48851587, -0.82215223, 0.17087277};
    double series = 0;
    for (std::size_t k = std::size(c); k-- > 0;) series = c[k] + t * series;
    const double positive = t * std::exp(-x * x + series);
    return x < 0 ? 2 - positive : positive;
}

// e^u * factor in steps that stay within range.
inline double Stable_Product(double u, double factor) {
    const int n = std::max(1, static_cast<int>(0.003 * u));
    const double step = std::exp(u / n);
    for (int i = 0; i < n; ++i) factor *= step;
    return factor;
}

// e^w E1(w): power series near 0, otherwise a continued fraction.
inline std::complex<double> Scaled_E1(std::complex<double> w) {
    const double size = std::abs(w);
    if (size == 0) return 1e300;
    std::complex<double> result;
    if (size <= 10 || (w.real() <= 0 && size < 20)) {
        std::complex<double> sum = 1, term = 1;
        for (int k = 1; k <= 150; ++k) {
            term *= -static_cast<double>(k) * w / ((k + 1.0) * (k + 1.0));
            sum += term;
            if (std::abs(term) <= std::abs(sum) * 1e-15) break;
        }
        result = std::exp(w) * (-0.5772156649015328 - std::log(w) + w * sum);
    } else {
        std::complex<double> fraction = 0;
        for (int k = 120; k >= 1; --k) fraction = static_cast<double>(k) / (1.0 + static_cast<double>(k) / (w + fraction));
        result = 1.0 / (w + fraction);
    }
    if (w.real() <= 0 && std::fabs(w.imag()) <= 1e-9) result -= std::complex<double>(0, std::numbers::pi) * std::exp(w);
    return result;
}

// Back-to-back exponentials with a pseudo-Voigt of width `width`; by_position is the derivative by d.
inline Shape Back_To_Back(double d, double alpha, double beta, double width, double eta, bool use_eta, bool derivatives) {
    constexpr double two_over_pi = 2 / std::numbers::pi;
    const double var = width * width * 0.18033688011112042, n = alpha * beta / (2 * (alpha + beta)), s = std::sqrt(2 * var);
    const double u = alpha / 2 * (alpha * var + 2 * d), v = beta / 2 * (beta * var - 2 * d);
    const double y = (alpha * var + d) / s, z = (beta * var - d) / s;
    const double a = Stable_Product(u, Erfc(y)), b = Stable_Product(v, Erfc(z)), gauss = n * (a + b);
    Shape shape{.value = gauss};
    std::complex<double> p, q;
    double lorentz = 0;
    if (use_eta) {
        p = -two_over_pi * Scaled_E1({alpha * d, alpha * width / 2});
        q = -two_over_pi * Scaled_E1({-beta * d, beta * width / 2});
        lorentz = n * (p.imag() + q.imag());
        shape.value = (1 - eta) * gauss + eta * lorentz;
    }
    if (!derivatives) return shape;
    if (gauss > 1e-30) {
        const auto slope = [](double t) { return -1.128379167096 * std::exp(-t * t); };
        const double da = Stable_Product(u, slope(y)), db = Stable_Product(v, slope(z)), cube = 2 / (s * s * s);
        shape.by_position = n * (alpha * a - beta * b + (da - db) / s);
        shape.by_first = n * (2 * gauss / (alpha * alpha) + (alpha * var + d) * a + s * da / 2);
        shape.by_second = n * (2 * gauss / (beta * beta) + (beta * var - d) * b + s * db / 2);
        shape.by_width =
            n * 0.18033688 * width * (alpha * alpha * a + beta * beta * b + da * cube * (alpha * var - d) + db * cube * (beta * var + d));
    }
    if (!use_eta) return shape;
    const auto mix = [eta](double& value, double other) { value = (1 - eta) * value + eta * other; };
    mix(shape.by_position, n * (alpha * p.imag() - beta * q.imag()));
    mix(shape.by_first, n * (2 * lorentz / (alpha * alpha) + d * p.imag() + width / 2 * p.real()));
    mix(shape.by_second, n * (2 * lorentz / (beta * beta) - d * q.imag() + width / 2 * q.real()));
    mix(shape.by_width, n / 2 * (alpha * p.real() + beta * q.real()));
    shape.by_eta = lorentz - gauss;
    return shape;
}

class Time_Of_Flight : public Model {
public:
    Time_Of_Flight(const Fit_Constants& constants, Parameter_Layout layout, bool use_eta) : Model(constants, layout), use_eta_(use_eta) {}

    void Prepare(std::span<const double> pv) override {
        pv_ = pv;
        peaks_.clear();
        for (int k = 0; k < layout_.peaks; ++k) {
            const auto at = static_cast<std::size_t>(layout_.Peak(k));
            const double d = pv[at] / constants_.d2tof, d2 = d * d, var = (pv[2] * d2 + pv[3]) * d2 + pv[4];
            const double flag = var > 0.0001 ? 1 : 0;
            peaks_.push_back({at,
                              pv[0] + pv[at + 3],
                              pv[1] + pv[at + 4],
                              2.35482 * std::sqrt(std::fabs(pv[at + 2] + var)),
                              pv[5] + pv[at + 5],
                              {flag * d2 * d2, flag * d2, flag}});
        }
    }

    double Value(double x, std::span<double> dpv) const override {
        double y = Background(pv_, x, dpv);
        for (const Peak& peak : peaks_) {
            const double d = x - pv_[peak.at], intensity = pv_[peak.at + 1];
            if (std::fabs(d) > 15 * (1.3862944 / (d > 0 ? peak.beta : peak.alpha) + peak.width)) continue;
            const Shape shape = Back_To_Back(d, peak.alpha, peak.beta, peak.width, peak.eta, use_eta_, !dpv.empty());
            y += intensity * shape.value;
            if (dpv.empty()) continue;
            const double by_var = intensity * shape.by_width / (peak.width * 0.36067376);
            const double by_alpha = intensity * shape.by_first, by_beta = intensity * shape.by_second, by_eta = intensity * shape.by_eta;
            dpv[0] += by_alpha;
            dpv[1] += by_beta;
            for (std::size_t k = 0; k < 3; ++k) dpv[2 + k] += by_var * peak.var_by[k];
            dpv[5] += by_eta;
            const double of_peak[] = {-intensity * shape.by_position, shape.value, by_var, by_alpha, by_beta, by_eta};
            for (std::size_t k = 0; k < 6; ++k) dpv[peak.at + k] = of_peak[k];
        }
        return y;
    }

private:
    struct Peak {
        std::size_t at;
        double alpha, beta, width, eta;
        std::array<double, 3> var_by;  // Sig-2, Sig-1, Sig-0
    };

    bool use_eta_;
    std::span<const double> pv_;
    std::vector<Peak> peaks_;
};

}  // namespace vntl::plain
