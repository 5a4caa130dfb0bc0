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

inline constexpr int fill_outline = 0, fill_hatched = 1, fill_hatched_across = 2, fill_crossed = 3, fill_solid = 4;
inline constexpr int max_sets = 500;  // of a plot

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
    void IGrCharOut(float x, float y, std::string_view text);
    void IGrMarker(float x, float y, int glyph);    // at the current character size
    float Text_Width(std::string_view text) const;  // user units, at the current font

    // --- presentation graphics --------------------------------------------------------------------------------------
    void IPgArea(float x1, float y1, float x2, float y2);  // plot box, fractions of the area
    void IPgUnits(float x1, float y1, float x2, float y2);
    // From user units to units of the plot box and back, the inverse of each other. An axis may be reversed (x1 > x2); one without extent
    // gives no finite number.
    void IPgUnitsFromGrUnits(float gx, float gy, float& x, float& y) const;
    void IPgUnitsToGrUnits(float x, float y, float& gx, float& gy) const;
    // Least and greatest of the finite numbers of `array`. Without one false, and both stay as they were.
    static bool IPgMaxMin(std::span<const float> array, float& min, float& max);

    void IPgNewPlot(int type, int sets, int points);  // 6 lines, 7 markers
    void IPgStyle(int set, const Set_Style&);         // set: 1 to 500
    void IPgMarker(int set, int marker);              // changes the glyph of a set's markers and leaves the rest of its style
    void IPgClipRectangle(int mode);                  // data sets are clipped at 1 the plot box, as at first, 0 the area
    void IPgXYPairs(std::span<const float> x, std::span<const float> y);  // next set of the plot: markers or a line, by its type
    void IPgXYLine(std::span<const float> x, std::span<const float> y);   // next set of the plot as a line, whatever the type
    void IPgErrorBars(std::span<const float> x, std::span<const float> y, std::span<const float> half_length);

    void IPgXScale(std::string_view flags, float y_at);  // axis along x at y = y_at; "T" ticks, "N" numbers
    void IPgYScale(std::string_view flags, float x_at);
    void IPgXTickLength(float length);  // of the x scale: 1 is an 80th of the width of the plot box, 0.8 at first
    void IPgYTickLength(float length);
    void IPgXTickPos(int side);           // ticks of the x scale: 1 outward (downward), as at first, 2 inward (upward)
    void IPgYTickPos(int side);           // of the y scale: 1 outward (to the left), 2 inward
    void IPgDecimalPlaces(int decimals);  // of the numbers of both scales: 0 to 9; -1, as at first: as many as the range needs
    void IPgTitle(std::string_view text, char position);  // position: 'L', 'C' or 'R'; 'N' draws nothing
    // After the title: between it and the plot box, made small enough for that; not drawn where a large title itself reaches the box.
    void IPgSubTitle(std::string_view text, char position);
    void IPgXLabel(std::string_view text, char position);
    void IPgYLabelLeft(std::string_view text, std::string_view position);   // place T, C or B, then V upright, R or 9 rotated
    void IPgYLabelRight(std::string_view text, std::string_view position);  // the same right of the plot box
    void IPgBorder();                                                       // frame of the plot box in the current colour and width
    void IPgKey(float x, float y, int set, std::string_view text);          // symbol of a set and its text, user units

private:
    Point To_Device(float x, float y) const;
    Point Plot_To_Device(double x, double y) const;
    Rect Box() const;  // plot box in device units
    Text_Style Current_Text() const;
    Pen Current_Pen() const;
    void Clip_To_Area();
    void Closed_Shape(std::span<const Point> corners);
    void Hatch(std::span<const Point> corners);
    Set_Style& Style_Of_Set(int set);
    void Draw_Set(std::span<const float> x, std::span<const float> y, bool markers);
    void Clip_Sets();
    void Title_Line(std::string_view text, char position, Text_Style style, double y);
    void Turned_Label(std::string_view text, std::string_view position, Text_Style style, double middle);

    Device* device_;
    Rect area_{};  // device units
    double ux1_ = 0, uy1_ = 0, ux2_ = 1, uy2_ = 1;
    double bx1_ = 0, by1_ = 0, bx2_ = 1, by2_ = 1;  // plot box, fractions of the area
    double px1_ = 0, py1_ = 0, px2_ = 1, py2_ = 1;  // plot units
    Colour background_ = 0xffffff, colour_ = 0;
    int fill_style_ = 0, fill_density_ = 2, fill_angle_ = 3;
    float line_width_ = 1;
    int line_type_ = 0;
    int justify_ = 0;
    float angle_ = 0;
    int font_ = 101, font_style_ = 0;
    float char_width_ = 0.008f, char_height_ = 0.016f;
    Point position_{};  // user units
    int plot_type_ = 6;
    int next_set_ = 1;
    bool clip_sets_ = true;  // at the plot box
    double x_tick_length_ = 0.8, y_tick_length_ = 0.8;
    bool x_ticks_inward_ = false, y_ticks_inward_ = false;
    int decimals_ = -1;
    double title_em_ = 0;  // of the title drawn last, device units
    std::vector<Set_Style> styles_;
};

}  // namespace vntl
