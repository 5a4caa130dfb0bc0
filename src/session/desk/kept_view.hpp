// What a graph shows goes on to be shown while its scale, its shown rows, its waterfall or its look change.
#pragma once

#include "session/desk/look.hpp"
#include "session/plot_state.hpp"
#include "session/store.hpp"

namespace vntl {

// Made before the change, asked after it. A view that showed the whole height of the graph shows all of the new one, another one the same
// intensities of the lowest row. Data that stood above the band of a pinned difference, or above the foot of the view, stand above the new
// one. x stays.
class Kept_View {
public:
    Kept_View(const Profile_Store&, const Plot_State&, const Look&);

    // False, and the view is as the change left it, where single precision cannot hold the new one.
    bool Show(const Profile_Store&, Plot_State&, const Look&) const;

private:
    enum class Shown { part, points, range, whole };  // of the height: the points in the view's x, the range of all, that with its margin

    Shown Height_Shown(const Profile_Store&, const Plot_State&);
    float New_Top(const Profile_Store&, const Plot_State&) const;
    float New_Foot_Of_Data(float foot_of_whole, Y_Scale) const;

    Y_Scale scale_;
    View view_, whole_;  // the whole one is without a waterfall
    float waterfall_;    // height
    float band_;         // part of the box
    float foot_;         // of the data
    bool on_whole_foot_;
    double margin_ = 0, height_ = 1;  // above the highest point; of the points
    Shown shown_;
};

}  // namespace vntl
