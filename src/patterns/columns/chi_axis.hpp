// What x is in a file of columns, by the label of its axis.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// `known`: the label has a word for it. `factor`: what x is multiplied by, to be in degrees, 1/angstrom or angstroms.
struct Label_Axis {
    bool known = false;
    double factor = 1;
};

// "2-Theta Angle (Degrees)", "q_nm^-1", "D-spacing (Angstroms)", "Azimuth (Degrees)", "Radial Distance (mm)": sets `scat_var` and
// `legend_x`, which stay blank for a scattering angle, as they do for a blank label and for one without such a word.
Label_Axis Set_Label_Axis(Diffraction_Pattern_Type& pattern, std::string_view label);

}  // namespace vntl
