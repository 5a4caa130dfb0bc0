#include "base/contrast.hpp"

#include <algorithm>

#include "base/perceptual.hpp"

namespace vntl {

namespace {

constexpr Colour black = WRGB(0, 0, 0), white = WRGB(255, 255, 255);

double Brightness(Colour colour) { return Luminance(Light_Of(colour)) + 0.05; }  // with the light that a screen reflects

Colour At_Lightness(Perceived_Colour colour, double lightness) {
    colour.lightness = lightness;
    return Colour_Of(Light_Of(Within_Display(colour)));
}

}  // namespace

double Contrast(Colour a, Colour b) {
    const auto [dark, bright] = std::minmax({Brightness(a), Brightness(b)});
    return bright / dark;
}

Colour Readable(Colour colour, Colour ground, double least) {
    if (Contrast(colour, ground) >= least) return colour;
    const auto reaches = [ground, least](Colour end) { return Contrast(end, ground) >= least; };
    if (!reaches(black) && !reaches(white)) return Contrast(black, ground) >= Contrast(white, ground) ? black : white;
    // On its own side of the ground where that goes far enough.
    const bool lighter = reaches(white) && (!reaches(black) || Brightness(colour) > Brightness(ground));
    const Perceived_Colour from = Perceived(colour);
    double near = from.lightness, enough = lighter ? 1 : 0;
    Colour found = lighter ? white : black;
    constexpr int halvings = 16;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (near + enough);
        const Colour tried = At_Lightness(from, middle);
        const bool good = reaches(tried) && (Brightness(tried) > Brightness(ground)) == lighter;
        (good ? enough : near) = middle;
        if (good) found = tried;
    }
    return found;
}

}  // namespace vntl
