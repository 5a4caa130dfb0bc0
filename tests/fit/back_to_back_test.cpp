// The peak shape of a pulsed source against tests/data/fit/back_to_back.py: adaptive quadrature of the defining convolution, central
// differences at 60 digits, and the exponential integral of mpmath.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <numbers>
#include <sstream>

#include "fit/back_to_back.hpp"
#include "fit/exponential_integral.hpp"

namespace vntl {
namespace {

using Complex = std::complex<double>;

template <std::size_t columns>
std::vector<std::array<double, columns>> Table(const std::string& name) {
    std::ifstream file(TEST_DATA "/fit/" + name);
    std::vector<std::array<double, columns>> rows;
    std::string line;
    while (std::getline(file, line)) {
        if (line.starts_with('#')) continue;
        std::istringstream fields(line);
        for (double& value : rows.emplace_back()) fields >> value;
        EXPECT_FALSE(fields.fail()) << line;
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}

TEST(Exponential_Integral, AgreesWithTheTable) {
    for (const auto& [re, im, value_re, value_im] : Table<4>("exponential_integral.tsv")) {
        const Complex value(value_re, value_im);
        EXPECT_LE(std::abs(Scaled_Exponential_Integral({re, im}) - value), 1e-12 * std::abs(value)) << re << " " << im;
    }
}

// Lines from the far left to the far right, in both directions, at points close together and far apart: as point by point.
TEST(Exponential_Integral, IsTheSameAlongALine) {
    for (const double height : {1e-6, 0.01, 1.0, 20.0})
        for (const double rate : {0.05, -3.0})
            for (const double step : {0.01, 1.7, 60.0}) {
                std::vector<double> delta, re(301), im(301);
                for (int k = -150; k <= 150; ++k) delta.push_back(k * step / std::fabs(rate));
                Scaled_Exponential_Integral_On_Line(rate, height, delta, re, im);
                for (std::size_t k = 0; k < delta.size(); ++k) {
                    const Complex value = Scaled_Exponential_Integral({rate * delta[k], height});
                    ASSERT_LE(std::abs(Complex(re[k], im[k]) - value), 1e-9 * std::abs(value)) << height << " " << rate * delta[k];
                }
            }
}

constexpr double fwhm_of_sigma = 2.3548200450309493;

Shape_Curve Shape_At(const Back_To_Back& shape, std::vector<float> x) {
    Shape_Curve curve;
    Draw_Shape(shape, 0, x, curve);
    return curve;
}

// Largest size of each column of the rows of one peak: what is told of the whole curve is told of these.
constexpr std::size_t places = 7;
std::array<double, 14> Sizes(const std::vector<std::array<double, 14>>& rows, std::size_t row) {
    std::array<double, 14> sizes{};
    for (std::size_t k = row - row % places; k < row - row % places + places; ++k)
        for (std::size_t c = 0; c < sizes.size(); ++c) sizes[c] = std::max(sizes[c], std::fabs(rows[k][c]));
    return sizes;
}

TEST(Back_To_Back, AgreesWithTheConvolution) {
    const auto rows = Table<14>("back_to_back.tsv");
    constexpr int gaussian[] = {4, 6, 7, 8, 9}, lorentzian[] = {5, 10, 11, 12, 13};
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::array<double, 14>&r = rows[row], sizes = Sizes(rows, row);
        for (const double eta : {-1.0, 0.0, 0.4, 1.0}) {  // -1 stands for the Gaussian form alone
            const double share = std::max(0.0, eta);
            const float x[] = {static_cast<float>(r[3])};
            Shape_Curve curve;
            Draw_Shape({r[0], r[1], fwhm_of_sigma * r[2], eta, eta >= 0}, static_cast<double>(x[0]) - r[3], x, curve);
            const float found[] = {curve.value[0], curve.by_delta[0], curve.by_alpha[0], curve.by_beta[0], curve.by_variance[0]};
            for (std::size_t q = 0; q < std::size(found); ++q) {
                const auto g = static_cast<std::size_t>(gaussian[q]), l = static_cast<std::size_t>(lorentzian[q]);
                EXPECT_NEAR(static_cast<double>(found[q]), (1 - share) * r[g] + share * r[l], 2e-6 * std::max(sizes[g], sizes[l]))
                    << "alpha " << r[0] << " beta " << r[1] << " sigma " << r[2] << " delta " << r[3] << " eta " << eta << " quantity "
                    << q;
            }
            ASSERT_EQ(curve.by_eta.size(), eta >= 0 ? 1u : 0u);
            for (const float by_eta : curve.by_eta)
                EXPECT_NEAR(static_cast<double>(by_eta), r[5] - r[4], 1e-6 * std::max(sizes[4], sizes[5]));
        }
    }
}

TEST(Back_To_Back, TendsToItsLimits) {
    // Without a width: the exponentials alone.
    for (const double eta : {0.0, 0.7}) {
        const Shape_Curve sharp = Shape_At({0.2, 0.05, 0, eta, true}, {-20, -1, -0.01f, 0, 0.01f, 1, 60});
        const double delta[] = {-20, -1, -0.01, 0, 0.01, 1, 60};
        for (std::size_t k = 0; k < std::size(delta); ++k)
            EXPECT_NEAR(static_cast<double>(sharp.value[k]), 0.04 * std::exp(delta[k] * (delta[k] < 0 ? 0.2 : -0.05)), 2e-6) << delta[k];
    }
    // With steep exponentials, u and v up to ten millions: the Gaussian alone.
    const Shape_Curve steep = Shape_At({50, 40, fwhm_of_sigma * 100, 0, false}, {-350, -100, 0, 100, 350});
    const double x[] = {-350, -100, 0, 100, 350};
    for (std::size_t k = 0; k < std::size(x); ++k)
        EXPECT_NEAR(static_cast<double>(steep.value[k]), std::exp(-x[k] * x[k] / 20000) / (100 * std::sqrt(2 * std::numbers::pi)), 1e-6)
            << x[k];
}

TEST(Back_To_Back, HasNoValueWhereThereIsNoShape) {
    const double nan = std::nan("");
    for (const Back_To_Back& shape : {Back_To_Back{0, 1, 1, 0, true},
                                      {1, -0.5, 1, 0, false},
                                      {nan, 1, 1, 0, true},
                                      {1, 1, nan, 0, true},
                                      {1, 1, 1, nan, true},
                                      {1, 1, INFINITY, 0, true}})
        for (const float value : Shape_At(shape, {-1, 0, 1}).value) EXPECT_TRUE(std::isnan(value));
}

}  // namespace
}  // namespace vntl
