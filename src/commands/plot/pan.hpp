// The middle button takes hold of a graph or a map: it follows the hand at its full speed, in every mode of the mouse.
#pragma once

#include "toolkit/messages.hpp"

namespace vntl {

struct Session;

// Serves a message of the mouse if it belongs to a pan: the middle button that goes down in the plot box and up again, and what happens
// meanwhile. False, and nothing is done, for any other message.
bool Pan(Session&, const Message&);

// The plot goes back to where the pan began.
void Cancel_Pan(Session&);

}  // namespace vntl
