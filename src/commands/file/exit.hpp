// The exit sequence.
#pragma once

namespace vntl {

struct Application;

// Open windows ask about what would be lost; then last directory and recent files are written, where that is allowed, and the loop ends.
void Exit_Program(Application&);

}  // namespace vntl
