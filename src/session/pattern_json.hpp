// A pattern as JSON, wherever it comes from.
#pragma once

#include "base/topic.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// Puts the texts, numbers and flags of a pattern into an object.
void Put_Pattern_Head(Json& object, const Diffraction_Pattern_Type&);

// Puts its arrays, those that it has, from point `first` to `last`, which count from 1; what lies behind its last point is left out.
void Put_Pattern_Arrays(Json& object, const Diffraction_Pattern_Type&, int first, int last);

}  // namespace vntl
