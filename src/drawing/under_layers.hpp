// A picture that is drawn from the front to the back, so that what lies behind something opaque costs next to nothing.
//
// A pixel keeps the colours that have come to lie on it until one covers it. In the end they are blended in the order in which they cover
// one another: the picture is, bit for bit, the one that is drawn from the back to the front.
#pragma once

#include <algorithm>
#include <vector>

#include "drawing/pixels.hpp"

namespace vntl {

class Under_Layers {
    struct Layer {
        std::uint32_t ink;    // its opacity in the place of the alpha channel
        std::uint32_t above;  // the stack of those over it
    };
    struct Rows {
        int first, end;
    };
    // The layers of a pixel are a stack: the number of the lowest one, from 1 (0 is none), how many there are, up to 127, and in the
    // highest bit that nothing below can show.
    static constexpr std::uint32_t covered = 1u << 31, one_more = 1u << 24, most_counted = 127 * one_more, number_bits = one_more - 1;
    static constexpr std::uint32_t tried_every = 8 * one_more;  // layers: to find out whether many of them cover costs as much as they do

public:
    explicit Under_Layers(const Pixel_Rect& bounds);

    // Whether none of these pixels can show what is drawn from now on. All lie in the bounds.
    bool Hides(const Pixel_Rect& pixels) const;

    // A column of pixels on which one colour is laid, from the top down.
    class Column {
    public:
        Column(Under_Layers& all, int x, std::uint32_t argb);
        Column(const Column&) = delete;
        Column& operator=(const Column&) = delete;
        ~Column() {
            if (last_covered_ >= 0) all_.Note_Covered(column_, last_covered_);
        }
        void operator()(int y, std::uint32_t opacity) {
            if (opacity == 0 || (y >= hidden_.first && y < hidden_.end)) return;  // asked first: the stacks are far away in memory
            std::uint32_t& stack = stacks_[y];
            if ((stack & covered) != 0) return;
            all_.layers_.push_back({colour_ | opacity << 24, stack});
            const std::uint32_t count = std::min((stack & most_counted) + one_more, most_counted);
            stack = static_cast<std::uint32_t>(all_.layers_.size()) | count;
            if (opacity < 255 && (count % tried_every != 0 || !all_.Covers(stack))) return;
            stack |= covered;
            last_covered_ = y;
        }

    private:
        Under_Layers& all_;
        std::size_t column_;
        std::uint32_t* stacks_;
        std::uint32_t colour_;
        Rows hidden_;
        int last_covered_ = -1;
    };

    // False, and nothing is done, where there were more layers than there is memory for: draw the other way.
    bool Put_On(const Pixel_Buffer& target) const;

private:
    void Note_Covered(std::size_t column, int y);
    void Settle();
    std::uint32_t Blended(std::uint32_t ground, std::uint32_t stack) const;
    // Where black ground and white ground look the same, any ground does, for each layer keeps the order of lighter and darker.
    bool Covers(std::uint32_t stack) const { return Blended(opaque, stack) == Blended(~0u, stack); }
    std::uint32_t* Stacks(std::size_t column) { return stacks_.data() + column * static_cast<std::size_t>(height_); }
    const std::uint32_t* Stacks(std::size_t column) const { return stacks_.data() + column * static_cast<std::size_t>(height_); }

    Pixel_Rect bounds_;
    int height_;
    std::vector<std::uint32_t> stacks_;  // of each pixel, column by column
    std::vector<Layer> layers_;
    std::vector<Rows> covered_rows_;  // of each column a stretch that is covered, the longest that was noticed
    bool too_many_ = false;
};

}  // namespace vntl
