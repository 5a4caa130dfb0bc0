// The lists that a running calculation shows on the plot: detected peaks, background points, generated reflections, fit peaks.
#pragma once

#include <string>
#include <vector>

namespace vntl {

inline constexpr int max_peaks = 401;  // slots of the detected peak list
inline constexpr int max_background_points = 400;
inline constexpr int max_fit_peaks = 400;

struct Peak_Mark {
    float x, y, bgr;  // position, intensity at the top, background under it
    bool operator==(const Peak_Mark&) const = default;
};
struct Background_Mark {
    float x, y;
    bool operator==(const Background_Mark&) const = default;
};
struct Reflection_Mark {
    float x, y;
    std::string label;
    bool operator==(const Reflection_Mark&) const = default;
};
struct Fit_Peak_Mark {
    float x, y;
    bool has_half = false;  // the half width point is set
    float half_x = 0, half_y = 0;
};

// Window of a fit and what is chosen in it so far.
struct Fit_Marks {
    bool lower_set = false, upper_set = false;
    float a1 = 0, b1 = 0, a2 = 0, b2 = 0;       // end points of the background line
    float lambda1 = 0, lambda2 = 0, ratio = 0;  // wavelengths in angstrom, intensity ratio of the second to the first
    bool done = false;                          // the fit has run to its end: no marks
    std::vector<Fit_Peak_Mark> peaks;
};

struct Calculation_Lists {
    std::vector<Peak_Mark> peaks;
    std::vector<Background_Mark> background;
    std::vector<Reflection_Mark> hklgen;
    Fit_Marks fit;
};

}  // namespace vntl
