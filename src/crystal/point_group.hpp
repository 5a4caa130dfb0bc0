// Point group, Laue class and crystal system from rotations alone.
#pragma once

#include <span>
#include <string>

#include "base/status.hpp"
#include "crystal/seitz.hpp"

namespace vntl {

struct Point_Class {
    std::string laue_class, point_group, crystal_system;
};

// The direction of a two-fold axis, or of the normal of a mirror plane: the shortest whole numbers, the first that is not 0 positive.
Hkl Twofold_Axis(const Rotation& rot);

// Some row of a rotation has absolute values that sum to more than 1: the axes are not at right angles.
bool Hexagonal_Axes(std::span<const Rotation> rotations);

// `rotations`: those of a closed group, each once. Symbols with an orientation ("-42m" or "-4m2", "mm2" or "m2m", "312" or "321") tell it
// by the axes of the rotations. Fails with " No symmetry operators are given" and " Rotation Not Determined".
Status Laue_And_Point_Group(std::span<const Rotation> rotations, Point_Class& found);

}  // namespace vntl
