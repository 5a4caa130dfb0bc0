// The picture of a marker in pixels, ready to be stamped.
#pragma once

#include <cstdint>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

// Opacities of a glyph around its pixel, column by column from the left. Columns are padded to a multiple of eight, which the stamping
// takes in one step each.
struct Marker_Sprite {
    static constexpr int lane = 8;
    int reach_x = 0, reach_y = 0;  // pixels on each side
    std::vector<std::uint8_t> opacity;
    struct Extent {
        int first, end;  // rows of a column that are not clear, from the row of the pixel; first >= end when all are
    };
    std::vector<Extent> extents;
    int Width() const { return 2 * reach_x + 1; }
    int Height() const { return 2 * reach_y + 1; }
    int Padded() const { return (Height() + lane - 1) / lane * lane; }
};

// The sprites made so far. Rows of a plot share a handful of styles, and to sample a glyph costs more than to draw a row with it.
class Marker_Sprites {
public:
    // Good until the next call. The colour of the style does not matter.
    const Marker_Sprite& Of(const Marker_Style& style);

private:
    struct Made {
        Marker_Style style;
        Marker_Sprite sprite;
    };
    std::vector<Made> made_;
};

}  // namespace vntl
