#include "pictures/dxf_colours.hpp"

#include <array>

namespace vntl {
namespace {

constexpr int first_hue = 10, numbers_a_hue = 10, first_grey = 250, colours = 256;

constexpr std::array<Colour, first_hue> named = {WRGB(0, 0, 0),       WRGB(255, 0, 0),    WRGB(255, 255, 0), WRGB(0, 255, 0),
                                                 WRGB(0, 255, 255),   WRGB(0, 0, 255),    WRGB(255, 0, 255), WRGB(255, 255, 255),
                                                 WRGB(128, 128, 128), WRGB(192, 192, 192)};
constexpr std::array<unsigned, 6> greys = {51, 80, 105, 130, 190, 255};
constexpr std::array<int, 5> brightnesses = {255, 165, 127, 76, 38};

// One channel of a hue, in quarters of a sixth of the circle (24 of them): 4 where it is full, 0 where it is not there.
constexpr int Quarters(int hue, int channel) {
    const int from_full = (hue - 8 * channel + 36) % 24 - 12;  // -12 to 11, 0 in the middle of the third where the channel is full
    const int away = from_full < 0 ? -from_full : from_full;
    return away <= 4 ? 4 : away >= 8 ? 0 : 8 - away;
}

constexpr Colour Made(int index) {
    if (index < first_hue) return named[static_cast<std::size_t>(index)];
    if (index >= first_grey) {
        const unsigned grey = greys[static_cast<std::size_t>(index - first_grey)];
        return WRGB(grey, grey, grey);
    }
    const int hue = (index - first_hue) / numbers_a_hue, number = (index - first_hue) % numbers_a_hue;
    const int most = brightnesses[static_cast<std::size_t>(number / 2)];
    const auto channel = [&](int c) {
        const int full = most * Quarters(hue, c);  // quarters
        return static_cast<unsigned>(number % 2 == 0 ? full / 4 : (4 * most + full) / 8);
    };
    return WRGB(channel(0), channel(1), channel(2));
}

constexpr std::array<Colour, colours> Palette() {
    std::array<Colour, colours> palette{};
    for (int i = 0; i < colours; ++i) palette[static_cast<std::size_t>(i)] = Made(i);
    return palette;
}
constexpr std::array<Colour, colours> palette = Palette();

constexpr bool Is_Grey(Colour c) { return Red(c) == Green(c) && Green(c) == Blue(c); }

int Distance(Colour a, Colour b) {
    const auto squared = [](unsigned p, unsigned q) {
        const int apart = static_cast<int>(p) - static_cast<int>(q);
        return apart * apart;
    };
    return squared(Red(a), Red(b)) + squared(Green(a), Green(b)) + squared(Blue(a), Blue(b));
}

}  // namespace

Colour Colour_Of_Index(int index) { return palette[static_cast<std::size_t>(index)]; }

int Nearest_Index(Colour colour) {
    int nearest = 0, least = 0;
    for (int i = 1; i < colours; ++i) {
        const Colour offered = Colour_Of_Index(i);
        if (i == dxf_foreground || (Is_Grey(colour) && !Is_Grey(offered))) continue;
        const int distance = Distance(colour, offered);
        if (nearest == 0 || distance < least) nearest = i, least = distance;
    }
    return nearest;
}

}  // namespace vntl
