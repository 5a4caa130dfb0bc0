// What the columns of a table are, by the names that stand above them.
//
//   # 2th_deg	I	sigma              # tof us     Y counts     E counts          imagenum,twotheta,eta,intensity
//
// A name has perhaps a unit: in brackets, behind an underscore, a slash or a blank. Names stand apart by TABs, semicolons, commas or bars,
// by two blanks or more, or by one.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

enum class Column_X { unknown, angle, flight, spacing, q, radius, other };

struct Column_Roles {
    static constexpr int none = -1;
    int x = 0, y = 1, sigma = none, ycalc = none;  // places of columns, from 0
    Column_X of_x = Column_X::unknown;
    double x_factor = 1;      // to degrees, microseconds, angstroms, 1/angstroms or millimetres
    bool inverse_x = false;   // x is 1/d^2 in the unit that `x_factor` leads to: q = 2 pi sqrt(x)
    bool per_second = false;  // y is counts a second
    bool variance = false;    // the column of uncertainties holds variances
    bool certain_x = false;   // the name of x is a word of diffraction, and no single letter
    std::string_view x_name;  // as it stands in the line
    std::size_t names = 0;    // in the line
};

// The roles that a line of names gives to columns of which there are so many (0: not known yet); nothing where it is no such line: there
// have to be names of x and of an intensity, and one for each column, or no other words.
std::optional<Column_Roles> Roles_Of_Names(std::string_view line, std::size_t columns);

// What x is by a phrase such as "Time-of-flight" or "d-Spacing (Angstrom)", with the factor of its unit.
Column_Roles X_Of_Phrase(std::string_view phrase);

// Sets `scat_var` and `legend_x`. An unknown x beyond 180 is taken for a time of flight, else for an angle.
void Set_Column_Axis(const Column_Roles& roles, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
