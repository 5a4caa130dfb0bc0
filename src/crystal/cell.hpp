// The cell of a crystal and its metric tensors.
#pragma once

#include <array>
#include <string_view>

#include "base/status.hpp"

namespace vntl {

using Tensor3 = std::array<std::array<double, 3>, 3>;

struct Crystal_Cell_Type {
    std::array<float, 3> cell = {1, 1, 1};    // a, b, c, angstroms
    std::array<float, 3> ang = {90, 90, 90};  // alpha, beta, gamma, degrees
    std::array<float, 3> rcell = {1, 1, 1};   // a*, b*, c*, 1/angstrom (a* . a = 1)
    Tensor3 GD = {};                          // metric tensor of the direct cell, angstrom^2
    Tensor3 GR = {};                          // of the reciprocal cell, angstrom^-2
    double CellVol = 1;                       // volume of the direct cell, angstrom^3
};

inline constexpr std::string_view bad_cell = " Bad cell parameters ";

// An angle below 0.00001 is taken as 90. Fails with `bad_cell` on lengths that are not positive and on angles that enclose no volume;
// `result` then stays as it was.
Status Set_Crystal_Cell(const std::array<float, 3>& cell, const std::array<float, 3>& ang, Crystal_Cell_Type& result);

// The lengths of a metric tensor's axes and the angles between them in degrees; false where it is that of no cell.
bool Lengths_And_Angles(const Tensor3& metric, std::array<double, 3>& lengths, std::array<double, 3>& angles);

}  // namespace vntl
