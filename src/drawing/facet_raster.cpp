#include "drawing/facet_raster.hpp"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace vntl {

namespace {

constexpr int fine = 2;                          // samples along a side of a pixel
constexpr std::size_t most_samples = 4'000'000;  // in hand at a time
constexpr double steep = 6;                      // height of a triangle by its width
constexpr double farthest = 1e7;                 // samples: beyond it nothing can show

// Samples of a part of the picture, column by column, on which facets are laid: on a surface of reflections most are narrow and high.
// Places are in samples from the upper left corner of the picture.
class Canvas {
public:
    Canvas(const Pixel_Buffer& target, const Pixel_Rect& part)
        : target_(target), part_(part), bounds_{fine * part.x1, fine * part.y1, fine * part.x2, fine * part.y2} {
        samples_.resize(static_cast<std::size_t>(bounds_.x2 - bounds_.x1) * static_cast<std::size_t>(bounds_.y2 - bounds_.y1));
        Each_Pixel([](std::uint32_t pixel, std::uint32_t* left, std::uint32_t* right) {
            left[0] = left[1] = right[0] = right[1] = pixel;
            return pixel;
        });
    }

    void Triangle(Point a, Point b, Point c, std::uint32_t argb) {
        if (b.x < a.x) std::swap(a, b);
        if (c.x < b.x) std::swap(b, c);
        if (b.x < a.x) std::swap(a, b);
        const int left = First_Beyond(a.x, bounds_.x1, bounds_.x2), middle = First_Beyond(b.x, bounds_.x1, bounds_.x2),
                  right = First_Beyond(c.x, bounds_.x1, bounds_.x2);
        if (left >= right) return;
        const Side side(a, c);
        if (left < middle) Columns(left, middle, side, Side(a, b), argb);
        if (middle < right) Columns(middle, right, side, Side(b, c), argb);
    }

    // A triangle, and where it comes to a steep point at the top, the samples up to the point that lie beside it: so a reflection shows its
    // whole height, however narrow it is.
    void Facet_Triangle(const Point& a, const Point& b, const Point& c, std::uint32_t argb) {
        Triangle(a, b, c, argb);
        const auto [left, right] = std::minmax({a.x, b.x, c.x});
        const auto [top, bottom] = std::minmax({a.y, b.y, c.y});
        if (bottom - top < steep * (right - left) || bottom - top < 1) return;
        const Point& tip = top == a.y ? a : top == b.y ? b : c;
        if (!(tip.x >= bounds_.x1 && tip.x < bounds_.x2)) return;
        const int x = static_cast<int>(tip.x);
        const double middle = x + 0.5;
        double end = bottom;  // of what the triangle leaves out of the column: all of it, where it holds no middle of a column
        if (First_Beyond(left, bounds_.x1, bounds_.x2) < First_Beyond(right, bounds_.x1, bounds_.x2)) {
            if (!(middle > left && middle < right)) return;
            end = bottom;
            for (const auto& [p, q] : {std::pair(&a, &b), std::pair(&b, &c), std::pair(&c, &a)})
                if ((p->x < middle) != (q->x < middle)) end = std::min(end, p->y + (middle - p->x) * (q->y - p->y) / (q->x - p->x));
        }
        std::uint32_t* const column = Column(x) - bounds_.y1;
        const int from = First_Beyond(top, bounds_.y1, bounds_.y2), to = First_Beyond(end, bounds_.y1, bounds_.y2);
        if (from < to) std::fill(column + from, column + to, argb);
    }

    // With ends that go on by half the width, so that lines which meet leave no notch.
    void Line(Point a, Point b, double width, std::uint32_t argb) {
        const double dx = b.x - a.x, dy = b.y - a.y, length = std::sqrt(dx * dx + dy * dy), half = 0.5 * width;
        const Point along = length > 0 ? Point{dx / length * half, dy / length * half} : Point{half, 0};
        const Point p{a.x - along.x - along.y, a.y - along.y + along.x}, q{a.x - along.x + along.y, a.y - along.y - along.x};
        const Point r{b.x + along.x + along.y, b.y + along.y - along.x}, s{b.x + along.x - along.y, b.y + along.y + along.x};
        Triangle(p, q, r, argb);
        Triangle(p, r, s, argb);
    }

    void Put_Back() {
        Each_Pixel([](std::uint32_t, const std::uint32_t* left, const std::uint32_t* right) {
            return Mean(left[0], left[1], right[0], right[1]);
        });
    }

private:
    // A side of a triangle, from the left end to the right one: neighbours find the same places on it.
    struct Side {
        Point from;
        double slope;
        Side(Point left, Point right) : from(left), slope((right.y - left.y) / (right.x - left.x)) {}
        double At(double x) const { return from.y + (x - from.x) * slope; }
    };

    // The first sample whose middle lies beyond a place, from `least`, which is not below 0, to `most`.
    static int First_Beyond(double at, int least, int most) {
        return static_cast<int>(std::min(std::max(at + 0.5, static_cast<double>(least)), static_cast<double>(most)));
    }

