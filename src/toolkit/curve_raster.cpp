#include "toolkit/curve_raster.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace vntl {

namespace {

constexpr int strips_a_pixel = 5;
constexpr int strip_share = 51;  // of the full opacity 255
constexpr float nothing = std::numeric_limits<float>::infinity();

std::uint32_t Argb(Colour c) { return 0xff000000u | Red(c) << 16 | Green(c) << 8 | Blue(c); }

// The colour over a pixel with an opacity of 0 to 255; the alpha channel follows, so that it works on clear ground too.
void Blend(std::uint32_t& pixel, std::uint32_t colour, unsigned opacity) {
    if (opacity >= 255) {
        pixel = colour;
        return;
    }
    const unsigned rest = 255 - opacity;
    const auto mix = [&](unsigned shift) {
        const unsigned value = (colour >> shift & 255u) * opacity + (pixel >> shift & 255u) * rest + 127;
        return (value + (value >> 8) + 1) >> 8 << shift;  // through 255, rounded
    };
    pixel = mix(0) | mix(8) | mix(16) | mix(24);
}

// The whole number below; std::floor is a library call on processors of the base line. |x| < 1e15.
double Floor(double x) {
    const auto whole = static_cast<double>(static_cast<long long>(x));
    return whole > x ? whole - 1 : whole;
}

// Index of the first point that may matter: the last one left of `x`. For a series whose x rises.
std::size_t First_At(const Series& s, double x) {
    const auto device = [&](float value) { return s.x0 + s.x_scale * static_cast<double>(value); };
    const auto found = std::partition_point(s.x.begin(), s.x.end(), [&](float value) { return device(value) < x; });
    const auto index = static_cast<std::size_t>(found - s.x.begin());
    return index == 0 ? 0 : index - 1;
}

std::size_t End_At(const Series& s, double x) {
    const auto found =
        std::partition_point(s.x.begin(), s.x.end(), [&](float value) { return s.x0 + s.x_scale * static_cast<double>(value) <= x; });
    return std::min(s.x.size(), static_cast<std::size_t>(found - s.x.begin()) + 1);
}

// The part of the series between two device x, one neighbour kept on each side.
Series Between(const Series& s, double x1, double x2) {
    if (s.x_scale <= 0) return s;
    Series part = s;
    const std::size_t first = First_At(s, x1), end = std::max(first, End_At(s, x2));
    part.x = s.x.subspan(first, end - first);
    part.y = s.y.subspan(first, end - first);
    return part;
}

}  // namespace

bool Rises(std::span<const float> x) {
    int falls = 0;  // a count, and no early end: this way the compiler compares several at a time
    for (std::size_t i = 1; i < x.size(); ++i) falls += !(x[i] >= x[i - 1]);
    return falls == 0;
}

// --- curves ------------------------------------------------------------------------------------------------------------------

void Curve_Raster::Cover(int strip, double low, double high) {
    Interval& interval = strips_[static_cast<std::size_t>(strip)];
    interval.low = std::min(interval.low, static_cast<float>(low));
    interval.high = std::max(interval.high, static_cast<float>(high));
}

// The segment in strips; both ends finite, xa <= xb.
void Curve_Raster::Segment(double xa, double ya, double xb, double yb) {
    const double count = static_cast<double>(strips_.size());
    if (xb < 0 || xa >= count) return;
    const double first = Floor(xa), last = Floor(xb);
    if (first == last) {
        Cover(static_cast<int>(first), std::min(ya, yb), std::max(ya, yb));
        return;
    }
    const double slope = (yb - ya) / (xb - xa);
    const int from = static_cast<int>(std::max(first, 0.0)), to = static_cast<int>(std::min(last, count - 1));
    for (int strip = from; strip <= to; ++strip) {
        const double left = strip <= first ? ya : ya + slope * (strip - xa);
        const double right = strip >= last ? yb : ya + slope * (strip + 1 - xa);
        Cover(strip, std::min(left, right), std::max(left, right));
    }
}

void Curve_Raster::Collect(const Series& s, double x_origin, double height, bool reduced) {
    const double count = static_cast<double>(strips_.size());
    const double x0 = (s.x0 - x_origin) * strips_a_pixel, x_scale = s.x_scale * strips_a_pixel;
    double xa = 0, ya = 0;  // the point before
    int strip_before = -1;  // its strip, -1 outside
    bool open = false;
    for (std::size_t i = 0; i < s.x.size(); ++i) {
        const double xb = x0 + x_scale * static_cast<double>(s.x[i]);
        const double yb = height - (s.y0 + s.y_scale * static_cast<double>(s.y[i]));
        if (!(std::fabs(xb) < 1e15 && std::fabs(yb) < 1e15)) {
            open = false;
            continue;
        }
        const int strip = xb >= 0 && xb < count ? static_cast<int>(xb) : -1;
        if (reduced && open && strip >= 0 && strip == strip_before)
            Cover(strip, yb, yb);
        else
            open ? Segment(xa, ya, xb, yb) : Segment(xb, yb, xb, yb);
        xa = xb, ya = yb, strip_before = strip;
        open = true;
    }
}

