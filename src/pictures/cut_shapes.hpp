// Lines and polygons cut at a rectangle.
#pragma once

#include <cmath>
#include <span>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

inline bool Finite(Point p) { return std::isfinite(p.x) && std::isfinite(p.y); }

inline bool Inside(Point p, const Rect& r) { return p.x >= r.x1 && p.x <= r.x2 && p.y >= r.y1 && p.y <= r.y2; }

// The part of a segment inside a rectangle (Liang and Barsky, 1984): false where there is none. An end that is cut off lies on its edge to
// the last digit, however far the other one.
bool Clip_Segment(Point& a, Point& b, const Rect& r);

// The parts of a line that lie in a rectangle, and the part of a polygon (Sutherland and Hodgman, 1974), empty where nothing does. Corners
// that are no finite numbers are left out.
std::vector<std::vector<Point>> Line_Inside(std::span<const Point> line, const Rect& rect);
std::vector<Point> Polygon_Inside(std::span<const Point> polygon, const Rect& rect);

// An ellipse as a polygon, the last corner not repeated.
std::vector<Point> Ellipse_Corners(Point centre, double rx, double ry);

// Takes the points of a line one after another and gives its parts inside a rectangle.
template <class Take_Part>
class Line_Cutter {
public:
    Line_Cutter(const Rect& rect, std::vector<Point>& part, Take_Part take) : rect_(rect), part_(part), take_(take) { part_.clear(); }

    void Add(Point p, bool hidden = false) {
        if (begun_) {
            Point a = last_, b = p;
            const bool whole = Inside(a, rect_) && Inside(b, rect_);
            if (hidden || (!whole && !Clip_Segment(a, b, rect_))) {
                End_Part();
            } else {
                if (part_.empty() || !Same(part_.back(), a)) {
                    End_Part();
                    part_.push_back(a);
                }
                part_.push_back(b);
                if (!Same(b, p)) End_Part();
            }
        }
        begun_ = true;
        last_ = p;
    }
    void End() {
        End_Part();
        begun_ = false;
    }
    bool begun() const { return begun_; }
    Point last() const { return last_; }

private:
    static bool Same(Point a, Point b) { return a.x == b.x && a.y == b.y; }
    void End_Part() {
        if (part_.size() > 1) take_(std::span<const Point>(part_));
        part_.clear();
    }

    const Rect& rect_;
    std::vector<Point>& part_;
    Take_Part take_;
    bool begun_ = false;
    Point last_{};
};

}  // namespace vntl
