#include "fit/normal_equations.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace vntl {

namespace {

constexpr int block_rows = 128;  // of observations: what is summed at a time
constexpr int tile_i = 4, tile_j = 8;
constexpr double worth_threads = 2e7;  // products

// Some rows of the Jacobian, observation by observation, of the columns that are not 0 there. The residuals are the last column.
struct Row_Block {
    std::vector<int> columns;
    std::size_t width = 0;  // of a row, whole tiles
    std::vector<double> values;
    int rows = 0;
};

void Take_Rows(const Jacobian& fjac, int n, std::span<const float> fvec, int first, int rows, Row_Block& block) {
    block.columns.clear();
    block.rows = rows;
    const auto part = [&](int k) {
        return (k < n ? fjac.Column(k) : fvec).subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(rows));
    };
    for (int k = 0; k <= n; ++k)
        if (k == n || std::ranges::any_of(part(k), [](float value) { return value != 0; })) block.columns.push_back(k);
    block.width = (block.columns.size() + tile_j - 1) / tile_j * tile_j;
    block.values.assign(block.width * static_cast<std::size_t>(rows), 0);
    for (std::size_t at = 0; at < block.columns.size(); ++at) {
        const auto column = part(block.columns[at]);
        for (std::size_t r = 0; r < column.size(); ++r) block.values[r * block.width + at] = static_cast<double>(column[r]);
    }
}

struct Tile {
    double sum[tile_i][tile_j] = {};
};

Tile Products(const Row_Block& block, std::size_t i, std::size_t j) {
    Tile tile;
    const double* row = block.values.data();
    for (int r = 0; r < block.rows; ++r, row += block.width)
        for (int a = 0; a < tile_i; ++a)
            for (int b = 0; b < tile_j; ++b) tile.sum[a][b] += row[i + static_cast<std::size_t>(a)] * row[j + static_cast<std::size_t>(b)];
    return tile;
}

// Adds the products of a block to the lower triangle of the sums, whose last row is that of the residuals.
void Add_Block(const Row_Block& block, Square_Matrix& sums) {
    const std::size_t used = block.columns.size();
    for (std::size_t i = 0; i < used; i += tile_i)
        for (std::size_t j = 0; j < i + tile_i && j < used; j += tile_j) {
            const Tile tile = Products(block, i, j);
            for (std::size_t a = 0; a < tile_i && i + a < used; ++a)
                for (std::size_t b = 0; b < tile_j && j + b <= i + a; ++b)
                    sums(block.columns[i + a], block.columns[j + b]) += tile.sum[a][b];
        }
}

double Dot(const double* a, const double* b, int n) { return std::inner_product(a, a + n, b, 0.0); }

}  // namespace

Normal_Equations Products_Of_Columns(const Jacobian& fjac, int m, int n, std::span<const float> fvec, unsigned most_threads) {
    const int blocks = (m + block_rows - 1) / block_rows;
    // Each thread sums a share of its own, and the shares are as many whatever the number of threads is: so is the order of the sums.
    constexpr int most_shares = 8;
    const bool large = static_cast<double>(m) * n * n > worth_threads;
    const int shares = large ? std::min(blocks, most_shares) : 1;
    std::vector<Square_Matrix> sums(static_cast<std::size_t>(shares), Square_Matrix(n + 1));
    const auto sum_share = [&](int share) {
        Row_Block block;
        for (int b = blocks * share / shares; b < blocks * (share + 1) / shares; ++b) {
            Take_Rows(fjac, n, fvec, b * block_rows, std::min(block_rows, m - b * block_rows), block);
            Add_Block(block, sums[static_cast<std::size_t>(share)]);
        }
    };
    const int threads = std::clamp(static_cast<int>(most_threads), 1, shares);
    const auto every = [&](int from) {
        for (int share = from; share < shares; share += threads) sum_share(share);
    };
    {
        std::vector<std::jthread> others;
        int own_from = 1;
        for (; own_from < threads; ++own_from) {
            try {
                others.emplace_back(every, own_from);
            } catch (const std::system_error&) {
                break;
            }
        }
        every(0);
        for (; own_from < threads; ++own_from) every(own_from);
    }

    Normal_Equations result{Square_Matrix(n), std::vector<double>(static_cast<std::size_t>(n))};
    const auto total = [&](int i, int j) {
        double sum = 0;
        for (const Square_Matrix& share : sums) sum += share(i, j);
        return sum;
    };
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j <= i; ++j) result.c(i, j) = result.c(j, i) = total(i, j);
        result.g[static_cast<std::size_t>(i)] = total(n, i);
    }
    return result;
}

