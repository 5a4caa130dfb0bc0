#include "plot/polar_picture.hpp"

#include <cmath>
#include <numbers>

#include "base/page.hpp"

namespace vntl {

namespace {

constexpr float width = polar_picture_width, height = polar_picture_height;
constexpr Colour ground = WRGB(100, 162, 80), outline = WRGB(0, 0, 255), lamp = WRGB(220, 220, 220);
constexpr float left = 75, right = 225, middle = 50, radius = 40;
constexpr float as_wide_as_high = (width / page_width) / (height / page_height);  // of an ellipse of this picture that looks round

void Line(Graphics& g, float x1, float y1, float x2, float y2) {
    g.IGrMoveTo(x1, y1);
    g.IGrLineTo(x2, y2);
}

void Draw_Circles(Graphics& g) {
    g.IGrColour("Black");
    g.IGrFillPattern(fill_outline);
    Line(g, 150, 0, 150, height);
    g.IGrEllipse(left, middle, radius, as_wide_as_high);
    Line(g, left, 5, left, 95);
    Line(g, 20, middle, 130, middle);
    g.IGrArc(right, middle, radius, 270, 180);
}

void Draw_Labels(Graphics& g) {
    constexpr struct {
        const char* text;
        float x, y;
    } labels[] = {{"+X", 135, 60}, {"+Z", 100, 10}, {"+Y", 205, 90}, {"-Y", 205, 10}};
    g.WGrTextFont(102, 0, 0.022f, 0.11f);
    for (const auto& label : labels) g.IGrCharOut(label.x, label.y, label.text);
}

void Draw_Model_Place(Graphics& g, float x, Colour colour) {
    constexpr float half_width = 6, half_height = 4;
    for (const bool filled : {true, false}) {
        g.IGrFillPattern(filled ? fill_solid : fill_outline);
        g.IGrColourN(filled ? colour : outline);
        g.IGrRectangle(x - half_width, middle - half_height, x + half_width, middle + half_height);
    }
}

void Draw_Place(Graphics& g, float x, float y) {
    constexpr float disc = 5;
    for (const bool filled : {true, false}) {
        g.IGrFillPattern(filled ? fill_solid : fill_outline);
        g.IGrColourN(filled ? lamp : outline);
        g.IGrEllipse(x, y, disc, as_wide_as_high);
    }
}

}  // namespace

void Draw_Polar_Picture(Graphics& g, float elevation, float azimuth, Colour model_colour) {
    constexpr float degree = std::numbers::pi_v<float> / 180;
    const float a = azimuth * degree, e = elevation * degree;
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, width, height);
    g.IGrPaletteBack(ground);
    g.IGrClear();
    Draw_Circles(g);
    Draw_Labels(g);
    for (const float x : {left, right}) Draw_Model_Place(g, x, model_colour);
    Draw_Place(g, left + radius * std::sin(a), middle - radius * std::cos(a));
    Draw_Place(g, right + radius * std::cos(e), middle + radius * std::sin(e));
}

}  // namespace vntl
