// What the status bar tells of the point under the pointer.
#pragma once

#include <string>

#include "session/desk/nearest_row.hpp"

namespace vntl {

struct Session;

// An intensity and its standard deviation in the way of crystallography: two figures of the deviation in brackets, in units of the last
// figure of the intensity, "1234(35)" or "0.520(34)"; a deviation of 100 or more whole, "54321(233)". Without a deviation above 0 the
// intensity alone, with six figures.
std::string Intensity_With_Deviation(float intensity, float deviation);

// What the user calls a row: its legend text, else its file's name; as much of it as the status bar has room for.
std::string Short_Name(const Session&, int row);

// The point of a graph that a place in units of the view is at, by number, name and intensity: the nearest row of several, else the one
// that is shown first. " N= 24 lab6.xye I= 1234(35)", "Pointed Pattern 2 lab6.xye I= 1234(35)"; of logarithms " N= 24" of the first row,
// and behind a comma the nearest one.
std::string Pointed_Text(const Session&, Place_In_View at);

}  // namespace vntl
