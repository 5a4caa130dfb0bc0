// Curves that show what an open dialog would make of rows, over the picture and its marks.
#pragma once

#include "plot/plot.hpp"

namespace vntl {

// The curves of the plot's preview, in graphs alone.
void Draw_Preview(const Scene&, Graphics&);

}  // namespace vntl
