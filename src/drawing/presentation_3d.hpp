// Presentation graphics in space: units with a third axis, the view of them, and the scales.
//
// The limits of the three axes span a cube (see projection.hpp), which is seen in perspective and fills the plot box.
// The page is wider than high, and so the cube is stretched: as the axes have units of their own, that is the picture of a box of another
// height.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/graphics.hpp"
#include "drawing/grid_data.hpp"
#include "drawing/projection.hpp"

namespace vntl {

class Presentation_3D {
public:
    explicit Presentation_3D(Graphics& graphics) : graphics_(&graphics) {}
    Presentation_3D On(Graphics& graphics) const;  // its state, on another drawing
    Graphics& graphics() const { return *graphics_; }

    void IPgArea(float x1, float y1, float x2, float y2);                          // plot box, fractions of the area
    void IPgUnitsXYZ(float x1, float x2, float y1, float y2, float z1, float z2);  // ends of the axes, which may be reversed
    void IPgRotation(float degrees);   // -360 to 360, both of which, and what lies beyond, are 0
    void IPgElevation(float degrees);  // 0 to 45, to which other values are limited

    Point To_Device(double x, double y, double z) const;  // in device units; no finite place on an axis without extent
    double Depth(double x, double y, double z) const;     // of two points at one place the one of less depth hides the other

    // The edges of the cube, those at the back first, in the current colour and line width; or those alone that may lie before what stands
    // in the cube (up to three at its nearest corner), or the others.
    enum class Edges { all, back, front };
    void IPgFrame(Edges which = Edges::all) const;
    // Floor and walls whose inner side is seen, filled, before what stands in the cube. The walls across the first axis have the colour of
    // the left one, those across the second that of the right one, as they stand when the cube is turned a little: so no wall changes its
    // colour as the cube turns.
    void IPgWalls(Colour floor, Colour left, Colour right) const;

    // A line in space in the current colour and line width, cut off at the ends of the axes. A gap where a number is not finite.
    void IPgXYZLine(std::span<const float> x, std::span<const float> y, std::span<const float> z) const;

    // A surface over the grid: its y along the first axis, into the depth, its x along the second, its z upward. Hidden parts by painter's
    // order. By the option word: 2065 bands of 10 levels between the two colours, shaded by the slope; 513 the colour of least z, with the
    // lattice; 33 a colour a cell by its height; 17 bands of 10 levels with the lattice. A cell with a gap is left out.
    struct Surface_Style {
        unsigned option = 0;
        Colour lattice = 0;          // lines between the cells
        Colour least = 0, most = 0;  // of the ends of the third axis
    };
    void IPgSurf3Data(const Grid_Data& grid, const Surface_Style& style) const;

    // Titles. Position of an axis' title along it, 0 to 1, kept until the next call for that axis (1 to 3); 0.5 at first. Letters: "C"
    // beside the scale, and with "V" turned upright; "T" at the top of the axis. They keep apart from the cube, from the scales that were
    // drawn, from those that will be if their numbers are no larger than the letters of the title, from each other, and from the end of the
    // area. Where there is no room for that they stand a little to the side, or become smaller.
    void IPgLabelPos(int axis, float along);
    void IPgXLabel(std::string_view text, std::string_view letters) { Draw_Label(0, text, letters); }
    void IPgYLabel(std::string_view text, std::string_view letters) { Draw_Label(1, text, letters); }
    void IPgZLabel(std::string_view text, std::string_view letters) { Draw_Label(2, text, letters); }
    void IPgTitle(std::string_view text);  // above the plot box, in the middle

    // Scales along edges of the cube: those of x and y at the foot of the nearer sides, that of z at the left, or at the right where one
    // of the others runs to the left into the depth. Flags as in the plane: "T" ticks, which point away from the cube, "N" numbers.
    void IPgXScale(std::string_view flags) { Draw_Scale(0, flags); }
    void IPgYScale(std::string_view flags) { Draw_Scale(1, flags); }
    void IPgZScale(std::string_view flags) { Draw_Scale(2, flags); }

private:
    struct Edge {                                                           // along which a scale runs
        Space_Point from = {0, 0, 0}, to = {0, 0, 0}, outward = {0, 0, 0};  // in the cube
        double side = 0;                                                    // of an upright one: -1 at the left of the page, 1 at the right
    };
    struct Tick {
        Point at, end;  // device units
        Rect room;      // of the number
        std::string number;
    };

    Rect Box() const;  // plot box in device units
    Projection View() const;
    Space_Point In_Cube(const Space_Point& units) const;
    Point On_Page(const Space_Point& in_cube) const;
    Point In_Page_Units(Point from, Point to) const;  // the way between two places on the device
    Edge Floor_Edge(std::size_t axis) const;
    Edge Upright_Edge() const;
    Point Tick_Direction(const Edge& edge, const Space_Point& at) const;
    Tick Tick_At(const Edge& edge, const Space_Point& in_cube, std::string number, const Text_Style& style) const;
    bool At_Foot_Of_Z(const Rect& number, const Text_Style& style) const;
    std::vector<Tick> Ticks(std::size_t axis, const Edge& edge, const Text_Style& style) const;
    void Draw_Scale(std::size_t axis, std::string_view flags);
    struct Label_Place {
        Point middle;  // device units
        double cost;   // the less the better
    };
    std::vector<Label_Place> Places_Beside(const Edge& edge, double along, Point half) const;
    std::vector<Label_Place> Places_At_Top(const Edge& edge, Point half) const;
    std::vector<Rect> Taken(const Text_Style& style) const;
    bool Is_Free(const Rect& room, const std::vector<Rect>& taken, std::span<const Point> corners) const;
    void Draw_Label(std::size_t axis, std::string_view text, std::string_view letters);
    void Forget_Texts();

    Graphics* graphics_;
    double bx1_ = 0, by1_ = 0, bx2_ = 1, by2_ = 1;       // plot box, fractions of the area
    Space_Point lower_ = {0, 0, 0}, upper_ = {1, 1, 1};  // limits of the axes
    double rotation_ = 0, elevation_ = 0;                // degrees
    std::array<double, 3> label_at_ = {0.5, 0.5, 0.5};   // along the axes
    std::array<std::vector<Rect>, 3> scales_;            // room of the ticks and numbers that were drawn, device units
    std::vector<Rect> titles_;                           // room of the titles
};

}  // namespace vntl
