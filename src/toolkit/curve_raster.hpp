// Antialiased curves and markers on pixels, at a cost that follows the pixels and not the points.
//
// A curve whose x rises is a function of x. Each pixel column is cut into five strips; a strip holds the interval of y that the polyline
// covers in it, so that a point costs a minimum and a maximum. The intervals are then widened by the disc of the pen, and the share of each
// pixel that the strips cover is its opacity. Steep and flat lines come out equally heavy.
//
// Markers stand on whole pixels, one a pixel. What a set of them covers is the largest share that any of them has in a pixel, so that
// drawing every point and drawing one a pixel give the same picture.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "toolkit/device.hpp"

namespace vntl {

// Pixels of 32 bits, blue in the lowest byte, the top row first.
struct Pixel_Buffer {
    std::uint32_t* pixels = nullptr;
    int width = 0, height = 0;
    std::ptrdiff_t stride = 0;  // pixels from a row to the next
};

struct Pixel_Rect {
    int x1, y1, x2, y2;  // x1 <= x < x2, rows from the top
};

// True when x never falls along the series (gaps aside); only such a curve can be drawn here.
bool Rises(std::span<const float> x);

class Curve_Raster {
public:
    // `series` maps to pixels with y upward from the bottom of the buffer, `width` is the pen's in pixels. With `reduced` false every
    // segment is drawn by itself, to the same picture.
    void Curve(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, double width, Colour colour, bool reduced);
    void Markers(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, const Marker_Style& style, bool reduced);

private:
    struct Interval {
        float low, high;
    };

    void Collect(const Series& series, double x_origin, double height, bool reduced);
    void Segment(double xa, double ya, double xb, double yb);
    void Cover(int strip, double low, double high);
    void Widen(double radius);
    void Prepare_Marks(std::size_t seen, std::size_t covered, int reach);
    void Paint(const Pixel_Buffer& target, const Pixel_Rect& clip, int first_column, Colour colour);

    std::vector<Interval> strips_, widened_;
    std::vector<std::uint16_t> column_;
    std::vector<std::uint8_t> seen_, cover_;
    int reach_ = -1;
    std::uint8_t mark_ = 0;  // number of the set of markers in hand
};

}  // namespace vntl
