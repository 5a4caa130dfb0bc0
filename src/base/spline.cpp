// Cubic spline: elimination of the tridiagonal system and evaluation, see spline.hpp.
#include "base/spline.hpp"

#include <algorithm>
#include <cstddef>

namespace vntl {

std::vector<double> Spline(std::span<const double> x, std::span<const double> y, double first_slope, double last_slope) {
    const std::size_t n = x.size();
    std::vector<double> m(n, 0.0);
    if (n < 2) return m;
    // Forward: each row becomes m(i) + above(i) m(i+1) = right(i), with right(i) kept in m(i).
    std::vector<double> above(n, 0.0);
    const auto slope = [&](std::size_t i) { return (y[i + 1] - y[i]) / (x[i + 1] - x[i]); };
    if (!(first_slope > natural_end_limit)) {
        above[0] = 0.5;
        m[0] = 3.0 * (slope(0) - first_slope) / (x[1] - x[0]);
    }
    for (std::size_t i = 1; i + 1 < n; ++i) {
        const double before = x[i] - x[i - 1];
        const double behind = x[i + 1] - x[i];
        const double pivot = 2.0 * (before + behind) - before * above[i - 1];
        above[i] = behind / pivot;
        m[i] = (6.0 * (slope(i) - slope(i - 1)) - before * m[i - 1]) / pivot;
    }
    if (last_slope > natural_end_limit) {
        m[n - 1] = 0;
    } else {
        const double h = x[n - 1] - x[n - 2];
        m[n - 1] = (6.0 * (last_slope - slope(n - 2)) / h - m[n - 2]) / (2.0 - above[n - 2]);
    }
    for (std::size_t i = n - 1; i-- > 0;) m[i] -= above[i] * m[i + 1];
    return m;
}

double Splint(std::span<const double> x, std::span<const double> y, std::span<const double> m, double at) {
    if (x.size() < 2) return y.empty() ? 0.0 : y[0];
    const auto above = std::upper_bound(x.begin() + 1, x.end() - 1, at);
    const std::size_t right = static_cast<std::size_t>(above - x.begin());
    const std::size_t left = right - 1;
    const double h = x[right] - x[left];
    const double a = (x[right] - at) / h;
    const double b = (at - x[left]) / h;
    return a * y[left] + b * y[right] + ((a * a * a - a) * m[left] + (b * b * b - b) * m[right]) * h * h / 6.0;
}

}  // namespace vntl
