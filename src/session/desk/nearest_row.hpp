// Which row of a graph a place is at. Places are in units of the view: on the scale of y, with the offsets of a waterfall.
#pragma once

namespace vntl {

class Profile_Store;
struct Plot_State;

struct Place_In_View {
    float x, y;
};

// The shown row whose point at x, or the last one before it, is nearest in y, among those that reach x; 0 for none. A search by halves a
// row.
int Nearest_Row(const Profile_Store&, const Plot_State&, Place_In_View at);

// The shown row whose line passes nearest to the place, no farther than an ellipse about it with these half axes; of several through the
// same place the one that is drawn last. 0 for none. Of points that lie closer than they can be told apart some hundred are looked at.
int Row_Within(const Profile_Store&, const Plot_State&, Place_In_View at, Place_In_View reach);

}  // namespace vntl
