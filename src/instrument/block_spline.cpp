#include "instrument/block_spline.hpp"

#include <algorithm>

namespace vntl {

void Block_Spline(std::span<const double> x, std::span<const double> y, std::size_t columns, std::span<double> scratch,
                  std::span<double> derivatives) {
    const std::size_t n = x.size();
    double* const m = derivatives.data();
    std::fill_n(m, n * columns, 0.0);
    if (n < 3) return;  // a straight line
    // Forward: each row becomes m(i) + above(i) m(i+1) = right(i), with right(i) kept in m(i). The first row is m(1) + m(2) / 2 = 0.
    double* const above = scratch.data();
    above[0] = 0.5;
    for (std::size_t i = 1; i + 1 < n; ++i) {
        const double before = x[i] - x[i - 1], behind = x[i + 1] - x[i];
        const double pivot = 2 * (before + behind) - before * above[i - 1];
        above[i] = behind / pivot;
        const double to_before = 6 / (before * pivot), to_behind = 6 / (behind * pivot), carry = before / pivot;
        const double *const y_before = y.data() + (i - 1) * columns, *const y_here = y_before + columns, *const y_behind = y_here + columns;
        double *const m_before = m + (i - 1) * columns, *const m_here = m_before + columns;
        for (std::size_t k = 0; k < columns; ++k)
            m_here[k] = (y_behind[k] - y_here[k]) * to_behind - (y_here[k] - y_before[k]) * to_before - carry * m_before[k];
    }
    const double last = -1 / (2 - above[n - 2]);
    for (std::size_t k = 0; k < columns; ++k) m[(n - 1) * columns + k] = last * m[(n - 2) * columns + k];
    for (std::size_t i = n - 1; i-- > 0;) {
        double* const row = m + i * columns;
        for (std::size_t k = 0; k < columns; ++k) row[k] -= above[i] * row[columns + k];
    }
}

}  // namespace vntl
