// Drawings for CAD programs.
//
// A curve is one light-weight polyline, an area a solid or, with more corners, a hatch, a text a text in one of the named styles. A marker
// is an insert of a block: whoever changes the block changes all markers of its size. Each kind has its layer. A drawing program lays later
// entities over earlier ones, so they stand in the order of the picture.
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <tuple>
#include <unordered_map>

#include "base/write_file.hpp"
#include "drawing/font_table.hpp"
#include "drawing/hatch.hpp"
#include "pictures/cell_merge.hpp"
#include "pictures/cut_shapes.hpp"
#include "pictures/dxf_colours.hpp"
#include "pictures/dxf_file.hpp"
#include "pictures/recolour.hpp"
#include "pictures/shape_device.hpp"
#include "pictures/text_extent.hpp"

namespace vntl {
namespace {

constexpr double mm_a_point = 25.4 / 72;
constexpr double farthest_corner = 1e6;                            // millimetres
constexpr std::size_t most_solids = 100000, most_hatches = 20000;  // of an image of cells: about 20 megabytes of file
constexpr std::size_t cells_a_block = 10;                          // of the ground below an image of cells
constexpr double hatch_angle = 45;                                 // degrees
constexpr int closed_flag = 1, dashes_run_on = 128;
constexpr int by_block = 0;
constexpr double half_grey = 127.5;

// The widths that a line may have, in 1/100 mm.
constexpr std::array<int, 24> lineweights = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                             53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

int Nearest_Lineweight(double mm) {
    const auto apart = [mm](int weight) { return std::fabs(weight - 100 * mm); };
    return *std::min_element(lineweights.begin(), lineweights.end(), [&](int a, int b) { return apart(a) < apart(b); });
}

double Corner(double mm) { return std::isfinite(mm) ? std::clamp(mm, -farthest_corner, farthest_corner) : 0; }

// Of four corners that always turn the same way, no diagonal leaves the shape.
bool Is_Convex(const std::vector<Dxf_Place>& corners) {
    bool left = false, right = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Dxf_Place &a = corners[i], &b = corners[(i + 1) % corners.size()], &c = corners[(i + 2) % corners.size()];
        const double turn = static_cast<double>(b.x - a.x) * static_cast<double>(c.y - b.y) -
                            static_cast<double>(b.y - a.y) * static_cast<double>(c.x - b.x);
        left = left || turn > 0;
        right = right || turn < 0;
    }
    return !(left && right);
}

class Dxf_Device : public Shape_Device {
public:
    Dxf_Device(std::string file, double width, double height, const Hardcopy_Options& options)
        : Shape_Device(width, height),
          file_(std::move(file)),
          colours_(options.dxf_colours),
          density_(std::clamp(options.fill_density, 1, dxf_solid)),
          page_corner_{Corner(options.x_pos), Corner(options.y_pos)},
          origin_(page_corner_) {
        drawing_.page = {origin_.x, origin_.y, origin_.x + width * mm_a_point, origin_.y + height * mm_a_point};
        drawing_.unit = Unit() * mm_a_point;
    }

    Status Close() override {
        if (closed_) return Status::Done();
        closed_ = true;
        return Replace_File(file_, Dxf_File(drawing_)) ? Status::Done() : Status::Fail_File("The picture cannot be written: " + file_);
    }

protected:
    // Without colours the ground is the paper's.
    void Write_Clear(Colour colour) override {
        drawing_.entities.clear();
        ground_ = colour;
        if (colours_ == Dxf_Colours::black) return;
        const std::array<Point, 4> page = {{{0, 0}, {Width(), 0}, {Width(), Height()}, {0, Height()}}};
        Solid(Places(page), dxf_page, colour);
    }

    void Write_Line(std::span<const Point> points, const Pen& pen) override { Light_Polyline(Places(points), dxf_lines, pen); }

    void Write_Area(std::span<const Point> corners, Colour colour) override {
        if (!Area_Shows(colour)) return;
        if (density_ == dxf_solid || in_block_)
            Filled(Places(corners), dxf_areas, colour);
        else
            Hatched(Places(corners), colour);
    }

