// Drawing in user units on a device, and presentation graphics: axes and data sets from arrays.
//
// Three coordinate systems are in force: the device; the area, a rectangle of it in fractions, outside which nothing is drawn; the user
// units of that area. Presentation graphics adds a plot box inside the area with units of its own; curves are clipped at it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/device.hpp"

namespace vntl {

inline constexpr int fill_outline = 0, fill_solid = 4;

// Style of a data set; also of its symbol in a key.
struct Set_Style {
    int line_style = 0;  // -1 none, 0 solid, 1 dotted, 2 dashed, 3 dot-dash, 4 dot-dot-dash
    int fill = 0;        // of the marker: 0 outline, 4 solid
    Colour line_colour = 0, marker_colour = 0;
    int marker = 0;  // glyph code
};

class Graphics {
public:
    explicit Graphics(Device& device);

    // --- area, units, state -----------------------------------------------------------------------------------------
    void IGrArea(float x1, float y1, float x2, float y2);   // fractions of the device
    void IGrUnits(float x1, float y1, float x2, float y2);  // user units at the lower left and upper right of the area
    void IGrPaletteBack(Colour background);
    void IGrClear();  // fills the area with the background
    void IGrColourN(Colour);
    void IGrColour(std::string_view name);  // "Black", "White", "Red", "Green", "Blue", "Yellow", "Cyan", "Magenta", any case
    void IGrFillPattern(int style);
    void IGrLineWidth(float width);
    void IGrLineType(int style);
    void IGrCharJustify(int mode);      // 0 left, 1 centre, 2 right
    void IGrCharRotate(float degrees);  // 0, 90 or -90
    void WGrTextFont(int font, int style, float width,
                     float height);  // size in fractions of the area's width and height; font 0: size alone

    // --- primitives, in user units ----------------------------------------------------------------------------------
    void IGrMoveTo(float x, float y);
    void IGrLineTo(float x, float y);
    void IGrPolyLine(std::span<const float> x, std::span<const float> y);
    void IGrRectangle(float x1, float y1, float x2, float y2);
    void IGrCircle(float x, float y, float r);
    void IGrEllipse(float x, float y, float r, float ratio = 1);  // r along x in user units; height to width ratio as it is seen
    void IGrArc(float x, float y, float r, float start, float sweep);
    void IGrCharOut(float x, float y, std::string_view text);
    void IGrMarker(float x, float y, int glyph);    // at the current character size
    float Text_Width(std::string_view text) const;  // user units, at the current font

    // --- presentation graphics --------------------------------------------------------------------------------------
    void IPgArea(float x1, float y1, float x2, float y2);  // plot box, fractions of the area
    void IPgUnits(float x1, float y1, float x2, float y2);
    void IPgUnitsFromGrUnits(float gx, float gy, float& x, float& y) const;
    void IPgUnitsToGrUnits(float x, float y, float& gx, float& gy) const;

    void IPgNewPlot(int type, int sets, int points);  // 6 lines, 7 markers
    void IPgStyle(int set, const Set_Style&);
    void IPgXYPairs(std::span<const float> x, std::span<const float> y);  // next set of the plot: markers or a line, by its type
    void IPgErrorBars(std::span<const float> x, std::span<const float> y, std::span<const float> half_length);

    void IPgXScale(std::string_view flags, float y_at);  // axis along x at y = y_at; "T" outward ticks, "N" numbers
    void IPgYScale(std::string_view flags, float x_at);
    void IPgTitle(std::string_view text, char position);  // position: 'L', 'C' or 'R'; 'N' draws nothing
    void IPgXLabel(std::string_view text, char position);
    void IPgYLabelLeft(std::string_view text, std::string_view position);  // place T, C or B, then V upright, R or 9 rotated
    void IPgBorder();                                                      // frame of the plot box in the current colour and width
    void IPgKey(float x, float y, int set, std::string_view text);         // symbol of a set and its text, user units

private:
    Point To_Device(float x, float y) const;
    Point Plot_To_Device(double x, double y) const;
    Rect Box() const;  // plot box in device units
    Text_Style Current_Text() const;
    Pen Current_Pen() const;
    void Clip_To_Area();

    Device& device_;
    Rect area_{};  // device units
    double ux1_ = 0, uy1_ = 0, ux2_ = 1, uy2_ = 1;
    double bx1_ = 0, by1_ = 0, bx2_ = 1, by2_ = 1;  // plot box, fractions of the area
    double px1_ = 0, py1_ = 0, px2_ = 1, py2_ = 1;  // plot units
    Colour background_ = 0xffffff, colour_ = 0;
    int fill_style_ = 0;
    float line_width_ = 1;
    int line_type_ = 0;
    int justify_ = 0;
    float angle_ = 0;
    int font_ = 101, font_style_ = 0;
    float char_width_ = 0.008f, char_height_ = 0.016f;
    Point position_{};  // user units
    int plot_type_ = 6;
    int next_set_ = 1;
    std::vector<Set_Style> styles_;
};

}  // namespace vntl
