// Filters that take noise out of intensities on a grid of equal steps.
#pragma once

#include <span>

namespace vntl {

inline constexpr int largest_polynomial_window = 20, largest_fourier_window = 250;

// Least-squares cubic through five points (Savitzky and Golay, 1964): (-3, 12, 17, 12, -3)/35. It keeps every cubic. The first two and
// last two points stay; fewer than five points stay as they are.
void Five_Point_Filter(std::span<float> y);

// Low pass in the frequencies of a real Fourier transform. With n points and a window of p, y is followed by zeros up to a power of two
// h >= n + p, and its frequency j below h/2 is multiplied by max(0, 1 - (j p / 2h)^2). Two exceptions: the highest frequency, h/2, takes
// max(0, 1 - p^2/4), and all frequencies above the first whose factor is at most 1e-8 h become 0. y(1) and y(n) then take the values of
// their neighbours. Fewer than three points stay as they are. p from 1.
void Fourier_Filter(std::span<float> y, int window);

}  // namespace vntl
