// The plot on paper and in the files of other programs, by way of dialogs.
#pragma once

#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Configuration;
struct Session;

std::vector<Dialog_Resource> Save_Graphic_Resources();

// "Save Graphic into file...": the format, the file, the options of the format, and the picture with the stamp of the program. The desk
// remembers size, density, style and directory of a picture that was written.
Status Export_Plot(Session&, Ask&);

// The picture of a window on paper: PostScript into a file, or a page to a printer, by the operating system. `stamped`: with the name of
// the program in its corner.
Status Print_Window(Configuration&, Ask&, int window, bool stamped);

// "Print...": the window in front, with the stamp.
Status Print_Plot(Configuration&, Ask&);

}  // namespace vntl
