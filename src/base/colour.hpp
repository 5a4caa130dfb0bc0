// A colour is one integer: red + 256 green + 65536 blue, each 0 to 255.
#pragma once

#include <cstdint>

namespace vntl {

using Colour = std::uint32_t;

constexpr Colour WRGB(unsigned red, unsigned green, unsigned blue) { return (red & 255u) | (green & 255u) << 8 | (blue & 255u) << 16; }
constexpr unsigned Red(Colour c) { return c & 255u; }
constexpr unsigned Green(Colour c) { return c >> 8 & 255u; }
constexpr unsigned Blue(Colour c) { return c >> 16 & 255u; }

}  // namespace vntl
