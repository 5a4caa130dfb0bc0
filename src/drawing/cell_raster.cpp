#include "drawing/cell_raster.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace vntl {

namespace {

struct Sum {
    std::uint64_t red = 0, green = 0, blue = 0, count = 0;

    void Take(Colour colour) {
        if (colour == no_colour) return;
        red += Red(colour);
        green += Green(colour);
        blue += Blue(colour);
        ++count;
    }
};

std::uint32_t Mean(const Sum& sum) {
    const auto mean = [&](std::uint64_t channel) { return static_cast<unsigned>((channel + sum.count / 2) / sum.count); };
    return Argb(WRGB(mean(sum.red), mean(sum.green), mean(sum.blue)));
}

}  // namespace

Axis_Shares Share_Out(double from, double to, int cells, int clip_from, int clip_to) {
    const double cell = (to - from) / cells;
    const auto whole = [&](double value) { return static_cast<int>(std::round(std::clamp(value, clip_from - 1.0, clip_to + 1.0))); };
    const int first = whole(from), end = whole(to);
    const auto limited = [&](double count) { return static_cast<int>(std::clamp(count, 0.0, static_cast<double>(cells))); };
    const auto centres_before = [&](int pixel) {
        return pixel <= first ? 0 : pixel >= end ? cells : limited(std::ceil((pixel - from) / cell - 0.5));
    };
    Axis_Shares axis{std::max(first, clip_from), {}};
    for (int pixel = axis.pixel; pixel < std::min(end, clip_to); ++pixel) {
        Cell_Share share{centres_before(pixel), centres_before(pixel + 1)};
        if (share.first == share.end) {
            share.first = std::min(limited((pixel + 0.5 - from) / cell), cells - 1);
            share.end = share.first + 1;
        }
        axis.shares.push_back(share);
    }
    return axis;
}

void Paint_Cells(const Pixel_Buffer& target, const Pixel_Rect& clip, const Rect& place, const Cell_Image& image) {
    if (!image.Shows()) return;
    const Axis_Shares across = Share_Out(place.x1, place.x2, image.columns, clip.x1, clip.x2);
    const Axis_Shares down = Share_Out(place.y1, place.y2, image.rows, clip.y1, clip.y2);
    const std::size_t width = across.shares.size();
    if (width == 0) return;
    std::vector<Sum> sums(width);
    bool whole = false;  // the line before, so that it may be copied
    for (std::size_t y = 0; y < down.shares.size(); ++y) {
        std::uint32_t* const line = target.pixels + (down.pixel + static_cast<std::ptrdiff_t>(y)) * target.stride + across.pixel;
        const Cell_Share rows = down.shares[y];
        if (whole && rows == down.shares[y - 1]) {
            std::memcpy(line, line - target.stride, width * sizeof *line);
            continue;
        }
        std::fill(sums.begin(), sums.end(), Sum{});
        for (int row = rows.first; row < rows.end; ++row) {
            const auto from_below = static_cast<std::size_t>(image.rows - 1 - row);
            const Colour* const colours = image.colours.data() + from_below * static_cast<std::size_t>(image.columns);
            for (std::size_t x = 0; x < width; ++x) {
                for (int column = across.shares[x].first; column < across.shares[x].end; ++column) sums[x].Take(colours[column]);
            }
        }
        whole = true;
        for (std::size_t x = 0; x < width; ++x) {
            if (sums[x].count > 0)
                line[x] = Mean(sums[x]);
            else
                whole = false;
        }
    }
}

std::vector<Colour> Colours_Of_Pixels(const Pixel_Buffer& pixels) {
    std::vector<Colour> colours;
    colours.reserve(static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height));
    for (int row = pixels.height - 1; row >= 0; --row)
        for (int column = 0; column < pixels.width; ++column) {
            const std::uint32_t pixel = pixels.pixels[row * pixels.stride + column];
            colours.push_back((pixel & opaque) == opaque ? Colour_Of_Argb(pixel) : no_colour);
        }
    return colours;
}

}  // namespace vntl
