#include "drawing/marker_sprite.hpp"

#include <algorithm>
#include <cmath>

namespace vntl {

namespace {

constexpr std::size_t most_sprites = 32;

bool Inside(const std::vector<Point>& polygon, Point p) {
    bool inside = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const Point a = polygon[i], b = polygon[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
    }
    return inside;
}

double Distance(Point p, Point a, Point b) {
    const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
    const double t = length > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length, 0.0, 1.0) : 0;
    return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

bool Glyph_Covers(const Glyph_Outline& glyph, const std::vector<Point>& points, bool filled, Point p) {
    constexpr double half_line = 0.6;
    const std::size_t n = points.size(), step = glyph.strokes ? 2 : 1;
    if (!glyph.strokes && filled) return Inside(points, p);
    for (std::size_t i = 0; i < n; i += step)
        if (Distance(p, points[i], points[(i + 1) % n]) < half_line) return true;
    return false;
}

Marker_Sprite Make_Sprite(const Marker_Style& style) {
    constexpr int samples = 8;
    constexpr double largest = 400;  // pixels of a glyph
    const Glyph_Outline glyph = Marker_Outline(style.glyph);
    const double width = std::clamp(style.width, 1.0, largest), height = std::clamp(style.height, 1.0, largest);
    std::vector<Point> points;
    for (const Point& p : glyph.points) points.push_back({p.x * width, p.y * height});
    Marker_Sprite sprite;
    const double line = style.filled && !glyph.strokes ? 0 : 0.6;  // half of an outline's width
    sprite.reach_x = static_cast<int>(std::ceil(0.5 * width + line - 0.5));
    sprite.reach_y = static_cast<int>(std::ceil(0.5 * height + line - 0.5));
    for (int x = -sprite.reach_x; x <= sprite.reach_x; ++x) {
        Marker_Sprite::Extent extent = {sprite.reach_y + 1, -sprite.reach_y};
        for (int y = -sprite.reach_y; y < sprite.Padded() - sprite.reach_y; ++y) {
            int hits = 0;
            for (int j = 0; j < samples && y <= sprite.reach_y; ++j)
                for (int i = 0; i < samples; ++i)
                    hits += Glyph_Covers(glyph, points, style.filled, {x + (i + 0.5) / samples - 0.5, -(y + (j + 0.5) / samples - 0.5)});
            sprite.opacity.push_back(static_cast<std::uint8_t>(hits * 255 / (samples * samples)));
            if (sprite.opacity.back() == 0) continue;
            extent.first = std::min(extent.first, y);
            extent.end = y + 1;
        }
        sprite.extents.push_back(extent);
    }
    return sprite;
}

bool Same_Shape(const Marker_Style& a, const Marker_Style& b) {
    return a.glyph == b.glyph && a.width == b.width && a.height == b.height && a.filled == b.filled;
}

}  // namespace

const Marker_Sprite& Marker_Sprites::Of(const Marker_Style& style) {
    for (const Made& made : made_)
        if (Same_Shape(made.style, style)) return made.sprite;
    if (made_.size() == most_sprites) made_.clear();
    return made_.emplace_back(Made{style, Make_Sprite(style)}).sprite;
}

}  // namespace vntl
