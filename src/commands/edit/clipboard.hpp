// What is on the screen, for other programs.
#pragma once

#include "base/ask.hpp"
#include "base/status.hpp"

namespace vntl {

struct Session;

// The picture of the window in front, in its size, marks included.
void Copy_Picture();

// The points of the shown rows inside the x window, as columns parted by TABs: x and y of each row side by side, under the row's name.
// Fails, and leaves the clipboard as it was, where these are more numbers than a clipboard should hold.
Status Copy_Data(const Session&);

}  // namespace vntl
