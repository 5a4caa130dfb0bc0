// Values of even cells, such as the pixels of a detector, as a device can show them.
//
// A mean would hide a reflection of one bright pixel among hundreds of dark ones. So of cells of which several lie in what a device shows
// as one, the largest value is shown.
#pragma once

#include <span>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

struct Value_Cells {
    Rect rect{};  // that they fill, device units
    int columns = 0, rows = 0;
    std::vector<float> values;  // columns * rows, the lowest row first
};

// What the device shows of cells that fill a rectangle. A value that is no finite number is a gap, and a cell of nothing else is one. Along
// an axis on which the device shows each cell by itself they stay as they are.
Value_Cells Seen_Cells(const Device& device, const Rect& rect, int columns, int rows, std::span<const float> values);

}  // namespace vntl
