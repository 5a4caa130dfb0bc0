// What OSL files tell of a structure, line by line: for files of which the structure is a part, and for panels in which a user edits one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/structure_file.hpp"

namespace vntl {

// Title, cell, group and atoms under lines of comment, without line ends; see osl_structure.cpp. `symbol`: how the user calls the group,
// taken where it leads there; else, and for a number, the group's own symbol stands there.
std::vector<std::string> Osl_Structure_Lines(const Crystal_Structure& structure, std::string_view title, std::string_view symbol = {});

// One word of a line: blanks and the sign of a comment, which would end it, become "_"; a blank text is "?".
std::string Osl_Word(std::string_view text);

// The group in one line: a symbol that leads to it, or what makes it: "Gen -x,-y,-z; x+1/2,y,z", and "Fix x,y,z; .." where its operators
// were given as they stand.
std::string Group_Text(const Space_Group_Type& group);
// Its inverse; takes any symbol or number. Fails with what is wrong with the symbol or an operator.
Status Read_Group_Text(std::string_view text, Space_Group_Type& group);

// a, b, c, alpha, beta, gamma in one line.
Status Read_Cell_Text(std::string_view text, Crystal_Cell_Type& cell);

enum class Osl_Line { blank, atom, thermal, other };
Osl_Line Osl_Line_Of(std::string_view line);

// Takes the lines of atoms and of their anisotropic values one after the other.
class Osl_Atom_Reader {
public:
    // `beta_untold`: anisotropic values whose form no word tells are beta; else they fail. Cell and list must outlive the reader.
    Osl_Atom_Reader(const Crystal_Cell_Type& cell, Atom_List& atoms, bool beta_untold = false)
        : cell_(cell), atoms_(atoms), beta_untold_(beta_untold) {}

    // The reason alone on failure. An atom that cannot be read joins the list all the same, and has what was read of it.
    Status Take_Atom(std::string_view line);
    Status Take_Thermal(std::string_view line);

private:
    const Crystal_Cell_Type& cell_;
    Atom_List& atoms_;
    bool beta_untold_;
    std::optional<Thermal_Form> form_;  // of the values to come, where the line of the atom tells it
};

}  // namespace vntl
