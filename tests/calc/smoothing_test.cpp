// Filters against closed forms, and the Fourier filter against its procedure done with plain sums.
#include "calc/smoothing.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

namespace vntl {
namespace {

constexpr double two_pi = 2 * std::numbers::pi;

std::vector<float> Filled(int n, auto value) {
    std::vector<float> y;
    for (int i = 0; i < n; ++i) y.push_back(static_cast<float>(value(i)));
    return y;
}

std::vector<float> Five_Points(std::vector<float> y) {
    Five_Point_Filter(y);
    return y;
}
std::vector<float> Fourier(std::vector<float> y, int window) {
    Fourier_Filter(y, window);
    return y;
}

double Variance(const std::vector<float>& y) {
    double sum = 0, squares = 0;
    for (const double v : y) sum += v, squares += v * v;
    const double n = static_cast<double>(y.size());
    return squares / n - (sum / n) * (sum / n);
}

std::vector<float> Noise(int n, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<float> normal;
    return Filled(n, [&](int) { return normal(random); });
}

TEST(Five_Point_Filter, KeepsCubicsTheEndsAndFewPoints) {
    const auto cubic = Filled(41, [](int i) { return 2 + i * (0.5 + i * (-0.25 + i * 0.0078125)); });
    const auto line = Filled(1000, [](int i) { return 1000 - 0.37 * i; });
    for (const auto& y : {cubic, line}) {
        const auto out = Five_Points(y);
        for (std::size_t i = 0; i < y.size(); ++i) EXPECT_NEAR(out[i], y[i], 1e-6 * 1100) << i;
    }
    const std::vector<float> spike = {1, 7, 0, 35, 0, 0, 0, 9, 4};  // 35 spreads as the coefficients -3, 12, 17, 12, -3 themselves
    EXPECT_EQ(Five_Points(spike), (std::vector<float>{1, 7, (-3 + 84 + 420) / 35.0f, (-21 + 17 * 35) / 35.0f, 12, (-3 * 35 - 27) / 35.0f,
                                                      (12 * 9 - 12) / 35.0f, 9, 4}));
    for (int n = 0; n <= 4; ++n) {
        const auto few = Filled(n, [](int i) { return i * i % 3; });
        EXPECT_EQ(Five_Points(few), few);
        if (n < 3) {
            EXPECT_EQ(Fourier(few, 5), few);
        }
    }
}

// The procedure, its transforms as plain sums in double precision.
struct Plain_Fourier {
    int n, p, m = 2, h = 0;

    Plain_Fourier(int points, int window) : n(points), p(window) {
        while (m < 2 * n + 2 * p) m *= 2;
        h = m / 2;
    }
    double Factor(int j) const {
        if (j == h / 2) return std::max(0.0, 1 - p * p / 4.0);
        return std::max(0.0, 1 - std::pow(static_cast<double>(j) * p / m, 2));
    }
    std::vector<double> Run(const std::vector<float>& y) const {
        std::vector<double> out(y.size());
        for (int j = 0; j <= h / 2; ++j) {
            if (Factor(j) == 0) continue;
            std::complex<double> sum = 0;
            for (int i = 0; i < n; ++i)
                sum += double(y[i]) * std::polar(1.0, two_pi * (static_cast<double>(static_cast<long>(i) * j % h)) / h);
            const double twice = j == 0 || j == h / 2 ? 1 : 2;
            for (int i = 0; i < n; ++i)
                out[i] += twice * Factor(j) / h *
                          (sum * std::polar(1.0, -two_pi * (static_cast<double>(static_cast<long>(i) * j % h)) / h)).real();
        }
        out.front() = out[1];
        out.back() = out[y.size() - 2];
        return out;
    }
};

TEST(Fourier_Filter, IsTheProcedureDoneWithPlainSums) {
    std::mt19937 random(7);
    for (const int n : {3, 4, 5, 7, 30, 62, 63, 64, 127, 251, 300})
        for (const int window : {1, 2, 3, 5, 20, 250}) {
            const auto y = Filled(n, [&](int i) { return 200 + 100 * std::sin(0.1 * i) + static_cast<double>(random() % 1000) / 10; });
            const auto out = Fourier(y, window);
            const auto expected = Plain_Fourier(n, window).Run(y);
            for (std::size_t i = 0; i < y.size(); ++i)
                ASSERT_NEAR(out[i], expected[i], 1e-3) << "point " << i << " of " << n << ", window " << window;
            EXPECT_EQ(out.front(), out[1]);
            EXPECT_EQ(out.back(), out[out.size() - 2]);
        }
}

// A cosine of frequency j of the h points behind which almost nothing is added comes back with the factor of j, away from its end.
TEST(Fourier_Filter, ACosineTakesTheFactorOfItsFrequency) {
    constexpr int h = 1 << 20, window = 250, n = h - window;
    const int last = 2 * h / window;  // the first frequency whose factor is 0
    struct {
        int j;
        double factor;
    } const cases[] = {{0, 1},
                       {1000, 1 - std::pow(1000.0 * window / (2 * h), 2)},
                       {6000, 1 - std::pow(6000.0 * window / (2 * h), 2)},
                       {last - 120, 1 - std::pow((last - 120.0) * window / (2 * h), 2)},
                       {last - 2, 0},  // a factor that sinks below 1e-8 of h takes all behind it along
                       {last + 1, 0},
                       {h / 4, 0}};
    for (const auto& [j, factor] : cases) {
        const auto out = Fourier(
            Filled(n, [j = j](int i) { return std::cos(two_pi * (static_cast<double>(static_cast<long>(i) * j % h)) / h); }), window);
        for (int i = n / 3; i < n / 3 + 2000; ++i)
            ASSERT_NEAR(out[i], factor * std::cos(two_pi * (static_cast<double>(static_cast<long>(i) * j % h)) / h), 2e-4) << j << ' ' << i;
    }
}

TEST(Filters, WhiteNoiseLosesTheStatedVariance) {
    EXPECT_NEAR(Variance(Five_Points(Noise(200000, 5))), (9 + 144 + 289 + 144 + 9) / 1225.0, 0.01);
    constexpr int n = 130000;
    for (const int window : {1, 5, 40}) {
        const Plain_Fourier plain(n, window);
        double expected = std::pow(plain.Factor(0), 2) + std::pow(plain.Factor(plain.h / 2), 2);
        for (int j = 1; j < plain.h / 2; ++j) expected += 2 * std::pow(plain.Factor(j), 2);
        expected /= plain.h;
        EXPECT_NEAR(Variance(Fourier(Noise(n, 11), window)) / expected, 1, window > 5 ? 0.05 : 0.02) << window;
    }
}

}  // namespace
}  // namespace vntl
