// The four fonts of a picture and what stands for them on a device.
#pragma once

#include <string>
#include <string_view>

#include "base/colour.hpp"

namespace vntl {

inline constexpr int font_courier = 101, font_helvetica = 102, font_times = 103, font_symbol = 104;
inline constexpr int style_bold = 1, style_italic = 2, style_underline = 4, style_opaque = 8;

// Heights of letters in em, as the shipped families have them: of a digit or a capital, and of what hangs below the base line.
inline constexpr double cap_height = 0.68, descent = 0.22;

struct Font_Family {
    int font;
    const char* family;
    const char* fallback;
    bool fixed_pitch;
};
const Font_Family& Family_Of(int font);  // an unknown number is Courier

// What is written for a text in that font: in Symbol a Latin letter stands for the Greek one of its sound (a alpha, b beta, ...).
std::string Written_Text(std::string_view text, int font);

// Colour of the box behind an opaque text: white, but dark behind letters that are nearly white themselves.
Colour Box_Behind(Colour letters);

}  // namespace vntl
