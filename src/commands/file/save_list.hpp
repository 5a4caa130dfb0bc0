// "Save Buffer file...": the names of the measured patterns as a list, which opens all of them again.
#pragma once

namespace vntl {

struct Application;

void Save_Buffer_File(Application&);

}  // namespace vntl
