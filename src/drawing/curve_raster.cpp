#include "drawing/curve_raster.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "base/extremes.hpp"

namespace vntl {

namespace {

constexpr int strips_a_pixel = 5;
constexpr int strip_share = 51;  // of the full opacity 255
constexpr float nothing = std::numeric_limits<float>::infinity();
constexpr float farthest = 1e15f;  // pixels: a point beyond is a gap
constexpr int chunk_points = 256;

// What a colour is laid on: pixels, or the layers above them. A column takes the opacity of one row after another, downward.
struct On_Pixels {
    Pixel_Buffer target;
    std::uint32_t argb;

    struct Column {
        std::uint32_t* pixels;
        std::ptrdiff_t stride;
        std::uint32_t argb;
        void operator()(int y, std::uint32_t opacity) const { Blend(pixels[y * stride], argb, opacity); }
    };
    Column At(int x) const { return {target.pixels + x, target.stride, argb}; }
};

struct Below_Layers {
    Under_Layers* layers;
    std::uint32_t argb;

    Under_Layers::Column At(int x) const { return {*layers, x, argb}; }
};

Series Part_Of(const Series& s, std::size_t first, std::size_t end) {
    Series part = s;
    part.x = s.x.subspan(first, end - first);
    part.y = s.y.subspan(first, end - first);
    return part;
}

// The part of the series between two device x, one neighbour kept on each side. For a series whose x rises.
Series Between(const Series& s, double x1, double x2) {
    if (s.x_scale <= 0 || s.x.empty()) return s;
    const auto device = [&](float value) { return s.x0 + s.x_scale * static_cast<double>(value); };
    if (device(s.x.front()) >= x1 && device(s.x.back()) <= x2) return s;
    const auto from = std::partition_point(s.x.begin(), s.x.end(), [&](float value) { return device(value) < x1; });
    const auto to = std::partition_point(from, s.x.end(), [&](float value) { return device(value) <= x2; });
    const auto first = static_cast<std::size_t>(from - s.x.begin() - (from != s.x.begin()));
    const auto end = static_cast<std::size_t>(to - s.x.begin() + (to != s.x.end()));
    return Part_Of(s, first, end);
}

}  // namespace

bool Rises(std::span<const float> x) {
    int falls = 0;  // a count, and no early end: this way the compiler compares several at a time
    for (std::size_t i = 1; i < x.size(); ++i) falls += !(x[i] >= x[i - 1]);
    return falls == 0;
}

bool Rises(const Series& s) { return s.blocks != nullptr ? s.blocks->rises : Rises(s.x); }

static Extremes Extremes_Of_Block(std::span<const float> y, std::size_t first) {
    return Finite_Extremes(y.subspan(first, std::min(Series_Blocks::points + 1, y.size() - first)));
}

Series_Blocks::Series_Blocks(std::span<const float> x_values, std::span<const float> y_values) : rises(Rises(x_values)) {
    for (std::size_t first = 0; first < y_values.size(); first += points) y.push_back(Extremes_Of_Block(y_values, first));
}

Curve_Raster::Map::Map(double zero, double per_unit, int first)
    : origin(static_cast<float>(-zero / per_unit)), scale(static_cast<float>(per_unit)), from(static_cast<float>(first)) {
    if (!std::isfinite(origin)) origin = 0;
    offset = static_cast<float>(zero + per_unit * static_cast<double>(origin));
}

// Of the blocks of the series that have points of `part`; their points are numbered as in the series. It rises, where there are layers.
void Curve_Raster::Find_Stretches(const Series& s, const Series& part, const Pixel_Rect& clip, const Map& to_y, int reach_x, int reach_y,
                                  float foot) {
    constexpr std::size_t block = Series_Blocks::points;
    stretches_.clear();
    const std::size_t begin = static_cast<std::size_t>(part.x.data() - s.x.data()), n = begin + part.x.size();
    if (layers_ == nullptr) return stretches_.push_back({begin, n, clip.x1, clip.x2});
    const Map to_x(s.x0, s.x_scale, 0);
    // Cut and not rounded down: left of the clip, and above it, that is all the same.
    const auto pixel = [](float at, int beyond, int least, int most) {
        constexpr float far = 1e6f;
        return std::min(std::max(static_cast<int>(std::min(std::max(-far, at), far)) + beyond, least), most);
    };
    for (std::size_t first = begin / block * block; first < n; first += block) {
        const std::size_t end = std::min(first + block + 1, s.x.size());  // so that it has the segment to the next block
        const Extremes y = s.blocks != nullptr ? s.blocks->y[first / block] : Extremes_Of_Block(s.y, first);
        if (!y.Found()) continue;
        const float one = to_y(y.low), other = to_y(y.high);
        const Pixel_Rect box{pixel(to_x(s.x[first]), -reach_x, clip.x1, clip.x2), pixel(std::min(one, other), -reach_y, clip.y1, clip.y2),
                             pixel(to_x(s.x[end - 1]), reach_x + 1, clip.x1, clip.x2),
                             pixel(std::max({one, other, foot}), reach_y + 1, clip.y1, clip.y2)};
        if (box.x1 >= box.x2 || box.y1 >= box.y2 || layers_->Hides(box)) continue;
        if (!stretches_.empty() && stretches_.back().end == first + 1) {
            stretches_.back().end = end;
            stretches_.back().x2 = box.x2;
        } else {
            stretches_.push_back({first, end, box.x1, box.x2});
        }
    }
}

// --- curves ------------------------------------------------------------------------------------------------------------------

// 1 for a point that is no number, or too far off to be drawn. Both comparisons are made, without a branch between them, so that the
// compiler takes several points at a time.
inline int Is_Gap(float x, float y) { return 1 - (static_cast<int>(std::fabs(x) < farthest) & static_cast<int>(std::fabs(y) < farthest)); }

// Points of a curve: x in strips, y in pixels downward, and the strip that each is in. Strip 0 and the last one take what lies beyond.
struct Curve_Raster::Chunk {
    std::array<float, chunk_points> x, y;
    std::array<std::int32_t, chunk_points> strip;

