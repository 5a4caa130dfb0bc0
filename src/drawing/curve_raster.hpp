// Antialiased curves and markers on pixels, at a cost that follows the pixels and not the points.
//
// A curve whose x rises is a function of x. Each pixel column is cut into five strips; a strip holds the interval of y that the polyline
// covers in it, so that a point costs a minimum and a maximum. The intervals are then widened by the disc of the pen, and the share of each
// pixel that the strips cover is its opacity. Steep and flat lines come out equally heavy.
//
// Markers stand on whole pixels, one a pixel. What a set of them covers is the largest share that any of them has in a pixel, so that
// drawing every point and drawing one a pixel give the same picture.
//
// Points are taken some hundreds at a time through plain loops over arrays, which the compiler turns into steps of several points. They are
// mapped in single precision: the place of a point is known to a thousandth of a pixel, however deep the zoom.
//
// Drawn from the front to the back, of a block of points no more is looked at than its extremes, where all that it could touch is covered.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "drawing/device.hpp"
#include "drawing/marker_sprite.hpp"
#include "drawing/pixels.hpp"
#include "drawing/under_layers.hpp"

namespace vntl {

// True when x never falls along the series (gaps aside); only such a curve can be drawn here.
bool Rises(std::span<const float> x);
bool Rises(const Series& series);

class Curve_Raster {
public:
    // From now on what is drawn goes below what is in the layers, and not on the target; null: on the target again.
    void Draw_Below(Under_Layers* layers) { layers_ = layers; }

    // `series` maps to pixels with y upward from the bottom of the buffer, `width` is the pen's in pixels. With `reduced` false every
    // segment is drawn by itself, to the same picture.
    void Curve(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, double width, Colour colour, bool reduced);
    // What lies under the curve, in whole pixels: of each column those below its highest place down to the line `foot`.
    void Area(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, double foot, Colour colour, bool reduced);
    void Markers(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, const Marker_Style& style, bool reduced);

private:
    struct Chunk;
    struct Frame;
    static constexpr float no_foot = -1e6f;

    // From a data value to pixels. The origin is taken off first, in data units, and whole pixels last: the second is exact, so that a
    // place does not depend on the clip, and the first is near the frame.
    struct Map {
        float origin, scale, offset, from;
        Map(double zero, double per_unit, int from);  // the pixel `zero + per_unit * value - from`
        float operator()(float value) const { return ((value - origin) * scale + offset) - from; }
    };

    void Cover(int strip, float one, float other);
    void Segment(const Chunk& chunk, int i);
    void Cover_Segments(const Chunk& chunk, int points);
    void Cover_Points(const Chunk& chunk, int points);
    void Collect(const Series& series, const Map& to_x, const Map& to_y, bool reduced);
    void Widen(double radius, int first, int count);
    // Of the columns that the curve reaches with a pen of this margin, those that belong together: finds their intervals, and lets `paint`
    // lay them.
    template <class Paint_Columns>
    void Each_Part(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, int margin, float foot, bool reduced,
                   const Paint_Columns& paint);
    template <class Ink>
    void Paint(const Ink& ink, const Pixel_Rect& clip);
    template <class Ink>
    void Paint_Area(const Ink& ink, const Pixel_Rect& columns, float foot);

    // Points that may show, and the columns that they reach; those of a stretch and of the next one may overlap.
    struct Stretch {
        std::size_t first, end;
        int x1, x2;
    };
    // `foot`: a row that they reach down to, all of them.
    void Find_Stretches(const Series& series, const Series& part, const Pixel_Rect& clip, const Map& to_y, int reach_x, int reach_y,
                        float foot = no_foot);

    void Prepare_Marks(const Frame& frame, const Marker_Sprite& sprite);
    void Stamp(const Frame& frame, const Marker_Sprite& sprite, std::span<const std::uint32_t> pixels);
    template <class Ink>
    void Paint_Marks(const Ink& ink, const Frame& frame, const Marker_Sprite& sprite);

    Under_Layers* layers_ = nullptr;
    std::vector<Stretch> stretches_;                 // of the series in hand, from the left
    std::vector<float> low_, high_;                  // intervals of the strips, with one strip more at each end for all that lies beyond
    std::vector<float> widened_low_, widened_high_;  // of the strips in the clip
    std::vector<std::int32_t> steps_;                // of the opacity down a pixel column, in hand only while it is painted
    Marker_Sprites sprites_;
    std::vector<std::uint8_t> cover_;    // opacities of a set of markers, column by column
    std::vector<int> top_, bottom_;      // rows in which the markers of a column stand
    std::vector<int> first_, end_;       // rows that they cover
    std::vector<std::uint32_t> latest_;  // the last pixel of each row that a marker stood in
    int reach_ = -1;
};

}  // namespace vntl
