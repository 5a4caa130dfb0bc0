// What a click in the plot of a running calculation does to its list.
#pragma once

#include "base/ask.hpp"

namespace vntl {

struct Session;

// A click at a place inside the plot, y in counts: peaks and points of the background are inserted and deleted, the window of a fit is
// chosen. Draws.
void Click(Session&, Ask&, float x, float y);

}  // namespace vntl
