// The way back and forward through the views of a 2D plot, or of a map.
#pragma once

namespace vntl {

struct Session;

// Keeps the present view, with its waterfall, if it is new, and sets the states of the two commands. `step`: it came by one of many small
// steps, such as those of the wheel, which count as one move. Where rows changed or were added by a calculation the views before stay; in
// another x space they are converted by the constants of row 1. Loading a file, or logarithms, start the history anew.
void Remember_View(Session&, bool step);

// Makes the view before, or after, the present one. False when there is none.
bool View_Back(Session&);
bool View_Forward(Session&);

}  // namespace vntl
