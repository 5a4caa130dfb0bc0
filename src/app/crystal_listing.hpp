// What the command line lists of crystals: a space group, the reflections of a cell.
#pragma once

#include <string>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// The record of a group with its operators and Wyckoff positions.
Status List_Group(const std::string& symbol, std::string& text);

// Lines of h k l, multiplicity, d in angstroms and 2theta in degrees, by falling d. `words`: the six cell constants in one text, the
// symbol of the group, the wavelength in angstroms, the largest 2theta in degrees.
Status List_Reflections(const std::vector<std::string>& words, std::string& text);

}  // namespace vntl