    void Write_Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) override;
    void Write_Markers(std::span<const Point>, const Marker_Style&) override;
    void Write_Cells(const Rect&, int columns, int rows, std::span<const Colour>) override;
    void Write_Text(Point at, const std::string& text, double width, const Text_Style&) override;

private:
    // --- places and colours -----------------------------------------------------------------------------------------------------
    Dxf_Place Place(Point p) const { return Rounded_Place({origin_.x + p.x * mm_a_point, origin_.y + p.y * mm_a_point}); }

    // Without those that repeat the one before. Good until the next call.
    std::vector<Dxf_Place>& Places(std::span<const Point> points) {
        places_.clear();
        for (const Point& p : points) {
            const Dxf_Place place = Place(p);
            if (places_.empty() || !(places_.back() == place)) places_.push_back(place);
        }
        return places_;
    }

    // Black alone: what is as bright as the ground is left as paper.
    bool Area_Shows(Colour colour) const {
        return colours_ != Dxf_Colours::black || in_block_ || std::fabs(Brightness(colour) - Brightness(ground_)) > half_grey;
    }
    bool Line_Shows(Colour colour) const { return colours_ != Dxf_Colours::black || in_block_ || colour != ground_; }

    const std::string& Colour_Groups(Colour colour) {
        std::string& groups = colour_groups_[colour];
        if (!groups.empty()) return groups;
        Dxf_Groups made;
        made.Whole(62, colours_ == Dxf_Colours::black ? dxf_foreground : Nearest_Index(colour));
        if (colours_ == Dxf_Colours::true_colour) made.Whole(420, static_cast<int>(Red(colour) << 16 | Green(colour) << 8 | Blue(colour)));
        return groups = made.text();
    }

    // --- entities ---------------------------------------------------------------------------------------------------------------
    Dxf_Groups& Out() { return in_block_ ? drawing_.blocks.back().entities : drawing_.entities; }

    // In a block colour and layer are those of the insert.
    void Begin(std::string_view type, std::string_view layer, Colour colour) {
        Dxf_Groups& out = Out();
        out.Word(0, type);
        out.Handle(5, drawing_.next_handle++);
        out.Handle(330, in_block_ ? drawing_.blocks.back().handle : dxf_model_space);
        out.Word(100, "AcDbEntity");
        out.Word(8, in_block_ ? "0" : layer);
        if (in_block_)
            out.Whole(62, by_block);
        else
            out.Append(Colour_Groups(colour));
    }

    void Use(const Pen& pen) {
        if (!Dash_Pattern(pen.style).empty()) Out().Word(6, Dxf_Linetype(pen.style));
        Out().Whole(370, Nearest_Lineweight(pen.width * drawing_.unit));
    }

    // A hairline stays one however close a viewer looks. A wider line has its width in the drawing too, where it is solid: viewers that
    // draw that width pass over dashes.
    void Light_Polyline(std::vector<Dxf_Place>& places, std::string_view layer, const Pen& pen) {
        if (places.size() < 2 || !Line_Shows(pen.colour)) return;
        const bool closed = places.size() > 2 && places.front() == places.back();
        const bool dashed = !Dash_Pattern(pen.style).empty();
        if (closed) places.pop_back();
        Begin("LWPOLYLINE", layer, pen.colour);
        Use(pen);
        Dxf_Groups& out = Out();
        out.Word(100, "AcDbPolyline");
        out.Whole(90, static_cast<int>(places.size()));
        out.Whole(70, (closed ? closed_flag : 0) + (dashed ? dashes_run_on : 0));
        if (pen.width > 1 && !dashed) out.Length(43, pen.width * drawing_.unit);
        out.Vertices(places);
    }

    void Filled(std::vector<Dxf_Place>& corners, std::string_view layer, Colour colour) {
        if (corners.size() > 1 && corners.front() == corners.back()) corners.pop_back();
        if (corners.size() < 3) return;
        if (corners.size() == 3 || (corners.size() == 4 && Is_Convex(corners))) return Solid(corners, layer, colour);
        Begin_Hatch(corners, layer, colour, true);
        End_Hatch();
    }

    // Corners in the order of a letter Z.
    void Solid(const std::vector<Dxf_Place>& corners, std::string_view layer, Colour colour) {
        if (corners.size() < 3) return;
        Begin("SOLID", layer, colour);
        Dxf_Groups& out = Out();
        out.Word(100, "AcDbTrace");
        const Dxf_Place& last = corners[2];
        const std::array<const Dxf_Place*, 4> ordered = {&corners[0], &corners[1], corners.size() == 4 ? &corners[3] : &last, &last};
        for (int i = 0; i < 4; ++i) out.Place(10 + i, *ordered[static_cast<std::size_t>(i)]);
    }

