// The scale of intensities in a graph: counts, their logarithms or their roots. Units of the scale are those of the view's y.
#pragma once

#include <cmath>
#include <span>
#include <string_view>
#include <vector>

#include "calc/log_value.hpp"

namespace vntl {

enum class Y_Scale { linear, logarithm, root };
constexpr std::string_view Told(Y_Scale scale) {
    return scale == Y_Scale::linear ? "linear" : scale == Y_Scale::logarithm ? "logarithm" : "root";
}

// An intensity on the scale. Counts below one lie at 0 of the logarithms; the root of what is below zero is that of its amount, below zero.
inline float On_Scale(Y_Scale scale, float y) {
    if (scale == Y_Scale::logarithm) return Log_Value(y);
    return scale == Y_Scale::root ? std::copysign(std::sqrt(std::fabs(y)), y) : y;
}

// And back.
inline float Off_Scale(Y_Scale scale, float place) {
    if (scale == Y_Scale::logarithm) return std::exp(place);
    return scale == Y_Scale::root ? std::copysign(place * place, place) : place;
}

inline std::vector<float> Copy_On_Scale(Y_Scale scale, std::span<const float> y) {
    std::vector<float> copy(y.size());
    for (std::size_t i = 0; i < y.size(); ++i) copy[i] = On_Scale(scale, y[i]);
    return copy;
}

}  // namespace vntl
