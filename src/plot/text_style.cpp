#include "plot/text_style.hpp"

#include <algorithm>
#include <array>

#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr std::array<int, 4> font_numbers = {101, 102, 103, 104};
constexpr std::array<int, 9> style_bits = {0, 1, 2, 4, 8, 3, 7, 6, 5};
constexpr float page_margin = 8;  // page units kept free at the edge

template <std::size_t N>
int Entry(const std::array<int, N>& table, int code) {
    return code >= 1 && code <= static_cast<int>(N) ? table[static_cast<std::size_t>(code - 1)] : table[0];
}

}  // namespace

int Font_Number(int font) { return Entry(font_numbers, font); }
int Style_Bits(int style) { return Entry(style_bits, style); }

float Legible_Scale(const Graphics& g, float char_width, float char_height) {
    constexpr double least_pixels = 9;
    const Device& device = g.device();
    const double em = Em_Of_Cell(static_cast<double>(char_width) * device.Width(), static_cast<double>(char_height) * device.Height());
    const double least = least_pixels * device.Pixel();
    return em > 0 && em < least ? static_cast<float>(least / em) : 1;
}

void Select_Font(Graphics& g, const Text_Prefs& text) {
    g.WGrTextFont(Font_Number(text.font), Style_Bits(text.style), Char_Width(text.size), Char_Height(text.size));
}

void Select_Text(Graphics& g, const Text_Prefs& text) {
    g.IGrColourN(text.colour);
    Select_Font(g, text);
}

std::string Fit_Text(const Graphics& g, std::string_view text, float room) {
    return Shortened(text, room, [&g](std::string_view part) { return g.Text_Width(part); });
}

float Room_Along_X(const Plot_Zone& zone, char position) {
    const float left = zone.x1 * page_width, right = zone.x2 * page_width;
    if (position == 'L') return page_width - left - page_margin;
    if (position == 'R') return right - page_margin;
    const float middle = 0.5f * (left + right);
    return 2 * (std::min(middle, page_width - middle) - page_margin);
}

}  // namespace vntl
