// The saturation of maps and surfaces in the title of the map.
//
//   Heating                                   without it
//   Heating (Saturation:    500.0 )           when it is new
//   Heating (Saturation:     600.0            when the title tells one already
#pragma once

#include <string>
#include <string_view>

#include "session/preferences.hpp"

namespace vntl {

// The value in the columns that a title has for it; empty where they do not hold it.
std::string Saturation_Text(float value);

// The title with the saturation, or without one where it is off. A value that its columns do not hold is left out.
std::string Title_With_Saturation(std::string_view title, const Saturation& saturation);

}  // namespace vntl