    // Parallel lines and the outline. The lines of shapes side by side go on from one to the next.
    void Hatched(std::vector<Dxf_Place>& corners, Colour colour) {
        if (corners.size() > 1 && corners.front() == corners.back()) corners.pop_back();
        if (corners.size() < 3) return;
        Begin_Hatch(corners, dxf_areas, colour, false);
        const double distance = hatch_distances[static_cast<std::size_t>(density_ - 1)] * drawing_.unit;
        const double angle = hatch_angle * std::numbers::pi / 180;
        Dxf_Groups& out = Out();
        out.Ratio(52, hatch_angle);
        out.Ratio(41, distance);
        out.Whole(77, 0);
        out.Whole(78, 1);  // sets of lines
        out.Ratio(53, hatch_angle);
        out.Length(43, page_corner_.x);
        out.Length(44, page_corner_.y);
        out.Ratio(45, -distance * std::sin(angle));  // from a line to the next
        out.Ratio(46, distance * std::cos(angle));
        out.Whole(79, 0);  // without dashes
        End_Hatch();
        corners.push_back(corners.front());
        Light_Polyline(corners, dxf_areas, {colour, 1, Line_Style::solid});
    }

    void Begin_Hatch(const std::vector<Dxf_Place>& corners, std::string_view layer, Colour colour, bool solid) {
        Begin("HATCH", layer, colour);
        Dxf_Groups& out = Out();
        out.Word(100, "AcDbHatch");
        out.Place(10, {0, 0});
        for (const int code : {210, 220}) out.Whole(code, 0);
        out.Whole(230, 1);
        out.Word(2, solid ? "SOLID" : "_USER");
        out.Whole(70, solid ? 1 : 0);
        out.Whole(71, 0);
        out.Whole(91, 1);  // one boundary, an outer polygon without arcs, closed
        out.Whole(92, 1 + 2);
        out.Whole(72, 0);
        out.Whole(73, 1);
        out.Whole(93, static_cast<int>(corners.size()));
        out.Vertices(corners);
        out.Whole(97, 0);
        out.Whole(75, 0);
        out.Whole(76, solid ? 1 : 0);
    }
    void End_Hatch() {
        Out().Whole(98, 0);  // no seed points
    }

    void Write_Rectangles(const Rect& rect, const Cell_Rectangles& cells);
    const std::string& Block_Of(const Marker_Style& style);
    void Box_Of_Text(Point at, double width, const Text_Style& style);

    std::string file_;
    Dxf_Colours colours_;
    int density_;
    Point page_corner_, origin_;  // millimetres; the origin of a block is its own
    Colour ground_ = WRGB(255, 255, 255);
    Dxf_Drawing drawing_;
    bool in_block_ = false, closed_ = false;
    std::vector<Dxf_Place> places_;
    std::unordered_map<Colour, std::string> colour_groups_;
    std::map<std::tuple<int, double, double, bool>, std::size_t> block_numbers_;
};

void Dxf_Device::Write_Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) {
    if (filled) return Write_Area(Ellipse_Corners(centre, rx, ry), pen.colour);
    const Dxf_Place half = Rounded_Place({rx * mm_a_point, ry * mm_a_point});
    if (half.x == 0 || half.y == 0)
        return Write_Line(std::array<Point, 2>{{{centre.x - rx, centre.y - ry}, {centre.x + rx, centre.y + ry}}}, pen);
    if (!Line_Shows(pen.colour)) return;
    const bool circle = half.x == half.y;
    Begin(circle ? "CIRCLE" : "ELLIPSE", dxf_lines, pen.colour);
    Use(pen);
    Dxf_Groups& out = Out();
    out.Word(100, circle ? "AcDbCircle" : "AcDbEllipse");
    out.Place(10, Place(centre));
    if (circle) return out.Length(40, rx * mm_a_point);
    const bool wide = half.x > half.y;
    out.Place(11, wide ? Dxf_Place{half.x, 0} : Dxf_Place{0, half.y});  // end of the longer axis
    out.Word(210, "0");
    out.Word(220, "0");
    out.Word(230, "1");
    out.Ratio(40, wide ? ry / rx : rx / ry);
    out.Ratio(41, 0);
    out.Ratio(42, 2 * std::numbers::pi);
}

