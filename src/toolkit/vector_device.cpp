// PostScript, SVG and PDF by Cairo.
#include "toolkit/vector_device.hpp"

#include <cairo-pdf.h>
#include <cairo-ps.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/write_file.hpp"
#include "toolkit/cell_raster.hpp"
#include "toolkit/font_table.hpp"

namespace vntl {

namespace {

constexpr double farthest = 1e5;      // points from the page beyond which nothing can show
constexpr double nearest = 1.0 / 20;  // of a point: what lies closer is one place of a curve
constexpr double points_a_line_unit = 0.72;
constexpr double seam = 0.3;         // points: width of the line about a facet that closes the seams which viewers show between neighbours
constexpr double image_pixel = 0.5;  // line units: about the size of a pixel of an image of cells
constexpr double largest_image = 16000;  // pixels of a side
constexpr int circle_glyph = 221;
constexpr int least_stroke_frequency = 4;     // a path of fewer points would repeat the last one
constexpr char end_of_transmission = '\x04';  // Ctrl/D

cairo_status_t Append(void* text, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

cairo_surface_t* Surface(Vector_Format format, std::string& text, double width, double height) {
    switch (format) {
        case Vector_Format::postscript:
            return cairo_ps_surface_create_for_stream(Append, &text, width, height);
        case Vector_Format::svg:
            return cairo_svg_surface_create_for_stream(Append, &text, width, height);
        case Vector_Format::pdf:
            return cairo_pdf_surface_create_for_stream(Append, &text, width, height);
    }
    return nullptr;
}

// One axis of an image of cells: the part of it that shows.
struct Image_Axis {
    double from = 0, pixel = 0;  // points
    int pixels = 0;              // 0 where nothing shows
    double Pixel(double at) const { return (at - from) / pixel; }
};

// Cells that lie between two places. Where all show, a cell takes a whole number of pixels, so that its edges are where they should be, and
// several of them where it is large: a viewer that smooths an image then blurs no more than the edge. Cells finer than a pixel share one.
// The image ends where the clip does, by itself: an overhang of less than half a point would escape Cairo's clip.
Image_Axis Axis_Of_Image(double low, double high, int cells, double shown_from, double shown_to, double unit) {
    const double cell = (high - low) / cells;
    const double from = std::max(low, shown_from), to = std::min(high, shown_to);
    if (!(from < to)) return {};
    const double about = std::max(image_pixel * unit, (to - from) / largest_image);
    const double wanted = cell >= about ? cell / std::round(cell / about) : about;
    const double pixels = std::max(1.0, std::round((to - from) / wanted));
    return {from, (to - from) / pixels, static_cast<int>(pixels)};
}

// Cells of about a pixel of an image, each of which gets one.
int Fine_Cells(double length, double unit) {
    return std::max(1, static_cast<int>(length / std::max(image_pixel * unit, length / largest_image)));
}

class Cairo_Device : public Vector_Device {
public:
    Cairo_Device(Vector_Format format, std::string file, double width, double height, const Hardcopy_Options& options)
        : file_(std::move(file)), width_(width), height_(height) {
        const bool print = format == Vector_Format::postscript;
        const double sheet_width = print && options.paper_width > 0 ? options.paper_width : width;
        const double sheet_height = print && options.paper_height > 0 ? options.paper_height : height;
        surface_ = Surface(format, text_, sheet_width, sheet_height);
        cairo_ = cairo_create(surface_);
        longest_path_ = print ? std::max(options.stroke_frequency, least_stroke_frequency) : std::numeric_limits<int>::max();
        end_mark_ = print && options.end_mark;
        unit_ = points_a_line_unit * Line_Unit(width / points_a_line_unit, height / points_a_line_unit);
        cairo_translate(cairo_, 0.5 * (sheet_width - width), 0.5 * (sheet_height - height));
        cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
        cairo_save(cairo_);
        Set_Clip({0, 0, width, height});
    }
    ~Cairo_Device() override { Release(); }

    double Width() const override { return width_; }
    double Height() const override { return height_; }

    void Clear(Colour colour) override {
        cairo_reset_clip(cairo_);
        Use(colour);
        cairo_new_path(cairo_);
        cairo_rectangle(cairo_, 0, 0, width_, height_);
        cairo_fill(cairo_);
        Clip();
    }

    void Set_Clip(const Rect& rect) override {
        clip_ = rect;
        cairo_reset_clip(cairo_);
        Clip();
    }

    void Polyline(std::span<const Point> points, const Pen& pen) override {
        if (pen.style == Line_Style::none || points.size() < 2) return;
        Begin_Line(pen);
        Move_To(points.front());
        for (const Point& p : points.subspan(1)) Line_To(p);
        const bool closed = points.size() > 2 && points.front().x == points.back().x && points.front().y == points.back().y;
        if (closed && line_.points == static_cast<int>(points.size())) cairo_close_path(cairo_);
        End_Line();
    }

    void Curve(const Series& s, const Pen& pen) override {
        if (pen.style == Line_Style::none) return;
        Begin_Line(pen);
        bool open = false;
        Point last{}, held{};  // the last place of the path, and a point left out behind it
        bool holding = false;
        for (std::size_t i = 0; i < s.x.size(); ++i) {
            const Point p = s.At(i);
            if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
                if (holding) Line_To(held);
                open = holding = false;
                continue;
            }
            if (open && (Beyond(last, p) || Near(last, p))) {
                held = p;
                holding = true;
                if (Beyond(last, p)) last = p;
                continue;
            }
            if (holding) Line_To(held);
            open ? Line_To(p) : Move_To(p);
            open = true;
            holding = false;
            last = p;
        }
        if (holding) Line_To(held);
        End_Line();
    }

    void Markers(const Series& s, const Marker_Style& style) override {
        const Glyph_Outline glyph = Marker_Outline(style.glyph);
        if (glyph.points.empty()) return;
        const bool dots = style.filled && style.glyph == circle_glyph;
        Point last{-2 * farthest, 0};
        int points = 0;
        cairo_new_path(cairo_);
        for (std::size_t i = 0; i < s.x.size(); ++i) {
            const Point p = s.At(i);
            const bool outside = !(p.x >= clip_.x1 - style.width && p.x <= clip_.x2 + style.width && p.y >= clip_.y1 - style.height &&
                                   p.y <= clip_.y2 + style.height);
            if (outside || Near(last, p)) continue;
            last = p;
            if (dots) {
                cairo_move_to(cairo_, X(p.x), Y(p.y));
                cairo_line_to(cairo_, X(p.x), Y(p.y));
            } else {
                Add_Glyph(glyph, p, style);
            }
            points += dots ? 1 : static_cast<int>(glyph.points.size());
            if (points < longest_path_) continue;
            Paint_Glyphs(glyph, style, dots);
            points = 0;
        }
        Paint_Glyphs(glyph, style, dots);
    }

    void Fill(std::span<const Point> polygon, Colour colour) override {
        cairo_new_path(cairo_);
        for (const Point& p : polygon) cairo_line_to(cairo_, X(p.x), Y(p.y));
        cairo_close_path(cairo_);
        Use(colour);
        cairo_fill(cairo_);
    }

    void Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) override {
        if (!(rx > 0 && ry > 0)) return;
        cairo_save(cairo_);
        cairo_new_path(cairo_);
        cairo_translate(cairo_, X(centre.x), Y(centre.y));
        cairo_scale(cairo_, rx, ry);
        cairo_arc(cairo_, 0, 0, 1, 0, 2 * std::numbers::pi);
        cairo_restore(cairo_);
        Use(pen.colour);
        if (filled)
            cairo_fill(cairo_);
        else
            Stroke(pen);
    }

