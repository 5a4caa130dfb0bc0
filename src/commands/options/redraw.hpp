// The plot after preferences have changed. The grid of a map or a surface is made anew: it holds the saturation.
#pragma once

#include "base/ask.hpp"

namespace vntl {

struct Session;

void Show_Whole_Range(Session&, Ask&);   // x over all rows
void Show_Present_View(Session&, Ask&);  // the window stays

void Show_Other_Windows(const Session&);  // in the new preferences too

}  // namespace vntl
