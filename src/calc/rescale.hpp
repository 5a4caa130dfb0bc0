// Moving and rescaling whole rows: points, ranges, calculated curve and background and, along x, reflections and
// excluded regions. Sigma keeps its value.
#pragma once

#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"

namespace vntl {

void Offset_Row(Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info, float dx, float dy);

// x, or y, becomes a * x + b. With a < 0 the order of the points turns round, so that x ascends again, and ranges and regions keep their
// lower end first.
void Scale_X_Of_Row(Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info, float a, float b);
void Scale_Y_Of_Row(Diffraction_Pattern_Type& pattern, float a, float b);

// False when a value would leave the range of single precision: nothing may be done then.
bool Stays_Finite_X(const Diffraction_Pattern_Type& pattern, float a, float b);
bool Stays_Finite_Y(const Diffraction_Pattern_Type& pattern, float a, float b);

}  // namespace vntl
