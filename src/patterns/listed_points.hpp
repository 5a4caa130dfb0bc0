// The points of the lists that a user makes on a pattern, in the units of x in which they were found.
#pragma once

namespace vntl {

struct Peak_Mark {
    float x, y, bgr;  // position, intensity at the top, background under it
    bool operator==(const Peak_Mark&) const = default;
};

// A point of the background; in a fit a node of the line that is the background, whose height is refined.
struct Background_Mark {
    float x = 0, y = 0;
    int flag = 0;  // 1 refined, 0 fixed
    float sd = 0;  // standard deviation from the last fit; 0 of a fixed height

    bool operator==(const Background_Mark&) const = default;
};

}  // namespace vntl
