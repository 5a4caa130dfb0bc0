// ASC, an older text format of Rigaku diffractometers: lines *KEY = value, groups of counts between *BEGIN and *END.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Asc(std::string_view head);

// Reads every pattern of a file.
Status Read_Asc(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
