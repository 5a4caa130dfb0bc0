#include "calc/search_curve.hpp"

#include <algorithm>

namespace vntl {

int Column::First_Above(int lo, int hi, double limit, int none) const {
    if (lo > hi) return none;
    const auto first = values_.begin() + lo, end = values_.begin() + hi + 1;
    const auto found = std::upper_bound(first, end, limit);
    return found == end ? none : static_cast<int>(found - values_.begin());
}

Column Loose_Spline(const Column& x, const Column& y) {
    const int n = x.size();
    Column second(static_cast<std::size_t>(n)), u(static_cast<std::size_t>(n));
    if (n < 2) return second;
    second(1) = -0.5;
    for (int i = 2; i < n; ++i) {
        const double width = x(i + 1) - x(i - 1), sig = (x(i) - x(i - 1)) / width;
        const double p = sig * second(i - 1) + 2;
        const double bend = (y(i + 1) - y(i)) / (x(i + 1) - x(i)) - (y(i) - y(i - 1)) / (x(i) - x(i - 1));
        second(i) = (sig - 1) / p;
        u(i) = (6 * bend / width - sig * u(i - 1)) / p;
    }
    second(n) = (0 - 0.5 * u(n - 1)) / (1 + 0.5 * second(n - 1));
    for (int i = n - 1; i >= 1; --i) second(i) = second(i) * second(i + 1) + u(i);
    return second;
}

double Spline_Value(const Column& x, const Column& y, const Column& second, int left, double at) {
    const double h = x(left + 1) - x(left), a = (x(left + 1) - at) / h, b = (at - x(left)) / h;
    return a * y(left) + b * y(left + 1) + ((a * a * a - a) * second(left) + (b * b * b - b) * second(left + 1)) * (h * h) / 6;
}

int Interval_Of(const Column& x, double at) {
    const int behind = x.First_Above(1, x.size(), at, x.size());
    return std::clamp(behind - 1, 1, std::max(x.size() - 1, 1));
}

Column First_Derivative(const Column& x, const Column& y, const Column& second, int m) {
    Column slope(static_cast<std::size_t>(m));
    for (int i = 1; i <= m; ++i) {
        const double h = i < m ? x(i + 1) - x(i) : x(m) - x(m - 1);
        const int before = std::max(i - 1, 1), behind = std::min(i, m - 1);
        slope(i) = (Spline_Value(x, y, second, behind, x(i) + 0.5 * h) - Spline_Value(x, y, second, before, x(i) - 0.5 * h)) / h;
    }
    return slope;
}

void Smooth_Derivative(Column& v) {
    constexpr double weights[] = {10, 5, 1};
    constexpr int reach = 3;
    const Column old = v;
    const int m = v.size();
    for (int i = reach + 1; i <= m - reach; ++i)
        v(i) = (old(i - 3) + old(i + 3) + 5 * (old(i - 2) + old(i + 2)) + 10 * (old(i - 1) + old(i + 1))) / 32;

    const auto at_the_end = [&](int i) {
        double sum = 0, total = 0;
        for (int k = 1; k <= reach; ++k)
            for (const int j : {i - k, i + k}) {
                if (j < 1 || j > m) continue;
                sum += weights[k - 1] * old(j);
                total += weights[k - 1];
            }
        if (total > 0) v(i) = sum / total;
    };
    for (int i = 1; i <= std::min(reach, m); ++i) at_the_end(i);
    for (int i = std::max(m - reach + 1, reach + 1); i <= m; ++i) at_the_end(i);
}

}  // namespace vntl
