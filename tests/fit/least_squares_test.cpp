// How the solver behaves: its end texts, codes, deviations against the closed form of a straight line, and numbers that break a run.
#include "fit/least_squares.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <random>

#include "fit/normal_equations.hpp"
#include "published_problems.hpp"

namespace vntl {
namespace {

constexpr float nan_value = std::numeric_limits<float>::quiet_NaN();

Duals Rosenbrock(const Duals& x) { return {10.0 * (x[1] - sq(x[0])), 1 - x[0]}; }
Duals Line(const Duals& x) {  // a + b t at t = 1 to 10, of which 2 + 3 t was observed
    Duals f;
    for (int t = 1; t <= 10; ++t) f.push_back(2.0 + 3 * t - x[0] - t * x[1]);
    return f;
}
Duals Rank_One(const Duals& x) {
    Duals f;
    for (int i = 1; i <= 10; ++i) f.push_back(i * (x[0] + 2.0 * x[1] + 3.0 * x[2] + 4.0 * x[3] + 5.0 * x[4]) - 1);
    return f;
}
Duals Noisy(const Duals& x) { return {x[0] * x[0] - 2, exp(x[0]) - 3, x[0] - 7}; }

Duals Edge(const Duals& x) { return {x[0].v < 5 ? log(Dual(-1)) : x[0]}; }  // no step from 5 leads to a number

// Chi-square of the starts: 24.2 (m = n); at 1, 1, 1, 1, 1 the sum of (15 i - 1)^2 is 84985, over 5; 1 + (e - 3)^2 + 36 over 2.
TEST(Least_Squares, TellsHowARunEnded) {
    struct Case {
        Residuals residuals;
        int m;
        std::vector<double> start;
        float tol;
        int icyc;
        bool reached;
        const char* infout;
    };
    const Case cases[] = {
        {Noisy,
         3,
         {1},
         1e-5f,
         50,
         true,
         "Initial Chi2: 0.18540E+02     Convergence reached: The relative error in the sum of squares is at most  0.10000E-04"},
        {Rosenbrock,
         2,
         {-120, 100},
         1e-5f,
         50,
         true,
         "Initial Chi2: 0.20449E+11     Convergence reached: The relative error between x and the solution is at most  0.10000E-04"},
        {Rank_One,
         10,
         {1, 1, 1, 1, 1},
         1e-5f,
         50,
         true,
         "Initial Chi2: 0.16997E+05     Convergence reached: The relative error in the sum of squares and the difference between x and the "
         "solution are both at most  0.10000E-04"},
        {Rosenbrock,
         2,
         {-1.2, 1},
         1e-5f,
         50,
         true,
         "Initial Chi2: 0.24200E+02     Convergence reached: Residuals vector is orthogonal to the columns of the Jacobian to machine "
         "precision"},
        {Rosenbrock,
         2,
         {-1.2, 1},
         1e-5f,
         7,
         false,
         "Convergence NOT reached: Number of calls to model function with iflag=1 has reached      7"},
        {Rosenbrock, 2, {-1.2, 1}, 1e-5f, 0, false, ""},
        {Noisy,
         3,
         {1},
         0,
         50,
         false,
         "Convergence NOT reached: Provided tolerance   0.0000     is too small! No further reduction in the sum of squares is possible"},
        {Edge,
         1,
         {5},
         0,
         50,
         false,
         "Convergence NOT reached: Provided tolerance   0.0000     is too small! No further improvement in the approximate solution x is "
         "possible"},
    };
    for (const Case& k : cases) {
        const Solved s = Solve(Model_Of(k.residuals), k.m, k.start, k.tol, k.icyc);
        EXPECT_EQ(s.run.infout, k.infout);
        EXPECT_EQ(s.c.reached, k.reached) << k.infout;
        EXPECT_LE(s.c.nfev, std::max(1, k.icyc));
    }
}

TEST(Least_Squares, RefusesWhatIsNoProblem) {
    for (const auto& [start, m, tol, numbers] :
         {std::tuple(std::vector<double>{}, 5, 1e-5f, "    0, number of observations:     5, tolerance:  0.0000100"),
          std::tuple(std::vector<double>{1, 2}, 1, 1e-5f, "    2, number of observations:     1, tolerance:  0.0000100"),
          std::tuple(std::vector<double>{1}, 5, -0.5f, "    1, number of observations:     5, tolerance: -0.5000000"),
          std::tuple(std::vector<double>{1}, 5, nan_value, "    1, number of observations:     5, tolerance:        NaN")}) {
        int calls = 0;
        const Solved s = Solve([&](auto...) { return ++calls; }, m, start, tol);
        EXPECT_EQ(s.run.infout,
                  std::string("Improper input parameters in LM-optimization (n,m,tol): nb of free (refined) parameters: ") + numbers);
        EXPECT_EQ(calls, 0);
        EXPECT_EQ(s.run.chi2, 1e35f);
    }
    const Solved one = Solve(Model_Of([](const Duals& x) { return Duals{3 - x[0]}; }), 1, {0});  // one observation: divided by 1
    EXPECT_TRUE(one.run.infout.starts_with("Initial Chi2: 0.90000E+01")) << one.run.infout;
    EXPECT_EQ(one.vs.parameters[0].pv, 3);
}

// (J'J)^-1 of the line is (385, -55; -55, 10) / 825.
TEST(Least_Squares, DeviationsOfAStraightLine) {
    const Solved s = Solve(Model_Of(Line), 10, {0, 0});
    EXPECT_NEAR(s.Value(0), 2, 2e-6);
    EXPECT_NEAR(s.Value(1), 3, 1e-6);
    EXPECT_NEAR(s.Deviation(0), std::sqrt(385 / 825.0), 1e-6);
    EXPECT_NEAR(s.Deviation(1), std::sqrt(10 / 825.0), 1e-6);
    ASSERT_EQ(s.run.inverse.size(), 4u);
    EXPECT_NEAR(s.run.inverse[1] / std::sqrt(s.run.inverse[0] * s.run.inverse[3]), -55 / std::sqrt(3850.0), 1e-6);
    EXPECT_EQ(s.run.names, (std::vector<std::string>{"p1", "p2"}));
}

TEST(Least_Squares, ParametersOfOneCodeMoveTogether) {
    LSQ_State_Vector vs;
    vs.code_given = true;
    vs.parameters = {{"second", 2, 9, -1, 0, 2}, {"fixed", 7, 9, 1, 0, 0}, {"first", 1, 9, 1, 0, 1}, {"twice", 10, 9, 2, 0, 1}};
    LSQ_Conditions c;
    c.npvar = 2;
    c.icyc = 20;
    const LSQ_Run run = LM_Der(Model_Of([](const Duals& x) { return Duals{10.0 * (5 - x[0]), 4.0 * (3 - x[1])}; }), 2, c, vs);
    const float known[][2] = {{1, -0.25f}, {7, 0}, {5, 0.1f}, {18, 0.2f}};
    for (std::size_t k = 0; k < 4; ++k) {
        EXPECT_FLOAT_EQ(vs.parameters[k].pv, known[k][0]) << k;
        EXPECT_FLOAT_EQ(vs.parameters[k].spv, known[k][1]) << k;
    }
    EXPECT_EQ(run.names, (std::vector<std::string>{"first", "second"}));
}

// A column of zeros is named; one that depends on others leaves the text, and is found behind the rounding of single precision.
TEST(Least_Squares, SingularMatrices) {
    const auto with_third = [](double of_first, double of_second) {
        return Model_Of([=](const Duals& x) {
            Duals f;
            for (int t = 1; t <= 20; ++t) {
                const double a = std::sqrt(t), b = std::exp(-0.1 * t);
                f.push_back(4 * a + 2 * b - (a * x[0] + b * x[1] + (of_first * a + of_second * b) * x[2]));
            }
            return f;
        });
    };
    for (const auto& [first, second, text] : {std::tuple(0.0, 0.0, "Final Singular Matrix!, problem with parameter #  3"),
                                              std::tuple(0.3, 0.7, "Initial Chi2:"), std::tuple(1.0, 0.0, "Initial Chi2:")}) {
        const Solved s = Solve(with_third(first, second), 20, {0, 0, 0});
        EXPECT_TRUE(s.run.infout.starts_with(text)) << s.run.infout;
        EXPECT_TRUE(s.run.lsq_error);
        EXPECT_EQ(s.run.lsq_message, " Singular Matrix at the end of LM_Der for calculating std deviations ...");
        EXPECT_TRUE(s.run.inverse.empty());
        EXPECT_TRUE(s.c.reached);
        EXPECT_NEAR(s.Value(0) + first * s.Value(2), 4, 1e-5);
        EXPECT_NEAR(s.Value(1) + second * s.Value(2), 2, 1e-5);
        for (std::size_t k = 0; k < 3; ++k) EXPECT_EQ(s.vs.parameters[k].spv, 0);
    }
}

TEST(Least_Squares, NumbersThatAreNotFinite) {
    // The first step from 20 leads to the logarithm of -20: it is shortened until e is found.
    const Solved step = Solve(Model_Of([](const Duals& x) { return Duals{log(x[0]) - 1}; }), 1, {20});
    EXPECT_TRUE(step.c.reached) << step.run.infout;
    EXPECT_NEAR(step.Value(0), std::numbers::e, 1e-6);

    const Solved start = Solve(Model_Of([](const Duals& x) { return Duals{log(x[0]), x[0]}; }), 2, {-1});
    EXPECT_FALSE(start.c.reached);
    EXPECT_EQ(start.run.infout, "");
    EXPECT_TRUE(std::isnan(start.run.chi2));
    EXPECT_EQ(start.Value(0), -1);

    const Solved slope = Solve(Model_Of([](const Duals& x) { return Duals{x[0] - 1, sqrt(x[1])}; }), 2, {5, 0});
    EXPECT_FALSE(slope.c.reached);
    EXPECT_EQ(slope.run.infout, "Final Singular Matrix!, problem with parameter #  2");
    EXPECT_EQ(slope.Value(0), 5);

    const Solved huge = Solve(Model_Of([](const Duals& x) { return Duals{1e20 * (3 - x[0]), 1e20 * (3 - x[0])}; }), 2, {1});
    EXPECT_NEAR(huge.Value(0), 3, 1e-6) << huge.run.infout;
    EXPECT_TRUE(huge.c.reached);
    EXPECT_EQ(Solve(Model_Of([](const Duals& x) { return Duals{1e20 + x[0]}; }), 1, {0}).run.chi2, 1e20f);  // the norm, not its square
}

// The user, or a negative answer of the model, ends a run: what was best by then stays, with its deviations.
TEST(Least_Squares, EndedRunsKeepTheBestValues) {
    const LSQ_Model model = Model_Of(Rosenbrock);
    for (const bool by_model : {false, true})
        for (int last = 2; last < 20; ++last) {
            Work_Control control;
            int calls = 0, prints = 0;
            double best = 1e9;
            LSQ_Conditions c;
            c.npvar = 2;
            c.icyc = 100;
            c.nprint = 2;
            LSQ_State_Vector vs;
            vs.parameters = {{"x", -1.2f, 0, 1, 0, 1}, {"y", 1, 0, 1, 0, 1}};
            const LSQ_Run run = LM_Der(
                [&](Model_Call call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac) {
                    model(call, x, fvec, fjac);
                    prints += call == Model_Call::print;
                    if (call != Model_Call::residuals) return 0;
                    if (++calls == last && by_model) return -1;
                    if (calls == last) control.Cancel();
                    best = std::min(best, Norm(std::span<const float>(fvec)));
                    return 0;
                },
                2, c, vs, &control);
            EXPECT_EQ(calls, last);
            EXPECT_EQ(run.infout, "");
            EXPECT_FALSE(c.reached);
            EXPECT_FLOAT_EQ(run.chi2, static_cast<float>(best * best));
            EXPECT_GT(vs.parameters[0].spv, 0);
            EXPECT_EQ(prints, (c.njev + 1) / 2 + 1) << c.njev;  // every second iteration, and at the end
        }
}

// Against sums in a higher precision; the same bits come out of any number of threads.
TEST(Least_Squares, ProductsDependOnNoThread) {
    constexpr int m = 20000, n = 40;
    Jacobian fjac(m, n);
    std::vector<float> fvec(m);
    std::mt19937 random(7);
    std::normal_distribution<float> normal;
    for (int k = 0; k < n; ++k) std::ranges::generate(fjac.Column(k).subspan(k * 200, m / 2), [&] { return normal(random); });
    std::ranges::generate(fvec, [&] { return normal(random); });

    const Normal_Equations all = Products_Of_Columns(fjac, m, n, fvec);
    for (int i = 0; i < n; i += 3)
        for (int j = 0; j < n; ++j) {
            long double sum = 0;
            for (std::size_t r = 0; r < m; ++r) sum += static_cast<long double>(fjac.Column(i)[r]) * fjac.Column(j)[r];
            ASSERT_NEAR(all.c(i, j), static_cast<double>(sum), 1e-9) << i << ' ' << j;
        }
    for (const unsigned threads : {1u, 2u, 3u, 8u, 20u}) {
        Normal_Equations other = Products_Of_Columns(fjac, m, n, fvec, threads);
        EXPECT_EQ(other.c.values(), Normal_Equations(all).c.values()) << threads;
        EXPECT_EQ(other.g, all.g);
    }
}

}  // namespace
}  // namespace vntl