void Curve_Raster::Widen(double radius) {
    const int n = static_cast<int>(strips_.size());
    widened_.assign(strips_.size(), {nothing, -nothing});
    const int reach = static_cast<int>(std::ceil(radius * strips_a_pixel)) - 1;
    for (int shift = -reach; shift <= reach; ++shift) {
        const double dx = static_cast<double>(shift) / strips_a_pixel;
        const auto half = static_cast<float>(std::sqrt(std::max(0.0, radius * radius - dx * dx)));
        const int from = std::max(0, -shift), to = std::min(n, n - shift);
        for (int i = from; i < to; ++i) {
            const Interval& source = strips_[static_cast<std::size_t>(i + shift)];
            Interval& target = widened_[static_cast<std::size_t>(i)];
            target.low = std::min(target.low, source.low - half);
            target.high = std::max(target.high, source.high + half);
        }
    }
}

void Curve_Raster::Paint(const Pixel_Buffer& target, const Pixel_Rect& clip, int first_column, Colour colour) {
    const std::uint32_t argb = Argb(colour);
    const auto top = static_cast<float>(clip.y1), bottom = static_cast<float>(clip.y2);
    column_.assign(static_cast<std::size_t>(clip.y2 - clip.y1), 0);
    for (int x = clip.x1; x < clip.x2; ++x) {
        int first_row = clip.y2, end_row = clip.y1;
        for (int k = 0; k < strips_a_pixel; ++k) {
            const Interval& strip = widened_[static_cast<std::size_t>((x - first_column) * strips_a_pixel + k)];
            const float low = std::max(strip.low, top), high = std::min(strip.high, bottom);
            if (!(low < high)) continue;
            const int a = static_cast<int>(low), b = std::min(static_cast<int>(high), clip.y2 - 1);
            first_row = std::min(first_row, a);
            end_row = std::max(end_row, b + 1);
            const auto share = [](float part) { return static_cast<std::uint16_t>(part * strip_share + 0.5f); };
            std::uint16_t* cover = column_.data() - clip.y1;
            if (a == b) {
                cover[a] = static_cast<std::uint16_t>(cover[a] + share(high - low));
                continue;
            }
            cover[a] = static_cast<std::uint16_t>(cover[a] + share(static_cast<float>(a + 1) - low));
            for (int row = a + 1; row < b; ++row) cover[row] = static_cast<std::uint16_t>(cover[row] + strip_share);
            cover[b] = static_cast<std::uint16_t>(cover[b] + share(high - static_cast<float>(b)));
        }
        std::uint32_t* pixel = target.pixels + first_row * target.stride + x;
        for (int row = first_row; row < end_row; ++row, pixel += target.stride) {
            std::uint16_t& cover = column_[static_cast<std::size_t>(row - clip.y1)];
            Blend(*pixel, argb, cover);
            cover = 0;
        }
    }
}

void Curve_Raster::Curve(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, double width, Colour colour,
                         bool reduced) {
    if (clip.x1 >= clip.x2 || clip.y1 >= clip.y2) return;
    const double radius = std::max(0.5, 0.5 * width);
    const int margin = static_cast<int>(std::ceil(radius)) + 1;
    const int first = clip.x1 - margin, end = clip.x2 + margin;
    strips_.assign(static_cast<std::size_t>(end - first) * strips_a_pixel, {nothing, -nothing});
    Collect(Between(series, first, end), first, target.height, reduced);
    Widen(radius);
    Paint(target, clip, first, colour);
}

// --- markers -----------------------------------------------------------------------------------------------------------------

namespace {

// Opacities of a glyph around its pixel. Rows are padded to a multiple of eight, which the stamping takes in one step each.
struct Sprite {
    static constexpr int lane = 8;
    int reach_x = 0, reach_y = 0;  // pixels on each side
    std::vector<std::uint8_t> opacity;
    int width() const { return 2 * reach_x + 1; }
    int height() const { return 2 * reach_y + 1; }
    int lanes() const { return (width() + lane - 1) / lane; }
    int padded() const { return lanes() * lane; }
};

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

Sprite Make_Sprite(const Marker_Style& style) {
    constexpr int samples = 8;
    constexpr double largest = 400;  // pixels of a glyph
    const Glyph_Outline glyph = Marker_Outline(style.glyph);
    const double width = std::clamp(style.width, 1.0, largest), height = std::clamp(style.height, 1.0, largest);
    std::vector<Point> points;
    for (const Point& p : glyph.points) points.push_back({p.x * width, p.y * height});
    Sprite sprite;
    const double line = style.filled && !glyph.strokes ? 0 : 0.6;  // half of an outline's width
    sprite.reach_x = static_cast<int>(std::ceil(0.5 * width + line - 0.5));
    sprite.reach_y = static_cast<int>(std::ceil(0.5 * height + line - 0.5));
    for (int y = -sprite.reach_y; y <= sprite.reach_y; ++y)
        for (int x = -sprite.reach_x; x < sprite.padded() - sprite.reach_x; ++x) {
            if (x > sprite.reach_x) {
                sprite.opacity.push_back(0);
                continue;
            }
            int hits = 0;
            for (int j = 0; j < samples; ++j)
                for (int i = 0; i < samples; ++i)
                    hits += Glyph_Covers(glyph, points, style.filled, {x + (i + 0.5) / samples - 0.5, -(y + (j + 0.5) / samples - 0.5)});
            sprite.opacity.push_back(static_cast<std::uint8_t>(hits * 255 / (samples * samples)));
        }
    return sprite;
}

}  // namespace

