// A cube in space as it is seen on a page.
//
// Coordinates in the cube run from 0 to 1: x and y along its floor, z upward. At a rotation of 0 the y axis runs across the page from left
// to right, and the x axis away from the viewer. A positive rotation turns the cube counter-clockwise as seen from above, so that its front
// goes to the right. The elevation is that of the eye: at 0 degrees it looks along the floor, at 90 down upon it.
//
// With a, b and h the distances of a point from the middle of the cube, across, away and upward, after the rotation, and e the elevation:
//
//   right = a        up = h cos e + b sin e        depth = b cos e - h sin e
//
// and with the eye at a distance d from the middle, right and up shrink by d / (d + depth).
#pragma once

#include <array>
#include <limits>

#include "toolkit/device.hpp"

namespace vntl {

using Space_Point = std::array<double, 3>;  // x, y, z

struct Seen_Point {
    double right, up;  // from the middle of the cube, in its edges
    double depth;      // how far behind the middle; of two points at one place the one of less depth hides the other
};

inline constexpr double orthographic = std::numeric_limits<double>::infinity();  // distance of an eye that sees parallels as parallels

class Projection {
public:
    // Degrees, and the distance of the eye in edges of the cube, more than the half diagonal of 0.87.
    Projection(double rotation, double elevation, double distance = orthographic);

    Seen_Point See(const Space_Point& point) const;
    // The least rectangle that holds the cube at this elevation whatever its rotation: scaled to it, a picture does not swell as it turns.
    Rect Extent() const;

private:
    Seen_Point Look(double across, double away, double upward) const;

    double cos_turn_, sin_turn_, cos_rise_, sin_rise_;
    double nearness_;  // of the eye: 1 / distance
};

}  // namespace vntl
