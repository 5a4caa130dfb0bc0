// What devices for files of drawings share: a picture comes to the writer as lines, areas, ellipses, cells and texts, cut at the clip and
// at the page, and thinned to what can be seen (1/20 point). A writer needs no clip of its own, and a viewer's makes no difference.
//
// Places are in points from the lower left corner of the page, all finite and inside the clip.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "pictures/page_cover.hpp"
#include "pictures/vector_device.hpp"

namespace vntl {

class Shape_Device : public Vector_Device {
public:
    Shape_Device(double width, double height);  // points

    double Width() const final { return width_; }
    double Height() const final { return height_; }
    double Pixel() const final { return points_a_pixel; }
    void Clear(Colour) final;
    void Set_Clip(const Rect&) final;
    void Polyline(std::span<const Point>, const Pen&) final;
    void Curve(const Series&, const Pen&) final;
    void Markers(const Series&, const Marker_Style&) final;
    void Fill(std::span<const Point>, Colour) final;
    void Under_Curve(const Series&, double foot, Colour) final;
    void Ellipse(Point, double rx, double ry, bool filled, const Pen&) final;
    void Cells(const Cell_Image&) final;
    Finest_Cells Finest(const Rect&) const final;
    void Facets(const Facet_List&) final;
    void Text(Point, std::string_view, const Text_Style&) final;
    double Text_Width(std::string_view, const Text_Style&) const final;
    bool Start_Backwards(long long points) final;
    bool End_Backwards() final;

protected:
    // --- what a writer does ------------------------------------------------------------------------------------------------------
    virtual void Write_Clear(Colour) = 0;  // the whole page; what was drawn before lies below and need not be kept
    // A line of two points or more; a closed one ends where it begins. The pen's style is not none.
    virtual void Write_Line(std::span<const Point>, const Pen&) = 0;
    // A closed polygon of three corners or more, the last one not repeated, filled in the colour, without an outline. It may touch itself
    // where it was cut.
    virtual void Write_Area(std::span<const Point>, Colour) = 0;
    // Wholly inside the clip; others come as lines and areas.
    virtual void Write_Ellipse(Point centre, double rx, double ry, bool filled, const Pen&) = 0;
    // Markers of one style, all wholly inside the clip; others come as lines and areas. As at first, each as ellipse, area or lines.
    virtual void Write_Markers(std::span<const Point>, const Marker_Style&);
    // Cells of an image that fills `rect`, the lowest row first, each from left to right, at most a few for each line unit; `no_colour`
    // shows the ground.
    virtual void Write_Cells(const Rect& rect, int columns, int rows, std::span<const Colour>) = 0;
    // `at` is the point on the base line that the style's justification names. Valid UTF-8 without control characters, Greek letters for
    // those in Symbol; letters that lie outside the clip have been left out. `width` is that of the text, in points.
    virtual void Write_Text(Point at, const std::string& text, double width, const Text_Style&) = 0;

    double Unit() const { return unit_; }  // points of one line unit

private:
    // What was drawn from the front to the back, until it can be written the other way round.
    struct Kept {
        enum { line, area, markers } kind;
        Pen pen;
        Marker_Style style;
        std::size_t first, end;  // its places
    };

    bool Refuses() { return refused_ = refused_ || backwards_; }
    bool Hides_Box(const Page_Cover& cover, const Rect& box) const;
    void Put_Line(std::span<const Point>, const Pen&);
    void Put_Area(std::span<const Point>, Colour);
    void Put_Markers(std::span<const Point>, const Marker_Style&);
    std::vector<std::size_t> Seen_Markers(const Series&, const Marker_Style&, Page_Cover& cover, const Rect& touched) const;
    void Cut_Marker(Point at, const Marker_Style&);
    void Keep(Kept item, std::span<const Point> places);

    double width_, height_, unit_;
    Rect clip_{};
    bool backwards_ = false, refused_ = false;
    std::unique_ptr<Page_Cover> cover_;
    std::vector<Kept> kept_;
    std::vector<Point> places_;
};

}  // namespace vntl
