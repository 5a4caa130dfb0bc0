// The present x space: what may join it, and the titles and menu states that follow from it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/status.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

struct Session;

// Decides whether a pattern that was just read may join the present x space. The first accepted file sets the space.
Status Check_Load_Xspace(Session&, Diffraction_Pattern_Type& pattern, const std::string& filename);

// Stores `name` as the present x space with its titles and menu states. `x_title` and `y_title` replace the titles of the table where
// they are not blank; only general abscissas take a `y_title`. `file_kind` "PRF" marks a profile file of a refinement.
void Set_Xspace(Session&, std::string_view name, std::string_view file_kind = {}, std::string_view x_title = {},
                std::string_view y_title = {});

// The spacing of the lattice planes that reflect at x in the present x space, in angstrom, by the constants of row 1; nothing where it
// cannot be told, or where x is the spacing itself. Time of flight: t = dtt1 d + dtt2 d^2.
std::optional<double> D_Spacing(const Session&, double x);

}  // namespace vntl
