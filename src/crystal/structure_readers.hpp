// The readers behind Read_Structure_File, one a kind of file, and what they share. Private to this room.
//
// A reader fills cell and group of the first phase, and of each atom label, symbol, coordinates, occupancy, biso, and the anisotropic
// values by Set_Anisotropic. Mode and multiplicities are Read_Structure_File's own. What a reader leaves in the structure when it fails is
// thrown away.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "base/status.hpp"
#include "crystal/elements.hpp"
#include "crystal/structure_file.hpp"

namespace vntl {

Status Read_CIF(std::string_view text, Crystal_Structure& structure);
Status Read_OSL(std::string_view text, Crystal_Structure& structure);
Status Read_PCR(std::string_view text, Crystal_Structure& structure);
Status Read_SHELX(std::string_view text, Crystal_Structure& structure);

inline constexpr std::string_view blank_line = "Blank line", bad_format = "Bad format";
inline constexpr std::string_view wrong_uncertainty = "Wrong format using Standard values";

// The first numbers of a line, separated by blanks, TABs or commas, each with or without its standard uncertainty: "5.4309(2) 5.43 90.".
// Fails with "Blank line", with "Bad format" when there are fewer than `values` or one is no finite number, and with "Wrong format using
// Standard values" when what follows a number is no uncertainty in brackets. Numbers before the fault are set.
Status Read_Line_Of_Numbers(std::string_view line, std::span<double> values);

inline constexpr double b_of_u = 78.95683;  // 8 pi^2

// Makes the atom anisotropic. The temperature factor is exp(-(beta11 h^2 + .. + 2 beta12 hk + ..)), so that
// beta_ij = 2 pi^2 a*_i a*_j U_ij = a*_i a*_j B_ij / 4. Fails with "Bad format" where single precision holds no such beta.
Status Set_Anisotropic(Thermal_Form form, const std::array<double, 6>& values, const Crystal_Cell_Type& cell, Atom_Type& atom);

}  // namespace vntl
