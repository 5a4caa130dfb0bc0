// Pictures of the resources, drawn anew for every size, density and colour of the desktop.
#pragma once

#include <QIcon>
#include <string>

namespace vntl {

// By its name, "vantrelo" or "toolbar/open"; empty for an unknown one. Strokes in "currentColor" take the desktop's colour of texts.
QIcon Resource_Icon(const std::string& name);

}  // namespace vntl
