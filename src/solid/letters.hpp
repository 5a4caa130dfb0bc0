// The area of a letter as triangles.
#pragma once

#include <array>
#include <vector>

#include "pictures/text_extent.hpp"

namespace vntl {

using Flat_Triangle = std::array<Point, 3>;

// Turns the contours of a letter so that its area lies to the left of each, and drops corners that repeat the one before.
Outline Directed(Outline letter);

// Of contours that are directed so: each triangle counter-clockwise, together the area of the letter.
std::vector<Flat_Triangle> Triangles_Of(const Outline& letter);

}  // namespace vntl
