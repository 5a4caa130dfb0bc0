// What the pixels of a map show of a grid of values.
//
// Where cells are larger than a pixel, a pixel takes the value at its centre. Where they are smaller, it takes the mean of the bilinear
// surface over its own area, so that the height of a narrow reflection enters wherever it lies. Inside one cell the two are the same. The
// mean goes over each axis by itself: a row of the grid is brought to the width of the picture once, and the rows of pixels take theirs
// from such rows. The cost is a step for each value of the grid and a few for each pixel.
//
// A cell with a gap has no surface; a pixel takes the mean over those that have one, and is a gap where none has.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "drawing/grid_data.hpp"

namespace vntl {

// What lies in a pixel of one axis of the grid.
class Pixel_Axis {
public:
    struct Piece {
        int cell;      // between grid point `cell` and the next
        float length;  // of the pixel; 1 all in all
        float at;      // its middle in the cell, from 0 to 1
    };
    enum class Edges { blended, sharp };  // of cells: sharp ones give a pixel to the cell that holds its centre, if it holds no whole cell

    // `places` of the grid points in pixels from the first one's edge, rising or falling, two or more. With sharp edges and `parts`, a cell
    // is cut in as many equal ones, and each takes the value of its middle.
    Pixel_Axis(std::span<const double> places, int pixels, Edges edges, int parts = 0);

    int Pixels() const { return static_cast<int>(first_.size()) - 1; }
    std::span<const Piece> Of(int pixel) const {
        const std::size_t first = first_[static_cast<std::size_t>(pixel)], end = first_[static_cast<std::size_t>(pixel) + 1];
        return std::span(pieces_).subspan(first, end - first);
    }

private:
    std::vector<Piece> pieces_;
    std::vector<std::size_t> first_;  // piece of each pixel, and the end
};

enum class Cell_Surface { bilinear, triangles };  // or two triangles, each as high as the mean of its corners

class Map_Values {
public:
    // All three are kept by reference.
    Map_Values(const Grid_Data& grid, const Pixel_Axis& across, const Pixel_Axis& up, Cell_Surface surface = Cell_Surface::bilinear);

    // A value for each pixel of a row, NaN for a gap; until the next call.
    std::span<const float> Row(int pixel_row);

private:
    struct Mean {
        float value = 0, weight = 0;
        // A mean of equal values is that value, to the last bit: it must not fall to the other side of a level.
        void Take(float v, float w) {
            weight += w;
            value += (v - value) * (w / weight);
        }
    };

    float Along(int row, int pixel) const;
    const std::vector<float>& Narrowed(int row);
    Mean Without_Gaps(int pixel, const Pixel_Axis::Piece& up) const;
    float Triangle(const Pixel_Axis::Piece& across, const Pixel_Axis::Piece& up) const;

    const Grid_Data& grid_;
    const Pixel_Axis& across_;
    const Pixel_Axis& up_;
    Cell_Surface surface_;
    std::array<std::vector<float>, 2> narrowed_;  // rows of the grid as wide as the picture, of an even and an odd one
    std::array<int, 2> narrowed_row_ = {-1, -1};
    std::vector<Mean> means_;
    std::vector<float> values_;
};

}  // namespace vntl
