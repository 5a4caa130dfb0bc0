// Crystal structures in files: CIF, OSL, PCR and SHELX.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/cell.hpp"
#include "crystal/space_group.hpp"

namespace vntl {

// What six anisotropic values 11 22 33 12 13 23 are: mean square displacements in angstrom^2, these times 8 pi^2, or beta itself.
enum class Thermal_Form { u_ij, b_ij, beta };

struct Atom_Type {
    std::string label, symbol;   // symbol: of the chemical element ("D" for deuterium)
    std::string species = {};    // as an OSL file or a panel has it, with its charge: "Fe+3"; blank: `symbol`
    double x = 0, y = 0, z = 0;  // fractions of the cell
    float biso = 0;              // angstrom^2
    float occupancy = 1;         // as the file has it
    int multiplicity = 0;        // of the site in the cell, through the group
    bool aniso = false;
    std::array<float, 6> beta = {};  // 11 22 33 12 13 23, without a dimension

    const std::string& Species() const { return species.empty() ? symbol : species; }
};
using Atom_List = std::vector<Atom_Type>;

// What a file of structures holds, of its first phase with a cell.
struct Crystal_Structure {
    std::string mode;  // "CIF", "OSL", "PCR" or "SHX"
    Crystal_Cell_Type cell;
    Space_Group_Type group;
    Atom_List atoms;
};

// `mode` "CIF", "OSL", "PCR" or "SHX" in either case; anything else is taken as "OSL". `result` stays as it was on failure.
Status Read_Structure_File(const std::string& file, Crystal_Structure& result, std::string_view mode);

// The mode that the extension of a name tells: .cif, .osl, .pcr, .res .ins .inp .shx.
std::string_view Structure_Mode(std::string_view file);

// Counts the sites of each atom in the cell. Images of an atom within 0.05 angstroms of each other are one.
void Set_Multiplicities(Crystal_Structure& structure);

Status Write_OSL(const std::string& file, const Crystal_Structure& structure, std::string_view title = {});

}  // namespace vntl
