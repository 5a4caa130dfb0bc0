// The present x space: what may join it, and the titles and menu states that follow from it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "session/x_space.hpp"

namespace vntl {

struct Session;

// Shown where rows of different scattering variables have no common space to go back to.
inline constexpr std::string_view mixed_scat_var_text =
    "Profiles with diferent scat_var were loaded.\nUnable to converter xspace to scar_var of origin.";

// Decides whether a pattern that was just read may join the present x space. The first accepted file sets the space. In d, Q and s a
// pattern of angles or times of flight is brought there, with the constants that the user is asked for where it has none.
Status Check_Load_Xspace(Session&, Ask&, Diffraction_Pattern_Type& pattern, const std::string& filename);

// Brings all rows, with their reflections and excluded regions, to 2theta, TOF, d-space, q-space or s-space, or none of them. The
// message tells why not. Constants that the user gives on the way stay in the rows even then.
Status Convert_Xspace(Session&, Ask&, X_Space target);

// The user edits the wavelengths, or dtt1 and dtt2, of all rows; nothing is converted. Fails on cancel.
Status Change_Wavelength(Session&, Ask&);
Status Change_Dtt(Session&, Ask&);

// The space that `name` tells becomes the present one, with its titles and menu states; a name that tells none changes nothing. `x_title`
// and `y_title` replace the titles of the table where they are not blank; only general abscissas take a `y_title`. `refinement`: for a
// profile file of one.
void Set_Xspace(Session&, std::string_view name, bool refinement = false, std::string_view x_title = {}, std::string_view y_title = {});

// The spacing of the lattice planes that reflect at x in the present x space, in angstrom, by the constants of the first row that is shown;
// nothing where it cannot be told, or where x is the spacing itself. Time of flight: t = dtt1 d + dtt2 d^2.
std::optional<double> D_Spacing(const Session&, double x);

}  // namespace vntl
