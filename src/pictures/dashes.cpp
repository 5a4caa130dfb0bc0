#include "pictures/dashes.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace vntl {
namespace {

constexpr std::size_t most_dashes = 100'000;

double Distance(Point a, Point b) { return std::hypot(b.x - a.x, b.y - a.y); }

// Goes along a line, by the distance from its start.
class Line_Walk {
public:
    explicit Line_Walk(std::span<const Point> line) : line_(line), length_(Distance(line[0], line[1])) {}

    // The place at a distance that is not before the last one. Corners on the way are added to `passed`.
    Point Go_To(double distance, std::vector<Point>* passed = nullptr) {
        while (corner_ + 1 < line_.size() && start_ + length_ < distance) {
            if (passed != nullptr) passed->push_back(line_[corner_]);
            start_ += length_;
            length_ = Distance(line_[corner_], line_[corner_ + 1]);
            ++corner_;
        }
        const Point &a = line_[corner_ - 1], &b = line_[corner_];
        const double share = length_ > 0 ? std::clamp((distance - start_) / length_, 0.0, 1.0) : 0;
        return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)};
    }

private:
    std::span<const Point> line_;
    std::size_t corner_ = 1;     // the next one
    double start_ = 0, length_;  // of the segment that leads there
};

}  // namespace

void For_Each_Dash(std::span<const Point> line, std::span<const double> pattern, double shortening, double least,
                   const std::function<void(std::span<const Point>)>& take) {
    if (line.size() < 2) return;
    double length = 0;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) length += Distance(line[i], line[i + 1]);
    Line_Walk walk(line);
    std::vector<Point> dash;
    double from = 0;
    for (std::size_t k = 0; from < length; k += 2) {
        const bool last = k / 2 >= most_dashes;
        const double to = last ? length : std::min(length, from + pattern[k % pattern.size()]);
        const double half = std::max(0.5 * (to - from) - shortening, 0.5 * least), middle = 0.5 * (from + to);
        dash.clear();
        dash.push_back(walk.Go_To(middle - half));
        const Point end = walk.Go_To(middle + half, &dash);
        dash.push_back(end);
        take(dash);
        if (last) return;
        from = to + pattern[(k + 1) % pattern.size()];
    }
}

}  // namespace vntl