Pivoted_Factor Factor_With_Pivots(Square_Matrix c) {
    const int n = c.n();
    Pivoted_Factor f{Square_Matrix(n), std::vector<int>(static_cast<std::size_t>(n)), 0};
    std::iota(f.pivot.begin(), f.pivot.end(), 0);
    std::vector<double> left(static_cast<std::size_t>(n)), whole;  // squared norms of what is left of the columns
    for (int j = 0; j < n; ++j) left[static_cast<std::size_t>(j)] = c(j, j);
    whole = left;
    const double rounding = std::max(n, 10) * std::numeric_limits<double>::epsilon();
    for (int k = 0; k < n; ++k) {
        const auto best = std::max_element(left.begin() + k, left.end());
        const auto at = static_cast<std::size_t>(best - left.begin());
        if (!(left[at] > rounding * whole[at])) break;
        const auto here = static_cast<std::size_t>(k);
        std::swap(left[here], left[at]);
        std::swap(whole[here], whole[at]);
        std::swap(f.pivot[here], f.pivot[at]);
        for (int i = 0; i < k; ++i) std::swap(f.r(i, k), f.r(i, static_cast<int>(at)));
        double* row = f.r.Row(k);
        row[k] = std::sqrt(left[here]);
        const double* source = c.Row(f.pivot[here]);
        for (int j = k + 1; j < n; ++j) row[j] = source[f.pivot[static_cast<std::size_t>(j)]];
        for (int i = 0; i < k; ++i) {
            const double* above = f.r.Row(i);
            const double factor = above[k];
            if (factor == 0) continue;
            for (int j = k + 1; j < n; ++j) row[j] -= factor * above[j];
        }
        for (int j = k + 1; j < n; ++j) {
            row[j] /= row[k];
            left[static_cast<std::size_t>(j)] -= row[j] * row[j];
        }
        f.rank = k + 1;
    }
    return f;
}

bool Factor(Square_Matrix& c) {
    const int n = c.n();
    for (int k = 0; k < n; ++k) {
        double* row = c.Row(k);
        const double whole = row[k];
        for (int i = 0; i < k; ++i) {
            const double* above = c.Row(i);
            const double factor = above[k];
            if (factor == 0) continue;
            for (int j = k; j < n; ++j) row[j] -= factor * above[j];
        }
        if (!(row[k] > n * std::numeric_limits<double>::epsilon() * whole)) return false;
        const double root = std::sqrt(row[k]);
        for (int j = k; j < n; ++j) row[j] /= root;
    }
    return true;
}

void Solve_Transposed(const Square_Matrix& r, int rank, std::span<double> b) {
    for (int i = 0; i < rank; ++i) {
        const double* row = r.Row(i);
        const double value = b[static_cast<std::size_t>(i)] /= row[i];
        for (int j = i + 1; j < rank; ++j) b[static_cast<std::size_t>(j)] -= row[j] * value;
    }
}

void Solve_Upper(const Square_Matrix& r, int rank, std::span<double> b) {
    for (int i = rank - 1; i >= 0; --i) {
        const double* row = r.Row(i);
        b[static_cast<std::size_t>(i)] = (b[static_cast<std::size_t>(i)] - Dot(row + i + 1, b.data() + i + 1, rank - i - 1)) / row[i];
    }
}

bool Invert(Square_Matrix& c) {
    const int n = c.n();
    if (!Factor(c)) return false;
    // U = R^-1, row by row from the last; then C^-1 = UU'.
    Square_Matrix u(n);
    for (int i = n - 1; i >= 0; --i) {
        u(i, i) = 1 / c(i, i);
        for (int k = i + 1; k < n; ++k) {
            const double factor = -c(i, k) / c(i, i);
            if (factor == 0) continue;
            for (int j = k; j < n; ++j) u(i, j) += factor * u(k, j);
        }
    }
    for (int i = 0; i < n; ++i)
        for (int j = i; j < n; ++j) c(i, j) = c(j, i) = Dot(u.Row(i) + j, u.Row(j) + j, n - j);
    return true;
}

double Norm(std::span<const double> values) {
    double sum = 0;
    for (const double value : values) sum += value * value;
    return std::sqrt(sum);
}

double Norm(std::span<const float> values) {
    double sum = 0;
    for (const float value : values) sum += static_cast<double>(value) * static_cast<double>(value);
    return std::sqrt(sum);
}

}  // namespace vntl
