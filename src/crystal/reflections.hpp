// The reflections of a cell and a space group.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/cell.hpp"
#include "crystal/space_group.hpp"

namespace vntl {

struct Reflection_Type {
    Hkl H = {};    // indices in the asymmetric unit
    int Mult = 0;  // reflections of the orbit
    float S = 0;   // sin(theta)/lambda = 1/(2 d), 1/angstrom
};

struct Reflection_List_Type {
    int NRef = 0;
    std::vector<Reflection_Type> Ref;
};

// Number of reciprocal lattice points between the radii 2 s_min and 2 s_max, with 5 % to spare; with `mult` that of the unique ones.
// Bounded by the largest integer.
int Get_MaxNumRef(float s_max, double volume, float s_min = 0, int mult = 0);

// 0.5 sqrt(h GR h).
float Hkl_S(const Hkl& hkl, const Crystal_Cell_Type& cell);

// The spacing d in angstroms, with all its decimals.
double Hkl_D(const Hkl& hkl, const Crystal_Cell_Type& cell);

// A systematic absence: some operator takes hkl to itself with a phase that is no whole number.
bool Hkl_Absent(const Hkl& hkl, const Space_Group_Type& group);

// The equivalent of hkl, under the Laue class, in the asymmetric unit of reciprocal space. Each orbit has exactly one.
Hkl Asu_Hkl(const Hkl& hkl, const Space_Group_Type& group);
std::string_view Asu_Hkl_Rule(const Space_Group_Type& group);  // the rule as a text for the user

// Number of equivalents of hkl, with Friedel mates where `friedel` holds or the group is centrosymmetric.
int Get_Mult(const Hkl& hkl, const Space_Group_Type& group, bool friedel);

// All unique reflections that are not absent with `limit1` to `limit2` (in either order) as limits of sin(theta)/lambda (`code` "s") or of
// d in angstroms ("r"), by rising S; equal S, and with `no_order` all, in the order of generation: h outermost, then k, then l, each
// rising. Fails, with an empty list, when more than `most` reflections are to be expected.
Status Hkl_Uni_Reflect(const Crystal_Cell_Type& cell, const Space_Group_Type& group, bool friedel, float limit1, float limit2,
                       std::string_view code, Reflection_List_Type& list, bool no_order = false, std::size_t most = 5'000'000);

}  // namespace vntl
