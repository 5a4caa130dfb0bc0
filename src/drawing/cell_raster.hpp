// Coloured cells on pixels, such as the intensities of a series of patterns.
//
// The pixels whose centres lie in the rectangle are shared out among the cells, each axis by itself. A cell larger than a pixel fills
// whole pixels, those whose centres it holds, so that its edges are sharp and no ground shows between two cells. Of cells smaller than a
// pixel each one belongs to one pixel, which gets the mean of their colours: a narrow reflection grows fainter as the picture shrinks, but
// it never falls between two pixels. A pixel all of whose cells have no colour keeps its own.
//
// The cost is a step for each pixel and one for each cell that shows.
#pragma once

#include <vector>

#include "drawing/device.hpp"
#include "drawing/pixels.hpp"

namespace vntl {

// The cells that a pixel shows along one axis.
struct Cell_Share {
    int first, end;
    bool operator==(const Cell_Share&) const = default;
};
struct Axis_Shares {
    int pixel = 0;  // that of the first share
    std::vector<Cell_Share> shares;
};
// Of `cells` cells that lie between two places, for the pixels of a clip.
Axis_Shares Share_Out(double from, double to, int cells, int clip_from, int clip_to);

// `place` is the rectangle of the cells in pixels from the upper left corner of `target`, y downward. What a pixel gets does not depend on
// the clip.
void Paint_Cells(const Pixel_Buffer& target, const Pixel_Rect& clip, const Rect& place, const Cell_Image& image);

// Pixels as the colours of cells, the lowest row first; one that is not opaque has none.
std::vector<Colour> Colours_Of_Pixels(const Pixel_Buffer& pixels);

}  // namespace vntl
