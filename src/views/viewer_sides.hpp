// The windows beside the viewer of area detectors: section, scan and surface. They live no longer than it does.
#pragma once

namespace vntl {

struct Application;

// Opens, draws or closes them, as the state of the viewer tells.
void Show_Beside(Application&);

void Register_Viewer_Sides(Application&);

}  // namespace vntl
