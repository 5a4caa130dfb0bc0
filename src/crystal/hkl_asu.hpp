// The asymmetric unit of reciprocal space: a member for each set of reflections that the Laue group makes equivalent.
//
// Of h and k a rule tells which l belong to the unit; they are always a stretch of whole numbers. So a rule serves both the test of a
// triple and the loops over all of them.
#pragma once

#include <array>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

#include "crystal/seitz.hpp"

namespace vntl {

struct Index_Range {
    int low = 1, high = 0;  // both included; empty where low > high

    bool Is_Empty() const { return low > high; }
    bool Holds(int l) const { return low <= l && l <= high; }
};
inline constexpr int endless = std::numeric_limits<int>::max();

struct Asu_Rule {
    std::string_view text;         // for the user
    std::size_t order;             // of the Laue group
    std::array<Rotation, 3> made;  // rotations that make it, with the inversion
    Index_Range (*l_of)(int h, int k);
    bool largest = false;  // of the equivalents in the range of l, only the largest in h, then k, then l counts
};

// The rotations that act on reflections.
struct Hkl_Rotations {
    std::vector<Rotation> laue;   // those of the Laue group: first the point group, the identity at its head
    std::size_t point_order = 1;  // of the point group; less than laue.size() where it holds no inversion

    std::span<const Rotation> Equivalents(bool friedel) const { return std::span(laue).first(friedel ? laue.size() : point_order); }
};

Hkl_Rotations Rotations_On_Hkl(std::span<const Seitz> operators);

// By the rotations: the rules of the eleven Laue classes in the orientations that the tables use; the largest member for any other.
const Asu_Rule& Rule_Of(const Hkl_Rotations& rotations);

bool In_Asu(const Hkl& hkl, const Asu_Rule& rule, std::span<const Rotation> laue);

}  // namespace vntl
