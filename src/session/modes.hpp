// How a mode of the mouse begins and ends. Its hint in part 1 of the status bar, its cursor and the commands that are barred while it
// lasts come together and go together: who ends a mode in any other way leaves one of them behind.
#pragma once

#include <string_view>

#include "session/commands.hpp"
#include "session/plot_form.hpp"

namespace vntl {

// What a click does to the list of the running calculation.
enum class List_Click { insert_peak, delete_peak, insert_background, delete_background };

// A mode takes the place of the present one; `command` is barred while it lasts, 0 for none.
void Enter_Mode(Session&, Move_Mode mode, Cursor_Shape cursor, std::string_view hint, int command = 0);
void Enter_Mode(Session&, List_Click click);

// The cursor that the present mode has; a pan by the middle button borrows it.
Cursor_Shape Cursor_Of_Mode(const Session&);

// Is there a mode that a drag or a click serves?
bool In_Mode(const Session&);

// What clicks do to the list of the calculation that runs, as its hint begins: "Peaks allocation: Insert peak". Behind it the list tells
// how many it holds: " 13 peaks", or " 1 peak found" behind a search. Nothing where clicks act on no such list.
void Tell_Count(Session&, bool found = false);

// The hint where no mode has one: of the calculation that runs, or that the map or surface on the screen is smoothed.
void Show_Resting_Hint(Session&);

// Back to no mode: shapes and drags lapse, the arrow comes back, barred commands open. The resting hint comes back. Every change of the
// plot form comes here.
void Leave_Mode(Session&);

}  // namespace vntl
