// Absences and multiplicities of whole rows of reflections, h and k fixed.
//
// A rotation leaves a reflection as it is on a plane of reciprocal space (a mirror) or on a line (an axis), so that of a row it keeps no l,
// one l or all. Planes and lines are found once for a group. A row then has one multiplicity, but for a few l that its planes and lines
// cross; and the translations that go with what keeps all of it leave of l every l, every second one, and so on.
#pragma once

#include <span>
#include <vector>

#include "crystal/hkl_asu.hpp"

namespace vntl {

// Everything that the rotations with one plane or line have in common.
struct Invariant_Locus {
    bool is_line = false;
    std::array<int, 3> v = {};                // the direction of a line; of a plane what its reflections are at right angles to
    int rotations = 0;                        // how many leave its reflections as they are, the identity apart
    std::vector<Translation12> translations;  // with which they do, in the group itself
};

struct Hkl_Row {
    struct Crossing {
        int l = 0, rotations = 0;
        bool absent = false;
    };
    int first = 0, step = 0;          // the l that are not absent are first + n step; with step 0 none is
    int rotations = 1;                // that leave each of them as it is
    std::vector<Crossing> crossings;  // where more do
};

class Hkl_Rows {
public:
    // `equivalents`: the rotations that multiplicities count.
    Hkl_Rows(std::span<const Seitz> operators, std::span<const Rotation> equivalents);

    void Find(int h, int k, Hkl_Row& row) const;
    int Order() const { return order_; }

private:
    Invariant_Locus& Locus_Of(bool is_line, const std::array<int, 3>& v);

    int order_;
    std::vector<Translation12> lattice_;  // without the zero vector
    std::vector<Invariant_Locus> loci_;
};

}  // namespace vntl
