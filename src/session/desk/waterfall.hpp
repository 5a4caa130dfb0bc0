// How far the shown rows stand above one another in a graph. The points of a row stay as they are: its picture is shifted.
#pragma once

#include <vector>

#include "session/desk/look.hpp"
#include "session/plot_state.hpp"

namespace vntl {

class Profile_Store;

// The offset of each row, in units of the scale of y, those of the view. The lowest shown row has none, nor has a hidden row, nor any row
// of a plot that is no 2D graph. All are finite.
class Row_Offsets {
public:
    Row_Offsets(const Profile_Store&, const Plot_State&);

    float Of(int row) const { return offsets_.empty() ? 0 : offsets_[static_cast<std::size_t>(row - 1)]; }  // from 1
    float Highest() const { return highest_; }
    bool Any() const { return !offsets_.empty(); }  // whether some row is shifted

private:
    std::vector<float> offsets_;  // empty: none
    float highest_ = 0;
};

// Of one row; who needs many makes a `Row_Offsets`.
float Offset_Of_Row(const Profile_Store&, const Plot_State&, int row);

// Whether the shown rows can stand by their temperatures: each has one, and they differ.
bool Temperatures_Differ(const Profile_Store&);

// Lowest and highest place of the shown points in the view's x, each where it stands in the picture; `foot` above `top` without any.
struct Extent_Of_Rows {
    double foot, top;
};
Extent_Of_Rows Extent_In_View(const Profile_Store&, const Plot_State&, const Row_Offsets&);

// That of the highest row: how much higher than one pattern the whole is.
float Height_Of_Waterfall(const Profile_Store&, const Plot_State&);

// Changes the waterfall; the picture is to be drawn anew. A view that showed all of its height shows all of the new one, another one stays.
// So does what stands above the band of a pinned difference.
// An offset outside 0 to 1 becomes the nearer end, one that is no number 0.
void Set_Waterfall(const Profile_Store&, Plot_State&, Waterfall, const Look& look = {});

}  // namespace vntl
