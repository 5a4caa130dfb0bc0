// The Fourier filter packs h real points as h/2 complex ones: even points real, odd points imaginary.
//
// Its transforms leave the frequencies where the halving of the points puts them, in bit-reversed order, since what stands between them,
// a factor for each frequency, needs no other. Block b of the blocks of one size then has a single root of unity, exp(-i pi r(b)), where
// r(0), r(1), ... = 0, 1/2, 1/4, 3/4, 1/8, ... are the reversed binary fractions: one table serves blocks of every size, and frequency
// place i of h/2 holds the frequency r(i) h/2. For 2^20 points the whole filter takes 15 ms; a library transform alone, that of Eigen, 51.
#include "calc/smoothing.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace vntl {
namespace {

struct Complex {
    double re = 0, im = 0;
};
Complex operator+(Complex a, Complex b) { return {a.re + b.re, a.im + b.im}; }
Complex operator-(Complex a, Complex b) { return {a.re - b.re, a.im - b.im}; }
Complex operator*(Complex a, Complex b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
Complex operator*(double s, Complex a) { return {s * a.re, s * a.im}; }
Complex Conjugate(Complex a) { return {a.re, -a.im}; }
Complex Times_I(Complex a) { return {-a.im, a.re}; }

// Roots of unity in the order of the blocks; each doubling of the table is a turn of what is there.
void Fill_Roots(std::span<Complex> roots) {
    roots[0] = {1, 0};
    for (std::size_t n = 1; n < roots.size(); n *= 2) {
        const double angle = -std::numbers::pi / (2 * static_cast<double>(n));
        const Complex turn{std::cos(angle), std::sin(angle)};
        for (std::size_t i = 0; i < n; ++i) roots[n + i] = roots[i] * turn;
    }
}

// The roots by which a block's second, third and fourth quarter are turned when it is halved twice.
struct Quarter_Roots {
    Complex second, third, fourth;
    Quarter_Roots(const Complex* roots, std::size_t block) : second(roots[2 * block]), third(roots[block]), fourth(second * third) {}
};

// Quarters before halves, each to its end before the next: what fits a cache stays there.
void Forward(Complex* x, std::size_t n, std::size_t block, const Complex* roots) {
    if (n == 2) {
        const Complex a = x[0], b = roots[block] * x[1];
        x[0] = a + b;
        x[1] = a - b;
        return;
    }
    const std::size_t quarter = n / 4;
    const Quarter_Roots root(roots, block);
    for (std::size_t j = 0; j < quarter; ++j) {
        const Complex a = x[j], b = root.second * x[j + quarter];
        const Complex c = root.third * x[j + 2 * quarter], d = root.fourth * x[j + 3 * quarter];
        const Complex sum = b + d, turned = Times_I(b - d);
        x[j] = a + c + sum;
        x[j + quarter] = a + c - sum;
        x[j + 2 * quarter] = a - c - turned;
        x[j + 3 * quarter] = a - c + turned;
    }
    if (quarter == 1) return;
    for (std::size_t q = 0; q < 4; ++q) Forward(x + q * quarter, quarter, 4 * block + q, roots);
}

// Undoes `Forward`, with a factor n.
void Backward(Complex* x, std::size_t n, std::size_t block, const Complex* roots) {
    if (n == 2) {
        const Complex a = x[0], b = x[1];
        x[0] = a + b;
        x[1] = Conjugate(roots[block]) * (a - b);
        return;
    }
    const std::size_t quarter = n / 4;
    if (quarter > 1)
        for (std::size_t q = 0; q < 4; ++q) Backward(x + q * quarter, quarter, 4 * block + q, roots);
    const Quarter_Roots root(roots, block);
    for (std::size_t j = 0; j < quarter; ++j) {
        const Complex a = x[j] + x[j + quarter], b = x[j] - x[j + quarter];
        const Complex c = x[j + 2 * quarter] + x[j + 3 * quarter], d = Times_I(x[j + 2 * quarter] - x[j + 3 * quarter]);
        x[j] = a + c;
        x[j + quarter] = Conjugate(root.second) * (b + d);
        x[j + 2 * quarter] = Conjugate(root.third) * (a - c);
        x[j + 3 * quarter] = Conjugate(root.fourth) * (b - d);
    }
}

// What the filter leaves of each frequency of `points` real points.
class Low_Pass {
public:
    Low_Pass(std::size_t points, int window)
        : window_(window), c_(Square(window / (2 * static_cast<double>(points)))), least_(1e-8 * static_cast<double>(points)) {}

    double Factor(std::size_t frequency) const {
        const auto j = static_cast<double>(frequency);
        if (frequency > 1 && 1 - Square(j - 1) * c_ <= least_) return 0;
        return std::max(0.0, 1 - Square(j) * c_);
    }
    double Highest() const { return std::max(0.0, 1 - Square(window_) / 4); }

private:
    static double Square(double v) { return v * v; }
    double window_, c_, least_;
};

// The even points' frequency k is E, the odd ones' O; together they make E + wO at frequency k and, conjugate, E - wO at h/2 - k. Factors
// of their own for these two mix E and O. `a` and `b`, E + iO and the conjugate of E - iO, may be one.
void Weigh_Pair(Complex& a, Complex& b, Complex w, double factor_a, double factor_b) {
    const Complex even = 0.5 * (a + Conjugate(b)), i_odd = 0.5 * (a - Conjugate(b));
    const double mean = (factor_a + factor_b) / 2, half_difference = (factor_a - factor_b) / 2;
    const Complex odd = Conjugate(Times_I(Conjugate(i_odd)));
    const Complex new_even = mean * even + half_difference * (w * odd);
    const Complex new_i_odd = Times_I(mean * odd + half_difference * (Conjugate(w) * even));
    a = new_even + new_i_odd;
    b = Conjugate(new_even - new_i_odd);
}

// The next higher fraction place in reversed binary: a carry runs from the highest bit down.
std::size_t Next_Reversed(std::size_t k, std::size_t highest) {
    for (; (k & highest) != 0; highest /= 2) k ^= highest;
    return k | highest;
}

// Frequencies k and n - k stand at places that are mirrored within each stretch from a power of two to the next.
void Weigh(std::span<Complex> x, std::span<const Complex> roots, const Low_Pass& pass) {
    const std::size_t n = x.size();
    Weigh_Pair(x[0], x[0], roots[0], 1, pass.Highest());
    Weigh_Pair(x[1], x[1], roots[1], pass.Factor(n / 2), pass.Factor(n / 2));
    for (std::size_t first = 2; first < n; first *= 2) {
        std::size_t k = n / (2 * first);
        for (std::size_t i = first, mirror = 2 * first - 1; i < mirror; ++i, --mirror, k = Next_Reversed(k, n / 2))
            Weigh_Pair(x[i], x[mirror], roots[i], pass.Factor(k), pass.Factor(n - k));
    }
}

std::size_t Transform_Length(std::size_t points, int window) {
    std::size_t h = 1;
    while (h < points + static_cast<std::size_t>(window)) h *= 2;
    return h;
}

}  // namespace

void Five_Point_Filter(std::span<float> y) {
    if (y.size() < 5) return;
    double before2 = y[0], before1 = y[1];
    for (std::size_t i = 2; i + 2 < y.size(); ++i) {
        const double here = y[i];
        y[i] = static_cast<float>((-3 * before2 + 12 * before1 + 17 * here + 12 * double{y[i + 1]} - 3 * double{y[i + 2]}) / 35);
        before2 = before1;
        before1 = here;
    }
}

void Fourier_Filter(std::span<float> y, int window) {
    const std::size_t points = y.size();
    if (points < 3) return;
    const std::size_t h = Transform_Length(points, window), n = h / 2;
    std::vector<Complex> work(h);  // the points, and the roots
    const std::span<Complex> x(work.data(), n), roots(work.data() + n, n);
    Fill_Roots(roots);

    for (std::size_t i = 0; i < points; ++i) (i % 2 == 0 ? x[i / 2].re : x[i / 2].im) = y[i];
    Forward(x.data(), n, 0, roots.data());
    Weigh(x, roots, Low_Pass(h, window));
    Backward(x.data(), n, 0, roots.data());

    const double scale = 1 / static_cast<double>(n);
    for (std::size_t i = 1; i + 1 < points; ++i) y[i] = static_cast<float>(scale * (i % 2 == 0 ? x[i / 2].re : x[i / 2].im));
    y.front() = y[1];
    y.back() = y[points - 2];
}

}  // namespace vntl