// The shape of a marker is drawn once, about the origin.
const std::string& Dxf_Device::Block_Of(const Marker_Style& style) {
    const auto [found, added] = block_numbers_.try_emplace({style.glyph, style.width, style.height, style.filled}, drawing_.blocks.size());
    if (added) {
        drawing_.blocks.push_back({"PLOT_MARKER_" + std::to_string(drawing_.blocks.size() + 1), drawing_.next_handle++, {}});
        in_block_ = true;
        origin_ = {0, 0};
        Shape_Device::Write_Markers(std::array<Point, 1>{{{0, 0}}}, style);
        origin_ = page_corner_;
        in_block_ = false;
    }
    return drawing_.blocks[found->second].name;
}

void Dxf_Device::Write_Markers(std::span<const Point> places, const Marker_Style& style) {
    if (!Line_Shows(style.colour)) return;
    const std::string& block = Block_Of(style);
    for (const Point& at : places) {
        Begin("INSERT", dxf_markers, style.colour);
        Out().Word(100, "AcDbBlockReference");
        Out().Word(2, block);
        Out().Place(10, Place(at));
    }
}

void Dxf_Device::Write_Cells(const Rect& rect, int columns, int rows, std::span<const Colour> colours) {
    const bool solid = density_ == dxf_solid;
    const Cell_Rectangles merged = Merge_Cells(columns, rows, colours, solid ? most_solids : most_hatches);
    if (solid && colours_ != Dxf_Colours::black && merged.rectangles.size() > cells_a_block)
        Write_Rectangles(rect, Ground_Of_Cells(columns, rows, colours, merged.rectangles.size() / cells_a_block));
    Write_Rectangles(rect, merged);
}

void Dxf_Device::Write_Rectangles(const Rect& rect, const Cell_Rectangles& cells) {
    for (const Merged_Cells& merged : cells.rectangles) {
        const Rect r = Rect_Of_Cells(cells, merged, rect);
        Write_Area(std::array<Point, 4>{{{r.x1, r.y1}, {r.x2, r.y1}, {r.x2, r.y2}, {r.x1, r.y2}}}, merged.colour);
    }
}

// Covers what lies below, whatever the fill of other areas; on the layer of the texts, so that it goes with them.
void Dxf_Device::Box_Of_Text(Point at, double width, const Text_Style& style) {
    const Colour colour = Box_Behind(style.colour);
    if (!Area_Shows(colour)) return;
    const auto box = Room_Of_Text(at, width, style, 0.1 * Em_Of_Cell(style.width, style.height));
    Filled(Places(Polygon_Inside(box, {0, 0, Width(), Height()})), dxf_texts, colour);
}

// The fonts are as wide as those that the width was measured with, so that the letters need no stretching.
void Dxf_Device::Write_Text(Point at, const std::string& text, double width, const Text_Style& style) {
    const Dxf_Font font = Dxf_Font_Of(style.font, style.style);
    const double em = Em_Of_Cell(style.width, style.height), height = font.capitals * em * mm_a_point;
    if (Rounded_Place({height, 0}).x <= 0 || !Line_Shows(style.colour)) return;
    if ((style.style & style_opaque) != 0) Box_Of_Text(at, width, style);
    Begin("TEXT", dxf_texts, style.colour);
    Dxf_Groups& out = Out();
    out.Word(100, "AcDbText");
    out.Place(10, Place(Beside(at, Start_Of_Text(style.justify, width), 0, style.angle)));
    out.Length(40, height);
    out.Word(1, ((style.style & style_underline) != 0 ? "%%u" : "") + Dxf_Words(text));
    if (style.angle != 0) out.Ratio(50, style.angle);
    out.Word(7, font.style);
    if (style.justify != Justify::left) {
        out.Whole(72, static_cast<int>(style.justify));  // 1 centre, 2 right, on the base line
        out.Place(11, Place(at));
    }
    out.Word(100, "AcDbText");
}

}  // namespace

std::unique_ptr<Vector_Device> Open_Dxf(const std::string& file, double width, double height, const Hardcopy_Options& options) {
    return std::make_unique<Dxf_Device>(file, width, height, options);
}

}  // namespace vntl
