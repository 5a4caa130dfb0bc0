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
// and with the eye at a distance d from the middle, right and up shrink by d / (d + b cos e), however high the point lies. So the page
// stands parallel to the uprights of the cube, as in pictures of buildings: they stay upright, and a curve whose x rises in space is a
// function of the place across the page.
#pragma once

#include <array>
#include <limits>

#include "drawing/device.hpp"

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

    Seen_Point See(const Space_Point& point) const {
        const double across = point[1] - 0.5, away = point[0] - 0.5;
        return Look(across * cos_turn_ - away * sin_turn_, across * sin_turn_ + away * cos_turn_, point[2] - 0.5);
    }
    Space_Point Eye() const;  // in the cube's coordinates; at no finite place where parallels are seen as parallels
    // The least rectangle that holds the cube at this elevation whatever its rotation: scaled to it, a picture does not swell as it turns.
    Rect Extent() const;

private:
    Seen_Point Look(double across, double away, double upward) const {
        const double shrunk = 1 / (1 + away * cos_rise_ * nearness_);
        return {across * shrunk, (upward * cos_rise_ + away * sin_rise_) * shrunk, away * cos_rise_ - upward * sin_rise_};
    }

    double cos_turn_, sin_turn_, cos_rise_, sin_rise_;
    double nearness_;  // of the eye: 1 / distance
};

// A view scaled so that the cube fills a rectangle of the page.
class Fitted_View {
public:
    Fitted_View(const Projection& view, const Rect& box);

    Point See(const Space_Point& in_cube) const {
        const Seen_Point seen = view_.See(in_cube);
        return {x0_ + x_scale_ * seen.right, y0_ + y_scale_ * seen.up};
    }

private:
    Projection view_;
    double x0_, x_scale_, y0_, y_scale_;
};

}  // namespace vntl
