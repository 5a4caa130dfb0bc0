// Pixels of 32 bits and how a colour covers one.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/colour.hpp"

namespace vntl {

// Blue in the lowest byte, the top row first.
struct Pixel_Buffer {
    std::uint32_t* pixels = nullptr;
    int width = 0, height = 0;
    std::ptrdiff_t stride = 0;  // pixels from a row to the next
};

struct Pixel_Rect {
    int x1, y1, x2, y2;  // x1 <= x < x2, rows from the top
};

inline constexpr std::uint32_t opaque = 0xff000000u;

inline Colour Colour_Of_Argb(std::uint32_t argb) { return WRGB(argb >> 16 & 255u, argb >> 8 & 255u, argb & 255u); }
inline std::uint32_t Argb(Colour c) { return opaque | Red(c) << 16 | Green(c) << 8 | Blue(c); }

// The colour over a pixel with an opacity of 0 to 255; the alpha channel follows, so that it works on clear ground too. No opacity is
// taken apart: along the edge of a curve a jump costs more than the sum. No channel of the result falls where one of the pixel rises.
inline void Blend(std::uint32_t& pixel, std::uint32_t colour, std::uint32_t opacity) {
    constexpr std::uint64_t a_channel_each = 0x0001000100010001u, channels = 255 * a_channel_each;  // 16 bits for each
    const auto spread = [](std::uint32_t argb) { return (argb | static_cast<std::uint64_t>(argb) << 24) & channels; };
    const std::uint64_t sum = spread(colour) * opacity + spread(pixel) * (255 - opacity) + 127 * a_channel_each;
    const std::uint64_t mixed = (sum + (sum >> 8 & channels) + a_channel_each) >> 8 & channels;  // through 255, rounded
    pixel = static_cast<std::uint32_t>(mixed | mixed >> 24);
}

}  // namespace vntl
