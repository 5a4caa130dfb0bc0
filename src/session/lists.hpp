// The lists that a running calculation shows on the plot: detected peaks, background points, generated reflections, fit peaks.
#pragma once

#include <string>
#include <vector>

#include "fit/fit_state.hpp"
#include "patterns/listed_points.hpp"
#include "session/x_space.hpp"

namespace vntl {

inline constexpr int max_peaks = 401;  // slots of the detected peak list
inline constexpr int max_background_points = 400;

struct Reflection_Mark {
    float x, y;
    std::string label;  // the indices
    int multiplicity = 0;
    float d = 0;  // spacing, angstrom
    bool operator==(const Reflection_Mark&) const = default;
};
struct Calculation_Lists {
    std::vector<Peak_Mark> peaks;
    X_Space peaks_found_in = X_Space::none;  // the unit of their positions, which stays when patterns are converted
    std::vector<Background_Mark> background;
    X_Space background_found_in = X_Space::none;  // likewise
    std::vector<Reflection_Mark> hklgen;
    Fit_State fit;
};

}  // namespace vntl
