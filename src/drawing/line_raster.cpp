#include "drawing/line_raster.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vntl {

namespace {

constexpr double level = 1e-6;                            // rise of a segment that covers whole rows, pixels
constexpr int nothing = std::numeric_limits<int>::max();  // first pixel of a row that is not reached

// A place in pixels as a whole one near the clip.
int Whole(double place, int from, int to) {
    return static_cast<int>(std::clamp(std::floor(place), static_cast<double>(from), static_cast<double>(to)));
}

}  // namespace

void Line_Raster::Draw(const Pixel_Buffer& target, const Pixel_Rect& clip, std::span<const Point> points, double width, Colour colour) {
    if (points.size() < 2 || !std::isfinite(width) || clip.x1 >= clip.x2 || clip.y1 >= clip.y2) return;
    clip_ = clip;
    reach_ = 0.5 * std::max(width, 1.0) + 0.5;
    const auto columns = static_cast<std::size_t>(clip.x2 - clip.x1), rows = static_cast<std::size_t>(clip.y2 - clip.y1);
    if (cover_.size() < columns * rows) cover_.resize(columns * rows);
    if (first_.size() < rows) first_.resize(rows, nothing), end_.resize(rows, 0);
    top_ = clip.y2, bottom_ = clip.y1;
    const bool closed = points.size() > 2 && points.front().x == points.back().x && points.front().y == points.back().y;
    for (std::size_t i = 1; i < points.size(); ++i) Cover(points[i - 1], points[i], {!closed && i == 1, !closed && i + 1 == points.size()});
    Put_On(target, Argb(colour));
}

void Line_Raster::Cover(Point from, Point to, Ends ends) {
    const double dx = to.x - from.x, dy = to.y - from.y, length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0)) return;
    const int top = Whole(std::min(from.y, to.y) - reach_, clip_.y1, clip_.y2);
    const int bottom = Whole(std::max(from.y, to.y) + reach_ + 1, clip_.y1, clip_.y2);
    const double left = std::min(from.x, to.x) - reach_, right = std::max(from.x, to.x) + reach_;
    if (top >= bottom || right < clip_.x1 || left >= clip_.x2) return;
    from_ = from, along_ = {dx / length, dy / length}, length_ = length;
    ends_ = ends;
    top_ = std::min(top_, top), bottom_ = std::max(bottom_, bottom);
    const bool leans = std::fabs(dy) > level;
    const double slope = leans ? dx / dy : 0, half = leans ? reach_ * length / std::fabs(dy) : 0;
    for (int row = top; row < bottom; ++row) {
        double low = left, high = right;
        if (leans) {
            const double middle = from.x + (row + 0.5 - from.y) * slope;
            low = std::max(low, middle - half), high = std::min(high, middle + half);
        }
        if (low <= high)
            Cover_Row(row - clip_.y1, Whole(low, clip_.x1, clip_.x2) - clip_.x1, Whole(high + 1, clip_.x1, clip_.x2) - clip_.x1);
    }
}

void Line_Raster::Cover_Row(int row, int first, int end) {
    if (first >= end) return;
    const auto r = static_cast<std::size_t>(row);
    first_[r] = std::min(first_[r], first), end_[r] = std::max(end_[r], end);
    std::uint8_t* const line = cover_.data() + r * static_cast<std::size_t>(clip_.x2 - clip_.x1);
    const double y = clip_.y1 + row + 0.5 - from_.y;
    for (int column = first; column < end; ++column) {
        const double x = clip_.x1 + column + 0.5 - from_.x;
        const double along = x * along_.x + y * along_.y, across = x * along_.y - y * along_.x;
        const double beyond = std::max(std::max(-along, along - length_), 0.0);
        double opacity = std::min(reach_ - std::fabs(across), 1.0);
        if (beyond > 0 && !(along < 0 ? ends_.from_cut : ends_.to_cut))
            opacity = std::min(reach_ - std::sqrt(across * across + beyond * beyond), 1.0);
        if (ends_.from_cut) opacity *= std::clamp(along + 0.5, 0.0, 1.0);
        if (ends_.to_cut) opacity *= std::clamp(length_ - along + 0.5, 0.0, 1.0);
        line[column] = std::max(line[column], static_cast<std::uint8_t>(255 * std::max(opacity, 0.0) + 0.5));
    }
}

void Line_Raster::Put_On(const Pixel_Buffer& target, std::uint32_t colour) {
    const int columns = clip_.x2 - clip_.x1;
    for (int y = top_; y < bottom_; ++y) {
        const auto row = static_cast<std::size_t>(y - clip_.y1);
        std::uint8_t* const line = cover_.data() + row * static_cast<std::size_t>(columns);
        std::uint32_t* const to = target.pixels + y * target.stride + clip_.x1;
        for (int column = first_[row]; column < end_[row]; ++column) {
            if (line[column] == 255)
                to[column] = colour;
            else if (line[column] > 0)
                Blend(to[column], colour, line[column]);
            line[column] = 0;
        }
        first_[row] = nothing, end_[row] = 0;
    }
}

}  // namespace vntl
