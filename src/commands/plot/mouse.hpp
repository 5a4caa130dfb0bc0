// The mouse over the plot: read-outs in the status bar, the zoom rectangle, the wheel, dragging, and the way back.
#pragma once

#include "toolkit/messages.hpp"

namespace vntl {

struct Session;

// A mouse message of the main window, in page units, in one of the 2D forms.
//   move          part 3 and 4 of the status bar show x and y, part 2 the point of row 1 or, with several rows, the row nearest in y;
//                 part 1 the spacing d that belongs to x, where nothing else is said there
//   left button   a rectangle that becomes the view when it is released; a click without a movement changes nothing
//   right button  back to the whole range
//   wheel         a narrower or wider range of x about the pointer
void MouseMovement_Main(Session&, const Message& message);

// The plot follows the left button at half its speed; the right button ends the mode. The wheel works as above.
void MouseMovement_DragPlot(Session&, const Message& message);

void Clear_Read_Outs(Session&);  // there is nothing to point at any more

void Start_Drag_Mode(Session&);
void End_Drag_Mode(Session&);

// What Escape does: a rectangle that is being drawn lapses, a drag goes back to where it began, and a mode of the mouse ends.
void Cancel_Mouse(Session&);

}  // namespace vntl
