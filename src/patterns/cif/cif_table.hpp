// A table of a powder CIF that holds a pattern.
#pragma once

#include <string_view>

#include "patterns/cif/cif_items.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

struct Cif_Table_Pattern {
    Diffraction_Pattern_Type pattern;  // its arrays and axis; npts 0 where no row is a point
    bool without_x = false;            // x holds the numbers of the rows, from 0
    bool of_tof = false;               // the table tells times of flight, whatever x is
    bool processed = false;            // y or x is
    int rows = 0;
    int excluded = 0;   // points whose weight is 0: a refinement left them out
    int left_out = 0;   // rows that cannot be read
    int compared = 0;   // points with a calculated intensity that a refinement took in
    double misfit = 0;  // of those, the sum of ((y - ycalc) / sigma)^2
};

// Reads the rows of a table that has y, from `text`, which begins behind its heads, and goes behind them. A column that holds no number at
// all counts as one that is not there.
Cif_Table_Pattern Read_Cif_Table(std::string_view& text, Cif_Heads heads);

}  // namespace vntl
