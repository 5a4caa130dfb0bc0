// RAS, the text files of Rigaku diffractometers: lines *KEY "value", and columns of x, y and attenuation factor.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Ras(std::string_view head);

// Reads every pattern of a file.
Status Read_Ras(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
