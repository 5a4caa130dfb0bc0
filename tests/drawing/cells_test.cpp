// Coloured cells on pixels against a plain search for the cells of every pixel.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <tuple>

#include "drawing/value_cells.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {
namespace {

constexpr int width = 61, height = 47;
constexpr Colour ground = WRGB(255, 255, 255);

std::vector<Colour> Random_Colours(int count) {
    std::mt19937 random(7);
    std::vector<Colour> colours;
    for (int i = 0; i < count; ++i) colours.push_back(random() & 0xffffff);
    return colours;
}

struct Case {
    Cell_Image image;
    Rect clip;
};

// Cells of a row from `from` to `to` whose centres lie in the pixel; without one the cell at the centre of the pixel. At the ends of the
// row, where a pixel is cut, cells whose centres lie outside go to the nearest pixel.
std::vector<int> Cells_Of_Pixel(int pixel, double from, double to, int cells) {
    const double cell = (to - from) / cells;
    const int first = static_cast<int>(std::round(std::min(from, to))), end = static_cast<int>(std::round(std::max(from, to)));
    std::vector<int> found;
    if (pixel < first || pixel >= end) return found;
    for (int c = 0; c < cells; ++c)
        if (std::clamp(static_cast<int>(std::floor(from + (c + 0.5) * cell)), first, end - 1) == pixel) found.push_back(c);
    if (found.empty()) found.push_back(std::clamp(static_cast<int>(std::floor((pixel + 0.5 - from) / cell)), 0, cells - 1));
    return found;
}

Colour Expected(const Case& c, int x, int y) {
    const Cell_Image& image = c.image;
    const int up = height - 1 - y;  // from the foot of the picture
    const auto columns = Cells_Of_Pixel(x, image.rect.x1, image.rect.x2, image.columns);
    const auto rows = Cells_Of_Pixel(up, image.rect.y1, image.rect.y2, image.rows);
    const bool outside = x < c.clip.x1 || x >= c.clip.x2 || up < c.clip.y1 || up >= c.clip.y2;
    if (outside || columns.empty() || rows.empty()) return ground;
    double red = 0, green = 0, blue = 0;
    for (const int row : rows) {
        for (const int column : columns) {
            const Colour colour = image.colours[static_cast<std::size_t>(row * image.columns + column)];
            red += Red(colour), green += Green(colour), blue += Blue(colour);
        }
    }
    const auto mean = [n = static_cast<double>(columns.size() * rows.size())](double sum) {
        return static_cast<unsigned>(std::floor(sum / n + 0.5));
    };
    return WRGB(mean(red), mean(green), mean(blue));
}

TEST(Cells, EveryPixelShowsItsOwn) {
    constexpr Rect all{0, 0, width, height}, part{13, 9, 40, 38};
    const struct {
        Rect rect;
        int columns, rows;
        Rect clip;
    } cases[] = {
        {{7, 5, 52, 41}, 5, 3, all},              // large cells
        {{7.3, 5.2, 51.8, 41.6}, 7, 11, part},    // between pixels
        {{7.3, 5.2, 51.8, 41.63}, 45, 36, all},   // about a pixel each
        {{7.4, 5.6, 51.9, 41.1}, 331, 200, all},  // many a pixel
        {{7.4, 5.6, 51.9, 41.1}, 331, 2, part},   // and large ones along the other axis
        {{-300, -1000, 500, 60}, 9, 1234, part},  // far beyond the picture
        {{-1e8, 5, 1e8, 41}, 4, 4, all},          // farther
        {{20.1, 10, 20.4, 30}, 1, 1, all},        // holds the centre of no pixel
        {{20.6, 10.6, 21.6, 11.6}, 30, 2, all},   // a pixel
    };
    for (const auto& [rect, columns, rows, clip] : cases) {
        const std::vector<Colour> colours = Random_Colours(columns * rows);
        const Case c{{rect, columns, rows, colours}, clip};
        Bitmap whole(width, height), halves(width, height);
        whole.Drawing().Set_Clip(clip);
        whole.Drawing().Cells(c.image);
        for (const auto& band : halves.Drawing().Bands()) {
            band->Set_Clip(clip);
            band->Cells(c.image);
        }
        int wrong = 0, unlike = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                wrong += whole.Pixel(x, y) != Expected(c, x, y);
                unlike += whole.Pixel(x, y) != halves.Pixel(x, y);
            }
        }
        EXPECT_EQ(wrong, 0) << columns << 'x' << rows;
        EXPECT_EQ(unlike, 0) << columns << 'x' << rows;
    }
}

// Of cells that share a pixel the largest value shows; a gap gives way to any value.
TEST(Cells, TheLargestValueOfAPixelShows) {
    const std::tuple<Rect, int, int> cases[] = {{{7.3, 5.2, 51.8, 41.6}, 7, 11},
                                                {{7.3, 5.2, 51.8, 41.63}, 45, 36},
                                                {{7.4, 5.6, 51.9, 41.1}, 331, 200},
                                                {{7.4, 5.6, 51.9, 41.1}, 331, 2},
                                                {{7.4, 5.6, 51.9, 41.1}, 1, 90}};
    std::mt19937 random(3);
    for (const auto& [rect, columns, rows] : cases) {
        std::vector<float> values;
        for (int i = 0; i < columns * rows; ++i)
            values.push_back(random() % 4 == 0 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(random() % 0xfffffe));
        Bitmap bitmap(width, height);
        bitmap.Drawing().Clear(ground);
        const Value_Cells seen = Seen_Cells(bitmap.Drawing(), rect, columns, rows, values);
        std::vector<Colour> colours;
        for (const float value : seen.values) colours.push_back(std::isfinite(value) ? static_cast<Colour>(value) : no_colour);
        bitmap.Drawing().Cells({seen.rect, seen.columns, seen.rows, colours});
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                float largest = -1;
                for (const int row : Cells_Of_Pixel(height - 1 - y, rect.y1, rect.y2, rows))
                    for (const int column : Cells_Of_Pixel(x, rect.x1, rect.x2, columns))
                        largest = std::fmax(largest, values[static_cast<std::size_t>(row * columns + column)]);
                ASSERT_EQ(bitmap.Pixel(x, y), largest < 0 ? ground : static_cast<Colour>(largest)) << columns << ": " << x << ' ' << y;
            }
    }
}

TEST(Cells, ANarrowReflectionIsSeenWhereverItLies) {
    constexpr int columns = 997;
    for (int bright = 0; bright < columns; ++bright) {
        std::vector<Colour> colours(columns, 0);
        colours[static_cast<std::size_t>(bright)] = ground;
        Bitmap bitmap(width, 1);
        bitmap.Drawing().Cells({{10.4, 0, 49.7, 1}, columns, 1, colours});
        int seen = 0;
        for (int x = 10; x < 50; ++x) seen += bitmap.Pixel(x, 0) != 0;
        EXPECT_EQ(seen, 1) << bright;
    }
}

}  // namespace
}  // namespace vntl
