// The points that everything else relies on: x rises strictly, and each point has numbers for x and y.
//
// Files hold what instruments and people wrote: a scan that went back, a position that was measured twice, "NaN" for a count that was lost.
// Arrays have `npts` entries or none; points count from 1.
#pragma once

#include <optional>
#include <string>

#include "patterns/pattern.hpp"

namespace vntl {

// One pass over x and y.
bool Has_Sound_Points(const Diffraction_Pattern_Type& pattern);

// A point whose x is not above that of the points before it; those without a number are passed over.
struct Fall {
    int point = 0;
    float at = 0;
    float highest = 0;  // x before it
    float last = 0;     // x of the point just before it, which may be one without y
};
std::optional<Fall> First_Fall(const Diffraction_Pattern_Type& pattern);

// The line of a file, from 1, that tells the x of a fall behind a line that tells the last x; 0 where the file tells x in another way.
int Line_Of_Fall(const std::string& path, const Fall& fall);

// Takes the points without a number for x or y out of every array; how many. A curve that was calculated may have gaps.
int Leave_Out_Points_Without_Numbers(Diffraction_Pattern_Type& pattern);

// Sorts every array by x, and makes one point of those with the same x: the mean of its values, the variance of that mean, the sum of its
// detectors, and the status of the first. Every x is a number.
void Sort_By_X(Diffraction_Pattern_Type& pattern);

}  // namespace vntl
