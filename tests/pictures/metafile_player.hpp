// Plays metafiles record by record, for tests: what a viewer would show, with the state of objects, units and text that it would keep. What
// is wrong in a file (sizes, totals, objects, bounds) is a failure of the test.
#pragma once

#include <string>

#include "pictures/shown_shapes.hpp"

namespace vntl {

Drawing Play_Emf(const std::string& bytes);
// Of the letters of the font Symbol it knows a handful.
Drawing Play_Wmf(const std::string& bytes);

}  // namespace vntl
