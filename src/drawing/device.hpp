// What a drawable must be able to do: the few primitives into which every picture is broken down.
//
// Coordinates are device units with the origin at the lower left and y upward; a device with another convention flips them itself.
// A pen's width and a dash are in line units, about a pixel of a 1200 x 800 page and never thinner than a pixel, so that a plot keeps its
// look at every size.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "base/colour.hpp"
#include "base/extremes.hpp"

namespace vntl {

struct Point {
    double x, y;
};
struct Rect {
    double x1, y1, x2, y2;  // x1 <= x2, y1 <= y2
};

enum class Line_Style { none = -1, solid = 0, dotted, dashed, dot_dash, dot_dot_dash };

struct Pen {
    Colour colour = 0;
    double width = 1;
    Line_Style style = Line_Style::solid;
};

// What is known of a data set before it is drawn, so that much of it need not be looked at again.
struct Series_Blocks {
    static constexpr std::size_t points = 64;  // of a block, and the first one of the next

    bool rises = false;  // x never falls, and there is no gap in it
    std::vector<Extremes> y;

    Series_Blocks() = default;
    Series_Blocks(std::span<const float> x, std::span<const float> y);
};

// Points of a data set and the map from data to device units: x_device = x0 + x_scale * x. Both spans have the same length.
// A pair with a NaN or an infinity is a gap.
struct Series {
    std::span<const float> x, y;
    double x0 = 0, x_scale = 1, y0 = 0, y_scale = 1;
    const Series_Blocks* blocks = nullptr;  // of these points, where somebody found them

    Point At(std::size_t i) const { return {x0 + x_scale * static_cast<double>(x[i]), y0 + y_scale * static_cast<double>(y[i])}; }
    bool Gap(std::size_t i) const { return !std::isfinite(x[i]) || !std::isfinite(y[i]); }
};

struct Marker_Style {
    int glyph = 221;               // 0 none, 221 circle, 222 square, 223 diamond, 224 triangle, 225 inverted triangle, 226 plus, 227 cross
    double width = 0, height = 0;  // of the glyph's box, device units
    Colour colour = 0;
    bool filled = true;
};

// Cells of equal size that fill a rectangle side by side: the lowest row first, each from left to right. Where they are smaller than what a
// device can show, their colours are averaged. A cell of no colour shows what lies below.
inline constexpr Colour no_colour = 0xff000000u;

struct Cell_Image {
    Rect rect;
    int columns = 0, rows = 0;
    std::span<const Colour> colours;  // columns * rows

    bool Shows() const {
        return columns > 0 && rows > 0 && rect.x1 < rect.x2 && rect.y1 < rect.y2 && std::isfinite(rect.x2 - rect.x1) &&
               std::isfinite(rect.y2 - rect.y1) && colours.size() >= static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    }
};

// The cells that a device shows one by one in a rectangle.
struct Finest_Cells {
    Rect rect{};  // that they fill
    int columns = 0, rows = 0;
};

// A piece of a surface, or a line on it, by the numbers of its corners in a list of places. Four corners are two triangles, which share the
// first and the third; two are a line.
struct Facet {
    std::array<std::uint32_t, 4> corners;
    std::uint32_t count = 0;  // 2 to 4
    Colour colour = 0;
};

// Facets that are laid one over the other, the first one lowest. Between two with a side in common nothing shows through.
struct Facet_List {
    std::span<const Point> places;  // all finite
    std::span<const Facet> facets;
    double line_width = 1;
};

enum class Justify { left = 0, centre = 1, right = 2 };

struct Text_Style {
    int font = 101;                // 101 Courier, 102 Helvetica, 103 Times, 104 Symbol
    int style = 0;                 // bits: 1 bold, 2 italic, 4 underline, 8 opaque
    double width = 0, height = 0;  // character cell, device units
    double angle = 0;              // degrees, counter-clockwise: 0 or 90 or -90
    Justify justify = Justify::left;
    Colour colour = 0;
};

class Device {
public:
    virtual ~Device() = default;

    virtual double Width() const = 0;  // extent in device units
    virtual double Height() const = 0;
    virtual double Pixel() const { return 1; }  // device units of a pixel of 1/96 inch

    virtual void Clear(Colour) = 0;          // the whole device, whatever the clip
    virtual void Set_Clip(const Rect&) = 0;  // until the next call nothing is drawn outside
    virtual void Polyline(std::span<const Point>, const Pen&) = 0;
    virtual void Curve(const Series&, const Pen&) = 0;
    virtual void Markers(const Series&, const Marker_Style&) = 0;
    virtual void Fill(std::span<const Point> polygon, Colour) = 0;
    // What lies between a curve and a level line below it, as far as the curve is above that. As at first, a polygon of each stretch
    // without gaps, of the points that shape its outline at half the size of a pixel.
    virtual void Under_Curve(const Series&, double foot, Colour);
    virtual void Ellipse(Point centre, double rx, double ry, bool filled, const Pen&) = 0;
    virtual void Cells(const Cell_Image&) = 0;
    // Of what shows of the rectangle, clip aside: for a picture computed cell by cell. As at first, whole device units, those whose centres
    // lie in it.
    virtual Finest_Cells Finest(const Rect& rect) const;
    virtual void Facets(const Facet_List&) = 0;
    // `at` is the point on the base line that `justify` names; the text is UTF-8.
    virtual void Text(Point at, std::string_view text, const Text_Style&) = 0;
    virtual double Text_Width(std::string_view text, const Text_Style&) const = 0;

    // Devices that draw on parts of this one, side by side, in its units, to the same picture: each for a thread of its own, while this one
    // draws nothing. None where a picture cannot be cut.
    virtual std::vector<std::unique_ptr<Device>> Bands() { return {}; }

    // From now on what is drawn lies below what was drawn since, and all of it above the picture so far. False: this device cannot, or
    // gains nothing by it with so many points.
    virtual bool Start_Backwards(long long /*points*/) { return false; }
    // The end of it. False, and the picture is as it was before, where something was drawn that only goes the other way.
    virtual bool End_Backwards() { return false; }
};

// Polygons of what lies under a curve, down to `foot`, none lower: of the points in a column of this width the first, highest and last.
// Device units.
std::vector<std::vector<Point>> Areas_Under(const Series&, double foot, double column);

// Pixels (or points) of one line unit for a device of this size: 1 up to a page of 1200 x 800, then growing with it.
double Line_Unit(double width, double height);

// Size of the font for a character cell: the em, in device units, that fits the cell's height, and its width as well.
double Em_Of_Cell(double width, double height);

// Lengths of dash and gap of a line style in line units, for a line of width 1; empty for a solid line.
std::span<const double> Dash_Pattern(Line_Style);

// Outline of a glyph in a box from -0.5 to 0.5 on both axes: a closed polygon, or strokes given point by point in pairs.
struct Glyph_Outline {
    std::vector<Point> points;
    bool strokes = false;  // plus and cross: pairs of end points
};
Glyph_Outline Marker_Outline(int glyph);

}  // namespace vntl
