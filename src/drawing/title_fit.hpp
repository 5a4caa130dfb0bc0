// Titles of pictures: where they stand, and how they and other texts are made small or short enough for their room.
#pragma once

#include <string>
#include <string_view>

#include "base/text.hpp"
#include "drawing/device.hpp"

namespace vntl {

inline constexpr double title_share = 0.38;   // base line of the title, share of the margin above the plot box
inline constexpr double widest_title = 0.96;  // share of the area's width, or height

// The style made small enough for the text to be no longer than `room`.
inline Text_Style Fitted(const Device& device, std::string_view text, Text_Style style, double room) {
    const double width = device.Text_Width(text, style);
    if (width <= room || width <= 0) return style;
    style.width *= room / width;
    style.height *= room / width;
    return style;
}

// The text, or as much of its two ends, around an ellipsis, as `room` holds; `width` is that of a text.
template <class Width>
std::string Shortened(std::string_view text, double room, const Width& width) {
    if (width(text) <= room) return std::string(text);
    std::size_t fits = 0, too_long = text.size();
    while (too_long - fits > 1) {
        const std::size_t middle = fits + (too_long - fits) / 2;
        (width(Elide_Middle(text, middle)) <= room ? fits : too_long) = middle;
    }
    return Elide_Middle(text, fits);
}

}  // namespace vntl
