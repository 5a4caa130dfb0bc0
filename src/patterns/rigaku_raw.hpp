// RAW, the files of Rigaku diffractometers: binary ones that begin with "FI", and old texts that begin with a line ".RAW".
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Rigaku_Raw(std::string_view head);

// Reads every pattern of a file.
Status Read_Rigaku_Raw(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
