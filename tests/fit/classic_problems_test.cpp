// The solver against the test collection of its algorithm's authors: J. J. More, B. S. Garbow and K. E. Hillstrom, ACM Trans. Math. Softw.
// 7 (1981) 17-41, least-squares problems 1 to 18 from the standard starting points and, where a row says so, from 10 and 100 times these.
// Known are the sums of squares of the minima there.
#include <gtest/gtest.h>

#include <numbers>

#include "published_problems.hpp"

namespace vntl {
namespace {

const std::vector<double> bard_y = {.14, .18, .22, .25, .29, .32, .35, .39, .37, .58, .73, .96, 1.34, 2.1, 4.39};
const std::vector<double> osborne2_y = {
    1.366, 1.191, 1.112, 1.013, .991, .885, .831, .847, .786, .725, .746, .679, .608, .655, .616, .606, .602, .626, .651, .724, .649, .649,
    .694,  .644,  .624,  .661,  .612, .558, .533, .495, .5,   .423, .395, .375, .372, .391, .396, .405, .428, .429, .523, .562, .607, .653,
    .672,  .708,  .633,  .668,  .645, .632, .591, .559, .597, .625, .739, .71,  .729, .72,  .636, .581, .428, .292, .162, .098, .054};

// Residuals f_i = of(i) for i from 0.
template <class Row>
Duals Rows(int m, Row row) {
    Duals f;
    for (int i = 0; i < m; ++i) f.push_back(row(i));
    return f;
}

// The sum of a * x_j over the variables, j from 1.
template <class Factor>
Dual Sum(const Duals& x, Factor factor) {
    Dual sum;
    for (std::size_t j = 0; j < x.size(); ++j) sum = sum + Dual(factor(static_cast<int>(j) + 1)) * x[j];
    return sum;
}

Duals Watson(const Duals& x) {
    Duals f = Rows(29, [&](int i) {
        const double t = (i + 1) / 29.0;
        return Sum(x, [t](int j) { return j > 1 ? (j - 1) * std::pow(t, j - 2) : 0; }) -
               sq(Sum(x, [t](int j) { return std::pow(t, j - 1); })) - 1;
    });
    f.push_back(x[0]);
    f.push_back(x[1] - sq(x[0]) - 1);
    return f;
}

// Means of the shifted Chebyshev polynomials less their integrals.
Duals Chebyquad(const Duals& x) {
    Duals f(x.size());
    for (const Dual& value : x) {
        const Dual twice = 2.0 * value - 1;
        Dual last = 1, now = twice;
        for (Dual& mean : f) {
            mean = mean + now / static_cast<double>(x.size());
            last = std::exchange(now, 2.0 * twice * now - last);
        }
    }
    for (std::size_t i = 2; i <= f.size(); i += 2) f[i - 1] = f[i - 1] + 1.0 / static_cast<double>(i * i - 1);
    return f;
}

Duals Almost_Linear(const Duals& x) {
    Dual product = 1;
    for (const Dual& value : x) product = product * value;
    Duals f = Rows(static_cast<int>(x.size()) - 1, [&](int i) {
        return x[static_cast<std::size_t>(i)] + Sum(x, [](int) { return 1; }) - static_cast<double>(x.size() + 1);
    });
    f.push_back(product - 1);
    return f;
}

Dual Helix_Angle(const Duals& x) { return atan(x[1] / x[0]) / (2 * std::numbers::pi) + (x[0].v < 0 ? 0.5 : 0.0); }

struct Problem {
    const char* name;
    int m;
    std::vector<double> start;
    std::vector<int> factors;    // of the starting point
    std::vector<double> minima;  // sums of squares
    double digits;               // demanded; of a minimum that is 0, of its size
    Residuals residuals;
};

const std::vector<Problem> problems = {
    {"linear, full rank",
     50,
     {1, 1, 1, 1, 1},
     {1},
     {45},
     6,
     [](const Duals& x) {
         return Rows(50,
                     [&](int i) { return (i < 5 ? x[static_cast<std::size_t>(i)] : Dual()) - Sum(x, [](int) { return 2 / 50.0; }) - 1; });
     }},
    {"linear, rank 1",
     10,
     {1, 1, 1, 1, 1},
     {1},
     {90 / 42.0},
     6,
     [](const Duals& x) { return Rows(10, [&](int i) { return (i + 1.0) * Sum(x, [](int j) { return j; }) - 1; }); }},
    {"linear, rank 1, zero columns and rows",
     10,
     {1, 1, 1, 1, 1},
     {1},
     {124 / 34.0},
     6,
     [](const Duals& x) {
         return Rows(10, [&](int i) { return (i < 9 ? i : 0.0) * Sum(x, [](int j) { return j > 1 && j < 5 ? j : 0; }) - 1; });
     }},
    {"Rosenbrock",
     2,
     {-1.2, 1},
     {1, 10, 100},
     {0},
     10,
     [](const Duals& x) {
         return Duals{10.0 * (x[1] - sq(x[0])), 1 - x[0]};
     }},
    {"helical valley",
     3,
     {-1, 0, 0},
     {1, 10, 100},
     {0},
     10,
     [](const Duals& x) {
         return Duals{10.0 * (x[2] - 10.0 * Helix_Angle(x)), 10.0 * (sqrt(sq(x[0]) + sq(x[1])) - 1), x[2]};
     }},
    {"Powell, singular",
     4,
     {3, -1, 0, 1},
     {1, 10, 100},
     {0},
     10,
     [](const Duals& x) {
         return Duals{x[0] + 10.0 * x[1], std::sqrt(5) * (x[2] - x[3]), sq(x[1] - 2.0 * x[2]), std::sqrt(10) * sq(x[0] - x[3])};
     }},
    {"Freudenstein and Roth",
     2,
     {0.5, -2},
     {1, 10, 100},
     {0, 48.9842},
     5,
     [](const Duals& x) {
         return Duals{-13 + x[0] + ((5 - x[1]) * x[1] - 2) * x[1], -29 + x[0] + ((x[1] + 1) * x[1] - 14) * x[1]};
     }},
    {"Bard",
     15,
     {1, 1, 1},
     {1, 10, 100},
     {8.21487e-3, 17.4286},
     4.5,
     [](const Duals& x) {
         return Rows(15, [&](int i) {
             const double u = i + 1, v = 15 - i;
             return bard_y[static_cast<std::size_t>(i)] - (x[0] + u / (v * x[1] + std::min(u, v) * x[2]));
         });
     }},
    {"Kowalik and Osborne",
     11,
     {.25, .39, .415, .39},
     {1, 10, 100},
     {3.07505e-4, 1.02734e-3},
     4.5,
     [](const Duals& x) {
         return Rows(11, [&](int i) {
             const double u = kowalik_u[static_cast<std::size_t>(i)];
             return kowalik_y[static_cast<std::size_t>(i)] - x[0] * (u * u + u * x[1]) / (u * u + u * x[2] + x[3]);
         });
     }},
    {"Meyer",
     16,
     {.02, 4000, 250},
     {1},
     {87.9458},
     4.5,
     [](const Duals& x) {
         return Rows(16, [&](int i) { return x[0] * exp(x[1] / (50.0 + 5 * i + x[2])) - meyer_y[static_cast<std::size_t>(i)]; });
     }},
    {"Watson, 6", 31, {0, 0, 0, 0, 0, 0}, {1}, {2.28767e-3}, 5, Watson},
    {"Watson, 9", 31, {0, 0, 0, 0, 0, 0, 0, 0, 0}, {1}, {1.39976e-6}, 5, Watson},
    {"Box, three-dimensional",
     10,
     {0, 10, 20},
     {1},
     {0},
     10,
     [](const Duals& x) {
         return Rows(10, [&](int i) {
             const double t = 0.1 * (i + 1);
             return exp(-t * x[0]) - exp(-t * x[1]) - x[2] * (std::exp(-t) - std::exp(-10 * t));
         });
     }},
    {"Jennrich and Sampson",
     10,
     {.3, .4},
     {1},
     {124.362},
     5,
     [](const Duals& x) { return Rows(10, [&](int i) { return 4.0 + 2 * i - (exp((i + 1.0) * x[0]) + exp((i + 1.0) * x[1])); }); }},
    {"Brown and Dennis",
     20,
     {25, 5, -5, -1},
     {1, 10, 100},
     {85822.2},
     5,
     [](const Duals& x) {
         return Rows(20, [&](int i) {
             const double t = 0.2 * (i + 1);
             return sq(x[0] + t * x[1] - std::exp(t)) + sq(x[2] + std::sin(t) * x[3] - std::cos(t));
         });
     }},
    {"Chebyquad, 8", 8, {1 / 9., 2 / 9., 3 / 9., 4 / 9., 5 / 9., 6 / 9., 7 / 9., 8 / 9.}, {1}, {3.51687e-3}, 5, Chebyquad},
    {"Chebyquad, 9", 9, {.1, .2, .3, .4, .5, .6, .7, .8, .9}, {1}, {0}, 10, Chebyquad},
    {"Brown, almost linear", 10, {.5, .5, .5, .5, .5, .5, .5, .5, .5, .5}, {1}, {0, 1}, 5, Almost_Linear},
    {"Osborne 1",
     33,
     {.5, 1.5, -1, .01, .02},
     {1},
     {5.46489e-5},
     4.5,
     [](const Duals& x) {
         return Rows(33, [&](int i) {
             return osborne_y[static_cast<std::size_t>(i)] - (x[0] + x[1] * exp(-10.0 * i * x[3]) + x[2] * exp(-10.0 * i * x[4]));
         });
     }},
    {"Osborne 2",
     65,
     {1.3, .65, .65, .7, .6, 3, 5, 7, 2, 4.5, 5.5},
     {1},
     {4.01377e-2},
     5,
     [](const Duals& x) {
         return Rows(65, [&](int i) {
             const double t = 0.1 * i;
             Dual y = x[0] * exp(-t * x[4]);
             for (std::size_t k = 1; k < 4; ++k) y = y + x[k] * exp(-1.0 * sq(t - x[k + 7]) * x[k + 4]);
             return osborne2_y[static_cast<std::size_t>(i)] - y;
         });
     }},
};

TEST(Classic_Problems, ReachTheirMinima) {
    for (const Problem& p : problems)
        for (const int factor : p.factors) {
            std::vector<double> start = p.start;
            for (double& value : start) value *= factor;
            const Solved s = Solve(Model_Of(p.residuals), p.m, start);
            SCOPED_TRACE(std::string(p.name) + " from " + std::to_string(factor) + ": " + s.run.infout);
            const double sum = s.Sum_Of_Squares();
            double digits = 0;
            for (const double minimum : p.minima) digits = std::max(digits, minimum != 0 ? Digits(sum, minimum) : -std::log10(sum));
            EXPECT_GE(digits, p.digits);
            EXPECT_TRUE(s.c.reached);
        }
}

}  // namespace
}  // namespace vntl
