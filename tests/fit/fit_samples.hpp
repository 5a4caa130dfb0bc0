// Patterns and states of fits that several tests start from.
#pragma once

#include <cmath>
#include <span>

#include "fit/peak_model.hpp"
#include "fit/run_fit.hpp"

namespace vntl {

inline Fit_Peak Free_Peak(double position, double intensity, double width, double eta) {
    Fit_Peak peak;
    peak.pos = {static_cast<float>(position), 1};
    peak.intensity = {static_cast<float>(intensity), 1};
    peak.shift_width = {static_cast<float>(width), 1};
    peak.shift_eta = {static_cast<float>(eta), 0};
    return peak;
}

inline Diffraction_Pattern_Type Level_Pattern(double first, double step, int n, float level) {
    Diffraction_Pattern_Type pattern;
    for (int i = 0; i < n; ++i) pattern.x.push_back(static_cast<float>(first + step * i));
    pattern.y.assign(pattern.x.size(), level);
    pattern.sigma.assign(pattern.x.size(), std::sqrt(level));
    pattern.sigma_is_variance = false;
    pattern.npts = n;
    return pattern;
}

// The model's curve at the values of the problem's state.
inline std::vector<float> Curve(const Fit_Problem& problem) {
    const LSQ_State_Vector vs = State_Vector(problem.kind, problem.state, problem.nodes);
    std::vector<float> y(problem.data.x.size()), bgr(y);
    Model_Of(problem, vs)->Values(Values_Of(vs), y, bgr);
    return y;
}

}  // namespace vntl
