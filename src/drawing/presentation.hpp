// Presentation graphics: a plot box with units of its own, and in it and around it axes and data sets from arrays.
//
// It draws through a `Graphics`, whose area, colour, line width and font are in force; curves are clipped at the plot box.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/axis.hpp"
#include "drawing/graphics.hpp"
#include "drawing/grid_data.hpp"

namespace vntl {

inline constexpr int max_sets = 500;  // of a plot

// Style of a data set; also of its symbol in a key.
struct Set_Style {
    int line_style = 0;  // -1 none, 0 solid, 1 dotted, 2 dashed, 3 dot-dash, 4 dot-dot-dash
    int fill = 0;        // of the marker: 0 outline, 4 solid
    Colour line_colour = 0, marker_colour = 0;
    int marker = 0;  // glyph code
};

// A piece of a pie: degrees, counter-clockwise from the right, `from` above `to`.
struct Pie_Slice {
    std::size_t set;
    double from, to;
};

// What is written of a set: a name, which may be shortened, and a figure, which may not.
struct Set_Text {
    int set = 1;
    std::string name, figure;
};

class Presentation {
public:
    explicit Presentation(Graphics& graphics) : graphics_(&graphics) {}
    Presentation On(Graphics& graphics) const;  // its state, on another drawing
    Graphics& graphics() const { return *graphics_; }

    void IPgArea(float x1, float y1, float x2, float y2);  // plot box, fractions of the area
    void IPgUnits(float x1, float y1, float x2, float y2);
    // From user units to units of the plot box and back, the inverse of each other. An axis may be reversed (x1 > x2); one without extent
    // gives no finite number.
    void IPgUnitsFromGrUnits(float gx, float gy, float& x, float& y) const;
    void IPgUnitsToGrUnits(float x, float y, float& gx, float& gy) const;

    // Kind 1 bars, 3 a pie, 6 lines, 7 markers, 8 a grid of `points` columns and `rows` rows with its option word.
    void IPgNewPlot(int type, int sets, int points, int rows = 1, unsigned option = 0);
    void IPgStyle(int set, const Set_Style&);  // set: 1 to 500
    void IPgMarker(int set, int marker);       // changes the glyph of a set's markers and leaves the rest of its style
    void IPgClipRectangle(int mode);           // data sets are clipped at 1 the plot box, as at first, 0 the area
    // Next set of the plot: markers or a line, by its type.
    void IPgXYPairs(std::span<const float> x, std::span<const float> y, const Series_Blocks* blocks = nullptr);
    void IPgXYLine(std::span<const float> x, std::span<const float> y);  // next set of the plot as a line, whatever the type
    // Maps of a grid whose columns and rows lie at its x and y themselves, in the units of the plot box (x and y are at the ends of them).
    // z1 and z2: the range of its values. Bilinear between the four values of a cell; a cell with a gap stays blank.
    void IPgUnitsXYZ(float x1, float x2, float y1, float y2, float z1, float z2);
    // Lines at z1 + k (z2 - z1) / (n + 1), k = 1 .. n, n the sets of the plot: coloured evenly from the colour of set 1 to that of set 2.
    // Width 1, or 2 with bit 2048 of the option word. A flat grid has none.
    void IPgContour2(const Grid_Data& grid);
    // Colours between that of set 1, at z1, and that of set 2, at z2: one a cell (that of its mean), or with bit 2048 of the option word
    // changing inside the cells. A flat grid has the colour of set 1.
    void IPgConGrad2(const Grid_Data& grid);
    // Bands in the colours of the sets. The band of a value is the first level above it, or the last. A cell whose corners are in one band
    // is filled; another is cut into two triangles (granularity 1) or into granularity x granularity parts, each in the band of its mean.
    void IPgConFill2(const Grid_Data& grid, std::span<const float> levels, int granularity);

    // Sets, their error bars and what lies under them stand higher by `by` plot units from now on; axes and texts stay.
    void IPgRaise(float by) { raise_ = by; }
    // What lies under a line through the points, down to `foot` (plot units) and no lower, filled in a colour. It is no set.
    void IPgUnderLine(std::span<const float> x, std::span<const float> y, float foot, Colour colour, const Series_Blocks* blocks = nullptr);

    // Of the set that was drawn last, in the colour of its line. One without length is left out.
    void IPgErrorBars(std::span<const float> x, std::span<const float> y, std::span<const float> half_length);

