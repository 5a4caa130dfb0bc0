#include "base/colour_map.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/perceptual.hpp"

namespace vntl {

namespace {

// Lightness is that of CIELAB, 0 to 100; hues are degrees, and run the way that the numbers tell.
struct Way {
    std::string_view name;
    double first_lightness, last_lightness;
    double first_hue, last_hue;
    double chroma;  // as much of it as a display shows
};

// "whole" and "glow" go from violet over blue and green to yellow, "ember" from blue over purple and red to ochre: on light ground the
// greens of the one would look like one another.
constexpr Way ways[] = {
    {"whole", 8, 94, 300, 105, 0.16},
    {"ember", 18, 61, 262, 430, 0.18},
    {"glow", 48, 93, 300, 105, 0.17},
};
constexpr int steps = 256;
using Table = std::array<Colour, steps>;

double Luminance_Of_Lightness(double lightness) {
    const double f = (lightness + 16) / 116;
    return lightness > 8 ? f * f * f : lightness * 27 / 24389;
}

// The colour of a luminance: lightness in the perceptual space rises with it.
Colour Of_Luminance(double luminance, double hue, double chroma) {
    double low = 0, high = 1;
    constexpr int halvings = 24;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (low + high);
        const bool below = Luminance(Light_Of(Within_Display({middle, chroma, hue}))) < luminance;
        (below ? low : high) = middle;
    }
    return Colour_Of(Light_Of(Within_Display({low, chroma, hue})));
}

Table Table_Of(const Way& way) {
    Table table;
    for (int i = 0; i < steps; ++i) {
        const double place = static_cast<double>(i) / (steps - 1);
        const double hue = std::lerp(way.first_hue, way.last_hue, place) * std::numbers::pi / 180;
        const double lightness = std::lerp(way.first_lightness, way.last_lightness, place);
        table[static_cast<std::size_t>(i)] = Of_Luminance(Luminance_Of_Lightness(lightness), hue, way.chroma);
    }
    return table;
}

}  // namespace

const std::vector<std::string_view>& Colour_Maps() {
    static const std::vector<std::string_view> names = [] {
        std::vector<std::string_view> all;
        for (const Way& way : ways) all.push_back(way.name);
        return all;
    }();
    return names;
}

bool Is_Colour_Map(std::string_view name) { return std::ranges::find(Colour_Maps(), name) != Colour_Maps().end(); }

Colour Map_Colour(std::string_view name, double place) {
    static const std::vector<Table> tables = [] {
        std::vector<Table> all;
        for (const Way& way : ways) all.push_back(Table_Of(way));
        return all;
    }();
    const auto found = std::ranges::find(Colour_Maps(), name) - Colour_Maps().begin();
    const Table& table = tables[found < std::ssize(tables) ? static_cast<std::size_t>(found) : 0];
    const double within = place >= 0 ? std::min(place, 1.0) : 0;
    return table[static_cast<std::size_t>(std::lround(within * (steps - 1)))];
}

}  // namespace vntl
