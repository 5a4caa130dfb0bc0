// The mouse over the plot, in page units: a routine for each value of `MoveMode`.
//
// Read-outs follow every move: part 3 and 4 of the status bar show x and y, part 2 the point of row 1 or, with several rows, the row
// nearest in y; part 1 the spacing d that belongs to x, where nothing else is said there. No move redraws the plot but a drag of it.
// A right button, Escape and a change of the plot form end a mode and change nothing. A hand that moves by up to 4 pixels of the screen
// across between press and release has clicked.
#pragma once

#include <vector>

#include "base/ask.hpp"
#include "session/plot_form.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

struct Session;

// Passes a message of the mouse to the routine of the plot form, and in a graph to that of `MoveMode`.
void Do_Mouse(Session&, Ask&, const Message& message);

//   left button   a rectangle that becomes the view when it is released; a click without a movement acts on the list of the running
//                 calculation. With spectral lines, lines at the wavelengths of the tube.
//   right button  back to the whole range
//   wheel         a narrower or wider range of x about the pointer
// Over the ticks of a refined profile a box names the reflections, where that is asked for.
void MouseMovement_Main(Session&, Ask&, const Message& message);

// A map: a rectangle drawn with the left button becomes the window of x and rows, the right button leads back to all of it, the wheel
// narrows or widens x about the pointer.
void MouseMovement_graph2dcontour(Session&, Ask&, const Message& message);

// A graph in space turns and rises by a degree a move while the left button is down, whatever the distance. The wheel narrows or widens x
// about the middle, the right button leads back to the whole range.
void MouseMovement_graph3d(Session&, Ask&, const Message& message);
void Turn_To(Session&, float rotation, float elevation);  // degrees, held to -180 .. 180 and 0 .. 45; the status bar tells them

// The plot follows the left button at half its speed. The wheel works as above.
void MouseMovement_DragPlot(Session&, Ask&, const Message& message);
void Start_Drag_Mode(Session&);
void End_Drag_Mode(Session&);

// A band drawn with the left button becomes an excluded region: of the row, or of the rows that the user picks in a dialog.
void MouseMovement_SelExclReg(Session&, Ask&, const Message& message);
void Start_Exclude_Mode(Session&);

// A line from where a place of the curves is to where it shall be moves the rows. A click, here along both axes, moves none.
void MouseMovement_OffsetAlign(Session&, Ask&, const Message& message);
void Start_Align_Mode(Session&, std::vector<int> rows);

// A click on a pivot, then a drag of a place beside it: x, or y, of the rows is multiplied by the ratio of the drag's end to the pivot,
// so that what stood at the pivot comes to stand at the end.
void MouseMovement_ScalingX(Session&, Ask&, const Message& message);
void MouseMovement_ScalingY(Session&, Ask&, const Message& message);
void Start_Scaling_Mode(Session&, Move_Mode mode, std::vector<int> rows);  // scale_x or scale_y

// What was told in the line of hints gives way to what the user does next; the hint of a mode stands there again.
void Forget_Note(Session&);

void Clear_Read_Outs(Session&);  // there is nothing to point at any more

// Shapes and drags lapse, and the mode of the mouse ends.
void Cancel_Modes(Session&);

// What Escape does: a shape that is being drawn lapses, a drag goes back to where it began, and a mode of the mouse, an insertion or a
// deletion ends.
void Cancel_Mouse(Session&);

}  // namespace vntl
