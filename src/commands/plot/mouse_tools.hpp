// What the modes of the mouse share: places in data units, read-outs, the shape that follows the hand, and how a mode begins and ends.
#pragma once

#include <vector>

#include "session/modes.hpp"
#include "session/session.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

inline constexpr int left_button = 1, middle_button = 2, right_button = 3;

struct Data_Point {
    float x, y;
};

// A place of the page in data units of the window drawn last.
Data_Point In_Data(const Plot_State& plot, double page_x, double page_y);
bool Inside(const Plot_State& plot, Data_Point at);

// The scale of the numbers that the user reads and writes as counts. The form of logarithms shows its units, as its numbers do.
Y_Scale Scale_Of_Numbers(const Session&);

// In the band of a pinned difference: y means no intensity there.
bool In_Band(const Session&, Data_Point at);

// A view of the data from y1 to y2 as a view of the whole plot box.
View In_Box(const Session&, View of_data);

// What the wheel is turned over: the plot box, or the room of an axis beside it, along its length.
enum class Wheel_Place { nothing, box, x_axis, y_axis };
Wheel_Place Wheel_Place_Of(const Plot_State&, Plot_State::Place page);

// The place of the page in the plot box that is nearest.
Plot_State::Place Held_In_Box(const Plot_State& plot, Plot_State::Place page);

void Show_Read_Outs(Session&, Data_Point at);

void Start_Rubber(Session&, Rubber_Kind kind, Plot_State::Place at);
void Move_Rubber(Session&, Plot_State::Place to);
void Lapse_Rubber(Session&);
Rubber_Shape End_Rubber(Session&, Plot_State::Place at);  // the shape with its end there, which lapses
void End_Drag(Session&);
void Want_Button_Up(Session&, bool on);

// Leaves the mode, and what it had drawn goes from the screen.
void End_Mode_Of_Mouse(Session&);

// A hand that lets go of a button has moved a little: so far it has clicked.
inline constexpr double most_pixels_of_a_click = 4;
double Pixels_Across(double page_units);  // of the window as it is now, along x
double Pixels_Up(double page_units);      // and along y
bool Within_A_Click(double pixels);
bool Is_Click(const Rubber_Shape& rubber);  // no farther across

// False for a message that means nothing: no rows, no plot, no place.
bool Has_Meaning(const Session&, const WIN_MESSAGE& record);

// Names of rows for a box, one a line; of many rows the first ones.
std::string Row_Names(const Session&, const std::vector<int>& rows);

}  // namespace vntl
