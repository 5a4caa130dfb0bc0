// A space group with everything that follows from its operators.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/seitz.hpp"

namespace vntl {

// Maps x to rot x + tr; `tr` in fractions of the cell.
struct Sym_Oper_Type {
    std::array<std::array<int, 3>, 3> rot = {};
    std::array<float, 3> tr = {};
};

struct Wyckoff_Orbit {
    int multiplicity = 0;            // points of the orbit in the cell, centring translations included
    std::string site;                // symbol of the point group of the site, such as "-43m"
    std::vector<std::string> orbit;  // representative coordinates, such as "x,1/4,z"; centring translations left out
};

struct Space_Group_Type {
    int spg_number = 0;          // 1 to 230; 0 when the group is not tabulated
    std::string hm_symbol;       // Hermann-Mauguin symbol of the tabulated setting, in capitals
    std::string hall_symbol;     // Hall symbol
    std::string general_hall;    // of a group without a tabulated Hall symbol, or with a centre off the origin
    std::string crystal_system;  // "Triclinic", "Monoclinic", "Orthorhombic", "Tetragonal", "Trigonal", "Hexagonal" or "Cubic"
    std::string laue_class;
    std::string point_group;
    std::string table_choice;     // the tables' choice of axes and origin, such as "b1", "2cab", "H"
    std::string setting_type;     // how the group was made
    bool hexagonal_axes = false;  // some row of a rotation has absolute values that sum to more than 1
    std::string lattice_letter;   // one of P A B C I R F, or Z for other centrings
    std::string lattice_symbol;
    int n_lattice = 1;  // centring vectors, the zero vector included
    std::vector<std::array<float, 3>> lattice_vectors = {{0, 0, 0}};
    std::string bravais_text;  // the letter with its vectors
    std::string centre_text;
    int centring = 1;                      // 0 centric with -1 not at the origin, 1 acentric, 2 centric with -1 at the origin
    std::array<float, 3> centre_at = {};   // position of the inversion centre
    int NumOps = 0;                        // reduced set: no inversion, no centring
    int Multip = 0;                        // general multiplicity: all operators
    int n_generators = 0;                  // fewest found, without -1 and the lattice
    std::vector<Sym_Oper_Type> operators;  // reduced set, then these times the inversion, then the same with each centring vector
    std::vector<std::string> operator_strings;
    std::vector<Wyckoff_Orbit> wyckoff;                                          // from the lowest multiplicity to the general position
    std::array<std::array<float, 2>, 3> asym_unit = {{{0, 1}, {0, 1}, {0, 1}}};  // a box that holds one: low and high of x, y, z

    bool Centrosymmetric() const { return centring != 1; }
};

// Fills `group` from a space-group number ("62", "227:1"), a Hermann-Mauguin symbol in any form of the tables, a Hall symbol, or from
// operators (`generators`, as "x,y+1/2,-z"). Without a mode the symbol decides; `mode` is one of
//   "HMS"  the symbol is a Hermann-Mauguin symbol     "HAL"  it is a Hall symbol     "ITC"  explicit generators of a number or symbol
//   "GEN"  `generators` make the group                "FIX"  they are the group, as they stand
// `force_hall` takes the operators of a Hermann-Mauguin symbol from its Hall symbol. On failure spg_number is 0 or the table's.
Status Set_SpaceGroup(std::string_view symbol, Space_Group_Type& group, std::span<const std::string> generators = {},
                      std::string_view mode = {}, bool force_hall = false);

// How a group says that its operators were given as they stand.
inline constexpr std::string_view fixed_operators = "Fixed symmetry operators (no info)";

// Exact forms of an operator, and of those of a group, in its order. Translations go to the nearest twelfth.
Seitz Exact_Operator(const Sym_Oper_Type& oper);
std::vector<Seitz> Exact_Operators(const Space_Group_Type& group);

// The same, sorted: equal for groups with the same operators.
std::vector<Seitz> Operator_Set(const Space_Group_Type& group);

// The listing, line by line; `full`: with all operators and Wyckoff positions.
std::vector<std::string> List_Space_Group(const Space_Group_Type& group, bool full);

// One operator from a text "x, y+1/2, -z" from position `start` (from 0); a translation stays as read. A text that is no operator fails;
// with `check` so does a rotation with determinant 0.
Status Read_Operator_String(std::string_view text, std::size_t start, Sym_Oper_Type& oper, bool check = true);

// Its inverse, on translations of n/2, n/3, n/4, n/6 (and n/12); other translations as decimals.
std::string Operator_String(const Sym_Oper_Type& oper);

}  // namespace vntl
