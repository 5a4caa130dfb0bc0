#include "toolkit/surface_mesh.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vntl {

namespace {

constexpr float none = -std::numeric_limits<float>::infinity();
constexpr double beyond = 1e-6;  // of the cube: what rounding takes a place out of it

// One line for each place, or for the places that share one of `most` equal parts of the axis.
std::vector<Mesh_Line> Lines_Of_Axis(std::span<const float> places, double lower, double upper, std::size_t most) {
    const bool shared = places.size() > most;
    std::vector<Mesh_Line> lines;
    double part_before = -1, last = 0;
    for (std::size_t k = 0; k < places.size(); ++k) {
        const double at = (static_cast<double>(places[k]) - lower) / (upper - lower);
        if (!(at >= -beyond && at <= 1 + beyond)) continue;
        const double part = shared ? std::floor(at * static_cast<double>(most)) : static_cast<double>(k);
        if (lines.empty() || part != part_before)
            lines.push_back({at, k, k + 1});
        else
            lines.back().end = k + 1;
        part_before = part;
        last = at;
    }
    if (lines.empty()) return lines;
    // In the middle of what it stands for, but for the ends of the axis.
    for (std::size_t line = 1; line + 1 < lines.size(); ++line) {
        const double end = (static_cast<double>(places[lines[line].end - 1]) - lower) / (upper - lower);
        lines[line].at = 0.5 * (lines[line].at + end);
    }
    lines.back().at = last;
    if (lines.front().at > lines.back().at) std::reverse(lines.begin(), lines.end());
    return lines;
}

}  // namespace

Surface_Mesh::Surface_Mesh(const Grid_Data& grid, const Limits& limits) {
    if (!grid.Whole()) return;
    across_ = Lines_Of_Axis(grid.x, limits.lower[1], limits.upper[1], limits.most_across);
    away_ = Lines_Of_Axis(grid.y, limits.lower[0], limits.upper[0], limits.most_away);
    heights_.assign(across_.size() * away_.size(), none);
    for (std::size_t j = 0; j < away_.size(); ++j) {
        float* const heights = heights_.data() + j * across_.size();
        for (std::size_t row = away_[j].first; row < away_[j].end; ++row) {
            const float* const values = grid.z.data() + row * grid.x.size();
            for (std::size_t i = 0; i < across_.size(); ++i) {
                float highest = heights[i];
                for (std::size_t k = across_[i].first; k < across_[i].end; ++k) {
                    const bool higher = values[k] > highest && values[k] <= std::numeric_limits<float>::max();
                    highest = higher ? values[k] : highest;
                }
                heights[i] = highest;
            }
        }
    }
    const double low = limits.lower[2], range = limits.upper[2] - low;
    for (float& height : heights_) {
        const double share = range == 0 ? 0.5 : std::clamp((static_cast<double>(height) - low) / range, 0.0, 1.0);
        height = height == none ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(share);
    }
}

bool Surface_Mesh::Has_Cell(std::size_t i, std::size_t j) const {
    if (i + 1 >= across_.size() || j + 1 >= away_.size()) return false;
    return std::isfinite(Height(i, j) + Height(i + 1, j) + Height(i, j + 1) + Height(i + 1, j + 1));
}

}  // namespace vntl