    // An image, whose cells no viewer draws with seams between them, of the part that shows.
    void Cells(const Cell_Image& image) override {
        if (!image.Shows()) return;
        const Rect place{image.rect.x1, height_ - image.rect.y2, image.rect.x2, height_ - image.rect.y1};
        const double top = height_ - std::min(clip_.y2, height_), bottom = height_ - std::max(clip_.y1, 0.0);
        const Image_Axis across =
            Axis_Of_Image(place.x1, place.x2, image.columns, std::max(clip_.x1, 0.0), std::min(clip_.x2, width_), unit_);
        const Image_Axis down = Axis_Of_Image(place.y1, place.y2, image.rows, top, bottom, unit_);
        if (across.pixels == 0 || down.pixels == 0) return;
        const bool whole = std::find(image.colours.begin(), image.colours.end(), no_colour) == image.colours.end();
        const cairo_format_t format = whole ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32;  // which begins clear
        cairo_surface_t* const surface = cairo_image_surface_create(format, across.pixels, down.pixels);
        if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
            const Pixel_Buffer pixels{reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface)), across.pixels, down.pixels,
                                      cairo_image_surface_get_stride(surface) / 4};
            Paint_Cells(pixels, {0, 0, across.pixels, down.pixels},
                        {across.Pixel(place.x1), down.Pixel(place.y1), across.Pixel(place.x2), down.Pixel(place.y2)}, image);
            cairo_surface_mark_dirty(surface);
        }
        cairo_save(cairo_);
        cairo_translate(cairo_, across.from, down.from);
        cairo_scale(cairo_, across.pixel, down.pixel);
        cairo_set_source_surface(cairo_, surface, 0, 0);  // that one could not be made is told by Close
        cairo_pattern_set_filter(cairo_get_source(cairo_), CAIRO_FILTER_NEAREST);
        cairo_paint(cairo_);
        cairo_restore(cairo_);
        cairo_surface_destroy(surface);
    }

    Finest_Cells Finest(const Rect& rect) const override {
        const Rect seen{std::max(rect.x1, 0.0), std::max(rect.y1, 0.0), std::min(rect.x2, width_), std::min(rect.y2, height_)};
        if (!(seen.x1 < seen.x2 && seen.y1 < seen.y2)) return {};
        return {seen, Fine_Cells(seen.x2 - seen.x1, unit_), Fine_Cells(seen.y2 - seen.y1, unit_)};
    }

    // One path for facets of one colour that follow each other, all turned the same way round, so that they fill as one.
    void Facets(const Facet_List& list) override {
        const auto together = [](const Facet& a, const Facet& b) { return a.colour == b.colour && (a.count == 2) == (b.count == 2); };
        cairo_new_path(cairo_);
        int points = 0;
        for (std::size_t i = 0; i < list.facets.size(); ++i) {
            const Facet& facet = list.facets[i];
            const auto& c = facet.corners;
            const double before = Turn(list, c[0], c[1], c[2]), after = facet.count == 4 ? Turn(list, c[0], c[2], c[3]) : before;
            if (facet.count < 4 || (before > 0) == (after > 0)) {
                Add_Corners(list, std::span(c).first(facet.count), before < 0);
            } else {
                Add_Corners(list, std::array{c[0], c[1], c[2]}, before < 0);
                Add_Corners(list, std::array{c[0], c[2], c[3]}, after < 0);
            }
            points += static_cast<int>(facet.count);
            if (i + 1 < list.facets.size() && together(facet, list.facets[i + 1]) && points < longest_path_) continue;
            points = 0;
            Use(facet.colour);
            if (facet.count > 2) cairo_fill_preserve(cairo_);
            cairo_set_dash(cairo_, nullptr, 0, 0);
            cairo_set_line_width(cairo_, facet.count > 2 ? seam : list.line_width * unit_);
            cairo_stroke(cairo_);
        }
    }

    void Text(Point at, std::string_view text, const Text_Style& style) override {
        const double em = Choose_Font(style);
        if (em <= 0) return;
        const std::string words = Written_Text(text, style.font);
        cairo_text_extents_t extent;
        cairo_text_extents(cairo_, words.c_str(), &extent);
        const double width = extent.x_advance;
        const double left = style.justify == Justify::left ? 0 : style.justify == Justify::centre ? -0.5 * width : -width;
        cairo_save(cairo_);
        cairo_translate(cairo_, X(at.x), Y(at.y));
        cairo_rotate(cairo_, -style.angle * std::numbers::pi / 180);
        if ((style.style & style_opaque) != 0) {
            Use(Box_Behind(style.colour));
            cairo_rectangle(cairo_, left - 0.1 * em, -em, width + 0.2 * em, (1 + descent) * em);
            cairo_fill(cairo_);
        }
        Use(style.colour);
        cairo_move_to(cairo_, left, 0);
        cairo_show_text(cairo_, words.c_str());
        if ((style.style & style_underline) != 0) {
            cairo_rectangle(cairo_, left, 0.1 * em, width, 0.05 * em);
            cairo_fill(cairo_);
        }
        cairo_restore(cairo_);
    }

    double Text_Width(std::string_view text, const Text_Style& style) const override {
        if (Choose_Font(style) <= 0) return 0;
        cairo_text_extents_t extent;
        cairo_text_extents(cairo_, Written_Text(text, style.font).c_str(), &extent);
        return extent.x_advance;
    }

    Status Close() override {
        if (cairo_ == nullptr) return Status::Done();
        cairo_show_page(cairo_);
        cairo_surface_finish(surface_);
        const bool sound = cairo_surface_status(surface_) == CAIRO_STATUS_SUCCESS && cairo_status(cairo_) == CAIRO_STATUS_SUCCESS;
        Release();
        if (end_mark_) text_ += end_of_transmission;
        return sound && Replace_File(file_, text_) ? Status::Done() : Status::Fail_File("The picture cannot be written: " + file_);
    }

