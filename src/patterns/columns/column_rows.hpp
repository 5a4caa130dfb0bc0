// Rows of numbers in columns, of which some have a role and the others may hold any text.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "patterns/columns/column_names.hpp"

namespace vntl {

// What a line looks like as a row.
struct Row_Shape {
    std::size_t fields = 0;      // 0: it is no row
    bool numbers = false;        // each field is one, or a word for none such as NaN
    bool begins = false;         // the first two are
    bool semicolons = false;     // stand between the fields
    bool decimal_comma = false;  // numbers may have one
};

Row_Shape Shape_Of_Row(std::string_view line);

// The first number of a row, 0 where there is none.
double First_Of_Row(std::string_view line, const Row_Shape& shape, std::size_t column = 0);

// Takes the numbers of rows of one shape.
class Row_Reader {
public:
    Row_Reader(const Row_Shape& shape, const Column_Roles& roles);

    static constexpr std::size_t x = 0, y = 1, sigma = 2, ycalc = 3;
    using Values = std::array<float, 4>;

    // False for a line without numbers of x and y. An uncertainty that is none is 0; a y of NaN stays one.
    bool Take(std::string_view line, Values& values) const;

private:
    bool Take_Plain(std::string_view line, Values& values) const;
    bool Take_Split(std::string_view line, Values& values) const;

    static constexpr std::size_t most_columns = 64;
    std::array<signed char, most_columns> role_{};
    std::size_t last_ = 0;  // column with a role
    bool semicolons_, decimal_comma_;
};

}  // namespace vntl
