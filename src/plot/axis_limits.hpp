// Limits of the axes of plots of any values.
#pragma once

#include <span>

#include "base/extremes.hpp"

namespace vntl {

// The largest of the finite values without their signs; 0 without one.
double Largest(std::span<const float> values);

// As a number of single precision, which ends where its numbers do.
float Limit(double value);

// Limits that an axis can number: about a single value, or several that are nearly the same, there is some room.
Extremes With_Extent(Extremes limits);

}  // namespace vntl
