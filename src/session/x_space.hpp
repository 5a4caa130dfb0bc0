// The abscissas that a pattern may have, and the words by which files, scripts and titles know them.
#pragma once

#include <cstddef>
#include <string_view>

namespace vntl {

// "d-space" is a scale to which patterns are brought, "d-spacing" one that a file comes with: both are spacings.
enum class X_Space {
    none,
    two_theta,
    tof,
    mono,
    d_space,
    d_spacing,
    q_space,
    s_space,
    lambda,
    energy,
    temperature,
    frequency,
    time,
    distance,
    rlu,
    angle,
    position
};

constexpr std::string_view Told(X_Space space) {
    constexpr std::string_view texts[] = {"----",    "2theta",   "TOF",    "mono",   "d-space",     "d-spacing",
                                          "q-space", "s-space",  "Lambda", "Energy", "Temperature", "Frequency",
                                          "Time",    "Distance", "r.l.u.", "Angle",  "Position"};
    return texts[static_cast<std::size_t>(space)];
}

}  // namespace vntl
