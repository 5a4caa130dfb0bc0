// Titles of pictures: where they stand, and how they are made small enough for their room.
#pragma once

#include <string_view>

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

}  // namespace vntl
