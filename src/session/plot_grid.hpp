// The rows of the store as one grid of intensities over x and pattern: what maps and surfaces are drawn from.
#pragma once

#include <string>
#include <vector>

#include "base/status.hpp"

namespace vntl {

class Profile_Store;
struct Saturation;
enum class X_Space;

// The measured points themselves, never interpolated, until somebody smooths them.
struct PlotGrid {
    std::vector<float> grid_x;   // nx
    std::vector<float> grid_y;   // ny: of each pattern its temperature or its row number
    std::vector<float> grid_z;   // nx intensities a pattern, the first pattern first
    std::string grid_y_label;    // "Temperature" or "Pattern"
    float z_min = 0, z_max = 0;  // of the finite intensities; both 0 where there is none
    bool smoothed = false;       // they are no longer the measured ones

    bool Of_Temperatures() const { return grid_y_label == "Temperature"; }
};

enum class Intensities { counts, logarithms };

// The points between x1 and x2, both excluded, of the rows `first` to `last`. All rows of the store must share their x, exactly. The axis
// of the patterns is their temperature where that rises, or falls, from each row of the store to the next. Natural logarithms are those of
// at least 1. The saturation cuts off what is higher, after the logarithm. A refusal leaves `grid` as it was.
Status Prepare_Multi_Data(const Profile_Store& store, X_Space xspace, float x1, float x2, int first, int last, Intensities form,
                          const Saturation& saturation, PlotGrid& grid);

// The five-point filter along each pattern, then along each column of the patterns' points. What is no finite number stays as it is, and
// the points around it are filtered as if the line ended there.
void Smooth_PlotGrid(PlotGrid& grid);

// The row of the store whose place on the axis of the patterns is nearest to `y`, in a grid that begins with row `first`.
int Nearest_Pattern(const PlotGrid& grid, int first, double y);

}  // namespace vntl
