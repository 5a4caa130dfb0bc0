// The axis of a diffractometer that was scanned, by the words that its makers have for it.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// What x is. "2Theta", "TwoThetaTheta", "2Theta-Omega", "Gonio", "Locked Coupled", "Detector Scan", ... and a blank name are the scattering
// angle, which leaves `scat_var` and `legend_x` as the format has them. Any other angle ("Phi", "Omega", "Rocking Curve") makes the pattern
// one over "Angle", a length ("Z", "X Drive") one over "Position" in millimetres, with the name in its title: such a pattern converts to
// no other scale.
void Set_Scan_Axis(Diffraction_Pattern_Type& pattern, std::string_view name);

// Of two coupled axes that one maker writes together, the one that x is: "OmegaTwoTheta" is omega, at half the angle of "TwoThetaOmega".
std::string_view First_Of_Coupled(std::string_view name);

bool Is_Scattering_Angle(std::string_view name);

}  // namespace vntl
