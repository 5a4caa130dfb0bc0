#include "fit/background_line.hpp"

#include <algorithm>

namespace vntl {

Background_Line::Background_Line(std::span<const float> node_x, std::span<const float> x) : places_(x.size()) {
    if (node_x.size() < 2) return;
    for (std::size_t j = 0; j < x.size(); ++j) {
        std::size_t left = 0;
        while (left + 1 < node_x.size() && !(x[j] >= node_x[left] && x[j] <= node_x[left + 1])) ++left;
        if (left + 1 == node_x.size()) left = 0;
        const float length = node_x[left + 1] - node_x[left];
        places_[j] = {static_cast<int>(left), length != 0 ? (x[j] - node_x[left]) / length : 0.0f};
    }
}

void Background_Line::Values(std::span<const float> heights, std::span<float> bgr) const {
    const std::size_t last = heights.size() - 1;
    for (std::size_t j = 0; j < places_.size(); ++j) {
        const auto left = static_cast<std::size_t>(places_[j].left);
        bgr[j] = heights[left] + places_[j].t * (heights[std::min(left + 1, last)] - heights[left]);
    }
}

void Background_Line::Derivative(int node, std::span<const float> weight, std::span<float> column) const {
    for (std::size_t j = 0; j < places_.size(); ++j) {
        const auto [left, t] = places_[j];
        column[j] = node == left ? weight[j] * (1 - t) : node == left + 1 ? weight[j] * t : 0.0f;
    }
}

}  // namespace vntl
