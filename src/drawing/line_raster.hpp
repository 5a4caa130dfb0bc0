// Antialiased lines of any direction on pixels: thousands of short ones, as contours of a noisy picture are, cost what their pixels do.
//
// The opacity of a pixel is how far the line reaches over its middle, along the shortest way: between 0 and 1 over the width of a pixel.
// Of all segments of a line the largest counts, so that it is as dense at its corners, which are round, as between them; its ends are cut
// off flat. What a pixel gets does not depend on the clip.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "drawing/device.hpp"
#include "drawing/pixels.hpp"

namespace vntl {

class Line_Raster {
public:
    // Points in pixels from the upper left corner of the target, y downward, all finite; a line that ends where it began is closed. `width`
    // in pixels; thinner than one there is none.
    void Draw(const Pixel_Buffer& target, const Pixel_Rect& clip, std::span<const Point> points, double width, Colour colour);

private:
    struct Ends {
        bool from_cut, to_cut;  // flat
    };
    void Cover(Point from, Point to, Ends ends);
    void Cover_Row(int row, int first, int end);
    void Put_On(const Pixel_Buffer& target, std::uint32_t colour);

    // The segment in hand, from its first point: direction, length, and whether its ends are flat.
    Point from_{}, along_{};
    double length_ = 0;
    Ends ends_{};
    double reach_ = 1;  // of the line and half a pixel, from its middle
    Pixel_Rect clip_{};
    std::vector<std::uint8_t> cover_;        // opacities of the line in hand, row by row of the clip; else all 0
    std::vector<std::int32_t> first_, end_;  // what of each row it covers
    int top_ = 0, bottom_ = 0;               // rows that it reaches
};

}  // namespace vntl
