// Another style of pictures, shown at once in all windows.
#pragma once

#include <string_view>

#include "base/status.hpp"

namespace vntl {

struct Application;

// Fails, and changes nothing, on what is no style (session/desk/styles.hpp).
Status Show_In_Style(Application&, std::string_view name);

void Toggle_Series_By_Temperature(Application&);

}  // namespace vntl
