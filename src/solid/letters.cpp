#include "solid/letters.hpp"

#include <algorithm>
#include <limits>

namespace vntl {

namespace {

using Contour = std::vector<Point>;

bool Same(const Point& a, const Point& b) { return a.x == b.x && a.y == b.y; }

// Twice the area of a triangle, positive for one that runs counter-clockwise.
double Turn(const Point& a, const Point& b, const Point& c) { return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x); }

double Twice_Area(const Contour& contour) {
    double sum = 0;
    for (std::size_t i = 0; i < contour.size(); ++i) sum += Turn(contour[0], contour[i], contour[(i + 1) % contour.size()]);
    return sum;
}

bool Inside(const Point& at, const Contour& contour) {
    bool inside = false;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Point &a = contour[i], &b = contour[(i + 1) % contour.size()];
        if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (at.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
    }
    return inside;
}

bool Cross_Each_Other(const Point& a, const Point& b, const Point& c, const Point& d) {
    return (Turn(a, b, c) > 0) != (Turn(a, b, d) > 0) && (Turn(c, d, a) > 0) != (Turn(c, d, b) > 0);
}

// Whether the way between two corners crosses a side that ends at neither of them.
bool Barred(const Point& from, const Point& to, const Contour& contour) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Point &a = contour[i], &b = contour[(i + 1) % contour.size()];
        if (!Same(a, from) && !Same(b, from) && !Same(a, to) && !Same(b, to) && Cross_Each_Other(from, to, a, b)) return true;
    }
    return false;
}

// Whether a way from a corner of a ring begins inside it, that is to the left of both of its sides, or of one where the corner is hollow.
bool Begins_Inside(const Contour& ring, std::size_t corner, const Point& to) {
    const Point &before = ring[(corner + ring.size() - 1) % ring.size()], &at = ring[corner], &behind = ring[(corner + 1) % ring.size()];
    const bool left_of_one = Turn(before, at, to) > 0, left_of_other = Turn(at, behind, to) > 0;
    return Turn(before, at, behind) > 0 ? left_of_one && left_of_other : left_of_one || left_of_other;
}

std::size_t Leftmost(const Contour& contour) {
    const auto least = std::min_element(contour.begin(), contour.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
    return static_cast<std::size_t>(least - contour.begin());
}

// Joins a hole to the ring around it by a way there and back between the hole's leftmost corner and the nearest one to the left of it that
// sees it. Holes that lie farther to the right are not in the way.
void Bridge(Contour& ring, const Contour& hole) {
    const std::size_t start = Leftmost(hole);
    const Point& from = hole[start];
    double nearest = std::numeric_limits<double>::infinity();
    std::size_t at = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const double x = ring[i].x - from.x, y = ring[i].y - from.y, apart = x * x + y * y;
        if (x > 0 || apart >= nearest || !Begins_Inside(ring, i, from) || Barred(ring[i], from, ring)) continue;
        nearest = apart, at = i;
    }
    Contour way;
    for (std::size_t k = 0; k <= hole.size(); ++k) way.push_back(hole[(start + k) % hole.size()]);
    way.push_back(ring[at]);
    ring.insert(ring.begin() + static_cast<std::ptrdiff_t>(at) + 1, way.begin(), way.end());
}

bool Is_Ear(const Contour& ring, const Point& a, const Point& b, const Point& c) {
    if (Turn(a, b, c) <= 0) return false;
    return std::none_of(ring.begin(), ring.end(), [&](const Point& p) {
        return !Same(p, a) && !Same(p, b) && !Same(p, c) && Turn(a, b, p) >= 0 && Turn(b, c, p) >= 0 && Turn(c, a, p) >= 0;
    });
}

// Cuts off one corner after the other whose triangle holds no other one. A ring that crosses itself comes to a point where none is left:
// then any corner goes.
void Cut_Ears(Contour ring, std::vector<Flat_Triangle>& triangles) {
    std::size_t at = 0, tried = 0;
    while (ring.size() > 2) {
        const std::size_t n = ring.size();
        at %= n;
        const Point a = ring[(at + n - 1) % n], b = ring[at], c = ring[(at + 1) % n];
        const bool ear = Is_Ear(ring, a, b, c);
        if (ear || Turn(a, b, c) == 0 || tried > n) {
            if (ear) triangles.push_back({a, b, c});
            ring.erase(ring.begin() + static_cast<std::ptrdiff_t>(at));
            tried = 0;
        } else {
            ++at, ++tried;
        }
    }
}

}  // namespace

Outline Directed(Outline letter) {
    for (Contour& contour : letter) contour.erase(std::unique(contour.begin(), contour.end(), Same), contour.end());
    std::erase_if(letter, [](const Contour& contour) { return contour.size() < 3; });
    for (Contour& contour : letter) {
        const auto around = std::count_if(letter.begin(), letter.end(),
                                          [&](const Contour& other) { return &other != &contour && Inside(contour[0], other); });
        if ((Twice_Area(contour) < 0) != (around % 2 == 1)) std::reverse(contour.begin(), contour.end());
    }
    return letter;
}

std::vector<Flat_Triangle> Triangles_Of(const Outline& letter) {
    std::vector<const Contour*> holes;
    for (const Contour& contour : letter)
        if (Twice_Area(contour) < 0) holes.push_back(&contour);
    std::sort(holes.begin(), holes.end(), [](const Contour* a, const Contour* b) { return (*a)[Leftmost(*a)].x < (*b)[Leftmost(*b)].x; });
    std::vector<Flat_Triangle> triangles;
    for (const Contour& outer : letter) {
        if (Twice_Area(outer) <= 0) continue;
        Contour ring = outer;
        for (const Contour* hole : holes)
            if (Inside((*hole)[0], outer)) Bridge(ring, *hole);
        Cut_Ears(std::move(ring), triangles);
    }
    return triangles;
}

}  // namespace vntl
