// The plot on paper and in the files of other programs, by way of dialogs.
#pragma once

#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Configuration;

std::vector<Dialog_Resource> Save_Graphic_Resources();

// "Save Graphic into file...": the format, the file, the options of the format, and the picture with the stamp of the program.
Status Export_Plot(Configuration&, Ask&);

// "Print...": PostScript into a file, or a page to a printer, by the operating system.
Status Print_Plot(Configuration&, Ask&);

}  // namespace vntl