    // Next set of the plot as bars from 0, filled in the colour of its line. About each x there is a slot, in units of the plot box; the
    // sets stand in it side by side, with a gap to the next slot.
    void IPgBars(std::span<const float> x, std::span<const float> y, float slot);
    // A round pie in the middle of the plot box, one set a value, filled in the colour of its line and outlined in the current one: from
    // `start` degrees, counted counter-clockwise from the right, and on clockwise. A value that is not above 0 or not finite has no slice.
    // Beside the slices stand their texts, as many as keep apart, those of large ones first, and none beyond `right`, a fraction of the
    // area.
    void IPgPie(std::span<const float> values, float start, std::span<const Set_Text> texts = {}, float right = 1);

    // Polar plots, in the largest circle that the plot box has room for: angles in degrees, counter-clockwise from the right. The plot
    // units are from now on those of the radius, in both directions, and 0 in the middle. After IPgArea.
    void IPgUnitsPolar(float radius);  // at the rim
    // Rings at the ticks of the radius and spokes every 30 degrees in a light colour; "T" ticks, "N" numbers, in the current colour: those
    // of the radius along the spoke to the right, those of the angle outside the rim.
    void IPgPolarAxes(std::string_view radius_flags, std::string_view angle_flags);
    // Next set of the plot as markers. A negative radius lies on the other side of the middle; points beyond the rim are left out.
    void IPgPolarPairs(std::span<const float> angles, std::span<const float> radii);

    void IPgXScale(std::string_view flags, float y_at);  // axis along x at y = y_at; "T" ticks, "N" numbers
    void IPgYScale(std::string_view flags, float x_at);
    // Margin left of the plot box, a fraction of the area, with which the y scale need not make its numbers smaller than the font in force,
    // and a turned y label keeps clear of them; and below the box, with which the x label keeps clear of the numbers of the x scale.
    float Margin_Of_Y_Numbers() const;
    float Margin_Of_X_Texts() const;
    float Width_Of_Upright_Y_Label() const;  // that IPgYLabelLeft gives each word of a label in the way V, a fraction of the area
    void IPgXTickLength(float length);       // of the x scale: 1 is an 80th of the width of the plot box, 0.8 at first
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
    // A key of several sets, from the upper left corner of a box, fractions of the area, downward, the figures at its right side. Letters
    // become smaller until all lines have room, and, as far as they can be read, each line; a name that is still too long loses its middle.
    // Of more than 40 lines, those that cannot be read are counted in the last one.
    void IPgKeys(float x1, float y1, float x2, float y2, std::span<const Set_Text> entries);

private:
    const Rect& Area() const { return graphics_->Area(); }
    Device& Target() const { return graphics_->device(); }
    Point Plot_To_Device(double x, double y) const;
    Rect Box() const;        // plot box in device units
    double X_Scale() const;  // device units a plot unit
    double Y_Scale() const;
    Set_Style& Style_Of_Set(int set);
    const Set_Style& Next_Set();  // its style; the one after it is the next
    void Draw_Set(std::span<const float> x, std::span<const float> y, bool markers, const Series_Blocks* blocks = nullptr);
    Series Series_Of(std::span<const float> x, std::span<const float> y, const Series_Blocks* blocks) const;
    bool Has_Units() const;
    void Clip_Sets();
    double Polar_Rim() const;  // device units
    void Spokes_And_Rings(const Axis_Ticks& rings);
    void Numbers_Of_Radius(const Axis_Ticks& rings, std::string_view flags);
    void Numbers_Of_Angle(std::string_view flags);
    void Label_Slices(Point centre, double rim, std::vector<Pie_Slice> slices, std::span<const Set_Text> texts, double right);
    void Key_Symbol(Point at, double width, double em, int set);  // its left end, at half the height of a letter
    void Title_Line(std::string_view text, char position, Text_Style style, double y);
    void Turned_Label(std::string_view text, std::string_view position, Text_Style style, double middle);

    Graphics* graphics_;
    double bx1_ = 0, by1_ = 0, bx2_ = 1, by2_ = 1;  // plot box, fractions of the area
    double px1_ = 0, py1_ = 0, px2_ = 1, py2_ = 1;  // plot units
    double polar_radius_ = 1;                       // at the rim, plot units
    float z1_ = 0, z2_ = 1;                         // of the values of a map
    int plot_type_ = 6;
    unsigned option_ = 0;
    int next_set_ = 1;
    bool clip_sets_ = true;  // at the plot box
    double raise_ = 0;       // of the sets, plot units
    double x_tick_length_ = tick_length, y_tick_length_ = tick_length;
    bool x_ticks_inward_ = false, y_ticks_inward_ = false;
    int decimals_ = -1;
    double title_em_ = 0;  // of the title drawn last, device units
    std::vector<Set_Style> styles_;
};

}  // namespace vntl
