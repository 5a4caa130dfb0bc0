// The result of a search in a pattern: peaks, or points of the background.
#pragma once

#include <cstdint>
#include <vector>

namespace vntl {

struct PKB_Type {
    std::int32_t np = 0;     // number of points; the arrays have np entries, or none
    std::vector<float> x;    // positions, rising, in the units of the pattern's x
    std::vector<float> y;    // intensities
    std::vector<float> bgr;  // background under each peak; none for points of the background
};

}  // namespace vntl
