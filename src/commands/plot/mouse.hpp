// The mouse over the plot: read-outs in the status bar, the zoom rectangle, the wheel, and the way back.
#pragma once

#include "toolkit/messages.hpp"

namespace vntl {

struct Session;

// A mouse message of the main window, in page units, in one of the 2D forms.
//   move          part 3 and 4 of the status bar show x and y, part 2 the point of row 1 or, with several rows, the row nearest in y
//   left button   a rectangle that becomes the view when it is released; a click without a movement changes nothing
//   right button  back to the whole range
//   wheel         a narrower or wider range of x about the pointer
void MouseMovement_Main(Session&, const Message& message);

// Lets a rectangle that is being drawn lapse.
void Cancel_Rubber(Session&);

}  // namespace vntl
