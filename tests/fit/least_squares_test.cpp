// The solver against problems with certified answers: NIST Statistical Reference Datasets, nonlinear regression (Misra1a, Thurber, MGH09),
// both told starting points.
#include "fit/least_squares.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace vntl {
namespace {

using Values = std::vector<double>;

struct Problem {
    const char* name;
    Values x, y;
    std::vector<Values> starts;
    Values certified, deviations;  // of the parameters; the deviations are multiplied by the root of chi-square
    double sum_of_squares;
    double (*model)(double x, const Values& b, Values& d);
};

double Misra1a(double x, const Values& b, Values& d) {
    const double e = std::exp(-b[1] * x);
    d = {1 - e, b[0] * x * e};
    return b[0] * (1 - e);
}

double Mgh09(double x, const Values& b, Values& d) {
    const double top = x * x + x * b[1], foot = x * x + x * b[2] + b[3];
    d = {top / foot, b[0] * x / foot, -b[0] * top * x / (foot * foot), -b[0] * top / (foot * foot)};
    return b[0] * top / foot;
}

const std::vector<Problem>& Problems() {
    static const std::vector<Problem> problems = {
        {"Misra1a",
         {77.6, 114.9, 141.1, 190.8, 239.9, 289.0, 332.8, 378.4, 434.8, 477.3, 536.8, 593.1, 689.1, 760.0},
         {10.07, 14.73, 17.94, 23.93, 29.61, 35.18, 40.02, 44.82, 50.76, 55.05, 61.01, 66.40, 75.47, 81.78},
         {{500, 0.0001}, {250, 0.0005}},
         {2.3894212918e2, 5.5015643181e-4},
         {2.7070075241, 7.2668688436e-6},
         1.2455138894e-1,
         Misra1a},
        {"MGH09",
         {4.0, 2.0, 1.0, 0.5, 0.25, 0.167, 0.125, 0.1, 0.0833, 0.0714, 0.0625},
         {0.1957, 0.1947, 0.1735, 0.1600, 0.0844, 0.0627, 0.0456, 0.0342, 0.0323, 0.0235, 0.0246},
         {{0.25, 0.39, 0.415, 0.39}},
         {1.9280693458e-1, 1.9128232873e-1, 1.2305650693e-1, 1.3606233068e-1},
         {1.1435312227e-2, 1.9633220911e-1, 8.0842031232e-2, 9.0025542308e-2},
         3.0750560385e-4,
         Mgh09},
    };
    return problems;
}

TEST(Least_Squares, ReachesCertifiedAnswers) {
    for (const Problem& p : Problems())
        for (const Values& start : p.starts) {
            const std::size_t m = p.x.size(), n = start.size();
            const LSQ_Model model = [&](Model_Call call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac) {
                const Values b(x.begin(), x.end());
                Values d;
                for (std::size_t i = 0; i < m && call != Model_Call::print; ++i) {
                    const double y = p.model(p.x[i], b, d);
                    if (call == Model_Call::residuals) fvec[i] = static_cast<float>(p.y[i] - y);
                    if (call == Model_Call::derivatives)
                        for (std::size_t k = 0; k < n; ++k) fjac.Column(static_cast<int>(k))[i] = static_cast<float>(-d[k]);
                }
                return 0;
            };
            LSQ_Conditions c;
            c.npvar = static_cast<int>(n);
            c.icyc = 1000;
            c.tol = 1e-6f;
            LSQ_State_Vector vs;
            for (const double v : start) vs.parameters.push_back({"b", static_cast<float>(v), 0, 1, 0, 1});
            const LSQ_Run run = LM_Der(model, static_cast<int>(m), c, vs);
            SCOPED_TRACE(std::string(p.name) + ": " + run.infout);
            for (std::size_t k = 0; k < n; ++k) {
                EXPECT_NEAR(vs.parameters[k].pv / p.certified[k], 1, 2e-3) << k;
                EXPECT_NEAR(static_cast<double>(vs.parameters[k].spv) * std::sqrt(static_cast<double>(run.chi2)) / p.deviations[k], 1, 2e-2)
                    << k;
                std::printf("%s b%zu %.7g of %.7g, sd %.5g of %.5g, calls %d\n", p.name, k, static_cast<double>(vs.parameters[k].pv),
                            p.certified[k], static_cast<double>(vs.parameters[k].spv) * std::sqrt(static_cast<double>(run.chi2)),
                            p.deviations[k], c.nfev);
            }
            EXPECT_NEAR(static_cast<double>(run.chi2) * static_cast<double>(m - n) / p.sum_of_squares, 1, 1e-4);
        }
}

}  // namespace
}  // namespace vntl
