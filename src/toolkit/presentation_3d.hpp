// Presentation graphics with a third axis: a box of data seen in perspective, from a side and from above.
//
// At rotation 0 the first axis leads away from the eye, the second to the right, the third upward. The box turns about the upright line
// through its middle, and the eye rises; at every turn it fits into the plot box.
#pragma once

#include <string_view>

#include "toolkit/graphics.hpp"

namespace vntl {

// A place of the picture, in half widths of the room that the turning box needs, and how far it lies behind the middle of the box, in its
// sides.
struct Projected {
    double x, y, depth;
};

class Projection {
public:
    // Degrees. A rotation of a full turn or more counts as 0; an elevation is held to 0 to 45.
    Projection(double rotation, double elevation);
    Projected operator()(double u, double v, double w) const;  // places along the three axes, 0 to 1 in the box

private:
    double cos_rotation_, sin_rotation_, cos_elevation_, sin_elevation_;
};

class Presentation_3D {
public:
    explicit Presentation_3D(Graphics& graphics) : graphics_(&graphics) {}

    void IPgArea(float x1, float y1, float x2, float y2);                          // room of the box, fractions of the area
    void IPgUnitsXYZ(float x1, float x2, float y1, float y2, float z1, float z2);  // ends of the three axes
    void IPgRotation(float degrees);
    void IPgElevation(float degrees);

    Point To_Device(float x, float y, float z) const;
    double Depth(float x, float y, float z) const;  // grows away from the eye: what lies deeper is drawn first

    // The edges of the box, those at the back first, in the current colour and line width.
    void IPgFrame() const;
    // The third axis along the upright edge at the left: "T" ticks, "N" numbers.
    void IPgZScale(std::string_view flags) const;

private:
    Projected At(float x, float y, float z) const;
    Point On_Device(const Projected& place) const;

    Graphics* graphics_;
    double bx1_ = 0, by1_ = 0, bx2_ = 1, by2_ = 1;
    float x1_ = 0, x2_ = 1, y1_ = 0, y2_ = 1, z1_ = 0, z2_ = 1;
    float rotation_ = 0, elevation_ = 0;
};

}  // namespace vntl
