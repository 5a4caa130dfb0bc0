// How wide a text is in the fonts of the pictures, for devices whose files name a font and leave its letters to the viewer.
#pragma once

#include <string_view>

#include "toolkit/device.hpp"

namespace vntl {

// Device units, for the style's size; a text in Symbol as its Greek letters.
double Extent_Of_Text(std::string_view text, const Text_Style& style);

}  // namespace vntl
