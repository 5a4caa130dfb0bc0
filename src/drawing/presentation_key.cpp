// Keys: symbols of data sets with their names.
#include <algorithm>
#include <array>
#include <vector>

#include "base/page.hpp"
#include "drawing/font_table.hpp"
#include "drawing/presentation.hpp"
#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr int bars = 1, pie = 3;                      // types of plots
constexpr double key_symbol = 28, key_gap = 8;        // page units
constexpr double widest_symbol = 0.22;                // share of the box of a key
constexpr double swatch = 1.3;                        // of bars and slices, em
constexpr double loose_line = 1.5, tight_line = 1.2;  // from one line to the next, em
constexpr double least_pixels = 9;                    // of letters that are read with ease
constexpr std::size_t lines_shown = 40;               // however small that makes them
constexpr std::string_view more_before = "and ", more_behind = " more";

Text_Style Scaled(Text_Style style, double by) {
    style.width *= by;
    style.height *= by;
    return style;
}

}  // namespace

// Bars and slices have a patch of their colour, other sets their line with a marker on it.
void Presentation::Key_Symbol(Point at, double width, double em, int set) {
    const Set_Style style =
        set >= 1 && static_cast<std::size_t>(set) <= styles_.size() ? styles_[static_cast<std::size_t>(set - 1)] : Set_Style{};
    if (plot_type_ == bars || plot_type_ == pie) {
        const double half = 0.5 * cap_height * em;
        const std::array<Point, 5> corners = {
            {{at.x, at.y - half}, {at.x + width, at.y - half}, {at.x + width, at.y + half}, {at.x, at.y + half}, {at.x, at.y - half}}};
        Target().Fill(std::span(corners).first(4), style.line_colour);
        if (plot_type_ == pie) Target().Polyline(corners, {graphics_->Current_Colour(), 1, Line_Style::solid});
        return;
    }
    if (style.line_style >= 0)
        Target().Polyline(std::array<Point, 2>{{at, {at.x + width, at.y}}},
                          {style.line_colour, graphics_->Line_Width(), static_cast<Line_Style>(style.line_style)});
    if (style.marker == 0) return;
    const float one = 1.0f;
    const double side = 0.55 * em;
    Target().Markers({std::span(&one, 1), std::span(&one, 1), at.x + 0.5 * width, 0, at.y, 0},
                     {style.marker, side, side, style.marker_colour, style.fill == fill_solid});
}

void Presentation::IPgKey(float x, float y, int set, std::string_view text) {
    const Point at = graphics_->To_Device(x, y);
    const double unit_x = Target().Width() / page_width;
    Text_Style words = graphics_->Current_Text();
    words.justify = Justify::left;
    const double em = Em_Of_Cell(words.width, words.height);
    Key_Symbol({at.x, at.y + 0.5 * cap_height * em}, key_symbol * unit_x, em, set);
    Target().Text({at.x + (key_symbol + key_gap) * unit_x, at.y}, text, words);
}

void Presentation::IPgKeys(float x1, float y1, float x2, float y2, std::span<const Set_Text> entries) {
    if (entries.empty()) return;
    const double across = Area().x2 - Area().x1, up = Area().y2 - Area().y1;
    const Rect room{Area().x1 + x1 * across, Area().y1 + y1 * up, Area().x1 + x2 * across, Area().y1 + y2 * up};
    const double width = room.x2 - room.x1, height = room.y2 - room.y1, unit_x = Target().Width() / page_width;
    Text_Style style = graphics_->Current_Text();
    style.angle = 0;
    const double wanted = Em_Of_Cell(style.width, style.height);
    if (!(width > 0 && height > 0 && wanted > 0)) return;
    const double least = std::min(wanted, least_pixels * Target().Pixel());

    const std::size_t lines = std::min(entries.size(), std::max(lines_shown, static_cast<std::size_t>(height / (tight_line * least))));
    const std::size_t shown = lines < entries.size() ? lines - 1 : lines;
    style = Scaled(style, std::min(1.0, height / static_cast<double>(lines) / tight_line / wanted));

    double em = Em_Of_Cell(style.width, style.height);
    const bool patches = plot_type_ == bars || plot_type_ == pie;
    const auto symbol = [&] { return std::min(patches ? swatch * em : key_symbol * unit_x, widest_symbol * width); };
    const auto length = [&](std::string_view text) { return Target().Text_Width(text, style); };
    const auto for_texts = [&] { return width - symbol() - key_gap * unit_x; };
    double longest = 0;
    for (const Set_Text& entry : entries.first(shown))
        longest = std::max(longest, length(entry.name + (entry.figure.empty() ? "" : "  ") + entry.figure));
    if (longest > for_texts() && em > least) {
        style = Scaled(style, std::max(for_texts() / longest, least / em));
        em = Em_Of_Cell(style.width, style.height);
    }

    const double line = std::min(loose_line * em, height / static_cast<double>(lines));
    const double text_left = room.x1 + symbol() + key_gap * unit_x;
    double y = room.y2 - cap_height * em;
    for (const Set_Text& entry : entries.first(shown)) {
        Key_Symbol({room.x1, y + 0.5 * cap_height * em}, symbol(), em, entry.set);
        const double figure = entry.figure.empty() ? 0 : length(entry.figure + ' ');
        style.justify = Justify::left;
        Target().Text({text_left, y}, Shortened(entry.name, for_texts() - figure, length), style);
        style.justify = Justify::right;
        Target().Text({room.x2, y}, entry.figure, style);
        y -= line;
    }
    style.justify = Justify::left;
    if (shown < entries.size())
        Target().Text({text_left, y}, std::string(more_before) + std::to_string(entries.size() - shown) + std::string(more_behind), style);
}

}  // namespace vntl
