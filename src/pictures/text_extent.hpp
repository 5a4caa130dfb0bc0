// How wide a text is in the fonts of the pictures, for devices whose files name a font and leave its letters to the viewer, and the shape
// of letters that cannot be left to it.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

// The letter of valid UTF-8 that begins at byte `i`, which moves behind it.
char32_t Next_Letter(std::string_view text, std::size_t& i);

// Device units, for the style's size; a text in Symbol as its Greek letters.
double Extent_Of_Text(std::string_view text, const Text_Style& style);

// From the anchor that a justification names to the start of a text of that width.
double Start_Of_Text(Justify justify, double width);
// A place beside another one, along a base line that is turned by so many degrees, and above it.
Point Beside(Point at, double along, double up, double degrees);
// Corners of the room that a text takes, from what hangs below the base line to an em above it; `margin` at either end.
std::array<Point, 4> Room_Of_Text(Point at, double width, const Text_Style& style, double margin = 0);

// The contours of a shape as polygons, a hole as one more of them; the last corner is not repeated.
using Outline = std::vector<std::vector<Point>>;

// The outlines of its letters, in device units from the start of the base line, turned by the style's angle; blanks have none.
std::vector<Outline> Outlines_Of_Text(std::string_view text, const Text_Style& style);

}  // namespace vntl
