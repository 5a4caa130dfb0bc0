// Pictures of few colours.
#pragma once

#include <cstdint>
#include <vector>

#include "drawing/pixels.hpp"

namespace vntl {

// The colour of a pixel is `palette[indices[y * width + x]]`; the top row is the first.
struct Indexed_Image {
    int width = 0, height = 0;
    std::vector<Colour> palette;
    std::vector<std::uint8_t> indices;
};

// At most `most_colours`, 2 to 256. A picture that has no more keeps them all. Of another one half of the palette are black, white and the
// colours that it has most of, and stay exact, as those of ground, axes and curves should; the other half stand each for a box of colours
// that are like each other (median cut, Heckbert 1982).
Indexed_Image With_Palette(const Pixel_Buffer& picture, int most_colours);

// Black, which is 0, and white. Greys and colours are a mixture of dots (error diffusion, Floyd and Steinberg 1976); what is black or white
// stays so.
Indexed_Image In_Black_And_White(const Pixel_Buffer& picture);

}  // namespace vntl
