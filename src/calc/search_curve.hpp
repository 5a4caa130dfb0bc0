// Curves as the search works on them: splines with loose ends, derivatives, and the smoothing of a derivative.
#pragma once

#include <span>
#include <vector>

namespace vntl {

// Values that count from 1.
class Column {
public:
    explicit Column(std::size_t n = 0) : values_(n + 1) {}
    explicit Column(std::span<const double> values) : values_(1) { values_.insert(values_.end(), values.begin(), values.end()); }

    int size() const { return static_cast<int>(values_.size()) - 1; }
    double& operator()(int i) { return values_[static_cast<std::size_t>(i)]; }
    double operator()(int i) const { return values_[static_cast<std::size_t>(i)]; }
    void Add(double value) { values_.push_back(value); }
    void Keep(int n) { values_.resize(static_cast<std::size_t>(n) + 1); }

    // First index of lo..hi with a value above `limit`, or `none`. The values rise.
    int First_Above(int lo, int hi, double limit, int none) const;

private:
    std::vector<double> values_;
};

// Second derivatives of a cubic spline through the points, with ends that are neither natural nor clamped: there each second derivative is
// minus a half of its neighbour's. The derivative at both ends of a pattern depends on it. Equal x give what is no number.
Column Loose_Spline(const Column& x, const Column& y);

// Value of the spline at `at`, in the interval from point `left` to the next.
double Spline_Value(const Column& x, const Column& y, const Column& second, int left, double at);
// The interval, by its left point, that holds `at`; the first or the last one outside.
int Interval_Of(const Column& x, double at);

// Slope of the spline at each of the first `m` points of an even grid: the difference of its values half a step on either side.
Column First_Derivative(const Column& x, const Column& y, const Column& second, int m);

// One pass: each value becomes the weighted mean of three neighbours on either side, with the weights 10, 5 and 1 from near to far, and
// none of its own; at the ends, of those that are there.
void Smooth_Derivative(Column& v);

}  // namespace vntl
