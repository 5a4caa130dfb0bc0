// The file of a solid, .w3d: a text, a word and its numbers a line.
#pragma once

#include <string>

#include "base/status.hpp"
#include "solid/w3d_view.hpp"

namespace vntl {

std::string W3d_Text_Of(const W3d& solid, const W3d_View& view);

// A failure names the file and the line and changes nothing. Memory follows the file: no number in it reserves any.
Status Read_W3d(const std::string& file, W3d& solid, W3d_View& view);

}  // namespace vntl
