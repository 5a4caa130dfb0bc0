// CHI, the columns that area-detector programs write: a title, the labels of both axes, the number of rows, and rows of x and y.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Chi(std::string_view head);

// Reads every pattern of a file.
Status Read_Chi(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
