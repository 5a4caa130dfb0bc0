// Cells of one colour side by side taken together, for files that know rectangles and no images.
#pragma once

#include <span>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

// Rows and columns of cells, from a first one up to the one behind the last.
struct Merged_Cells {
    int column1, row1, column2, row2;
    Colour colour;
};

// Rectangles in place of the image: equal neighbours of a row are taken together, then runs that stand over each other. Cells without a
// colour are left out. A picture that needs more than `most` of them takes neighbours together whose channels differ by 4 of 255 at most,
// which no eye tells apart; one that still does is drawn coarser, as the mean of blocks of 2, 3, 4, 6, 9, ... cells a side, the
// smallest that do.
struct Cell_Rectangles {
    int columns, rows;  // of the cells that are counted, fewer than the image's where it is drawn coarser
    std::vector<Merged_Cells> rectangles;
};
// Where one of them stands in an image that fills `image`.
Rect Rect_Of_Cells(const Cell_Rectangles& cells, const Merged_Cells& merged, const Rect& image);

Cell_Rectangles Merge_Cells(int columns, int rows, std::span<const Colour> colours, std::size_t most);

// The image as at most `most` blocks of mean colour, without those that have a hole: laid below the rectangles they let no ground shine
// through the seams that viewers show between neighbours.
Cell_Rectangles Ground_Of_Cells(int columns, int rows, std::span<const Colour> colours, std::size_t most);

}  // namespace vntl
