// Symmetric matrices of a least-squares problem, in double precision: products of columns, factors, inverse.
#pragma once

#include <span>
#include <thread>
#include <vector>

#include "fit/least_squares.hpp"

namespace vntl {

// n by n, row by row.
class Square_Matrix {
public:
    explicit Square_Matrix(int n = 0) : n_(static_cast<std::size_t>(n)), values_(n_ * n_) {}

    int n() const { return static_cast<int>(n_); }
    double& operator()(int i, int j) { return values_[static_cast<std::size_t>(i) * n_ + static_cast<std::size_t>(j)]; }
    double operator()(int i, int j) const { return values_[static_cast<std::size_t>(i) * n_ + static_cast<std::size_t>(j)]; }
    double* Row(int i) { return values_.data() + static_cast<std::size_t>(i) * n_; }
    const double* Row(int i) const { return values_.data() + static_cast<std::size_t>(i) * n_; }
    std::vector<double>& values() { return values_; }

private:
    std::size_t n_;
    std::vector<double> values_;
};

// C = J'J and g = J'f, the same with any number of threads.
struct Normal_Equations {
    Square_Matrix c;
    std::vector<double> g;
};
Normal_Equations Products_Of_Columns(const Jacobian& fjac, int m, int n, std::span<const float> fvec,
                                     unsigned most_threads = std::thread::hardware_concurrency());

// P'CP = R'R with R upper triangular: the factor that a QR decomposition of the columns with pivoting by their norms gives. `pivot[j]`
// is the column of C that stands at j. Rows of R from `rank` on are 0: what is left of their columns is rounding.
struct Pivoted_Factor {
    Square_Matrix r;
    std::vector<int> pivot;
    int rank = 0;
};
Pivoted_Factor Factor_With_Pivots(Square_Matrix c);

// C = R'R in place, R above the diagonal and on it; false when C is not positive definite.
bool Factor(Square_Matrix& c);

// Solves R'y = b and Ry = b in place for the first `rank` unknowns.
void Solve_Transposed(const Square_Matrix& r, int rank, std::span<double> b);
void Solve_Upper(const Square_Matrix& r, int rank, std::span<double> b);

// The inverse of a symmetric positive definite matrix; false when it is singular to working precision.
bool Invert(Square_Matrix& c);

double Norm(std::span<const double> values);
double Norm(std::span<const float> values);

}  // namespace vntl
