// Fonts, sizes and room of the texts of a plot, from their preferences.
#pragma once

#include <string>
#include <string_view>

#include "drawing/graphics.hpp"
#include "session/plot_state.hpp"
#include "session/preferences.hpp"

namespace vntl {

int Font_Number(int font);  // toolkit font of a `*_font` code: 1 Courier, 2 Helvetica, 3 Times, 4 Symbol
int Style_Bits(int style);  // toolkit style of a `*_style` code: 1 normal, 2 bold, ... 9 bold and underlined

// A size preference is in thousandths of the page's width, and twice as many of its height.
inline float Char_Width(int size) { return static_cast<float>(size) / 1000.0f; }
inline float Char_Height(int size) { return 2.0f * static_cast<float>(size) / 1000.0f; }

// By how much a cell of this size must grow for letters of nine pixels, the smallest that are read with ease; 1 when they are that large.
float Legible_Scale(const Graphics& g, float char_width, float char_height);

// Font and size; and with the colour of the preference.
void Select_Font(Graphics& g, const Text_Prefs& text);
void Select_Text(Graphics& g, const Text_Prefs& text);

// The text, or as much of its two ends, around an ellipsis, as `room` user units hold in the present font.
std::string Fit_Text(const Graphics& g, std::string_view text, float room);

// Room for a text along the x axis, page units: placed 'L' at the left end of the zone, 'C' about its middle or 'R' at its right end.
float Room_Along_X(const Plot_Zone& zone, char position);

}  // namespace vntl
