// The data window of a plot, and the logarithmic form of an intensity.
#pragma once

#include <cmath>
#include <span>
#include <vector>

#include "session/plot_state.hpp"

namespace vntl {

struct Plot_Window {
    float x1, x2, y1, y2;

    // Two different finite ends on both axes: only then is there a map from data to the page.
    bool Drawable() const {
        return std::isfinite(x1) && std::isfinite(x2) && std::isfinite(y1) && std::isfinite(y2) && x1 != x2 && y1 != y2;
    }
};

inline Plot_Window View_Of(const Plot_State& plot) { return {plot.x_view_min, plot.x_view_max, plot.y_view_min, plot.y_view_max}; }

// Counts below one, and what background subtraction leaves below zero, lie on the axis.
inline float Log_Value(float y) { return y > 1.0f ? std::log(y) : 0.0f; }

inline std::vector<float> Log_Copy(std::span<const float> y) {
    std::vector<float> copy(y.size());
    for (std::size_t i = 0; i < y.size(); ++i) copy[i] = Log_Value(y[i]);
    return copy;
}

}  // namespace vntl
