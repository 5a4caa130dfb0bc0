// A bar that tells which value a colour stands for, upright beside a plot box.
#pragma once

#include <string>
#include <vector>

#include "drawing/fitted_axis.hpp"
#include "plot/fitted_frame.hpp"

namespace vntl {

struct Colour_Bar {
    std::string title;
    std::vector<Colour> colours;  // from the foot to the top
    double first = 0, last = 0;   // values at the ends, on the scale
    Axis_Scale scale = Axis_Scale::even;
    bool whole_numbers = false;  // those of rows and temperatures; the ends have theirs
};

// Device units right of the plot box, with what sets it apart from that.
double Width_Of_Bar(const Colour_Bar&, const Look&, const Text_Style&, const Device&);
// Right of a plot box in device units, as high as it.
void Draw_Bar(const Colour_Bar&, const Look&, const Text_Style&, const Rect& box, Device&);

}  // namespace vntl
