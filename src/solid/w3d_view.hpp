// From where a solid is seen, how it is lit, and where its points stand on the page. The same numbers drive the graphics card and the
// projection by our own hand.
#pragma once

#include <array>

#include "drawing/device.hpp"
#include "solid/w3d.hpp"

namespace vntl {

// Elevation and azimuth in degrees: (d cos e cos a, d sin e, d cos e sin a).
Vec3 From_Polar(double elevation, double azimuth, double distance);

enum class Render_Mode { wireframe = 0, hidden_lines, unlit, flat, gouraud, phong };

struct W3d_View {
    Vec3 eye{}, light{};  // the eye looks at the origin
    Render_Mode mode = Render_Mode::gouraud;
    Colour background = WRGB(192, 192, 192), edge_colour = 0;
};

// The perspective of an eye that looks at the origin, upright, with a picture angle of 15 degrees over the shorter side of the page: a
// model fills it at the distance from which it is seen first.
class W3d_Camera {
public:
    W3d_Camera(const Vec3& eye, double width, double height);  // of the page, device units

    struct Seen {
        Point at;      // on the page, device units from its lower left
        double depth;  // along the line of sight from the eye; not above 0: not before it
    };
    Seen See(const Vec3& point) const;
    double Nearest() const { return nearest_; }  // depth up to which nothing is shown; there is no farthest one

    // Column after column, for OpenGL: clip coordinates whose y points upward, and whose z runs from -1 at the nearest depth toward 1.
    std::array<float, 16> Matrix() const;

private:
    std::array<std::array<double, 4>, 3> rows_{};  // right, up, forward, of a point and 1
    double width_, height_, scale_, nearest_;      // the scale: page units a unit at depth 1
};

// Share of its material's colour, `ambient_light` to 1, that the side of a face shows to which `normal` (any length) points. The rest of
// the light grows with the square of (1 + the cosine of the angle between both) / 2: slopes turned away from the light keep their relief.
// Of a face seen from the other side the normal is to be turned.
inline constexpr float ambient_light = 0.25f;
float Lit(const Vec3& normal, const Vec3& at, const Vec3& light);
Colour Lit_Colour(Colour material, float share);

}  // namespace vntl
