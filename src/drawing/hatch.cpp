// Hatching: every edge of the shape is cut with the lines that it crosses; between the first and second cut of a line, the third and
// fourth, ... lies the inside.
#include "drawing/hatch.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vntl {
namespace {

constexpr double most_lines = 100000;

// A point as the number of the line through it, a fraction between two lines, and its place along that line.
struct Hatch_Point {
    double line, along;
};

class Hatch_Frame {
public:
    Hatch_Frame(double distance, double degrees)
        : distance_(distance), cos_(std::cos(degrees * std::numbers::pi / 180)), sin_(std::sin(degrees * std::numbers::pi / 180)) {}

    Hatch_Point From(Point p) const { return {(p.y * cos_ - p.x * sin_) / distance_, p.x * cos_ + p.y * sin_}; }
    Point Back(Hatch_Point p) const {
        const double across = p.line * distance_;
        return {p.along * cos_ - across * sin_, p.along * sin_ + across * cos_};
    }

private:
    double distance_, cos_, sin_;
};

}  // namespace

std::vector<std::array<Point, 2>> Hatch_Lines(std::span<const Point> polygon, double distance, double degrees, const Rect& within) {
    if (polygon.size() < 3 || !(distance > 0)) return {};
    const Hatch_Frame frame(distance, degrees);
    const std::array<double, 4> bounds = {frame.From({within.x1, within.y1}).line, frame.From({within.x2, within.y1}).line,
                                          frame.From({within.x1, within.y2}).line, frame.From({within.x2, within.y2}).line};
    const auto [least, greatest] = std::minmax_element(bounds.begin(), bounds.end());
    const double first = std::ceil(*least), end = std::floor(*greatest) + 1;
    if (!(end - first > 0) || end - first > most_lines) return {};

    std::vector<std::vector<double>> cuts(static_cast<std::size_t>(end - first));
    Hatch_Point from = frame.From(polygon.back());
    for (const Point& corner : polygon) {
        const Hatch_Point to = frame.From(corner);
        if (!std::isfinite(to.line) || !std::isfinite(to.along)) return {};
        // A line through a corner counts with the edge above it alone, one along an edge with the corners' other edges.
        const double stop = std::min(std::ceil(std::max(from.line, to.line)), end);
        for (double line = std::max(std::ceil(std::min(from.line, to.line)), first); line < stop; ++line) {
            const double share = (line - from.line) / (to.line - from.line);
            cuts[static_cast<std::size_t>(line - first)].push_back(from.along + share * (to.along - from.along));
        }
        from = to;
    }

    std::vector<std::array<Point, 2>> segments;
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        std::sort(cuts[i].begin(), cuts[i].end());
        const double line = first + static_cast<double>(i);
        for (std::size_t j = 0; j + 1 < cuts[i].size(); j += 2)
            if (cuts[i][j] < cuts[i][j + 1]) segments.push_back({frame.Back({line, cuts[i][j]}), frame.Back({line, cuts[i][j + 1]})});
    }
    return segments;
}

}  // namespace vntl
