// Primitives in user units, broken down to what a device draws.
#include "drawing/graphics.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/page.hpp"
#include "base/text.hpp"
#include "drawing/font_table.hpp"
#include "drawing/hatch.hpp"
#include "drawing/line_unit.hpp"

namespace vntl {

namespace {

constexpr int arc_corners = 72;
constexpr double hatch_angle_step = 15;  // degrees

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

bool Is_Hatched(int fill) { return fill >= fill_hatched && fill <= fill_crossed; }

}  // namespace

Graphics::Graphics(Device& device) : device_(&device) {
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, page_width, page_height);
}

Graphics Graphics::On(Device& device) const {
    Graphics other = *this;
    other.device_ = &device;
    other.Clip_To_Area();
    return other;
}

void Graphics::IGrArea(float x1, float y1, float x2, float y2) {
    area_ = {x1 * device_->Width(), y1 * device_->Height(), x2 * device_->Width(), y2 * device_->Height()};
    Clip_To_Area();
}

void Graphics::IGrViewPixels(float x1, float y1, float x2, float y2) {
    area_ = {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    Clip_To_Area();
}

void Graphics::Clip_To_Area() { device_->Set_Clip(area_); }

void Graphics::IGrUnits(float x1, float y1, float x2, float y2) { ux1_ = x1, uy1_ = y1, ux2_ = x2, uy2_ = y2; }

void Graphics::IGrPaletteBack(Colour background) { background_ = background; }

void Graphics::IGrClear() {
    const bool whole = area_.x1 <= 0 && area_.y1 <= 0 && area_.x2 >= device_->Width() && area_.y2 >= device_->Height();
    if (whole) {
        device_->Clear(background_);
        Clip_To_Area();
        return;
    }
    const std::array<Point, 4> corners = {{{area_.x1, area_.y1}, {area_.x2, area_.y1}, {area_.x2, area_.y2}, {area_.x1, area_.y2}}};
    device_->Fill(corners, background_);
}

void Graphics::IGrColourN(Colour colour) { colour_ = colour; }

void Graphics::IGrColour(std::string_view name) {
    for (const Named_Colour& row : named_colours)
        if (Equal_No_Case(row.name, name)) colour_ = row.colour;
}

void Graphics::IGrFillPattern(int style, int density, int angle) {
    fill_style_ = style;
    fill_density_ = density;
    fill_angle_ = angle;
}
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

Point Graphics::From_Device(Point at) const {
    return {ux1_ + (at.x - area_.x1) / (area_.x2 - area_.x1) * (ux2_ - ux1_),
            uy1_ + (at.y - area_.y1) / (area_.y2 - area_.y1) * (uy2_ - uy1_)};
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
    device_->Polyline(ends, Current_Pen());
    position_ = {x, y};
}

void Graphics::IGrPolyLine(std::span<const float> x, std::span<const float> y) {
    std::vector<Point> points;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) points.push_back(To_Device(x[i], y[i]));
    if (points.size() > 1) device_->Polyline(points, Current_Pen());
}

void Graphics::IGrRectangle(float x1, float y1, float x2, float y2) {
    const Point a = To_Device(x1, y1), b = To_Device(x2, y2);
    Closed_Shape(std::array<Point, 4>{{a, {b.x, a.y}, b, {a.x, b.y}}});
}

void Graphics::IGrPolygon(std::span<const float> x, std::span<const float> y) {
    std::vector<Point> corners;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i)
        if (std::isfinite(x[i]) && std::isfinite(y[i])) corners.push_back(To_Device(x[i], y[i]));
    if (corners.size() > 1) Closed_Shape(corners);
}

void Graphics::Closed_Shape(std::span<const Point> corners) {
    if (fill_style_ == fill_solid) return device_->Fill(corners, colour_);
    if (Is_Hatched(fill_style_)) return Hatch(corners);
    std::vector<Point> outline(corners.begin(), corners.end());
    outline.push_back(corners.front());
    device_->Polyline(outline, Current_Pen());
}

