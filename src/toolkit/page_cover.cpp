#include "toolkit/page_cover.hpp"

#include <algorithm>
#include <cmath>

namespace vntl {

namespace {

constexpr double most_places = 4e8;
constexpr int circle_glyph = 221;
constexpr Cover_Stamp::Row empty_row = {0, 0};

// From where to where a convex polygon reaches at a height.
Cover_Stamp::Row Row_Of_Polygon(const std::vector<Point>& corners, double y) {
    double low = 0, high = 0;
    bool any = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point &a = corners[i], &b = corners[(i + 1) % corners.size()];
        if ((a.y < y) == (b.y < y)) continue;
        const double x = a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x);
        low = any ? std::min(low, x) : x;
        high = any ? std::max(high, x) : x;
        any = true;
    }
    return any ? Cover_Stamp::Row{static_cast<int>(std::ceil(low)), static_cast<int>(std::floor(high)) + 1} : empty_row;
}

}  // namespace

Page_Cover::Page_Cover(double width, double height)
    : places_a_point_(std::min(1 / finest_in_print, std::sqrt(most_places / std::max(1.0, width * height)))),
      columns_(static_cast<int>(width * places_a_point_) + 1),
      rows_(static_cast<int>(height * places_a_point_) + 1),
      words_(static_cast<std::size_t>(columns_ / word_bits + 1)),
      bits_(words_ * static_cast<std::size_t>(rows_)),
      full_words_(words_ * static_cast<std::size_t>(rows_ / tile + 1)),
      x2_(columns_),
      y2_(rows_) {}

void Page_Cover::Set_Window(const Rect& window) {
    const auto whole = [this](double at, int most) {
        return static_cast<int>(std::lround(std::clamp(at * places_a_point_, 0.0, static_cast<double>(most))));
    };
    x1_ = whole(window.x1, columns_);
    x2_ = whole(window.x2, columns_);
    y1_ = whole(window.y1, rows_);
    y2_ = whole(window.y2, rows_);
}

// A glyph of strokes takes the box about it, and hides nothing.
Cover_Stamp Page_Cover::Stamp_Of(const Marker_Style& style) const {
    const Glyph_Outline outline = Marker_Outline(style.glyph);
    Cover_Stamp stamp;
    stamp.covers = style.filled && !outline.strokes && !outline.points.empty();
    const double a = 0.5 * style.width * places_a_point_, b = 0.5 * style.height * places_a_point_;
    if (!(a >= 0 && b >= 0 && a + b < 1e6)) return {};
    std::vector<Point> corners;
    if (stamp.covers)
        for (const Point& p : outline.points) corners.push_back({2 * a * p.x, 2 * b * p.y});
    else
        corners = {{-a, -b}, {a, -b}, {a, b}, {-a, b}};
    stamp.lowest = -static_cast<int>(b);
    for (int y = stamp.lowest; y <= static_cast<int>(b); ++y) {
        if (stamp.covers && style.glyph == circle_glyph) {
            const int half = static_cast<int>(a * std::sqrt(std::max(0.0, 1 - y * y / (b * b))));
            stamp.rows.push_back({-half, half + 1});
        } else {
            stamp.rows.push_back(Row_Of_Polygon(corners, y));
        }
    }
    return stamp;
}

bool Page_Cover::Hides_Row(int y, int first, int end) const {
    if (first >= end) return true;
    const Word* const row = bits_.data() + static_cast<std::size_t>(y) * words_;
    const int from = first / word_bits, to = (end - 1) / word_bits;
    const Word low = ~Word{0} << (first % word_bits), high = ~Word{0} >> (word_bits - 1 - (end - 1) % word_bits);
    if (from == to) return (~row[from] & low & high) == 0;
    if ((~row[from] & low) != 0 || (~row[to] & high) != 0) return false;
    for (int word = from + 1; word < to; ++word)
        if (row[word] != ~Word{0}) return false;
    return true;
}

void Page_Cover::Lay_Row(int y, int first, int end) {
    if (first >= end) return;
    Word* const row = bits_.data() + static_cast<std::size_t>(y) * words_;
    std::uint8_t* const tiles = full_words_.data() + static_cast<std::size_t>(y / tile) * words_;
    const int from = first / word_bits, to = (end - 1) / word_bits;
    for (int word = from; word <= to; ++word) {
        Word bits = ~Word{0};
        if (word == from) bits &= ~Word{0} << (first % word_bits);
        if (word == to) bits &= ~Word{0} >> (word_bits - 1 - (end - 1) % word_bits);
        const Word before = row[word];
        row[word] = before | bits;
        if (before != ~Word{0} && row[word] == ~Word{0}) ++tiles[word];
    }
}

bool Page_Cover::Hides_Tiles(int x1, int x2, int y1, int y2) const {
    for (int ty = y1 / tile; ty <= (y2 - 1) / tile; ++ty)
        for (int tx = x1 / word_bits; tx <= (x2 - 1) / word_bits; ++tx)
            if (full_words_[static_cast<std::size_t>(ty) * words_ + static_cast<std::size_t>(tx)] < tile) return false;
    return true;
}

bool Page_Cover::Hides(const Cover_Stamp& stamp, Point at) const {
    const int x = Place(at.x), y = Place(at.y) + stamp.lowest;
    const int count = static_cast<int>(stamp.rows.size());
    const int from = std::max(0, y1_ - y), to = std::min(count, y2_ - y);
    // A shape sticks out at its ends, if it does anywhere.
    for (int row = from; row < to; ++row) {
        const int k = (row - from) % 2 == 0 ? from + (row - from) / 2 : to - 1 - (row - from) / 2;
        const auto [first, end] = stamp.rows[static_cast<std::size_t>(k)];
        if (!Hides_Row(y + k, std::max(x1_, x + first), std::min(x2_, x + end))) return false;
    }
    return true;
}

void Page_Cover::Lay(const Cover_Stamp& stamp, Point at) {
    if (!stamp.covers) return;
    const int x = Place(at.x), y = Place(at.y) + stamp.lowest;
    const int count = static_cast<int>(stamp.rows.size());
    for (int row = std::max(0, y1_ - y); row < std::min(count, y2_ - y); ++row) {
        const auto [first, end] = stamp.rows[static_cast<std::size_t>(row)];
        Lay_Row(y + row, std::max(x1_, x + first), std::min(x2_, x + end));
    }
}

bool Page_Cover::Hides_Line(Point a, Point b, double line_width) const {
    const double half = 0.5 * line_width * places_a_point_;
    a = {a.x * places_a_point_, a.y * places_a_point_};
    b = {b.x * places_a_point_, b.y * places_a_point_};
    if (a.y > b.y) std::swap(a, b);
    const int y1 = std::max(y1_, static_cast<int>(std::floor(a.y - half))), y2 = std::min(y2_, static_cast<int>(std::ceil(b.y + half)) + 1);
    // At a height the line reaches as far as between the heights half a line width below and above.
    const double dx = b.x - a.x, dy = b.y - a.y;
    const auto x_at = [&](double y) { return dy > 0 ? a.x + std::clamp((y - a.y) / dy, 0.0, 1.0) * dx : y < a.y ? a.x : b.x; };
    for (int y = y1; y < y2; ++y) {
        const double p = dy > 0 ? x_at(y - half) : a.x, q = dy > 0 ? x_at(y + half) : b.x;
        const int first = static_cast<int>(std::floor(std::min(p, q) - half)), end = static_cast<int>(std::ceil(std::max(p, q) + half)) + 1;
        if (!Hides_Row(y, std::max(x1_, first), std::min(x2_, end))) return false;
    }
    return true;
}

}  // namespace vntl
