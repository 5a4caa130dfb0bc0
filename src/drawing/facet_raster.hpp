// Facets of a surface on pixels.
//
// Each pixel is sampled at four places. A facet covers the samples that it holds, so that two with a side in common leave none between them
// and share none; but a steep point at the top shows up to its end, even where it is narrower than the samples stand apart. A line covers
// the samples that lie nearer to it than half its width. A pixel shows the mean of its samples, and outlines come out smooth. The cost is a
// step for each sample and a few for each facet.
#pragma once

#include "drawing/device.hpp"
#include "drawing/pixels.hpp"

namespace vntl {

// Places are in pixels with y upward from the bottom of the buffer; `line_unit` is the width of a line of width 1 in pixels. What a pixel
// gets does not depend on the clip.
void Paint_Facets(const Pixel_Buffer& target, const Pixel_Rect& clip, const Facet_List& list, double line_unit);

}  // namespace vntl