void Graphics::Hatch(std::span<const Point> corners) {
    const double unit = Line_Unit(*device_);
    const double distance = unit * hatch_distances[static_cast<std::size_t>(std::clamp(fill_density_, 1, 4) - 1)];
    const double angle = hatch_angle_step * fill_angle_;
    const Rect seen{std::max(area_.x1, 0.0), std::max(area_.y1, 0.0), std::min(area_.x2, device_->Width()),
                    std::min(area_.y2, device_->Height())};
    const Pen pen{colour_, line_width_, Line_Style::solid};
    for (const int turn : {fill_hatched, fill_hatched_across}) {
        if (fill_style_ != turn && fill_style_ != fill_crossed) continue;
        for (const auto& line : Hatch_Lines(corners, distance, turn == fill_hatched ? angle : angle + 90, seen))
            device_->Polyline(line, pen);
    }
}

void Graphics::IGrCircle(float x, float y, float r) { IGrEllipse(x, y, r, 1); }

void Graphics::IGrEllipse(float x, float y, float r, float ratio) {
    const double rx = std::fabs(r * (area_.x2 - area_.x1) / (ux2_ - ux1_));
    const double page_aspect = (device_->Height() / page_height) / (device_->Width() / page_width);
    const double ry = rx * ratio * page_aspect;
    const Point centre = To_Device(x, y);
    if (!Is_Hatched(fill_style_)) return device_->Ellipse(centre, rx, ry, fill_style_ == fill_solid, Current_Pen());
    std::array<Point, arc_corners> corners;
    for (int i = 0; i < arc_corners; ++i) {
        const double angle = 2 * std::numbers::pi * i / arc_corners;
        corners[static_cast<std::size_t>(i)] = {centre.x + rx * std::cos(angle), centre.y + ry * std::sin(angle)};
    }
    Hatch(corners);
}

void Graphics::IGrArc(float x, float y, float r, float start, float sweep) {
    std::vector<Point> points;
    for (int i = 0; i <= arc_corners; ++i) {
        const double angle = (start + sweep * static_cast<float>(i) / arc_corners) * std::numbers::pi / 180;
        points.push_back(To_Device(x + r * static_cast<float>(std::cos(angle)), y + r * static_cast<float>(std::sin(angle))));
    }
    device_->Polyline(points, Current_Pen());
}

void Graphics::IGrCells(float x1, float y1, float x2, float y2, int columns, int rows, std::span<const Colour> colours) {
    const Point a = To_Device(x1, y1), b = To_Device(x2, y2);
    Cell_Image image{{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)}, columns, rows, colours};
    if (!image.Shows()) return;
    std::vector<Colour> turned;
    if (a.x > b.x || a.y > b.y) {
        turned.resize(colours.size());
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column) {
                const int to_row = a.y > b.y ? rows - 1 - row : row, to_column = a.x > b.x ? columns - 1 - column : column;
                turned[static_cast<std::size_t>(to_row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(to_column)] =
                    colours[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column)];
            }
        image.colours = turned;
    }
    device_->Cells(image);
}

void Graphics::IGrCharOut(float x, float y, std::string_view text) {
    if (!text.empty()) device_->Text(To_Device(x, y), text, Current_Text());
}

void Graphics::IGrMarker(float x, float y, int glyph) {
    const Text_Style size = Current_Text();
    const Point at = To_Device(x, y);
    const float one = 1.0f;
    device_->Markers({std::span(&one, 1), std::span(&one, 1), at.x, 0, at.y, 0},
                     {glyph, size.width, size.height, colour_, fill_style_ == fill_solid});
}

float Graphics::Text_Width(std::string_view text) const {
    return static_cast<float>(device_->Text_Width(text, Current_Text()) / (area_.x2 - area_.x1) * std::fabs(ux2_ - ux1_));
}

}  // namespace vntl
