// Arithmetic with whole patterns: sum, average and difference of intensities, point by point, and the correction by an efficiency file.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/status.hpp"
#include "patterns/listed_points.hpp"
#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"

namespace vntl {

enum class Sum_Mode { sum, average };

// y of the first pattern becomes the sum or the average of all; ymin and ymax follow, everything else stays that of the first. At least
// two patterns, of equal npts and exactly equal x, else it fails and nothing changes. `others` are the patterns behind the first.
Status Sum_Patterns(Diffraction_Pattern_Type& first, std::span<const Diffraction_Pattern_Type* const> others, Sum_Mode mode);

// y of `a` becomes y(a) - y(b); the rest as above.
Status Subtract_Pattern(Diffraction_Pattern_Type& a, const Diffraction_Pattern_Type& b);

// The line through points, in their order of rising x, at each of `x`: straight between two of them, and level beyond the first and the
// last, for the ends of a search lie inside the pattern. Empty for fewer than two points.
std::vector<float> Line_Through(std::span<const Background_Mark> points, std::span<const float> x);

// Readers fill the calculated curve and the background of a pattern that has none with zeros: those are no curve.
bool Holds_A_Curve(std::span<const float> values);

// y, and the calculated curve and background where there are any, less `background`, one value a point; ymin and ymax follow. What is below
// zero stays so. sigma stays: the variance is that of the counts, and the line through many points adds next to nothing to it. Fails where
// a difference would leave the range of numbers or the lengths differ, and nothing changes.
Status Subtract_Background(Diffraction_Pattern_Type& pattern, std::span<const float> background);

// x + shift at all points, reflections and excluded regions; y, calculated curve and background times `factor`, and variances, or standard
// deviations, scale with it. A factor below 0 exchanges ymin and ymax.
void Shift_And_Multiply(Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info, float shift, float factor);

// Nothing of the pattern would leave the range of numbers, and x would still rise from its first to its last point.
bool Can_Shift_And_Multiply(const Diffraction_Pattern_Type& pattern, float shift, float factor);

// An efficiency file: a line a point with its number, x shift and efficiency.
//
//         1       0.00000       1.02345
//         2       0.00000       0.98000
inline constexpr std::string_view efficiency_file_name = "vantrelo-2006.eff";

struct Efficiency_Line {
    int point = 0;
    float shift = 0, efficiency = 1;
};

// Replaces the file; columns (I5,2F14.5).
Status Write_Efficiency_File(const std::string& path, std::span<const Efficiency_Line> lines);

// Shift and efficiency of the points 1 to n; 0 and 1 where the file tells nothing, 1 for an efficiency below 0.0001.
struct Efficiency {
    std::vector<float> shift, efficiency;
};

// Reads up to `n` lines, or to the first that is no such line. Fails when the file cannot be opened ("ERROR opening the file " + name), or
// when a line's point number lies outside 1 to n or its shift is not finite, naming the line.
Status Read_Efficiency_File(const std::string& path, int n, Efficiency& efficiency);

// x + shift(i), y / efficiency(i); the limits of both follow.
void Apply_Efficiency(Diffraction_Pattern_Type& pattern, const Efficiency& efficiency);

}  // namespace vntl
