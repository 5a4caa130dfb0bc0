// The solver against problems with certified answers (NIST Statistical Reference Datasets, nonlinear regression), and against the minima of
// the collection of J. J. More, B. S. Garbow and K. E. Hillstrom (ACM Trans. Math. Softw. 7, 1981, 17-41). Derivatives are central
// differences in double precision (the first start of BoxBOD, where the second derivative of chi-square is lost, is left out); residuals
// and derivatives reach the solver in single precision.
#include "fit/least_squares.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace vntl {
namespace {

using Values = std::vector<double>;
using Residuals = std::function<Values(const Values& b)>;

struct Solved {
    LSQ_Run run;
    LSQ_Conditions c;
    LSQ_State_Vector vs;
    double sum_of_squares = 0;
};

LSQ_Model Model_Of(const Residuals& residuals) {
    return [&residuals](Model_Call call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac) {
        const Values b(x.begin(), x.end());
        if (call == Model_Call::residuals) {
            const Values f = residuals(b);
            for (std::size_t i = 0; i < fvec.size(); ++i) fvec[i] = static_cast<float>(f[i]);
        }
        for (std::size_t k = 0; k < b.size() && call == Model_Call::derivatives; ++k) {
            Values low = b, high = b;
            const double step = 1e-6 * std::max(std::fabs(b[k]), 1e-3);
            low[k] -= step, high[k] += step;
            const Values f1 = residuals(low), f2 = residuals(high);
            for (std::size_t i = 0; i < f1.size(); ++i)
                fjac.Column(static_cast<int>(k))[i] = static_cast<float>((f2[i] - f1[i]) / (high[k] - low[k]));
        }
        return 0;
    };
}

Solved Solve(const Residuals& residuals, const Values& start, float tol = 1e-6f) {
    Solved s;
    s.c.npvar = static_cast<int>(start.size());
    s.c.icyc = 1000;
    s.c.tol = tol;
    for (const double v : start) s.vs.parameters.push_back({"b", static_cast<float>(v), 0, 1, 0, 1});
    s.run = LM_Der(Model_Of(residuals), static_cast<int>(residuals(start).size()), s.c, s.vs);
    Values b;
    for (const LSQ_Parameter& parameter : s.vs.parameters) b.push_back(parameter.pv);
    for (const double f : residuals(b)) s.sum_of_squares += f * f;
    return s;
}

struct Certified {
    const char* name;
    const Values &x, &y;
    std::vector<Values> starts;
    Values answer;
    double sum_of_squares;
    double (*model)(double x, const Values& b);
    Values deviations = {};  // as certified: multiplied by the root of chi-square
};

const Values misra_x = {77.6, 114.9, 141.1, 190.8, 239.9, 289.0, 332.8, 378.4, 434.8, 477.3, 536.8, 593.1, 689.1, 760.0};
const Values misra_y = {10.07, 14.73, 17.94, 23.93, 29.61, 35.18, 40.02, 44.82, 50.76, 55.05, 61.01, 66.40, 75.47, 81.78};
const Values mgh09_x = {4.0, 2.0, 1.0, 0.5, 0.25, 0.167, 0.125, 0.1, 0.0833, 0.0714, 0.0625};
const Values mgh09_y = {0.1957, 0.1947, 0.1735, 0.1600, 0.0844, 0.0627, 0.0456, 0.0342, 0.0323, 0.0235, 0.0246};
const Values wood_x = {1.309, 1.471, 1.490, 1.565, 1.611, 1.680}, wood_y = {2.138, 3.421, 3.597, 4.340, 4.882, 5.660};
const Values box_x = {1, 2, 3, 5, 7, 10}, box_y = {109, 149, 149, 191, 213, 224};

TEST(Least_Squares, ReachesCertifiedAnswers) {
    using B = const Values&;
    const Certified problems[] = {
        {"Misra1a",
         misra_x,
         misra_y,
         {{500, 1e-4}, {250, 5e-4}},
         {2.3894212918e2, 5.5015643181e-4},
         1.2455138894e-1,
         [](double x, B b) { return b[0] * (1 - std::exp(-b[1] * x)); },
         {2.7070075241, 7.2668688436e-6}},
        {"Misra1b",
         misra_x,
         misra_y,
         {{500, 1e-4}, {300, 2e-4}},
         {3.3799746163e2, 3.9039091287e-4},
         7.5464681533e-2,
         [](double x, B b) { return b[0] * (1 - std::pow(1 + b[1] * x / 2, -2)); }},
        {"Misra1c",
         misra_x,
         misra_y,
         {{500, 1e-4}, {600, 2e-4}},
         {6.3642725809e2, 2.0813627256e-4},
         4.0966836971e-2,
         [](double x, B b) { return b[0] * (1 - std::pow(1 + 2 * b[1] * x, -0.5)); }},
        {"Misra1d",
         misra_x,
         misra_y,
         {{500, 1e-4}, {450, 3e-4}},
         {4.3736970754e2, 3.0227324449e-4},
         5.6419295283e-2,
         [](double x, B b) { return b[0] * b[1] * x / (1 + b[1] * x); }},
        {"DanWood",
         wood_x,
         wood_y,
         {{1, 5}, {0.7, 4}},
         {7.6886226176e-1, 3.8604055871},
         4.3173084083e-3,
         [](double x, B b) { return b[0] * std::pow(x, b[1]); }},
        {"BoxBOD",
         box_x,
         box_y,
         {{100, 0.75}},
         {2.1380940889e2, 5.4723748542e-1},
         1.1680088766e3,
         [](double x, B b) { return b[0] * (1 - std::exp(-b[1] * x)); }},
        {"MGH09",
         mgh09_x,
         mgh09_y,
         {{25, 39, 41.5, 39}, {0.25, 0.39, 0.415, 0.39}},
         {1.9280693458e-1, 1.9128232873e-1, 1.2305650693e-1, 1.3606233068e-1},
         3.0750560385e-4,
         [](double x, B b) { return b[0] * (x * x + x * b[1]) / (x * x + x * b[2] + b[3]); },
         {1.1435312227e-2, 1.9633220911e-1, 8.0842031232e-2, 9.0025542308e-2}},
    };
    for (const Certified& p : problems)
        for (const Values& start : p.starts) {
            const Solved s = Solve(
                [&p](const Values& b) {
                    Values f;
                    for (std::size_t i = 0; i < p.x.size(); ++i) f.push_back(p.y[i] - p.model(p.x[i], b));
                    return f;
                },
                start);
            SCOPED_TRACE(std::string(p.name) + ": " + s.run.infout);
            double digits = 7;
            for (std::size_t k = 0; k < start.size(); ++k) {
                const LSQ_Parameter& parameter = s.vs.parameters[k];
                const double error = std::fabs(parameter.pv / p.answer[k] - 1);
                digits = std::min(digits, -std::log10(std::max(error, 1e-7)));
                EXPECT_LT(error, 2e-3) << k;
                if (p.deviations.empty()) continue;
                EXPECT_NEAR(parameter.spv * std::sqrt(s.run.chi2) / p.deviations[k], 1, 2e-2) << k;
            }
            EXPECT_NEAR(s.sum_of_squares / p.sum_of_squares, 1, 1e-4);
            RecordProperty(std::string(p.name) + "_digits", std::to_string(digits));
        }
}

double Bard(const Values& b, int i) {
    constexpr double y[] = {0.14, 0.18, 0.22, 0.25, 0.29, 0.32, 0.35, 0.39, 0.37, 0.58, 0.73, 0.96, 1.34, 2.10, 4.39};
    const double u = i + 1, v = 15 - i, w = std::min(u, v);
    return y[i] - (b[0] + u / (v * b[1] + w * b[2]));
}

template <class One>
Residuals Each(int m, One one) {
    return [m, one](const Values& b) {
        Values f;
        for (int i = 0; i < m; ++i) f.push_back(one(b, i));
        return f;
    };
}

TEST(Least_Squares, ReachesTheMinimaOfTheClassicCollection) {
    using B = const Values&;
    struct Classic {
        const char* name;
        Residuals residuals;
        Values start;
        double minimum;
        std::vector<double> factors = {1, 10};  // of the start; further ones lead elsewhere
    };
    const Classic problems[] = {
        {"linear, full rank",
         Each(10,
              [](B b, int i) {
                  double sum = -1;
                  for (std::size_t k = 0; k < 5; ++k) sum += (i == static_cast<int>(k) ? 1 : 0) * b[k] - 0.2 * b[k];
                  return sum;
              }),
         {1, 1, 1, 1, 1},
         5},
        {"Rosenbrock",
         [](B b) {
             return Values{10 * (b[1] - b[0] * b[0]), 1 - b[0]};
         },
         {-1.2, 1},
         0},
        {"helical valley",
         [](B b) {
             const double turn = std::atan(b[1] / b[0]) / (2 * std::numbers::pi) + (b[0] < 0 ? 0.5 : 0);
             return Values{10 * (b[2] - 10 * turn), 10 * (std::hypot(b[0], b[1]) - 1), b[2]};
         },
         {-1, 0, 0},
         0},
        {"Powell singular",
         [](B b) {
             return Values{b[0] + 10 * b[1], std::sqrt(5) * (b[2] - b[3]), std::pow(b[1] - 2 * b[2], 2),
                           std::sqrt(10) * std::pow(b[0] - b[3], 2)};
         },
         {3, -1, 0, 1},
         0},
        {"Freudenstein and Roth",
         [](B b) {
             return Values{-13 + b[0] + ((5 - b[1]) * b[1] - 2) * b[1], -29 + b[0] + ((b[1] + 1) * b[1] - 14) * b[1]};
         },
         {0.5, -2},
         48.98425,
         {1, 10}},
        {"Bard", Each(15, Bard), {1, 1, 1}, 8.214877e-3, {1}},
        {"Kowalik and Osborne",
         Each(11,
              [](B b, int i) {
                  const double u = mgh09_x[static_cast<std::size_t>(i)];
                  return mgh09_y[static_cast<std::size_t>(i)] - b[0] * (u * u + b[1] * u) / (u * u + b[2] * u + b[3]);
              }),
         {0.25, 0.39, 0.415, 0.39},
         3.075056e-4,
         {1}},
        {"Box",
         Each(10,
              [](B b, int i) {
                  const double t = 0.1 * (i + 1);
                  return std::exp(-t * b[0]) - std::exp(-t * b[1]) - b[2] * (std::exp(-t) - std::exp(-10 * t));
              }),
         {0, 10, 20},
         0,
         {1}},
        {"Jennrich and Sampson",
         Each(10, [](B b, int i) { return 2 + 2.0 * (i + 1) - (std::exp((i + 1) * b[0]) + std::exp((i + 1) * b[1])); }),
         {0.3, 0.4},
         124.3622,
         {1}},
        {"Brown and Dennis",
         Each(20,
              [](B b, int i) {
                  const double t = 0.2 * (i + 1);
                  return std::pow(b[0] + t * b[1] - std::exp(t), 2) + std::pow(b[2] + b[3] * std::sin(t) - std::cos(t), 2);
              }),
         {25, 5, -5, -1},
         85822.20},
    };
    for (const Classic& p : problems)
        for (const double factor : p.factors) {
            Values start = p.start;
            for (double& v : start) v *= factor;
            const Solved s = Solve(p.residuals, start, 1e-7f);
            EXPECT_NEAR(s.sum_of_squares, p.minimum, 2e-4 * p.minimum + 1e-7) << p.name << " from " << factor << ": " << s.run.infout;
        }
}

// A straight line y = b0 + b1 x through y = 1 + 2 x.
Residuals Straight(int m) {
    return Each(m, [](const Values& b, int i) { return 1 + 2.0 * i - b[0] - b[1] * i; });
}

TEST(Least_Squares, TellsHowItEnds) {
    const auto end = [](const Residuals& residuals, const Values& start, auto change) {
        Solved s;
        s.c = {.icyc = 100, .npvar = static_cast<int>(start.size())};
        for (const double v : start) s.vs.parameters.push_back({"b", static_cast<float>(v), 0, 1, 0, 1});
        change(s);
        s.run = LM_Der(Model_Of(residuals), static_cast<int>(residuals(Values(start)).size()), s.c, s.vs);
        return s;
    };
    const auto none = [](Solved&) {};
    EXPECT_EQ(end(Straight(5), {0, 0}, none).c.reached, true);
    const std::string improper = "Improper input parameters in LM-optimization (n,m,tol): nb of free (refined) parameters: ";
    EXPECT_EQ(end(Straight(1), {0, 0}, none).run.infout, improper + "    2, number of observations:     1, tolerance:  0.0000100");
    EXPECT_EQ(end(Straight(5), {0, 0}, [](Solved& s) { s.c.npvar = 0; }).run.infout.find(improper), 0u);
    const Solved few =
        end(Each(3, [](const Values& b, int i) { return std::exp(b[0] * (i + 1)) - 5; }), {9}, [](Solved& s) { s.c.icyc = 3; });
    EXPECT_EQ(few.run.infout, "Convergence NOT reached: Number of calls to model function with iflag=1 has reached      3");
    EXPECT_FALSE(few.c.reached);
    // One observation for one parameter: the divisor of chi-square is 1.
    const Solved one = end(Each(1, [](const Values& b, int) { return 3 - b[0]; }), {1}, none);
    EXPECT_NEAR(one.vs.parameters[0].pv, 3, 1e-5);
    EXPECT_NEAR(one.vs.parameters[0].spv, 1, 1e-5);
    // A parameter without effect: no deviations, the others are fitted.
    const Solved idle = end(Each(4, [](const Values& b, int i) { return 2.0 * i - b[0] * i + 0 * b[1]; }), {1, 7}, none);
    EXPECT_EQ(idle.run.infout, "Final Singular Matrix!, problem with parameter #  2");
    EXPECT_TRUE(idle.run.lsq_error && idle.vs.parameters[0].spv == 0);
    EXPECT_NEAR(idle.vs.parameters[0].pv, 2, 1e-5);
    // A step to where there are no numbers is taken back.
    const Solved edge = end(Each(4, [](const Values& b, int i) { return std::sqrt(b[0]) * (i + 1) - 0.1 * (i + 1); }), {4}, none);
    EXPECT_NEAR(edge.vs.parameters[0].pv, 0.01, 1e-4) << edge.run.infout;
}

TEST(Least_Squares, ParametersShareAVariable) {
    LSQ_State_Vector vs;
    vs.code_given = true;
    vs.parameters = {{"a", 1, 0, 2, 0, 1}, {"fixed", 5, 9, 1, 0, 0}, {"b", 10, 0, -1, 0, 1}};
    LSQ_Conditions c{.icyc = 100, .npvar = 1};
    // x starts at 1, the value of "a", and ends at 4: both move by 3 times their multiplier.
    const Residuals residuals = Each(4, [](const Values& x, int) { return 4 - x[0]; });
    LM_Der(Model_Of(residuals), 4, c, vs);
    EXPECT_NEAR(vs.parameters[0].pv, 1 + 2 * 3, 1e-4);
    EXPECT_NEAR(vs.parameters[2].pv, 10 - 3, 1e-4);
    EXPECT_NEAR(vs.parameters[0].spv, 2 * 0.5, 1e-4);
    EXPECT_EQ(std::pair(vs.parameters[1].pv, vs.parameters[1].spv), std::pair(5.0f, 0.0f));
}

TEST(Least_Squares, ACancelledRunKeepsItsBestValues) {
    Work_Control control;
    int calls = 0;
    const Residuals rise = Each(4, [](const Values& b, int i) { return std::exp(b[0] * 0.5 * (i + 1)) - 2; });
    const LSQ_Model line = Model_Of(rise);
    const LSQ_Model model = [&](Model_Call call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac) {
        if (++calls == 4) control.Cancel();
        return line(call, x, fvec, fjac);
    };
    LSQ_Conditions c{.icyc = 100, .npvar = 1};
    LSQ_State_Vector vs;
    vs.parameters = {{"b", 4, 0, 1, 0, 1}};
    const LSQ_Run run = LM_Der(model, 4, c, vs, &control);
    EXPECT_FALSE(c.reached);
    EXPECT_EQ(run.infout, "");
    EXPECT_LT(vs.parameters[0].pv, 4);
    EXPECT_LT(calls, 8);
}

TEST(Least_Squares, TheFinalListing) {
    LSQ_Data data{{1, 2}, {10, 30}, {1, 1}, {11, 28}, {0, 0}};
    const std::vector<float> w = {1, 0.25f};
    LSQ_Conditions c{.corrmax = 70, .npvar = 2};
    LSQ_State_Vector vs;
    vs.parameters = {{"first", 1.5f, 0.25f, 1, 0, 1}, {"fixed", 2, 0, 1, 0, 0}, {"second", -3, 0.5f, 1, 0, 1}};
    LSQ_Run run;
    run.chi2 = 1.25f;
    run.names = {"first", "second"};
    run.inverse = {2, 1.6, 1.6, 2};
    const std::string listing = Info_LSQ_Output(0, data, w, c, vs, run);
    EXPECT_EQ(listing.substr(0, listing.find("\n\n\n")),
              "\n  Rfact=    7.500   Rwfact=   22.361   Rex=    0.000\n"
              "\n  Final value of Marquardt F-Lambda =            0.000\n\n => Correlation Matrix: \n\n"
              "    Correlation:  80 > 70% for parameters:   first & second\n\n => There are   1 values of Correlation > 70%");
    EXPECT_NE(listing.find("\n    1    first" + std::string(35, ' ') + "     1             1.50000             0.25000\n"),
              std::string::npos);
    EXPECT_NE(listing.find("\n    2    second" + std::string(34, ' ') + "     3            -3.00000             0.50000\n"),
              std::string::npos);
    EXPECT_NE(listing.find("\n => Final value of Chi2:   0.12500E+01\n"), std::string::npos);
    run.inverse = {2, -1.9, -1.9, 2};  // negative ones are not listed
    EXPECT_NE(Info_LSQ_Output(0, data, w, c, vs, run).find("\n => There is no correlations greater than 70%\n"), std::string::npos);
    EXPECT_EQ(Fit_File_Text(data, w),
              "!        X             Y-obs          Y-calc           Sigma\n"
              "          1.0000         10.0000         11.0000          1.0000\n"
              "          2.0000         30.0000         28.0000          2.0000\n");
}

}  // namespace
}  // namespace vntl
