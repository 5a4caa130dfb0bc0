// What a style says of a picture beyond the preferences: how it fits its room, not which colour a line has.
//
// At first everything is off: a picture is the one that the preferences tell.
#pragma once

#include <string>

#include "base/colour.hpp"

namespace vntl {

struct Look {
    // Curves.
    float least_marker_gap =
        0;  // pixels of the screen, 1/96 inch on paper, that the points of a curve are apart for it to have markers; 0: always
    std::string
        series_map;  // name of the colour map of a picture of more than 12 shown rows (base/colour_map); empty: the slots of the styles

    // Frame and texts.
    Colour ink = 0;               // of the frame, the target, and of marks that are black
    float frame_width = 2;        // line units
    float least_text_points = 0;  // no text of a picture is smaller, in points (1/72 inch) of the size in which it is seen
    float least_contrast =
        0;  // of a text to its ground, by the ratio of relative luminances (1 to 21); its colour becomes darker, or lighter
    bool fitted_margins = false;  // the plot box takes the room that numbers and labels leave
    bool minor_ticks = false;
    bool superscripts = false;       // powers of ten, and exponents of units
    bool count_ticks = false;        // a scale of logarithms or roots has its ticks at counts, and its title has no "Log()"
    bool pinned_difference = false;  // difference curve and reflections keep their place in the box while y is zoomed
    bool placed_legend = false;      // the legend stands where it covers least of the curves

    bool operator==(const Look&) const = default;
};

}  // namespace vntl
