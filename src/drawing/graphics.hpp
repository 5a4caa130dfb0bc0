// Drawing in user units on a device.
//
// Three coordinate systems are in force: the device; the area, a rectangle of it in fractions, outside which nothing is drawn; the user
// units of that area.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

inline constexpr int fill_outline = 0, fill_hatched = 1, fill_hatched_across = 2, fill_crossed = 3, fill_solid = 4;
class Graphics {
public:
    explicit Graphics(Device& device);
    Graphics On(Device& device) const;  // its state, on another device of the same size
    Device& device() const { return *device_; }

    // --- area, units, state -----------------------------------------------------------------------------------------
    void IGrArea(float x1, float y1, float x2, float y2);        // fractions of the device
    void IGrViewPixels(float x1, float y1, float x2, float y2);  // area by pixels of the device, from its lower left; in any order
    void IGrUnits(float x1, float y1, float x2, float y2);       // user units at the lower left and upper right of the area
    void IGrPaletteBack(Colour background);
    void IGrClear();  // fills the area with the background
    void IGrColourN(Colour);
    void IGrColour(std::string_view name);  // "Black", "White", "Red", "Green", "Blue", "Yellow", "Cyan", "Magenta", any case
    // Fill of closed shapes: 0 outline, 4 solid, both in the current colour; 1 hatched, 2 hatched at right angles to that, 3 both ways, in
    // the current colour and line width. Density 1 to 4: lines 20, 12, 7 or 4 line units apart. Angle: of the lines of style 1 in steps of
    // 15 degrees, counter-clockwise from the horizontal as it is seen; 3 is 45 degrees.
    void IGrFillPattern(int style, int density = 2, int angle = 3);
    void IGrLineWidth(float width);
    void IGrLineType(int style);
    void IGrCharJustify(int mode);      // 0 left, 1 centre, 2 right
    void IGrCharRotate(float degrees);  // 0, 90 or -90
    void WGrTextFont(int font, int style, float width,
                     float height);  // size in fractions of the area's width and height; font 0: size alone

    // --- primitives, in user units; closed shapes take the fill pattern ----------------------------------------------
    void IGrMoveTo(float x, float y);
    void IGrLineTo(float x, float y);
    void IGrPolyLine(std::span<const float> x, std::span<const float> y);
    void IGrRectangle(float x1, float y1, float x2, float y2);
    void IGrPolygon(std::span<const float> x, std::span<const float> y);  // closed by itself; a corner that is no finite number is left out
    void IGrCircle(float x, float y, float r);
    void IGrEllipse(float x, float y, float r, float ratio = 1);  // r along x in user units; height to width ratio as it is seen
    void IGrArc(float x, float y, float r, float start, float sweep);
    // Cells of equal size between two corners, row after row from the first corner: the first cell stands there, whichever way the units
    // run.
    void IGrCells(float x1, float y1, float x2, float y2, int columns, int rows, std::span<const Colour> colours);
    void IGrCharOut(float x, float y, std::string_view text);
    void IGrMarker(float x, float y, int glyph);    // at the current character size
    float Text_Width(std::string_view text) const;  // user units, at the current font

    // --- for what is built on it, in device units ---------------------------------------------------------------------
    const Rect& Area() const { return area_; }
    Point To_Device(float x, float y) const;
    Point From_Device(Point at) const;  // user units
    Text_Style Current_Text() const;
    Colour Current_Colour() const { return colour_; }
    float Line_Width() const { return line_width_; }
    void Clip_To_Area();

private:
    Pen Current_Pen() const;
    void Closed_Shape(std::span<const Point> corners);
    void Hatch(std::span<const Point> corners);

    Device* device_;
    Rect area_{};  // device units
    double ux1_ = 0, uy1_ = 0, ux2_ = 1, uy2_ = 1;
    Colour background_ = 0xffffff, colour_ = 0;
    int fill_style_ = 0, fill_density_ = 2, fill_angle_ = 3;
    float line_width_ = 1;
    int line_type_ = 0;
    int justify_ = 0;
    float angle_ = 0;
    int font_ = 101, font_style_ = 0;
    float char_width_ = 0.008f, char_height_ = 0.016f;
    Point position_{};  // user units
};

}  // namespace vntl
