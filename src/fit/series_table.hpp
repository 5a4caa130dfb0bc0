// The table of a series of fits, in two texts that say the same: CSV for spreadsheets, and blocks as a sequential refinement writes them,
// which generic plots show.
//
//   row,file,temperature,chi2,converged,Bragg_Pos_1,sd(Bragg_Pos_1)
//   1,lab6_300K.xye,300,1.0342,1,21.3581,0.00042
//
//   NEW_REFINEMENT Series of fits
//   NUMPAR 1
//   N_PATT 1
//   NPHASE 1
//   "lab6_300K.xye" 1 300.0000           file, row, temperature: 0.0000 where it is not known
//   GLOBAL_CHI_2 1.0342
//   R_FACTOR Rfact 5.31 0                three lines of a phase: agreement factors in percent
//   R_FACTOR Rwfact 6.02 0
//   R_FACTOR Rex 5.92 0
//   PARAMETER Bragg_Pos_1 21.3581 0.00042
#pragma once

#include <array>
#include <string>
#include <vector>

#include "fit/least_squares.hpp"

namespace vntl {

struct Series_Value {
    float value = 0, sd = 0;
};

// What a fit of one row found.
struct Series_Fit {
    int row = 0;
    std::string file;
    float temperature = 0;  // kelvin; not above 0.0001 means unknown
    float chi2 = 0;         // reduced
    bool converged = false;
    bool has_deviations = true;  // false: the final matrix was singular
    Agreement_Factors agreement;
    std::vector<Series_Value> values;  // of the free parameters
};

struct Series_Table {
    std::vector<std::string> names;  // of the free parameters
    std::vector<Series_Fit> fits;    // in the order of their rows
};

std::string Csv_Text(const Series_Table& table);
std::string Seq_Text(const Series_Table& table);

}  // namespace vntl
