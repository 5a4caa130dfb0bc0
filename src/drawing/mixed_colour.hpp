// A colour on the way from one to another.
#pragma once

#include "base/colour.hpp"

namespace vntl {

// Share 0 is the first one, 1 the other, and none lies beyond.
inline Colour Mixed(Colour from, Colour to, double share) {
    const auto channel = [share](unsigned a, unsigned b) {
        return static_cast<unsigned>(a + share * (static_cast<double>(b) - static_cast<double>(a)) + 0.5);
    };
    return WRGB(channel(Red(from), Red(to)), channel(Green(from), Green(to)), channel(Blue(from), Blue(to)));
}

}  // namespace vntl
