#include "pictures/cut_shapes.hpp"

#include <algorithm>
#include <numbers>
#include <tuple>
#include <utility>

namespace vntl {

bool Clip_Segment(Point& a, Point& b, const Rect& r) {
    struct Cut {
        double part;
        double Point::*axis;
        double edge;
    };
    Cut from{0, nullptr, 0}, to{1, nullptr, 0};
    for (const auto& [axis, low, high] : {std::tuple(&Point::x, r.x1, r.x2), std::tuple(&Point::y, r.y1, r.y2)}) {
        const double start = a.*axis, d = b.*axis - start;
        if (d == 0 && !(start >= low && start <= high)) return false;
        if (d == 0) continue;
        const double first = d > 0 ? low : high, last = d > 0 ? high : low;
        if ((first - start) / d > from.part) from = {(first - start) / d, axis, first};
        if ((last - start) / d < to.part) to = {(last - start) / d, axis, last};
    }
    if (!(from.part <= to.part)) return false;
    const Point start = a, whole{b.x - a.x, b.y - a.y};
    const auto place = [&](const Cut& cut) {
        Point at{std::clamp(start.x + cut.part * whole.x, r.x1, r.x2), std::clamp(start.y + cut.part * whole.y, r.y1, r.y2)};
        at.*cut.axis = cut.edge;
        return at;
    };
    if (to.axis != nullptr) b = place(to);
    if (from.axis != nullptr) a = place(from);
    return true;
}

std::vector<std::vector<Point>> Line_Inside(std::span<const Point> line, const Rect& rect) {
    std::vector<std::vector<Point>> parts;
    std::vector<Point> part;
    Line_Cutter cutter(rect, part, [&parts](std::span<const Point> points) { parts.emplace_back(points.begin(), points.end()); });
    for (const Point& p : line)
        if (Finite(p)) cutter.Add(p);
    cutter.End();
    return parts;
}

std::vector<Point> Polygon_Inside(std::span<const Point> polygon, const Rect& rect) {
    std::vector<Point> corners, cut;
    for (const Point& p : polygon)
        if (Finite(p)) corners.push_back(p);
    const auto cut_at = [&](double Point::*axis, double Point::*other, double limit, bool keep_below) {
        cut.clear();
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Point &a = corners[i], &b = corners[(i + 1) % corners.size()];
            const auto keeps = [&](const Point& p) { return keep_below ? p.*axis <= limit : p.*axis >= limit; };
            if (keeps(a)) cut.push_back(a);
            if (keeps(a) == keeps(b)) continue;
            Point edge{};
            edge.*axis = limit;
            edge.*other = a.*other + (limit - a.*axis) / (b.*axis - a.*axis) * (b.*other - a.*other);
            cut.push_back(edge);
        }
        std::swap(corners, cut);
    };
    cut_at(&Point::x, &Point::y, rect.x1, false);
    cut_at(&Point::x, &Point::y, rect.x2, true);
    cut_at(&Point::y, &Point::x, rect.y1, false);
    cut_at(&Point::y, &Point::x, rect.y2, true);
    if (corners.size() < 3) corners.clear();
    return corners;
}

std::vector<Point> Ellipse_Corners(Point centre, double rx, double ry) {
    constexpr int circle_corners = 64;
    std::vector<Point> corners;
    for (int i = 0; i < circle_corners; ++i) {
        const double a = 2 * std::numbers::pi * i / circle_corners;
        corners.push_back({centre.x + rx * std::cos(a), centre.y + ry * std::sin(a)});
    }
    return corners;
}

}  // namespace vntl
