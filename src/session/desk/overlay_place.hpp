// Where difference curve and reflections of a refined profile stand in a graph.
//
// Without `pinned_difference` they stand among the data, on `diff_base` and in `diff_band`, and move with them. With it they have a band of
// their own at the foot of the plot box, in which they keep place and height however y is zoomed: the difference is in counts on any scale,
// and as high as it is in the whole range of a linear graph. The data's view begins above the band; `y_view_min` stays the lower end of
// the box.
#pragma once

#include "session/desk/look.hpp"
#include "session/plot_state.hpp"
#include "session/store.hpp"

namespace vntl {

// In units of the view.
struct Overlay_Place {
    bool pinned = false;
    float base = 0;       // on which the difference curve stands
    float band = 0;       // height of the band of the reflections, above the base
    float per_count = 1;  // of the difference; a pinned one alone is in counts
};

Overlay_Place Place_Of_Overlay(const Profile_Store&, const Plot_State&, const Look&);

// The height of the band as a fraction of the box, 0 for none: as high as what is shown in it needs.
float Part_Of_Band(const Profile_Store&, const Plot_State&, const Look&);

// The y of the view where the data begin: `y_view_min`, or the top of the band. Numbers of the y scale stand from here on.
float Foot_Of_Data(const Profile_Store&, const Plot_State&, const Look&);

// The lower end of a box in which the data shall be seen from `low` to `high`.
float Foot_Of_Box(const Profile_Store&, const Plot_State&, const Look&, float low, float high);

}  // namespace vntl
