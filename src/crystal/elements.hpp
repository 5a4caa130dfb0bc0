// The symbols of the chemical elements, and which of them a text of a structure file means.
#pragma once

#include <string>
#include <string_view>

namespace vntl {

// The element of a type text ("Fe3+", "O-2", "NI") or of a label ("FeA", "O1A"), written as "Fe": the letters up to the first digit or
// sign; where they are no element ("FeA", "OW"), the one that they begin with; where they begin with none ("M1"), the letters themselves.
std::string Element_Of(std::string_view text);

}  // namespace vntl
