// Measures that all devices share: line unit, size of letters, dashes, shapes of markers, fonts.
#include "drawing/device.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/page.hpp"
#include "drawing/font_table.hpp"

namespace vntl {
namespace {

constexpr double letter_aspect = 0.6;  // advance of a fixed-pitch letter in em

constexpr std::array<double, 2> dotted = {1.5, 2.5};
constexpr std::array<double, 2> dashed = {6, 4};
constexpr std::array<double, 4> dot_dash = {7, 3, 1.5, 3};
constexpr std::array<double, 6> dot_dot_dash = {7, 3, 1.5, 2.5, 1.5, 3};

constexpr std::array<Font_Family, 4> families = {{
    {font_courier, "Liberation Mono", "DejaVu Sans Mono", true},
    {font_helvetica, "Liberation Sans", "DejaVu Sans", false},
    {font_times, "Liberation Serif", "DejaVu Serif", false},
    {font_symbol, "Liberation Sans", "DejaVu Sans", false},
}};

// Greek letters in the order of the Latin letters that stand for them; those without a counterpart have their variant forms.
constexpr std::array<const char*, 26> greek_capitals = {"Α", "Β", "Χ", "Δ", "Ε", "Φ", "Γ", "Η", "Ι", "ϑ", "Κ", "Λ", "Μ",
                                                        "Ν", "Ο", "Π", "Θ", "Ρ", "Σ", "Τ", "Υ", "ς", "Ω", "Ξ", "Ψ", "Ζ"};
constexpr std::array<const char*, 26> greek_small = {"α", "β", "χ", "δ", "ε", "φ", "γ", "η", "ι", "ϕ", "κ", "λ", "μ",
                                                     "ν", "ο", "π", "θ", "ρ", "σ", "τ", "υ", "ϖ", "ω", "ξ", "ψ", "ζ"};

constexpr int circle_corners = 24;

std::vector<Point> Circle() {
    std::vector<Point> points;
    for (int i = 0; i < circle_corners; ++i) {
        const double a = 2 * std::numbers::pi * i / circle_corners;
        points.push_back({0.5 * std::cos(a), 0.5 * std::sin(a)});
    }
    return points;
}

}  // namespace

double Line_Unit(double width, double height) { return std::max(1.0, std::min(width / page_width, height / page_height)); }

Finest_Cells Device::Finest(const Rect& rect) const {
    if (!(std::isfinite(rect.x2 - rect.x1) && std::isfinite(rect.y2 - rect.y1))) return {};
    // Counted from the upper left corner, as pixels are, so that an edge in the middle of one falls to the same side.
    const auto whole = [](double value, double most) { return std::round(std::clamp(value, 0.0, most)); };
    const double left = whole(rect.x1, Width()), right = whole(rect.x2, Width());
    const double top = whole(Height() - rect.y2, Height()), bottom = whole(Height() - rect.y1, Height());
    if (!(left < right && top < bottom)) return {};
    return {{left, Height() - bottom, right, Height() - top}, static_cast<int>(right - left), static_cast<int>(bottom - top)};
}

std::vector<std::vector<Point>> Areas_Under(const Series& series, double foot, double column) {
    std::vector<std::vector<Point>> areas;
    std::vector<Point> outline;
    Point highest{}, last{};
    double in_hand = 0;  // column of `highest` and `last`
    const auto put = [&outline](Point p) {
        if (outline.empty() || outline.back().x != p.x || outline.back().y != p.y) outline.push_back(p);
    };
    const auto end_column = [&] {
        if (outline.empty()) return;
        put(highest);
        put(last);
    };
    const auto end_area = [&] {
        end_column();
        if (outline.size() > 1) {
            outline.push_back({outline.back().x, foot});
            outline.push_back({outline.front().x, foot});
            areas.push_back(std::move(outline));
        }
        outline.clear();
    };
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        Point p = series.At(i);
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
            end_area();
            continue;
        }
        p.y = std::max(p.y, foot);
        const double own = std::floor(p.x / column);
        if (outline.empty() || own != in_hand) {
            end_column();
            put(p);
            highest = p;
            in_hand = own;
        } else if (p.y > highest.y) {
            highest = p;
        }
        last = p;
    }
    end_area();
    return areas;
}

void Device::Under_Curve(const Series& series, double foot, Colour colour) {
    for (const std::vector<Point>& area : Areas_Under(series, foot, 0.5 * Pixel())) Fill(area, colour);
}

double Em_Of_Cell(double width, double height) { return std::max(0.0, std::min(height, width / letter_aspect)); }

std::span<const double> Dash_Pattern(Line_Style style) {
    switch (style) {
        case Line_Style::dotted:
            return dotted;
        case Line_Style::dashed:
            return dashed;
        case Line_Style::dot_dash:
            return dot_dash;
        case Line_Style::dot_dot_dash:
            return dot_dot_dash;
        default:
            return {};
    }
}

Glyph_Outline Marker_Outline(int glyph) {
    switch (glyph) {
        case 221:
            return {Circle(), false};
        case 222:
            return {{{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}}, false};
        case 223:
            return {{{0, -0.5}, {0.5, 0}, {0, 0.5}, {-0.5, 0}}, false};
        case 224:
            return {{{-0.5, -0.5}, {0.5, -0.5}, {0, 0.5}}, false};
        case 225:
            return {{{-0.5, 0.5}, {0, -0.5}, {0.5, 0.5}}, false};
        case 226:
            return {{{-0.5, 0}, {0.5, 0}, {0, -0.5}, {0, 0.5}}, true};
        case 227:
            return {{{-0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}, {0.5, -0.5}}, true};
        default:
            return {};
    }
}

const Font_Family& Family_Of(int font) {
    const auto found = std::find_if(families.begin(), families.end(), [&](const Font_Family& f) { return f.font == font; });
    return found == families.end() ? families.front() : *found;
}

std::string Written_Text(std::string_view text, int font) {
    if (font != font_symbol) return std::string(text);
    std::string written;
    for (const char c : text) {
        if (c >= 'A' && c <= 'Z')
            written += greek_capitals[static_cast<std::size_t>(c - 'A')];
        else if (c >= 'a' && c <= 'z')
            written += greek_small[static_cast<std::size_t>(c - 'a')];
        else
            written += c;
    }
    return written;
}

Colour Box_Behind(Colour letters) {
    const double brightness = 0.299 * Red(letters) + 0.587 * Green(letters) + 0.114 * Blue(letters);
    return brightness > 200 ? WRGB(40, 40, 40) : WRGB(255, 255, 255);
}

}  // namespace vntl
