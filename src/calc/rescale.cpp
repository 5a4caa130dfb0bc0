#include "calc/rescale.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vntl {

namespace {

struct Line {
    float a, b;
    float operator()(float v) const { return a * v + b; }
    bool Turns() const { return a < 0; }
};

void Apply(std::vector<float>& values, Line line) {
    for (float& v : values) v = line(v);
}

void Apply_To_Range(float& lo, float& hi, Line line) {
    lo = line(lo);
    hi = line(hi);
    if (line.Turns()) std::swap(lo, hi);
}

bool Stays_Finite(const std::vector<float>& values, Line line) {
    return std::all_of(values.begin(), values.end(), [line](float v) { return std::isfinite(line(v)) || !std::isfinite(v); });
}

}  // namespace

void Offset_Row(Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info, float dx, float dy) {
    Scale_X_Of_Row(pattern, info, 1, dx);
    Scale_Y_Of_Row(pattern, 1, dy);
}

void Scale_X_Of_Row(Diffraction_Pattern_Type& pattern, PRF_Info_Add_Type& info, float a, float b) {
    const Line line{a, b};
    Apply(pattern.x, line);
    Apply(info.refl_position, line);
    Apply_To_Range(pattern.xmin, pattern.xmax, line);
    const auto regions = static_cast<std::size_t>(std::clamp(info.nexcl, 0, max_excluded_regions));
    for (std::size_t j = 0; j < regions; ++j) Apply_To_Range(info.excl_min[j], info.excl_max[j], line);
    if (line.Turns()) Turn_Round(pattern);
}

void Scale_Y_Of_Row(Diffraction_Pattern_Type& pattern, float a, float b) {
    for (std::vector<float>* curve : {&pattern.y, &pattern.ycalc, &pattern.bgr}) Apply(*curve, {a, b});
    Apply_To_Range(pattern.ymin, pattern.ymax, {a, b});
}

bool Stays_Finite_X(const Diffraction_Pattern_Type& pattern, float a, float b) {
    return std::isfinite(a) && std::isfinite(b) && Stays_Finite(pattern.x, {a, b});
}
bool Stays_Finite_Y(const Diffraction_Pattern_Type& pattern, float a, float b) {
    const auto stays = [line = Line{a, b}](const std::vector<float>& curve) { return Stays_Finite(curve, line); };
    return std::isfinite(a) && std::isfinite(b) && stays(pattern.y) && stays(pattern.ycalc) && stays(pattern.bgr);
}

}  // namespace vntl
