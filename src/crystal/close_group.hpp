// A group of operators out of generators, and groups out of Hall symbols.
#pragma once

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/seitz.hpp"

namespace vntl {

inline constexpr std::size_t most_operators = 384, most_rotations = 48;

struct Closed_Group {
    std::vector<Seitz> reduced = std::vector<Seitz>(1);  // no inversion, no centring: the proper rotations of a centric group
    std::vector<Translation12> lattice = std::vector<Translation12>(1);  // centring vectors
    int centring = 1;                 // 0 centric with -1 not at the origin, 1 acentric, 2 centric at the origin
    Translation12 inversion_tr = {};  // translation of -1: the centre is at half of it

    // The reduced set, then these times the inversion, then the same with each further centring vector.
    std::vector<Seitz> Operators() const;
    std::vector<Rotation> Rotations() const;  // of the point group, each once
    std::size_t Multip() const { return reduced.size() * lattice.size() * (centring == 1 ? 1 : 2); }
};

// All products of the generators. Fails on an operator of no known order, on more than 24 operators of the reduced set (of an acentric
// group 48) and on more than 384 in all.
Status Close_Group(std::span<const Seitz> generators, Closed_Group& group);

// Fewest operators of the reduced set that make, with -1 and the lattice, the whole group.
std::vector<Seitz> Minimum_Generators(const Closed_Group& group);

// "P", "A", "B", "C", "I", "R", "F", or "Z" for a set of centring vectors that is none of these.
char Lattice_From_Vectors(std::span<const Translation12> lattice);
// The vectors of a letter, the zero vector first. Fails on other letters.
Status Lattice_From_Letter(char letter, std::vector<Translation12>& lattice);

// The generators that a Hall symbol tells, centring and inversion among them (S. R. Hall 1981, Acta Cryst. A37, 517), in either case. A
// change of basis is a shift of origin in twelfths "(0 0 4)" or an operator "(x-y,x+y,z)".
Status Parse_Hall_Symbol(std::string_view symbol, std::vector<Seitz>& generators);

}  // namespace vntl
