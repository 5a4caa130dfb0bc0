#include "drawing/surface_mesh.hpp"

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

// --- slopes and lines between ------------------------------------------------------------------------------------------------

// At a point, `line` of an axis along which neighbours are `stride` apart: from one neighbour to the other, or where one is missing, or has
// no height, from or to the point itself.
float Surface_Mesh::Rise(std::size_t at, std::size_t line, const std::vector<Mesh_Line>& lines, std::size_t stride) const {
    const bool before = line > 0 && std::isfinite(heights_[at - stride]);
    const bool after = line + 1 < lines.size() && std::isfinite(heights_[at + stride]);
    const std::size_t low = before ? 1 : 0, high = after ? 1 : 0;
    const double way = lines[line + high].at - lines[line - low].at;
    return way > 0 ? static_cast<float>((heights_[at + high * stride] - heights_[at - low * stride]) / way) : 0;
}

void Surface_Mesh::Find_Slopes() {
    slopes_.assign(heights_.size(), {});
    for (std::size_t j = 0; j < away_.size(); ++j)
        for (std::size_t i = 0; i < across_.size(); ++i)
            if (const std::size_t at = Number(i, j); std::isfinite(heights_[at]))
                slopes_[at] = {Rise(at, i, across_, 1), Rise(at, j, away_, across_.size())};
}

Surface_Mesh Surface_Mesh::Finer(double parts_across, double parts_away) const {
    // A line at a share of the way from one of the old lines to the next one.
    struct Between {
        std::size_t line;
        float share;
    };
    const auto divided = [](const std::vector<Mesh_Line>& lines, double parts, std::vector<Mesh_Line>& finer) {
        std::vector<Between> places;
        for (std::size_t line = 0; line < lines.size(); ++line) {
            const double way = line + 1 < lines.size() ? lines[line + 1].at - lines[line].at : 0;
            const int pieces = std::max(1, static_cast<int>(std::ceil(way * parts)));
            for (int piece = 0; piece < pieces; ++piece) {
                const double share = static_cast<double>(piece) / pieces;
                places.push_back({line, static_cast<float>(share)});
                finer.push_back({lines[line].at + share * way, lines[line].first, lines[line].end});
            }
        }
        return places;
    };
    // A gap ends where the share of what lies beyond is none.
    const auto mixed = [](float a, float b, float share) { return share == 0 ? a : a + share * (b - a); };
    Surface_Mesh finer;
    const std::vector<Between> columns = divided(across_, parts_across, finer.across_), rows = divided(away_, parts_away, finer.away_);
    finer.heights_.reserve(columns.size() * rows.size());
    finer.slopes_.reserve(columns.size() * rows.size());
    for (const Between& row : rows) {
        for (const Between& column : columns) {
            const std::size_t a = Number(column.line, row.line), b = column.share == 0 ? a : a + 1;
            const std::size_t up = row.share == 0 ? 0 : across_.size();
            const auto between = [&](const auto& value) {
                return mixed(mixed(value(a), value(b), column.share), mixed(value(a + up), value(b + up), column.share), row.share);
            };
            finer.heights_.push_back(between([&](std::size_t at) { return heights_[at]; }));
            finer.slopes_.push_back(
                {between([&](std::size_t at) { return slopes_[at].across; }), between([&](std::size_t at) { return slopes_[at].away; })});
        }
    }
    return finer;
}

}  // namespace vntl
