// How wide a text is in the fonts of the pictures, for devices whose files name a font and leave its letters to the viewer, and the shape
// of letters that cannot be left to it.
#pragma once

#include <string_view>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

// The letter of valid UTF-8 that begins at byte `i`, which moves behind it.
char32_t Next_Letter(std::string_view text, std::size_t& i);

// Device units, for the style's size; a text in Symbol as its Greek letters.
double Extent_Of_Text(std::string_view text, const Text_Style& style);

// The contours of a shape as polygons, a hole as one more of them; the last corner is not repeated.
using Outline = std::vector<std::vector<Point>>;

// The outlines of its letters, in device units from the start of the base line, turned by the style's angle; blanks have none.
std::vector<Outline> Outlines_Of_Text(std::string_view text, const Text_Style& style);

}  // namespace vntl