    bool Gap(int i) const {
        const auto at = static_cast<std::size_t>(i);
        return Is_Gap(x[at], y[at]) != 0;
    }
};

void Curve_Raster::Cover(int strip, float one, float other) {
    float& low = low_[static_cast<std::size_t>(strip)];
    float& high = high_[static_cast<std::size_t>(strip)];
    low = std::min(low, std::min(one, other));
    high = std::max(high, std::max(one, other));
}

// Where the segment from a to b, in neighbouring strips, crosses from the one to the other.
static inline float Crossing(float xa, float ya, float xb, float yb, std::int32_t strip) {
    return ya + (yb - ya) / (xb - xa) * (static_cast<float>(strip) - xa);
}

// The segment that ends in point i; both its ends are no gaps.
void Curve_Raster::Segment(const Chunk& c, int i) {
    const auto b = static_cast<std::size_t>(i), a = b - 1;
    const std::int32_t first = c.strip[a], last = c.strip[b];
    if (last == first) return;  // the two points cover it
    if (last == first + 1) {
        const float edge = Crossing(c.x[a], c.y[a], c.x[b], c.y[b], last);
        Cover(first, edge, edge);
        Cover(last, edge, edge);
        return;
    }
    const double xa = c.x[a], ya = c.y[a], slope = (c.y[b] - ya) / (c.x[b] - xa);
    float left = c.y[a];
    for (std::int32_t strip = first; strip <= last; ++strip) {
        const float right = strip == last ? c.y[b] : static_cast<float>(ya + slope * (strip + 1 - xa));
        Cover(strip, left, right);
        left = right;
    }
}

void Curve_Raster::Cover_Segments(const Chunk& c, int points) {
    for (int i = 0; i < points; ++i) {
        if (c.Gap(i)) continue;
        const auto at = static_cast<std::size_t>(i);
        Cover(c.strip[at], c.y[at], c.y[at]);
        if (i > 0 && !c.Gap(i - 1)) Segment(c, i);
    }
}

// The same for points without gaps, most of which lie in the strip of the point before or in the next one.
void Curve_Raster::Cover_Points(const Chunk& c, int points) {
    const auto n = static_cast<std::size_t>(points);
    std::array<float, chunk_points> edge, low, high;
    int far = 0;
    for (std::size_t i = 1; i < n; ++i) {
        edge[i] = Crossing(c.x[i - 1], c.y[i - 1], c.x[i], c.y[i], c.strip[i]);
        far += c.strip[i] > c.strip[i - 1] + 1;
    }
    low[0] = high[0] = c.y[0];
    for (std::size_t i = 1; i < n; ++i) {  // from where the curve enters the strip to the point
        const float y = c.y[i], crossing = edge[i];
        const float enters = c.strip[i] == c.strip[i - 1] + 1 ? crossing : y;
        low[i] = std::min(y, enters);
        high[i] = std::max(y, enters);
    }
    for (std::size_t i = 1; i < n; ++i) {  // and on to where it leaves it
        const float y = c.y[i - 1], crossing = edge[i];
        const float leaves = c.strip[i] == c.strip[i - 1] + 1 ? crossing : y;
        low[i - 1] = std::min(low[i - 1], leaves);
        high[i - 1] = std::max(high[i - 1], leaves);
    }
    float *strip_low = low_.data(), *strip_high = high_.data();
    for (std::size_t i = 0; i < n; ++i) {
        const std::int32_t strip = c.strip[i];
        const float least = strip_low[strip], most = strip_high[strip];  // copies: so it compiles to no jump
        strip_low[strip] = std::min(least, low[i]);
        strip_high[strip] = std::max(most, high[i]);
    }
    if (far == 0) return;
    for (int i = 1; i < points; ++i)
        if (c.strip[static_cast<std::size_t>(i)] > c.strip[static_cast<std::size_t>(i) - 1] + 1) Segment(c, i);
}

void Curve_Raster::Collect(const Series& s, const Map& to_x, const Map& to_y, bool reduced) {
    Chunk c;
    const auto end_strip = static_cast<float>(low_.size() - 1);
    // The last point of a chunk is the first of the next one.
    for (std::size_t first = 0; first == 0 || first + 1 < s.x.size(); first += chunk_points - 1) {
        const std::size_t n = std::min<std::size_t>(chunk_points, s.x.size() - first);
        const float *x = s.x.data() + first, *y = s.y.data() + first;
        int gaps = 0;
        for (std::size_t i = 0; i < n; ++i) {
            c.x[i] = to_x(x[i]);
            c.y[i] = to_y(y[i]);
            c.strip[i] = static_cast<std::int32_t>(std::min(std::max(0.0f, c.x[i]), end_strip));
            gaps += Is_Gap(c.x[i], c.y[i]);
        }
        if (reduced && gaps == 0)
            Cover_Points(c, static_cast<int>(n));
        else
            Cover_Segments(c, static_cast<int>(n));
    }
}

// The intervals of `count` strips from `first` on, widened by a disc.
void Curve_Raster::Widen(double radius, int first, int count) {
    const auto n = static_cast<std::size_t>(count);
    widened_low_.assign(n, nothing);
    widened_high_.assign(n, -nothing);
    const int reach = static_cast<int>(std::ceil(radius * strips_a_pixel)) - 1;
    for (int shift = 0; shift <= reach; ++shift) {
        const double dx = static_cast<double>(shift) / strips_a_pixel;
        const auto half = static_cast<float>(std::sqrt(std::max(0.0, radius * radius - dx * dx)));
        const float *low_before = low_.data() + first - shift, *low_after = low_.data() + first + shift;
        const float *high_before = high_.data() + first - shift, *high_after = high_.data() + first + shift;
        float *low = widened_low_.data(), *high = widened_high_.data();
        for (std::size_t i = 0; i < n; ++i) low[i] = std::min(low[i], std::min(low_before[i], low_after[i]) - half);
        for (std::size_t i = 0; i < n; ++i) high[i] = std::max(high[i], std::max(high_before[i], high_after[i]) + half);
    }
}

// What a strip covers of a pixel column grows from row to row as the low end passes and falls again as the high end does. So each end is
// one entry, whatever the height between them: its share of the row that it lies in, and above that the share of all rows further down.
// A running sum down the column is the opacity.
template <class Ink>
void Curve_Raster::Paint(const Ink& ink, const Pixel_Rect& clip) {
    constexpr int block = 16;  // pixel columns at a time
    struct Ends {
        std::array<std::int32_t, block * strips_a_pixel> row, entry;
        void Split(const float* y, std::size_t count, float top, float height) {
            for (std::size_t i = 0; i < count; ++i) {
                const float at = std::min(std::max(0.0f, y[i] - top), height);
                row[i] = static_cast<std::int32_t>(at);
                entry[i] = (strip_share << 16) + static_cast<std::int32_t>((static_cast<float>(row[i] + 1) - at) * strip_share + 0.5f);
            }
        }
    } low, high;
    const int rows = clip.y2 - clip.y1;
    const auto top = static_cast<float>(clip.y1), height = static_cast<float>(rows);
    steps_.assign(static_cast<std::size_t>(rows) + 1, 0);
    for (int x = 0; x < clip.x2 - clip.x1; x += block) {
        const int columns = std::min(block, clip.x2 - clip.x1 - x);
        const auto strips = static_cast<std::size_t>(columns * strips_a_pixel);
        low.Split(widened_low_.data() + x * strips_a_pixel, strips, top, height);
        high.Split(widened_high_.data() + x * strips_a_pixel, strips, top, height);
        for (int column = 0; column < columns; ++column) {
            std::int32_t first = rows, last = -1;
            for (int k = 0; k < strips_a_pixel; ++k) {
                const auto i = static_cast<std::size_t>(column * strips_a_pixel + k);
                if (low.row[i] > high.row[i]) continue;  // nothing in this strip
                steps_[static_cast<std::size_t>(low.row[i])] += low.entry[i];
                steps_[static_cast<std::size_t>(high.row[i])] -= high.entry[i];
                first = std::min(first, low.row[i]);
                last = std::max(last, high.row[i]);
            }
            auto&& ink_column = ink.At(clip.x1 + x + column);
            std::int32_t full = 0;
            for (std::int32_t row = first; row <= last; ++row) {
                const std::int32_t step = std::exchange(steps_[static_cast<std::size_t>(row)], 0);
                const auto share = static_cast<std::int16_t>(step & 0xffff);
                if (row < rows) ink_column(clip.y1 + row, static_cast<std::uint32_t>(full + share));
                full += (step - share) >> 16;
            }
        }
    }
}

template <class Paint_Columns>
void Curve_Raster::Each_Part(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, int margin, float foot, bool reduced,
                             const Paint_Columns& paint) {
    if (clip.x1 >= clip.x2 || clip.y1 >= clip.y2 || series.x.empty()) return;
    // Columns that the curve cannot reach are left out.
    const auto reached = [&](float value, int beyond) {
        const double x = series.x0 + series.x_scale * static_cast<double>(value) + beyond;
        return static_cast<int>(std::min(std::max(static_cast<double>(clip.x1), x), static_cast<double>(clip.x2)));
    };
    Pixel_Rect part = clip;
    part.x1 = reached(series.x.front(), -margin);
    part.x2 = reached(series.x.back(), margin);
    if (part.x1 >= part.x2) return;
    const Series near = Between(series, part.x1 - margin, part.x2 + margin);
    const Map to_y(target.height - series.y0, -series.y_scale, 0);
    Find_Stretches(series, near, part, to_y, margin, margin - 1, foot);
    // Stretches that reach into the same columns are one drawing.
    for (std::size_t from = 0, to = 0; from < stretches_.size(); from = to) {
        Pixel_Rect columns{stretches_[from].x1, part.y1, stretches_[from].x2, part.y2};
        for (to = from + 1; to < stretches_.size() && stretches_[to].x1 < columns.x2; ++to)
            columns.x2 = std::max(columns.x2, stretches_[to].x2);
        const int first = columns.x1 - margin, end = columns.x2 + margin;
        low_.assign(static_cast<std::size_t>(end - first) * strips_a_pixel + 2, nothing);
        high_.assign(low_.size(), -nothing);
        const Map to_x(series.x0 * strips_a_pixel, series.x_scale * strips_a_pixel, first * strips_a_pixel - 1);
        for (std::size_t i = from; i < to; ++i) Collect(Part_Of(series, stretches_[i].first, stretches_[i].end), to_x, to_y, reduced);
        paint(columns);
    }
}

void Curve_Raster::Curve(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, double width, Colour colour,
                         bool reduced) {
    const double radius = std::max(0.5, 0.5 * width);
    const int margin = static_cast<int>(std::ceil(radius)) + 1;
    Each_Part(target, clip, series, margin, no_foot, reduced, [&](const Pixel_Rect& columns) {
        Widen(radius, 1 + margin * strips_a_pixel, (columns.x2 - columns.x1) * strips_a_pixel);
        if (layers_ != nullptr)
            Paint(Below_Layers{layers_, Argb(colour)}, columns);
        else
            Paint(On_Pixels{target, Argb(colour)}, columns);
    });
}

// --- areas -------------------------------------------------------------------------------------------------------------------

constexpr int area_margin = 1;  // pixels: a segment is known from its end in the column before

template <class Ink>
void Curve_Raster::Paint_Area(const Ink& ink, const Pixel_Rect& columns, float foot) {
    const auto first_row = static_cast<float>(columns.y1), end_row = static_cast<float>(columns.y2);
    const auto end = static_cast<int>(std::min(std::max(std::ceil(foot), first_row), end_row));
    const float* low = low_.data() + 1 + area_margin * strips_a_pixel;
    for (int x = columns.x1; x < columns.x2; ++x, low += strips_a_pixel) {
        const float top = std::min({low[0], low[1], low[2], low[3], low[4]});
        const auto first = static_cast<int>(std::min(std::max(std::ceil(top), first_row), end_row));
        if (first >= end) continue;
        auto&& ink_column = ink.At(x);
        for (int row = first; row < end; ++row) ink_column(row, 255);
    }
}

void Curve_Raster::Area(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, double foot, Colour colour,
                        bool reduced) {
    constexpr double far = 1e6;  // beyond every clip
    const auto foot_row = static_cast<float>(std::clamp(target.height - foot, -far, far));
    Each_Part(target, clip, series, area_margin, foot_row, reduced, [&](const Pixel_Rect& columns) {
        if (layers_ != nullptr)
            Paint_Area(Below_Layers{layers_, Argb(colour)}, columns, foot_row);
        else
            Paint_Area(On_Pixels{target, Argb(colour)}, columns, foot_row);
    });
}

// --- markers -----------------------------------------------------------------------------------------------------------------

// The clip with a margin that takes the points whose sprites reach in. Its opacities lie column by column: a curve goes on from column to
// column, and so does the memory.
struct Curve_Raster::Frame {
    int x, y, columns, rows;
    std::ptrdiff_t cover_stride;

