#include "fit/exponential_integral.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace vntl {

namespace {

using Complex = std::complex<double>;

constexpr double euler_constant = 0.57721566490153286, negligible = 1e-17;

// |Re| + |Im|: as good as the modulus for telling a small term.
double Size(Complex w) { return std::fabs(w.real()) + std::fabs(w.imag()); }

// E1(w) = -gamma - ln w - sum of (-w)^k/(k k!). What cancels in the sum costs e^(|w| + Re w) of the precision.
Complex Power_Series(Complex w) {
    constexpr int most_terms = 200;
    Complex power = 1, sum = 0;
    for (int k = 1; k <= most_terms; ++k) {
        power *= -w / static_cast<double>(k);
        const Complex term = power / static_cast<double>(k);
        sum += term;
        if (Size(term) < negligible * Size(sum)) break;
    }
    return std::exp(w) * (-euler_constant - std::log(w) - sum);
}

// The sum of (-1)^k k!/w^(k+1), up to its smallest term; for |w| of 40 and more that is below rounding.
Complex Asymptotic_Series(Complex w) {
    const Complex v = 1.0 / w;
    Complex term = v, sum = v;
    for (int k = 1; k < std::abs(w) && Size(term) > negligible * Size(sum); ++k) {
        term *= -v * static_cast<double>(k);
        sum += term;
    }
    return sum;
}

// 1/(w + 1 - 1/(w + 3 - 4/(w + 5 - 9/(w + 7 - ...)))). Its error falls as exp(-4 sqrt(depth (|w| + Re w)/2)).
Complex Continued_Fraction(Complex w) {
    constexpr int depth = 18;
    Complex foot = w + (2.0 * depth + 1);
    for (int k = depth; k > 0; --k) {
        const double scale = -k * k / std::norm(foot);
        foot = Complex(w.real() + (2 * k - 1) + scale * foot.real(), w.imag() - scale * foot.imag());
    }
    return 1.0 / foot;
}

// A Taylor series around a point of a line.
struct Expansion {
    static constexpr int degree = 10;
    std::array<double, degree + 1> re, im;
};

// E' = E - 1/w gives every coefficient from the one before.
Expansion Expand(Complex w) {
    Expansion e;
    const Complex v = 1.0 / w;
    Complex coefficient = Scaled_Exponential_Integral(w), power = v;  // (-1)^k/w^(k+1)
    for (int k = 0;; ++k) {
        e.re[static_cast<std::size_t>(k)] = coefficient.real();
        e.im[static_cast<std::size_t>(k)] = coefficient.imag();
        if (k == Expansion::degree) return e;
        coefficient = (coefficient - power) / (k + 1.0);
        power *= -v;
    }
}

}  // namespace

Complex Scaled_Exponential_Integral(Complex w) {
    // The fraction is good outside a parabola about the negative axis, the power series inside. Both are there when the other fails.
    constexpr double parabola = 8, far = 40;
    const double size = std::abs(w);
    if (size + w.real() > parabola) return Continued_Fraction(w);
    return size > far ? Asymptotic_Series(w) : Power_Series(w);
}

void Scaled_Exponential_Integral_On_Line(double rate, double height, std::span<const double> delta, std::span<double> re,
                                         std::span<double> im) {
    // A series serves the points around it, up to a ninth of the distance to w = 0, where E is singular: the term of degree 11 is 1e-12
    // there. Rounding of its middle grows as e^h with the distance h from the middle, which bounds that too.
    constexpr double part_of_distance = 0.1, farthest = 8;
    for (std::size_t begin = 0; begin < delta.size();) {
        const Complex first(rate * delta[begin], height);
        const double reach = std::min(part_of_distance * std::abs(first), farthest);
        const double middle = first.real() + std::copysign(reach, rate);
        const auto behind = std::upper_bound(delta.begin() + static_cast<std::ptrdiff_t>(begin) + 1, delta.end(),
                                             delta[begin] + 2 * reach / std::fabs(rate));
        const auto end = static_cast<std::size_t>(behind - delta.begin());
        const Expansion e = Expand({middle, height});
        for (std::size_t j = begin; j < end; ++j) {
            const double h = rate * delta[j] - middle;
            double sum_re = e.re[Expansion::degree], sum_im = e.im[Expansion::degree];
            for (std::size_t k = Expansion::degree; k-- > 0;) {
                sum_re = sum_re * h + e.re[k];
                sum_im = sum_im * h + e.im[k];
            }
            re[j] = sum_re;
            im[j] = sum_im;
        }
        begin = end;
    }
}

}  // namespace vntl