    void Columns(int from, int to, const Side& one, const Side& other, std::uint32_t argb) {
        for (int x = from; x < to; ++x) {
            const int p = First_Beyond(one.At(x + 0.5), bounds_.y1, bounds_.y2);
            const int q = First_Beyond(other.At(x + 0.5), bounds_.y1, bounds_.y2);
            std::uint32_t* const column = Column(x) - bounds_.y1;
            std::fill(column + std::min(p, q), column + std::max(p, q), argb);
        }
    }

    static std::uint32_t Mean(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
        constexpr std::uint32_t even = 0x00ff00ffu, halves = 0x00020002u;
        const std::uint32_t low = (a & even) + (b & even) + (c & even) + (d & even) + halves;
        const std::uint32_t high = (a >> 8 & even) + (b >> 8 & even) + (c >> 8 & even) + (d >> 8 & even) + halves;
        return (low >> 2 & even) | (high >> 2 & even) << 8;
    }

    // Gives each pixel what `work` makes of it and of the samples in its left and its right half; a few columns at a time, for pixels lie
    // row by row.
    template <class Work>
    void Each_Pixel(const Work& work) {
        static_assert(fine == 2);
        constexpr int block = 16;
        const int height = bounds_.y2 - bounds_.y1;
        for (int from = part_.x1; from < part_.x2; from += block) {
            for (int y = part_.y1; y < part_.y2; ++y) {
                std::uint32_t* const pixels = target_.pixels + y * target_.stride;
                std::uint32_t* samples = Column(fine * from) + fine * (y - part_.y1);
                for (int x = from; x < std::min(from + block, part_.x2); ++x, samples += fine * height)
                    pixels[x] = work(pixels[x], samples, samples + height);
            }
        }
    }

    std::uint32_t* Column(int x) { return samples_.data() + static_cast<std::ptrdiff_t>(x - bounds_.x1) * (bounds_.y2 - bounds_.y1); }

    Pixel_Buffer target_;
    Pixel_Rect part_, bounds_;  // in pixels and in samples
    std::vector<std::uint32_t> samples_;
};

// The places in samples from the upper left corner of the buffer.
std::vector<Point> In_Samples(const Pixel_Buffer& target, std::span<const Point> places) {
    std::vector<Point> samples;
    samples.reserve(places.size());
    const auto near = [](double at) { return std::min(std::max(-farthest, at), farthest); };
    for (const Point& at : places) samples.push_back({near(fine * at.x), near(fine * (target.height - at.y))});
    return samples;
}

// Of the clip what the facets can reach.
Pixel_Rect Reached(const Pixel_Rect& clip, std::span<const Point> samples, double line_width) {
    Point least = samples.front(), most = least;
    for (const Point& at : samples) {
        least = {std::min(least.x, at.x), std::min(least.y, at.y)};
        most = {std::max(most.x, at.x), std::max(most.y, at.y)};
    }
    const auto pixel = [&](double at, double beyond, int low, int high) {
        return static_cast<int>(std::clamp(std::floor((at + beyond) / fine), static_cast<double>(low), static_cast<double>(high)));
    };
    const double reach = line_width + 1;
    return {pixel(least.x, -reach, clip.x1, clip.x2), pixel(least.y, -reach, clip.y1, clip.y2),
            pixel(most.x, reach + fine, clip.x1, clip.x2), pixel(most.y, reach + fine, clip.y1, clip.y2)};
}

void Paint_Part(const Pixel_Buffer& target, const Pixel_Rect& part, const Facet_List& list, std::span<const Point> samples,
                double line_width) {
    Canvas canvas(target, part);
    for (const Facet& facet : list.facets) {
        const auto& c = facet.corners;
        const std::uint32_t argb = Argb(facet.colour);
        if (facet.count == 2) {
            canvas.Line(samples[c[0]], samples[c[1]], line_width, argb);
            continue;
        }
        canvas.Facet_Triangle(samples[c[0]], samples[c[1]], samples[c[2]], argb);
        if (facet.count == 4) canvas.Facet_Triangle(samples[c[0]], samples[c[2]], samples[c[3]], argb);
    }
    canvas.Put_Back();
}

}  // namespace

void Paint_Facets(const Pixel_Buffer& target, const Pixel_Rect& clip, const Facet_List& list, double line_unit) {
    if (list.places.empty()) return;
    const std::vector<Point> samples = In_Samples(target, list.places);
    const double line_width = fine * std::max(1.0, list.line_width * line_unit);
    const Pixel_Rect all = Reached(clip, samples, line_width);
    if (all.x1 >= all.x2 || all.y1 >= all.y2) return;
    const std::size_t samples_a_row = static_cast<std::size_t>(all.x2 - all.x1) * fine * fine;
    const int rows = static_cast<int>(std::max<std::size_t>(1, most_samples / samples_a_row));
    for (int y = all.y1; y < all.y2; y += rows)
        Paint_Part(target, {all.x1, y, all.x2, std::min(y + rows, all.y2)}, list, samples, line_width);
}

}  // namespace vntl
