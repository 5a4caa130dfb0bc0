// What is cut out of a picture of counts: its scale, the intensity along a line, and that of a run through its frames.
#pragma once

#include <span>
#include <vector>

#include "instrument/numor.hpp"

namespace vntl {

enum class Intensity_Scale { linear = 0, logarithm = 1, root_square = 2 };

// Logarithm: ln of what is above 1, 0 for the rest. Root square: of what is positive, 0 for the rest. NaN counts as the rest.
float Scaled_Intensity(float value, Intensity_Scale scale);
void Scale_Intensities(std::span<float> values, Intensity_Scale scale);

// A picture: rows of x over rising axes.
struct Picture_Grid {
    std::span<const float> x, y;
    std::span<const float> z;  // y.size() rows of x.size()
};

struct Line_Plot {
    std::vector<float> x, y;
};

// The value at a place, bilinear between the four points around it; outside the axes that of the nearest edge.
float Bilinear(const Picture_Grid& grid, double x, double y);

// 50 points, evenly from (x1, y1) to (x2, y2), ends included. `x`: the distance from the first, in the units of the axes.
inline constexpr int section_points = 50;
Line_Plot Cross_Section(const Picture_Grid& grid, float x1, float y1, float x2, float y2);

// A point for each frame: its number, from 1, and the total of its counts from the frame table.
Line_Plot Omega_Scan(const SXTAL_Numor_Type& numor, Intensity_Scale scale);

}  // namespace vntl