// Pixels seen by an earlier set bear its number, so that they need no clearing; what was covered is cleared as it is painted. What
// stays covered lies beyond the clip and is never looked at while the shape of the buffers stays.
void Curve_Raster::Prepare_Marks(std::size_t seen, std::size_t covered, int reach) {
    if (seen_.size() != seen || cover_.size() != covered || reach_ != reach) {
        seen_.assign(seen, 0);
        cover_.assign(covered, 0);
        reach_ = reach;
        mark_ = 0;
    }
    if (++mark_ != 0) return;
    std::fill(seen_.begin(), seen_.end(), std::uint8_t{0});
    mark_ = 1;
}

void Curve_Raster::Markers(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, const Marker_Style& style,
                           bool reduced) {
    if (clip.x1 >= clip.x2 || clip.y1 >= clip.y2 || style.glyph == 0) return;
    const Sprite sprite = Make_Sprite(style);
    // A frame around the clip holds the sprites that reach out of it and takes the points whose sprites reach in.
    const int x_from = clip.x1 - sprite.reach_x, y_from = clip.y1 - sprite.reach_y;
    const int columns = clip.x2 - clip.x1 + 2 * sprite.reach_x, rows = clip.y2 - clip.y1 + 2 * sprite.reach_y;
    const std::ptrdiff_t cover_columns = (columns + sprite.padded() + Sprite::lane) / Sprite::lane * Sprite::lane;
    Prepare_Marks(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows),
                  static_cast<std::size_t>(cover_columns) * static_cast<std::size_t>(rows + 2 * sprite.reach_y), sprite.reach_x);
    int first_row = rows, end_row = 0;
    const Series part = Rises(series.x) ? Between(series, x_from - 1, x_from + columns + 1) : series;
    const double x_left = series.x0 - x_from, y_top = target.height - series.y0 - y_from;
    for (std::size_t i = 0; i < part.x.size(); ++i) {
        const double x = x_left + part.x_scale * static_cast<double>(part.x[i]);
        const double y = y_top - part.y_scale * static_cast<double>(part.y[i]);
        if (!(x >= 0 && x < columns && y >= 0 && y < rows)) continue;
        const int column = static_cast<int>(x), row = static_cast<int>(y);
        std::uint8_t& seen = seen_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column)];
        if (reduced && seen == mark_) continue;
        seen = mark_;
        first_row = std::min(first_row, row);
        end_row = std::max(end_row, row + 1);
        const std::uint8_t* opacity = sprite.opacity.data();
        std::uint8_t* cover = cover_.data() + row * cover_columns + column;
        for (int j = 0; j < sprite.height(); ++j, cover += cover_columns, opacity += sprite.padded())
            for (int lane = 0; lane < sprite.padded(); lane += Sprite::lane)
                for (int k = 0; k < Sprite::lane; ++k) cover[lane + k] = std::max(cover[lane + k], opacity[lane + k]);
    }
    const std::uint32_t argb = Argb(style.colour);
    const int last = std::min(clip.y2, y_from + end_row + sprite.reach_y);
    for (int y = std::max(clip.y1, y_from + first_row - sprite.reach_y); y < last; ++y) {
        std::uint8_t* cover = cover_.data() + (y - y_from + sprite.reach_y) * cover_columns + 2 * sprite.reach_x;
        std::uint32_t* pixel = target.pixels + y * target.stride + clip.x1;
        const int width = clip.x2 - clip.x1;
        for (int x = 0; x < width;) {
            std::uint64_t eight = 1;
            if (x + Sprite::lane <= width) std::memcpy(&eight, cover + x, sizeof eight);
            if (eight == 0) {
                x += Sprite::lane;
                continue;
            }
            for (const int end = std::min(x + Sprite::lane, width); x < end; ++x)
                if (cover[x] != 0) {
                    Blend(pixel[x], argb, cover[x]);
                    cover[x] = 0;
                }
        }
    }
}

}  // namespace vntl
