#include "pictures/page_cover.hpp"

#include <algorithm>
#include <cmath>

namespace vntl {

namespace {

constexpr double most_places = 4e8;
constexpr int word_bits = Bit_Rows::word_bits, square = 8;
constexpr Cover_Stamp::Row empty_row = {0, 0};
constexpr std::uint64_t all_bits = ~std::uint64_t{0};

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

Bit_Rows::Bit_Rows(int columns, int rows)
    : words_(static_cast<std::size_t>(columns / word_bits + 1)), bits_(words_ * static_cast<std::size_t>(rows)) {}

void Bit_Rows::Set(int row, int first, int end) {
    if (first >= end) return;
    std::uint64_t* const words = &bits_[Index(row, 0)];
    const int from = first / word_bits, to = (end - 1) / word_bits;
    const std::uint64_t low = all_bits << (first % word_bits), high = all_bits >> (word_bits - 1 - (end - 1) % word_bits);
    if (from == to) {
        words[from] |= low & high;
        return;
    }
    words[from] |= low;
    words[to] |= high;
    std::fill(words + from + 1, words + to, all_bits);
}

Page_Cover::Page_Cover(double width, double height)
    : places_a_point_(std::min(1 / finest_in_print, std::sqrt(most_places / std::max(1.0, width * height)))),
      columns_(static_cast<int>(width * places_a_point_) + 1),
      rows_(static_cast<int>(height * places_a_point_) + 1),
      places_(columns_, rows_ + square),
      squares_(columns_ / square + 1, rows_ / square + 1),
      window_{0, 0, columns_, rows_} {}

int Page_Cover::Place(double at) const { return static_cast<int>(std::lround(at * places_a_point_)); }

Page_Cover::Places Page_Cover::In_Window(const Places& all) const {
    return {std::max(all.x1, window_.x1), std::max(all.y1, window_.y1), std::min(all.x2, window_.x2), std::min(all.y2, window_.y2)};
}

void Page_Cover::Set_Window(const Rect& window) {
    const auto whole = [this](double at, int most) {
        return static_cast<int>(std::lround(std::clamp(at * places_a_point_, 0.0, static_cast<double>(most))));
    };
    window_ = {whole(window.x1, columns_), whole(window.y1, rows_), whole(window.x2, columns_), whole(window.y2, rows_)};
}

// A glyph of strokes takes the box about it, and hides nothing.
Cover_Stamp Page_Cover::Stamp_Of(const Marker_Style& style) const {
    const Glyph_Outline outline = Marker_Outline(style.glyph);
    const double a = 0.5 * style.width * places_a_point_, b = 0.5 * style.height * places_a_point_;
    constexpr double largest = 1e5;
    if (!(a >= 0 && b >= 0 && a < largest && b < largest)) return {};
    Cover_Stamp stamp;
    stamp.covers = style.filled && !outline.strokes && !outline.points.empty();
    std::vector<Point> corners = {{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}};
    if (stamp.covers) corners = outline.points;
    for (Point& p : corners) p = {2 * a * p.x, 2 * b * p.y};
    stamp.lowest = -static_cast<int>(b);
    for (int y = stamp.lowest; y <= -stamp.lowest; ++y) {
        if (stamp.covers && style.glyph == circle_glyph && b > 0) {
            const int half = static_cast<int>(a * std::sqrt(std::max(0.0, 1 - y * y / (b * b))));
            stamp.rows.push_back({-half, half + 1});
        } else {
            stamp.rows.push_back(Row_Of_Polygon(corners, y));
        }
    }
    const int count = static_cast<int>(stamp.rows.size());
    for (int phase = 0; phase < square; ++phase)
        for (int k = -phase; k < count; k += square) {
            Cover_Stamp::Row all = stamp.rows[static_cast<std::size_t>(std::max(k, 0))];
            for (int i = std::max(k, 0); i < std::min(k + square, count); ++i) {
                const auto [first, end] = stamp.rows[static_cast<std::size_t>(i)];
                if (first < end) all = {std::min(all.first, first), std::max(all.end, end)};
            }
            stamp.together[static_cast<std::size_t>(phase)].push_back(all);
        }
    return stamp;
}

bool Page_Cover::Hides_Squares(const Places& box) const {
    if (box.x1 >= box.x2) return true;
    for (int row = box.y1 / square; row <= (box.y2 - 1) / square && box.y1 < box.y2; ++row)
        if (!squares_.All(row, box.x1 / square, (box.x2 - 1) / square + 1)) return false;
    return true;
}

bool Page_Cover::Hides_Box(const Rect& box) const {
    return Hides_Squares(In_Window({Place(box.x1), Place(box.y1), Place(box.x2) + 1, Place(box.y2) + 1}));
}

bool Page_Cover::Hides(const Cover_Stamp& stamp, Point at) const {
    const int count = static_cast<int>(stamp.rows.size());
    const int x = Place(at.x), y = Place(at.y) + stamp.lowest;
    const auto in_window = [&](const Cover_Stamp::Row& row) {
        return Cover_Stamp::Row{std::max(window_.x1, x + row.first), std::min(window_.x2, x + row.end)};
    };
    const int low = std::max(y, window_.y1), high = std::min(y + count, window_.y2);
    if (low >= high) return true;
    const int first_square = static_cast<int>(std::floor(static_cast<double>(y) / square));
    const auto& together = stamp.together[static_cast<std::size_t>(y - first_square * square)];
    const int lowest = low / square, count_of_squares = (high - 1) / square - lowest + 1;
    // A shape sticks out at its ends, if it does anywhere.
    for (int i = 0; i < count_of_squares; ++i) {
        const int row = i % 2 == 0 ? lowest + i / 2 : lowest + count_of_squares - 1 - i / 2;
        const auto [first, end] = in_window(together[static_cast<std::size_t>(row - first_square)]);
        if (first >= end || squares_.All(row, first / square, (end - 1) / square + 1)) continue;
        for (int k = std::max(low, row * square); k < std::min(high, (row + 1) * square); ++k) {
            const auto [from, to] = in_window(stamp.rows[static_cast<std::size_t>(k - y)]);
            if (!places_.All(k, from, to)) return false;
        }
    }
    return true;
}

void Page_Cover::Lay(const Cover_Stamp& stamp, Point at) {
    if (!stamp.covers) return;
    const int x = Place(at.x), y = Place(at.y) + stamp.lowest;
    Places all{columns_, y, 0, y + static_cast<int>(stamp.rows.size())};
    for (int row = std::max(y, window_.y1); row < std::min(all.y2, window_.y2); ++row) {
        const auto [first, end] = stamp.rows[static_cast<std::size_t>(row - y)];
        places_.Set(row, std::max(window_.x1, x + first), std::min(window_.x2, x + end));
        all.x1 = std::min(all.x1, x + first);
        all.x2 = std::max(all.x2, x + end);
    }
    Find_Squares(In_Window(all));
}

// A byte of a word of places is a row of a square.
void Page_Cover::Find_Squares(const Places& box) {
    if (box.x1 >= box.x2 || box.y1 >= box.y2) return;
    for (int row = box.y1 / square; row <= (box.y2 - 1) / square; ++row)
        for (int word = box.x1 / word_bits; word <= (box.x2 - 1) / word_bits; ++word) {
            std::uint64_t covered = all_bits;
            for (int y = square * row; covered != 0 && y < square * (row + 1); ++y) covered &= places_.Word(y, word);
            unsigned found = 0;
            for (unsigned byte = 0; byte < 8; ++byte)
                if ((covered >> (8 * byte) & 0xff) == 0xff) found |= 1u << byte;
            if (found != 0) squares_.Set_Byte(row, word, static_cast<std::uint8_t>(found));
        }
}

void Page_Cover::Lay_Under(std::span<const Point> line, double foot) {
    if (line.size() < 2) return;
    const double squares_a_point = places_a_point_ / square;
    const int columns = columns_ / square, rows = rows_ / square;
    const auto near = [squares_a_point](double at, int most) { return std::clamp(at * squares_a_point, -1.0, most + 1.0); };
    const int first = std::max(0, static_cast<int>(std::ceil(near(line.front().x, columns))));
    const int end = std::min(columns, static_cast<int>(std::floor(near(line.back().x, columns))));
    if (first >= end) return;
    // The lowest place over each column of squares.
    std::vector<double> tops(static_cast<std::size_t>(end - first), rows);
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double low = near(std::min(line[i - 1].y, line[i].y), rows);
        const int from = std::max(first, static_cast<int>(std::floor(near(line[i - 1].x, columns))));
        const int to = std::min(end - 1, static_cast<int>(std::floor(near(line[i].x, columns))));
        for (int column = from; column <= to; ++column) {
            double& top = tops[static_cast<std::size_t>(column - first)];
            top = std::min(top, low);
        }
    }
    const int lowest = std::max(0, static_cast<int>(std::ceil(near(foot, rows))));
    for (int column = first; column < end; ++column) {
        const int above = static_cast<int>(std::floor(tops[static_cast<std::size_t>(column - first)]));
        for (int row = lowest; row < above; ++row) squares_.Set(row, column, column + 1);
    }
}

bool Page_Cover::Hides_Line(Point a, Point b, double line_width) const {
    const double half = 0.5 * line_width * places_a_point_;
    a = {a.x * places_a_point_, a.y * places_a_point_};
    b = {b.x * places_a_point_, b.y * places_a_point_};
    if (a.y > b.y) std::swap(a, b);
    const auto below = [](double at) { return static_cast<int>(std::floor(at)); };
    const Places box =
        In_Window({below(std::min(a.x, b.x) - half), below(a.y - half), below(std::max(a.x, b.x) + half) + 2, below(b.y + half) + 2});
    if (Hides_Squares(box)) return true;
    // At a height the line reaches as far as between the heights half a line width below and above.
    const double dx = b.x - a.x, dy = b.y - a.y;
    const auto x_at = [&](double y) { return a.x + std::clamp((y - a.y) / dy, 0.0, 1.0) * dx; };
    for (int y = box.y1; y < box.y2; ++y) {
        const double p = dy > 0 ? x_at(y - half) : a.x, q = dy > 0 ? x_at(y + half) : b.x;
        if (!places_.All(y, std::max(box.x1, below(std::min(p, q) - half)), std::min(box.x2, below(std::max(p, q) + half) + 2)))
            return false;
    }
    return true;
}

}  // namespace vntl
