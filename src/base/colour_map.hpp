// Colours along a scale: a way through a perceptual space on which lightness rises by equal steps, so that equal steps of a value look
// equal, to readers who see few hues and on grey paper, too.
#pragma once

#include <string_view>
#include <vector>

#include "base/colour.hpp"

namespace vntl {

// "whole" goes from nearly black to nearly white and is for areas. "ember" is for lines on light ground and ends before they fade, "glow"
// is for lines on dark ground and begins where they can be seen.
const std::vector<std::string_view>& Colour_Maps();
bool Is_Colour_Map(std::string_view name);

// From 0, the darkest, to 1; what lies outside, or is no number, takes the nearer end, or the first. A name that is none is that of the
// first map.
Colour Map_Colour(std::string_view name, double place);

}  // namespace vntl
