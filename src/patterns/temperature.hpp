// Temperatures of samples, as diffractometers tell them.
#pragma once

#include <string_view>

namespace vntl {

// In kelvin, from kelvin or degrees Celsius ("K", "kelvin", "C", "Celsius", "degC", the sign of degrees and C in Latin-1 or UTF-8). 0 for a
// unit that is none of these, or blank, and for a temperature that no sample has.
double In_Kelvin(double value, std::string_view unit);

}  // namespace vntl
