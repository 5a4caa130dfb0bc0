// The part of reciprocal space that the frames of a run cover, as cells over h, k and l.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "instrument/frame_source.hpp"
#include "instrument/pixel_geometry.hpp"

namespace vntl {

// Nine numbers, parted by blanks, commas or line ends: rows of UB, whose columns are a*, b* and c* in the crystal's axes (1/angstrom,
// without 2 pi). Other text, a number that is not finite, and a singular matrix fail with " Error reading the UB-Matrix".
Status Parse_UB_Matrix(std::string_view text, Matrix3d& ub, Matrix3d& inverse);

// An axis of the cells: the middle of cell i, from 1 to `count`, is at min + i step.
struct Volume_Axis {
    double min = 0, max = 0;  // over the corners of the run
    double step = 0;
    int count = 0;
    int first_count = 0;  // before the balance of cells and pixels

    double Value(int cell) const { return min + cell * step; }
};

struct Reciprocal_Volume {
    Volume_Axis h, k, l;
    std::vector<float> z;             // mean counts of the pixels in a cell: l slowest, then k, then h
    long long used = 0, dropped = 0;  // pixels of frames: in a cell, and outside of all
    long long used_counts = 0, dropped_counts = 0;
    long long filled = 0;  // cells that took the mean of their neighbours

    std::size_t Index(int ih, int ik, int il) const {  // from 1
        const auto at = [](int i) { return static_cast<std::size_t>(i) - 1; };
        return (at(il) * static_cast<std::size_t>(k.count) + at(ik)) * static_cast<std::size_t>(h.count) + at(ih);
    }
    bool empty() const { return z.empty(); }
};

inline constexpr int most_cells_a_pixel = 4;

// `go_on` is asked after each frame with the number of frames done; false ends the work as the user's cancel. On failure `volume` stays: a
// frame that cannot be read, no wavelength, more cells than 4 a pixel or than the memory has room for.
//
// Axes: extremes of h, k, l over the eight corners (first and last pixel and frame); step: the largest change of the index from the pixel
// in the middle to its neighbours in x, in y and in the next frame; then the steps are stretched alike, so that there is about a cell a
// pixel. A pixel belongs to the cell whose number is (h - min) / step, rounded; those outside 1 .. count are dropped. A cell holds the mean
// of its pixels. Then cells inside with less than 0.001, never measured or measured as nothing, take the mean of their six neighbours as
// they were. An axis along which nothing changes has one cell, in which all pixels are.
Status Build_Reciprocal_Volume(Frame_Source& frames, const Pixel_Geometry& geometry, const Matrix3d& ub_inverse, Reciprocal_Volume& volume,
                               const std::function<bool(int frames_done)>& go_on = {});

// Lines that tell the axes: range, divisions before the balance, steps in reciprocal lattice units and in 1/angstrom.
std::vector<std::string> Describe_Volume(const Reciprocal_Volume& volume, const Matrix3d& ub);

enum class View_Axis { h, k, l };

// The picture across an axis: the other two, in the order h, k, l, are its x and y.
struct Volume_Picture {
    std::vector<float> x, y;
    std::vector<float> z;  // y.size() rows of x.size()
};
Volume_Picture Plane(const Reciprocal_Volume& volume, View_Axis axis, int cell);  // cell from 1
Volume_Picture Projection(const Reciprocal_Volume& volume, View_Axis axis);       // the sum along the axis

}  // namespace vntl
