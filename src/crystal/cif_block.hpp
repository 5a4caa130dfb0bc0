// What one data block of a CIF tells of a structure: single values, and the tables of sites, of anisotropic values and of operators.
//
// Items are known by their name of any version of the core dictionary, in either case, with "_" or "." between category and name:
// _atom_site_fract_x, _atom_site.fract_x. Private to this room.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "base/cif_words.hpp"

namespace vntl {

enum class Cif_Item {
    length_a,
    length_b,
    length_c,
    angle_alpha,
    angle_beta,
    angle_gamma,
    hm,       // Hermann-Mauguin symbol
    hm_alt,   // the same by its newer name
    hm_full,  // the extended symbol
    hall,
    hall_new,
    xyz,  // an operator
    xyz_new,
    label,
    type_symbol,
    fract_x,
    fract_y,
    fract_z,
    occupancy,
    u_iso,
    b_iso,
    aniso_label,
    u_11,  // each form in the order 11 22 33 12 13 23
    b_11 = u_11 + 6,
    beta_11 = b_11 + 6,
    count = beta_11 + 6,
};
inline constexpr auto cif_items = static_cast<std::size_t>(Cif_Item::count);

// The columns of a table that say something here; the others are only counted.
struct Cif_Table {
    static constexpr std::size_t most_rows = 1'000'000;

    std::array<int, cif_items> column;  // -1 where there is none
    std::size_t width = 0, rows = 0;
    std::vector<std::string_view> values;  // row by row; behind the last row those of one that is not whole
    bool whole = true;                     // the last row has a word for each column
    bool too_long = false;                 // there are rows behind the last one

    Cif_Table() { column.fill(-1); }
    bool Has(Cif_Item item) const { return column[static_cast<std::size_t>(item)] >= 0; }

    // Blank where there is no such column.
    std::string_view Value(std::size_t row, Cif_Item item) const {
        const int place = column[static_cast<std::size_t>(item)];
        return place < 0 ? std::string_view() : values[row * width + static_cast<std::size_t>(place)];
    }
};

struct Cif_Block {
    bool global = false;                              // named "global"
    std::array<std::string_view, cif_items> singles;  // blank where there is none
    Cif_Table sites, aniso, operators;                // the first of its kind that tells something; empty where there is none

    std::string_view Single(Cif_Item item) const { return singles[static_cast<std::size_t>(item)]; }
};

// Reads the items up to the next block. `word`: the word that begins this one, then the one that begins the next.
Cif_Block Read_Cif_Block(Cif_Words& words, Cif_Word& word);

}  // namespace vntl
