#include "drawing/under_layers.hpp"

#include <algorithm>

namespace vntl {

namespace {

constexpr std::size_t most_layers = 1u << 21;  // 16 MB

}  // namespace

Under_Layers::Under_Layers(const Pixel_Rect& bounds)
    : bounds_(bounds),
      height_(bounds.y2 - bounds.y1),
      stacks_(static_cast<std::size_t>(bounds.x2 - bounds.x1) * static_cast<std::size_t>(height_)),
      covered_rows_(static_cast<std::size_t>(bounds.x2 - bounds.x1), Rows{0, 0}) {
    layers_.reserve(most_layers + static_cast<std::size_t>(height_));
}

bool Under_Layers::Hides(const Pixel_Rect& pixels) const {
    if (too_many_) return true;
    for (int x = pixels.x1; x < pixels.x2; ++x) {
        const Rows& rows = covered_rows_[static_cast<std::size_t>(x - bounds_.x1)];
        if (pixels.y1 < rows.first || pixels.y2 > rows.end) return false;
    }
    return true;
}

Under_Layers::Column::Column(Under_Layers& all, int x, std::uint32_t argb)
    : all_(all), column_(static_cast<std::size_t>(x - all.bounds_.x1)), colour_(argb & ~opaque) {
    if (all.layers_.size() > most_layers) all.Settle();
    stacks_ = all.Stacks(column_) - all.bounds_.y1;
    hidden_ = all.covered_rows_[column_];
}

// The stretch around a pixel is looked at once a column and drawing.
void Under_Layers::Note_Covered(std::size_t column, int y) {
    const std::uint32_t* stacks = Stacks(column) - bounds_.y1;
    const auto is_covered = [&](int row) { return (stacks[row] & covered) != 0; };
    Rows rows{y, y + 1};
    while (rows.first > bounds_.y1 && is_covered(rows.first - 1)) --rows.first;
    while (rows.end < bounds_.y2 && is_covered(rows.end)) ++rows.end;
    Rows& known = covered_rows_[column];
    if (rows.end - rows.first > known.end - known.first) known = rows;
}

std::uint32_t Under_Layers::Blended(std::uint32_t ground, std::uint32_t stack) const {
    while ((stack & number_bits) != 0) {
        const Layer& layer = layers_[(stack & number_bits) - 1];
        Blend(ground, layer.ink | opaque, layer.ink >> 24);
        stack = layer.above;
    }
    return ground;
}

// A covered pixel keeps one layer in the place of many.
void Under_Layers::Settle() {
    if (too_many_) return layers_.clear();  // nothing will be put on a picture
    std::vector<Layer> layers, chain;
    layers.reserve(layers_.capacity());
    for (std::uint32_t& stack : stacks_) {
        if ((stack & number_bits) == 0) continue;
        if ((stack & covered) != 0 || Covers(stack)) {
            layers.push_back({Blended(opaque, stack), 0});
            stack = static_cast<std::uint32_t>(layers.size()) | one_more | covered;
            continue;
        }
        chain.clear();
        for (std::uint32_t at = stack; (at & number_bits) != 0; at = layers_[(at & number_bits) - 1].above)
            chain.push_back(layers_[(at & number_bits) - 1]);
        for (auto layer = chain.rbegin(); layer != chain.rend(); ++layer) {  // `above` of each is where the one before it came to
            const std::uint32_t above = layer == chain.rbegin() ? 0 : static_cast<std::uint32_t>(layers.size());
            layers.push_back({layer->ink, above});
        }
        stack = static_cast<std::uint32_t>(layers.size()) | (stack & most_counted);
    }
    layers_ = std::move(layers);
    too_many_ = layers_.size() > most_layers / 2;
}

bool Under_Layers::Put_On(const Pixel_Buffer& target) const {
    if (too_many_) return false;
    constexpr int block = 16;  // columns at a time: a row of them is a line of the cache
    const int columns = bounds_.x2 - bounds_.x1;
    for (int from = 0; from < columns; from += block)
        for (int row = 0; row < height_; ++row) {
            std::uint32_t* pixel = target.pixels + (bounds_.y1 + row) * target.stride + bounds_.x1;
            for (int column = from; column < std::min(from + block, columns); ++column)
                if (const std::uint32_t stack = Stacks(static_cast<std::size_t>(column))[row]; stack != 0)
                    pixel[column] = Blended(pixel[column], stack);
        }
    return true;
}

}  // namespace vntl
