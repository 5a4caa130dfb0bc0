// Test problems of the least squares, written once as residuals of dual numbers: the derivatives come with them, exact.
#pragma once

#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <vector>

#include "fit/least_squares.hpp"

namespace vntl {

// A value and its derivatives by the variables.
struct Dual {
    double v = 0;
    std::array<double, 12> d{};

    Dual() = default;
    Dual(double value) : v(value) {}  // a constant: meant to be implicit, so that formulae read as printed
};

inline Dual Combined(double value, double slope_a, const Dual& a, double slope_b, const Dual& b) {
    Dual result(value);
    for (std::size_t k = 0; k < result.d.size(); ++k)
        result.d[k] = (a.d[k] != 0 ? slope_a * a.d[k] : 0) + (b.d[k] != 0 ? slope_b * b.d[k] : 0);
    return result;
}
inline Dual Of(double value, double slope, const Dual& a) { return Combined(value, slope, a, 0, {}); }

inline Dual operator+(const Dual& a, const Dual& b) { return Combined(a.v + b.v, 1, a, 1, b); }
inline Dual operator-(const Dual& a, const Dual& b) { return Combined(a.v - b.v, 1, a, -1, b); }
inline Dual operator*(const Dual& a, const Dual& b) { return Combined(a.v * b.v, b.v, a, a.v, b); }
inline Dual operator/(const Dual& a, const Dual& b) { return Combined(a.v / b.v, 1 / b.v, a, -a.v / (b.v * b.v), b); }
inline Dual exp(const Dual& a) { return Of(std::exp(a.v), std::exp(a.v), a); }
inline Dual log(const Dual& a) { return Of(std::log(a.v), 1 / a.v, a); }
inline Dual sqrt(const Dual& a) { return Of(std::sqrt(a.v), 0.5 / std::sqrt(a.v), a); }
inline Dual sin(const Dual& a) { return Of(std::sin(a.v), std::cos(a.v), a); }
inline Dual cos(const Dual& a) { return Of(std::cos(a.v), -std::sin(a.v), a); }
inline Dual atan(const Dual& a) { return Of(std::atan(a.v), 1 / (1 + a.v * a.v), a); }
inline Dual sq(const Dual& a) { return a * a; }
inline Dual pow(const Dual& a, const Dual& b) { return exp(b * log(a)); }

using Duals = std::vector<Dual>;
using Residuals = std::function<Duals(const Duals& x)>;

inline LSQ_Model Model_Of(Residuals residuals) {
    return [residuals = std::move(residuals)](Model_Call call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac) {
        if (call == Model_Call::print) return 0;
        Duals variables;
        for (const float value : x) {
            variables.emplace_back(static_cast<double>(value));
            variables.back().d[variables.size() - 1] = 1;
        }
        const Duals f = residuals(variables);
        for (std::size_t i = 0; i < f.size(); ++i)
            if (call == Model_Call::residuals)
                fvec[i] = static_cast<float>(f[i].v);
            else
                for (std::size_t k = 0; k < x.size(); ++k) fjac.Column(static_cast<int>(k))[i] = static_cast<float>(f[i].d[k]);
        return 0;
    };
}

// A run and all that it used.
struct Solved {
    LSQ_Conditions c;
    LSQ_State_Vector vs;
    LSQ_Run run;

    double Value(std::size_t k) const { return static_cast<double>(vs.parameters[k].pv); }
    double Deviation(std::size_t k) const { return static_cast<double>(vs.parameters[k].spv); }
    double Sum_Of_Squares() const {
        return std::transform_reduce(run.residuals.begin(), run.residuals.end(), 0.0, std::plus<>(),
                                     [](float f) { return static_cast<double>(f) * static_cast<double>(f); });
    }
};

inline Solved Solve(const LSQ_Model& model, int m, const std::vector<double>& start, float tol = 1e-6f, int icyc = 1000) {
    Solved s;
    s.c.npvar = static_cast<int>(start.size());
    s.c.icyc = icyc;
    s.c.tol = tol;
    for (const double value : start)
        s.vs.parameters.push_back({"p" + std::to_string(s.vs.np() + 1), static_cast<float>(value), 0, 1, 0, 1});
    s.run = LM_Der(model, m, s.c, s.vs);
    return s;
}

// Data that both collections use.
inline const std::vector<double> kowalik_u = {4, 2, 1, .5, .25, .167, .125, .1, .0833, .0714, .0625};
inline const std::vector<double> kowalik_y = {.1957, .1947, .1735, .16, .0844, .0627, .0456, .0342, .0323, .0235, .0246};
inline const std::vector<double> meyer_y = {34780, 28610, 23650, 19630, 16370, 13720, 11540, 9744,
                                            8261,  7030,  6005,  5147,  4427,  3820,  3307,  2872};
inline const std::vector<double> osborne_y = {.844, .908, .932, .936, .925, .908, .881, .85,  .818, .784, .751,
                                              .718, .685, .658, .628, .603, .58,  .558, .538, .522, .506, .49,
                                              .478, .467, .457, .448, .438, .431, .424, .42,  .414, .411, .406};

// n numbers from `first` on.
inline std::vector<double> Steps(int n, double first, double step) {
    std::vector<double> x;
    for (int i = 0; i < n; ++i) x.push_back(first + i * step);
    return x;
}

// Decimal digits in which `found` is `known`: those of a float at most.
inline double Digits(double found, double known) {
    constexpr double most = 7.5;
    const double off = std::fabs(found - known) / std::fabs(known);
    return off > 0 ? std::min(most, -std::log10(off)) : most;
}

}  // namespace vntl
