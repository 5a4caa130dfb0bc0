// Values on a grid over two axes: what maps and surfaces are drawn from.
#pragma once

#include <span>

namespace vntl {

// The axes rise or fall, in steps of any width. A value that is no finite number is a gap: no part of a picture touches it.
struct Grid_Data {
    std::span<const float> x, y;
    std::span<const float> z;  // one row of x.size() values a y, the first y first

    float At(std::size_t column, std::size_t row) const { return z[row * x.size() + column]; }
    bool Whole() const { return x.size() >= 2 && y.size() >= 2 && z.size() == x.size() * y.size(); }
};

// Option word of a plot of kind 8: bits, of which lines, gradients and surfaces heed different ones.
enum Grid_Option : unsigned {
    option_filled = 1,      // a surface that hides what lies behind it
    option_contoured = 16,  // colours by levels
    option_graduated = 32,  // a colour a cell, by its height
    option_uniform = 512,   // one colour, and the lattice
    option_smooth = 2048,   // lines twice as wide; colours that change inside the cells; a surface shaded by its slope
};

}  // namespace vntl
