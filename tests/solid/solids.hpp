// Solids for tests.
#pragma once

#include <functional>
#include <limits>

#include "solid/w3d.hpp"

namespace vntl {

inline constexpr float gap = std::numeric_limits<float>::quiet_NaN();

// One sheet over the given places of its columns and rows.
inline W3d Sheet_Over(const std::vector<float>& columns, const std::vector<float>& rows, const std::function<float(float, float)>& height) {
    W3d solid;
    for (const float z : rows)
        for (const float x : columns) solid.vertices.push_back({x, height(x, z), z});
    solid.sheets.push_back({0, static_cast<int>(columns.size()), static_cast<int>(rows.size()), 1});
    solid.materials = {WRGB(64, 128, 255), 0, 0, 0, WRGB(9, 9, 9), WRGB(192, 212, 30)};
    return solid;
}

// So many places, evenly from one to another.
inline std::vector<float> Evenly(float from, float to, int places) {
    std::vector<float> at;
    for (int i = 0; i < places; ++i) at.push_back(from + (to - from) * static_cast<float>(i) / static_cast<float>(places - 1));
    return at;
}

}  // namespace vntl
