#include "base/perceptual.hpp"

#include <algorithm>
#include <cmath>

namespace vntl {

namespace {

double To_Linear(unsigned part) {
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

unsigned To_Display(double linear) {
    const double value = std::clamp(linear, 0.0, 1.0);
    const double coded = value <= 0.0031308 ? 12.92 * value : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
    return static_cast<unsigned>(std::lround(255 * coded));
}

constexpr double tolerance = 1e-6;

bool Is_Shown(const Light& light) {
    for (const double part : {light.red, light.green, light.blue})
        if (!(part >= -tolerance && part <= 1 + tolerance)) return false;
    return true;
}

double Cube(double value) { return value * value * value; }

}  // namespace

Light Light_Of(Colour colour) { return {To_Linear(Red(colour)), To_Linear(Green(colour)), To_Linear(Blue(colour))}; }

Colour Colour_Of(const Light& light) { return WRGB(To_Display(light.red), To_Display(light.green), To_Display(light.blue)); }

double Luminance(const Light& light) { return 0.2126 * light.red + 0.7152 * light.green + 0.0722 * light.blue; }

// By way of the responses of three kinds of cones, and their cube roots.
Perceived_Colour Perceived(Colour colour) {
    const Light c = Light_Of(colour);
    const double l = std::cbrt(0.4122214708 * c.red + 0.5363325363 * c.green + 0.0514459929 * c.blue);
    const double m = std::cbrt(0.2119034982 * c.red + 0.6806995451 * c.green + 0.1073969566 * c.blue);
    const double s = std::cbrt(0.0883024619 * c.red + 0.2817188376 * c.green + 0.6299787005 * c.blue);
    const double a = 1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s;
    const double b = 0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s;
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s, std::hypot(a, b), std::atan2(b, a)};
}

Light Light_Of(const Perceived_Colour& colour) {
    const double a = colour.chroma * std::cos(colour.hue), b = colour.chroma * std::sin(colour.hue);
    const double l = Cube(colour.lightness + 0.3963377774 * a + 0.2158037573 * b);
    const double m = Cube(colour.lightness - 0.1055613458 * a - 0.0638541728 * b);
    const double s = Cube(colour.lightness - 0.0894841775 * a - 1.2914855480 * b);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s, -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

Perceived_Colour Within_Display(Perceived_Colour colour) {
    if (Is_Shown(Light_Of(colour))) return colour;
    double shown = 0, beyond = colour.chroma;
    constexpr int halvings = 24;
    for (int i = 0; i < halvings; ++i) {
        colour.chroma = 0.5 * (shown + beyond);
        (Is_Shown(Light_Of(colour)) ? shown : beyond) = colour.chroma;
    }
    colour.chroma = shown;
    return colour;
}

}  // namespace vntl