    Frame(const Pixel_Rect& clip, const Marker_Sprite& sprite)
        : x(clip.x1 - sprite.reach_x),
          y(clip.y1 - sprite.reach_y),
          columns(clip.x2 - clip.x1 + 2 * sprite.reach_x),
          rows(clip.y2 - clip.y1 + 2 * sprite.reach_y),
          cover_stride(rows + sprite.Padded()) {}

    // Number of a pixel; the row after the last one stands for all that is outside.
    static std::uint32_t Pixel(std::uint32_t column, std::uint32_t row) { return row << 16 | column; }
    static std::uint32_t Column(std::uint32_t pixel) { return pixel & 0xffff; }
    static std::uint32_t Row(std::uint32_t pixel) { return pixel >> 16; }
    std::uint32_t Outside() const { return Pixel(0, static_cast<std::uint32_t>(rows)); }
};

// What was covered is cleared as it is painted. What stays covered lies beyond the clip and is never looked at while the shape of the
// buffer stays.
void Curve_Raster::Prepare_Marks(const Frame& frame, const Marker_Sprite& sprite) {
    const std::size_t covered = static_cast<std::size_t>(frame.cover_stride) * static_cast<std::size_t>(frame.columns + 2 * sprite.reach_x);
    if (cover_.size() != covered || reach_ != sprite.reach_y) {
        cover_.assign(covered, 0);
        reach_ = sprite.reach_y;
    }
    top_.assign(static_cast<std::size_t>(frame.columns), frame.rows);
    bottom_.assign(static_cast<std::size_t>(frame.columns), -1);
    latest_.assign(static_cast<std::size_t>(frame.rows) + 1, frame.Outside());
}

void Curve_Raster::Stamp(const Frame& frame, const Marker_Sprite& sprite, std::span<const std::uint32_t> pixels) {
    constexpr int lane = Marker_Sprite::lane;
    const int width = sprite.Width(), padded = sprite.Padded();
    for (const std::uint32_t pixel : pixels) {
        const std::uint32_t column = Frame::Column(pixel);
        const int row = static_cast<int>(Frame::Row(pixel));
        top_[column] = std::min(top_[column], row);
        bottom_[column] = std::max(bottom_[column], row);
        const std::uint8_t* opacity = sprite.opacity.data();
        std::uint8_t* cover = cover_.data() + static_cast<std::ptrdiff_t>(column) * frame.cover_stride + row;
        for (int j = 0; j < width; ++j, cover += frame.cover_stride, opacity += padded)
            for (int from = 0; from < padded; from += lane) {
                std::array<std::uint8_t, lane> here, more;
                std::memcpy(here.data(), cover + from, lane);
                std::memcpy(more.data(), opacity + from, lane);
                for (std::size_t k = 0; k < lane; ++k) here[k] = std::max(here[k], more[k]);
                std::memcpy(cover + from, here.data(), lane);
            }
    }
}

template <class Ink>
void Curve_Raster::Paint_Marks(const Ink& ink, const Frame& frame, const Marker_Sprite& sprite) {
    const int columns = frame.columns - 2 * sprite.reach_x, end_row = frame.rows - sprite.reach_y;
    // Rows that are covered in each column of the clip.
    first_.assign(static_cast<std::size_t>(columns), end_row);
    end_.assign(static_cast<std::size_t>(columns), 0);
    for (int from = 0; from < sprite.Width(); ++from) {  // columns to the right of the sprites that reach in with their last column
        const Marker_Sprite::Extent extent = sprite.extents[static_cast<std::size_t>(sprite.Width() - 1 - from)];
        const int *top = top_.data() + from, *bottom = bottom_.data() + from;
        int *first = first_.data(), *end = end_.data();
        for (int i = 0; i < columns; ++i) first[i] = std::min(first[i], top[i] + extent.first);
        for (int i = 0; i < columns; ++i) end[i] = std::max(end[i], bottom[i] + extent.end);
    }
    for (int i = 0; i < columns; ++i) {
        const int first = std::max(first_[static_cast<std::size_t>(i)], sprite.reach_y);
        const int end = std::min(end_[static_cast<std::size_t>(i)], end_row);
        std::uint8_t* cover = cover_.data() + (i + 2 * sprite.reach_x) * frame.cover_stride + sprite.reach_y;
        if (first >= end) continue;
        auto&& ink_column = ink.At(frame.x + sprite.reach_x + i);
        for (int row = first; row < end; ++row) {
            ink_column(frame.y + row, cover[row]);
            cover[row] = 0;
        }
    }
}

void Curve_Raster::Markers(const Pixel_Buffer& target, const Pixel_Rect& clip, const Series& series, const Marker_Style& style,
                           bool reduced) {
    if (clip.x1 >= clip.x2 || clip.y1 >= clip.y2 || style.glyph == 0 || series.x.empty()) return;
    const Marker_Sprite& sprite = sprites_.Of(style);
    const Frame frame(clip, sprite);
    const std::uint32_t outside = frame.Outside();
    const auto columns = static_cast<float>(frame.columns), rows = static_cast<float>(frame.rows);
    const Map to_x(series.x0, series.x_scale, frame.x), to_y(target.height - series.y0, -series.y_scale, frame.y);
    // Cheap to ask where all is shown; where not, it pays to look whether a part can be left out.
    const auto shown = [&](float x) { return to_x(x) >= 0 && to_x(x) < columns; };
    const bool all_shown = shown(series.x.front()) && shown(series.x.back());
    const bool rises = (all_shown && layers_ == nullptr) || Rises(series);
    const Series part = all_shown || !rises ? series : Between(series, frame.x - 1, frame.x + frame.columns + 1);
    if (rises)
        Find_Stretches(series, part, clip, Map(target.height - series.y0, -series.y_scale, 0), sprite.reach_x, sprite.reach_y);
    else
        stretches_.assign({Stretch{0, series.x.size(), clip.x1, clip.x2}});
    if (stretches_.empty()) return;
    Prepare_Marks(frame, sprite);

    // A pixel is stamped again only when the curve has been elsewhere in its row meanwhile; where x rises it then never comes back.
    std::array<std::uint32_t, chunk_points> pixels, fresh;
    std::uint32_t* latest = latest_.data();
    for (const Stretch& stretch : stretches_)
        for (std::size_t first = stretch.first; first < stretch.end; first += chunk_points) {
            const std::size_t n = std::min<std::size_t>(chunk_points, stretch.end - first);
            const float *px = series.x.data() + first, *py = series.y.data() + first;
            for (std::size_t i = 0; i < n; ++i) {
                const float x = to_x(px[i]), y = to_y(py[i]);
                const bool inside = (x >= 0) & (x < columns) & (y >= 0) & (y < rows);
                const auto column = static_cast<std::int32_t>(inside ? x : 0), row = static_cast<std::int32_t>(inside ? y : rows);
                pixels[i] = Frame::Pixel(static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(row));
            }
            std::size_t count = 0;
            for (std::size_t i = 0; i < n; ++i) {
                std::uint32_t& before = latest[Frame::Row(pixels[i])];
                fresh[count] = pixels[i];
                count += reduced ? before != pixels[i] : pixels[i] != outside;
                before = pixels[i];
            }
            Stamp(frame, sprite, std::span(fresh).first(count));
        }
    if (layers_ != nullptr)
        Paint_Marks(Below_Layers{layers_, Argb(style.colour)}, frame, sprite);
    else
        Paint_Marks(On_Pixels{target, Argb(style.colour)}, frame, sprite);
}

}  // namespace vntl
