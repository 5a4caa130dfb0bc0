// Primitives in user units, broken down to what a device draws.
#include "toolkit/graphics.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/text.hpp"
#include "toolkit/font_table.hpp"

namespace vntl {

namespace {

constexpr double page_units_x = 1200, page_units_y = 800;
constexpr int arc_corners = 72;

struct Named_Colour {
    std::string_view name;
    Colour colour;
};
constexpr std::array<Named_Colour, 8> named_colours = {{{"black", WRGB(0, 0, 0)},
                                                        {"white", WRGB(255, 255, 255)},
                                                        {"red", WRGB(255, 0, 0)},
                                                        {"green", WRGB(0, 255, 0)},
                                                        {"blue", WRGB(0, 0, 255)},
                                                        {"yellow", WRGB(255, 255, 0)},
                                                        {"cyan", WRGB(0, 255, 255)},
                                                        {"magenta", WRGB(255, 0, 255)}}};

}  // namespace

Graphics::Graphics(Device& device) : device_(device) {
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, static_cast<float>(page_units_x), static_cast<float>(page_units_y));
}

void Graphics::IGrArea(float x1, float y1, float x2, float y2) {
    area_ = {x1 * device_.Width(), y1 * device_.Height(), x2 * device_.Width(), y2 * device_.Height()};
    Clip_To_Area();
}

void Graphics::Clip_To_Area() { device_.Set_Clip(area_); }

void Graphics::IGrUnits(float x1, float y1, float x2, float y2) { ux1_ = x1, uy1_ = y1, ux2_ = x2, uy2_ = y2; }

void Graphics::IGrPaletteBack(Colour background) { background_ = background; }

void Graphics::IGrClear() {
    const bool whole = area_.x1 <= 0 && area_.y1 <= 0 && area_.x2 >= device_.Width() && area_.y2 >= device_.Height();
    if (whole) {
        device_.Clear(background_);
        Clip_To_Area();
        return;
    }
    const std::array<Point, 4> corners = {{{area_.x1, area_.y1}, {area_.x2, area_.y1}, {area_.x2, area_.y2}, {area_.x1, area_.y2}}};
    device_.Fill(corners, background_);
}

void Graphics::IGrColourN(Colour colour) { colour_ = colour; }

void Graphics::IGrColour(std::string_view name) {
    for (const Named_Colour& row : named_colours)
        if (Equal_No_Case(row.name, name)) colour_ = row.colour;
}

void Graphics::IGrFillPattern(int style) { fill_style_ = style; }
void Graphics::IGrLineWidth(float width) { line_width_ = width; }
void Graphics::IGrLineType(int style) { line_type_ = style; }
void Graphics::IGrCharJustify(int mode) { justify_ = mode; }
void Graphics::IGrCharRotate(float degrees) { angle_ = degrees; }

void Graphics::WGrTextFont(int font, int style, float width, float height) {
    if (font != 0) font_ = font, font_style_ = style;
    char_width_ = width;
    char_height_ = height;
}

Point Graphics::To_Device(float x, float y) const {
    return {area_.x1 + (x - ux1_) / (ux2_ - ux1_) * (area_.x2 - area_.x1), area_.y1 + (y - uy1_) / (uy2_ - uy1_) * (area_.y2 - area_.y1)};
}

Pen Graphics::Current_Pen() const { return {colour_, line_width_, static_cast<Line_Style>(line_type_)}; }

Text_Style Graphics::Current_Text() const {
    Text_Style style;
    style.font = font_;
    style.style = font_style_;
    style.width = char_width_ * (area_.x2 - area_.x1);
    style.height = char_height_ * (area_.y2 - area_.y1);
    style.angle = angle_;
    style.justify = static_cast<Justify>(justify_);
    style.colour = colour_;
    return style;
}

void Graphics::IGrMoveTo(float x, float y) { position_ = {x, y}; }

void Graphics::IGrLineTo(float x, float y) {
    const std::array<Point, 2> ends = {{To_Device(static_cast<float>(position_.x), static_cast<float>(position_.y)), To_Device(x, y)}};
    device_.Polyline(ends, Current_Pen());
    position_ = {x, y};
}

void Graphics::IGrPolyLine(std::span<const float> x, std::span<const float> y) {
    std::vector<Point> points;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) points.push_back(To_Device(x[i], y[i]));
    if (points.size() > 1) device_.Polyline(points, Current_Pen());
}

void Graphics::IGrRectangle(float x1, float y1, float x2, float y2) {
    const Point a = To_Device(x1, y1), b = To_Device(x2, y2);
    const std::array<Point, 5> corners = {{a, {b.x, a.y}, b, {a.x, b.y}, a}};
    if (fill_style_ == fill_solid)
        device_.Fill(std::span(corners).first(4), colour_);
    else
        device_.Polyline(corners, Current_Pen());
}

void Graphics::IGrCircle(float x, float y, float r) { IGrEllipse(x, y, r, 1); }

void Graphics::IGrEllipse(float x, float y, float r, float ratio) {
    const double rx = std::fabs(r * (area_.x2 - area_.x1) / (ux2_ - ux1_));
    const double page_aspect = (device_.Height() / page_units_y) / (device_.Width() / page_units_x);
    device_.Ellipse(To_Device(x, y), rx, rx * ratio * page_aspect, fill_style_ == fill_solid, Current_Pen());
}

void Graphics::IGrArc(float x, float y, float r, float start, float sweep) {
    std::vector<Point> points;
    for (int i = 0; i <= arc_corners; ++i) {
        const double angle = (start + sweep * static_cast<float>(i) / arc_corners) * std::numbers::pi / 180;
        points.push_back(To_Device(x + r * static_cast<float>(std::cos(angle)), y + r * static_cast<float>(std::sin(angle))));
    }
    device_.Polyline(points, Current_Pen());
}

void Graphics::IGrCharOut(float x, float y, std::string_view text) {
    if (!text.empty()) device_.Text(To_Device(x, y), text, Current_Text());
}

void Graphics::IGrMarker(float x, float y, int glyph) {
    const Text_Style size = Current_Text();
    const Point at = To_Device(x, y);
    const float one = 1.0f;
    device_.Markers({std::span(&one, 1), std::span(&one, 1), at.x, 0, at.y, 0},
                    {glyph, size.width, size.height, colour_, fill_style_ == fill_solid});
}

float Graphics::Text_Width(std::string_view text) const {
    return static_cast<float>(device_.Text_Width(text, Current_Text()) / (area_.x2 - area_.x1) * std::fabs(ux2_ - ux1_));
}

}  // namespace vntl