private:
    void Release() {
        if (cairo_ == nullptr) return;
        cairo_destroy(cairo_);
        cairo_surface_destroy(surface_);
        cairo_ = nullptr;
    }

    static bool Near(Point a, Point b) { return std::fabs(a.x - b.x) < nearest && std::fabs(a.y - b.y) < nearest; }
    bool Beyond(Point a, Point b) const { return (a.x < clip_.x1 && b.x < clip_.x1) || (a.x > clip_.x2 && b.x > clip_.x2); }

    static double X(double x) { return std::isfinite(x) ? std::clamp(x, -farthest, farthest) : 0; }
    double Y(double y) const { return X(height_ - y); }

    void Clip() {
        cairo_new_path(cairo_);
        cairo_rectangle(cairo_, clip_.x1, height_ - clip_.y2, clip_.x2 - clip_.x1, clip_.y2 - clip_.y1);
        cairo_clip(cairo_);
    }

    // Twice the area of a triangle, above 0 for corners that go round one way.
    static double Turn(const Facet_List& list, std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        const Point &p = list.places[a], &q = list.places[b], &r = list.places[c];
        return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
    }

    void Add_Corners(const Facet_List& list, std::span<const std::uint32_t> corners, bool backwards) {
        cairo_new_sub_path(cairo_);
        for (std::size_t k = 0; k < corners.size(); ++k) {
            const Point& at = list.places[corners[backwards ? corners.size() - 1 - k : k]];
            cairo_line_to(cairo_, X(at.x), Y(at.y));
        }
        if (corners.size() > 2) cairo_close_path(cairo_);
    }

    void Add_Glyph(const Glyph_Outline& glyph, Point at, const Marker_Style& style) {
        for (std::size_t k = 0; k < glyph.points.size(); ++k) {
            const double x = X(at.x + glyph.points[k].x * style.width), y = Y(at.y + glyph.points[k].y * style.height);
            k == 0 || (glyph.strokes && k % 2 == 0) ? cairo_move_to(cairo_, x, y) : cairo_line_to(cairo_, x, y);
        }
        if (!glyph.strokes) cairo_close_path(cairo_);
    }

    void Paint_Glyphs(const Glyph_Outline& glyph, const Marker_Style& style, bool dots) {
        Use(style.colour);
        if (dots)
            Stroke_Dots(style);
        else if (style.filled && !glyph.strokes)
            cairo_fill(cairo_);
        else
            Stroke({style.colour, 1, Line_Style::solid});
    }

    // A line of no length with round ends is a dot: a few bytes a marker. The pen takes the shape of the glyph's box.
    void Stroke_Dots(const Marker_Style& style) {
        cairo_save(cairo_);
        cairo_scale(cairo_, std::max(style.width, 1e-3), std::max(style.height, 1e-3));
        cairo_set_line_width(cairo_, 1);
        cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
        cairo_set_dash(cairo_, nullptr, 0, 0);
        cairo_stroke(cairo_);
        cairo_restore(cairo_);
    }

    void Use(Colour c) { cairo_set_source_rgb(cairo_, Red(c) / 255.0, Green(c) / 255.0, Blue(c) / 255.0); }

    // `travelled`: length of the line before the path, which its dashes go on from.
    void Stroke(const Pen& pen, double travelled = 0) {
        Use(pen.colour);
        cairo_set_line_width(cairo_, pen.width * unit_);
        std::vector<double> dashes;
        for (const double length : Dash_Pattern(pen.style)) dashes.push_back(length * unit_);
        cairo_set_dash(cairo_, dashes.data(), static_cast<int>(dashes.size()), travelled);
        cairo_stroke(cairo_);
    }

    // A line is stroked whenever its path has so many points. The next path begins a corner earlier, so that it makes the join there.
    struct Line_Path {
        Pen pen;
        int points = 0, repeated = 0;          // in the path, and those of them that the last one has stroked
        Point last{}, before{};                // the last place, and the one before it
        double length = 0, length_before = 0;  // of the line up to there
        double travelled = 0;                  // at the start of the path
    };

    void Begin_Line(const Pen& pen) {
        cairo_new_path(cairo_);
        line_ = {.pen = pen};
    }

    // The dashes of a new part begin anew, which those of a path in the middle of a line do not.
    void Move_To(Point p) {
        if (line_.travelled > 0 || line_.points >= longest_path_) End_Line();
        cairo_move_to(cairo_, X(p.x), Y(p.y));
        line_.last = p;
        line_.length = line_.travelled = 0;
        ++line_.points;
    }

    void Line_To(Point p) {
        cairo_line_to(cairo_, X(p.x), Y(p.y));
        line_.before = line_.last, line_.length_before = line_.length;
        line_.last = p;
        line_.length += std::hypot(X(p.x) - X(line_.before.x), Y(p.y) - Y(line_.before.y));
        if (++line_.points < longest_path_) return;
        End_Line();
        cairo_move_to(cairo_, X(line_.before.x), Y(line_.before.y));
        cairo_line_to(cairo_, X(p.x), Y(p.y));
        line_.points = line_.repeated = 2;
        line_.travelled = line_.length_before;
    }

    void End_Line() {
        if (line_.points > line_.repeated) Stroke(line_.pen, line_.travelled);
        cairo_new_path(cairo_);
        line_.points = line_.repeated = 0;
    }

    double Choose_Font(const Text_Style& style) const {
        cairo_select_font_face(cairo_, Family_Of(style.font).family,
                               (style.style & style_italic) != 0 ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                               (style.style & style_bold) != 0 ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        const double em = Em_Of_Cell(style.width, style.height);
        cairo_set_font_size(cairo_, em);
        return em;
    }

    std::string file_;
    std::string text_;  // of the file
    double width_, height_;
    double unit_ = 1;
    int longest_path_ = 0;   // points
    bool end_mark_ = false;  // of the file
    Line_Path line_{};
    Rect clip_{};
    cairo_surface_t* surface_ = nullptr;
    cairo_t* cairo_ = nullptr;
};

}  // namespace

std::unique_ptr<Vector_Device> Open_Vector_Device(Vector_Format format, const std::string& file, double width, double height,
                                                  const Hardcopy_Options& options) {
    return std::make_unique<Cairo_Device>(format, file, width, height, options);
}

}  // namespace vntl
