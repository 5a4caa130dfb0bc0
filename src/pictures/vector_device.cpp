// PostScript, SVG and PDF by Cairo.
#include "pictures/vector_device.hpp"

#include <cairo-pdf.h>
#include <cairo-ps.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/write_file.hpp"
#include "drawing/font_table.hpp"
#include "drawing/pixels.hpp"
#include "pictures/shape_device.hpp"
#include "pictures/text_extent.hpp"

namespace vntl {

namespace {

constexpr int least_stroke_frequency = 4;     // a path of fewer points would repeat the last one
constexpr double steps_a_point = 16;          // of places: finer than print, and few digits in the file
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

class Cairo_Device : public Shape_Device {
public:
    Cairo_Device(Vector_Format format, std::string file, double width, double height, const Hardcopy_Options& options)
        : Shape_Device(width, height), file_(std::move(file)) {
        const bool print = format == Vector_Format::postscript;
        const double sheet_width = print && options.paper_width > 0 ? options.paper_width : width;
        const double sheet_height = print && options.paper_height > 0 ? options.paper_height : height;
        surface_ = Surface(format, text_, sheet_width, sheet_height);
        cairo_ = cairo_create(surface_);
        longest_path_ = print ? std::max(options.stroke_frequency, least_stroke_frequency) : std::numeric_limits<int>::max();
        end_mark_ = print && options.end_mark;
        cairo_translate(cairo_, 0.5 * (sheet_width - width), 0.5 * (sheet_height - height));
        cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
    }
    ~Cairo_Device() override { Release(); }

    Status Close() override {
        if (cairo_ == nullptr) return Status::Done();
        cairo_show_page(cairo_);
        cairo_surface_finish(surface_);
        const bool sound = cairo_surface_status(surface_) == CAIRO_STATUS_SUCCESS && cairo_status(cairo_) == CAIRO_STATUS_SUCCESS;
        Release();
        if (end_mark_) text_ += end_of_transmission;
        return sound && Replace_File(file_, text_) ? Status::Done() : Status::Fail_File("The picture cannot be written: " + file_);
    }

protected:
    void Write_Clear(Colour colour) override {
        Use(colour);
        cairo_new_path(cairo_);
        cairo_rectangle(cairo_, 0, 0, Width(), Height());
        cairo_fill(cairo_);
    }

    // Stroked whenever the path has so many points. The next path begins a corner earlier, so that it makes the join there, and its dashes
    // go on.
    void Write_Line(std::span<const Point> line, const Pen& pen) override {
        cairo_new_path(cairo_);
        int in_path = 0;
        double length = 0, travelled = 0;  // of the line so far; up to the start of the path
        for (std::size_t i = 0; i < line.size(); ++i) {
            Line_To(line[i]);
            ++in_path;
            const Point from = On_Page(line[i == 0 ? 0 : i - 1]), to = On_Page(line[i]);
            const double step = std::hypot(to.x - from.x, to.y - from.y);
            length += step;
            if (in_path < longest_path_ || i + 1 == line.size()) continue;
            Stroke(pen, travelled);
            Line_To(line[i - 1]);
            Line_To(line[i]);
            in_path = 2;
            travelled = length - step;
        }
        const bool closed = line.size() > 2 && line.front().x == line.back().x && line.front().y == line.back().y;
        if (closed && travelled == 0) cairo_close_path(cairo_);
        Stroke(pen, travelled);
    }

    void Write_Area(std::span<const Point> polygon, Colour colour) override {
        cairo_new_path(cairo_);
        Add_Polygon(polygon);
        Use(colour);
        cairo_fill(cairo_);
    }

    void Write_Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) override {
        cairo_save(cairo_);
        cairo_new_path(cairo_);
        cairo_translate(cairo_, centre.x, Y(centre.y));
        cairo_scale(cairo_, rx, ry);
        cairo_arc(cairo_, 0, 0, 1, 0, 2 * std::numbers::pi);
        cairo_close_path(cairo_);
        cairo_restore(cairo_);
        if (!filled) return Stroke(pen);
        Use(pen.colour);
        cairo_fill(cairo_);
    }

    // As few paths as the printer takes.
    void Write_Markers(std::span<const Point> places, const Marker_Style& style) override {
        const Glyph_Outline glyph = Marker_Outline(style.glyph);
        const bool dots = style.filled && style.glyph == circle_glyph;
        if (!dots && !(style.filled && !glyph.strokes)) return Shape_Device::Write_Markers(places, style);
        cairo_new_path(cairo_);
        int points = 0;
        std::vector<Point> corners(glyph.points.size());
        for (const Point& at : places) {
            for (std::size_t k = 0; k < corners.size(); ++k)
                corners[k] = {at.x + glyph.points[k].x * style.width, at.y + glyph.points[k].y * style.height};
            dots ? Add_Dot(at) : Add_Polygon(corners);
            points += dots ? 1 : static_cast<int>(corners.size());
            if (points < longest_path_) continue;
            Paint_Markers(style, dots);
            points = 0;
        }
        Paint_Markers(style, dots);
    }

    // An image, whose cells no viewer draws with seams between them.
    void Write_Cells(const Rect& rect, int columns, int rows, std::span<const Colour> colours) override {
        const bool whole = std::find(colours.begin(), colours.end(), no_colour) == colours.end();
        cairo_surface_t* const image = cairo_image_surface_create(whole ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, columns, rows);
        if (cairo_surface_status(image) == CAIRO_STATUS_SUCCESS) {
            auto* const pixels = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(image));
            const int stride = cairo_image_surface_get_stride(image) / 4;
            for (int row = 0; row < rows; ++row)
                std::transform(colours.begin() + row * columns, colours.begin() + (row + 1) * columns, pixels + (rows - 1 - row) * stride,
                               [](Colour colour) { return colour == no_colour ? 0 : Argb(colour); });
            cairo_surface_mark_dirty(image);
        }
        cairo_save(cairo_);
        cairo_translate(cairo_, rect.x1, Y(rect.y2));
        cairo_scale(cairo_, (rect.x2 - rect.x1) / columns, (rect.y2 - rect.y1) / rows);
        cairo_set_source_surface(cairo_, image, 0, 0);  // that one could not be made is told by Close
        cairo_pattern_set_filter(cairo_get_source(cairo_), CAIRO_FILTER_NEAREST);
        cairo_paint(cairo_);
        cairo_restore(cairo_);
        cairo_surface_destroy(image);
    }

    void Write_Text(Point at, const std::string& text, double width, const Text_Style& style) override {
        const double em = Em_Of_Cell(style.width, style.height);
        cairo_select_font_face(cairo_, Family_Of(style.font).family,
                               (style.style & style_italic) != 0 ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                               (style.style & style_bold) != 0 ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(cairo_, em);
        const double left = Start_Of_Text(style.justify, width);
        cairo_save(cairo_);
        cairo_translate(cairo_, at.x, Y(at.y));
        cairo_rotate(cairo_, -style.angle * std::numbers::pi / 180);
        if ((style.style & style_opaque) != 0)
            Fill_Box(left - 0.1 * em, -em, width + 0.2 * em, (1 + descent) * em, Box_Behind(style.colour));
        Use(style.colour);
        cairo_move_to(cairo_, left, 0);
        cairo_show_text(cairo_, text.c_str());
        if ((style.style & style_underline) != 0) Fill_Box(left, 0.1 * em, width, 0.05 * em, style.colour);
        cairo_restore(cairo_);
    }

private:
    void Release() {
        if (cairo_ == nullptr) return;
        cairo_destroy(cairo_);
        cairo_surface_destroy(surface_);
        cairo_ = nullptr;
    }

    static double Short(double at) { return std::nearbyint(at * steps_a_point) / steps_a_point; }
    double Y(double y) const { return Height() - y; }
    Point On_Page(Point p) const { return {Short(p.x), Short(Y(p.y))}; }
    void Line_To(Point p) { cairo_line_to(cairo_, On_Page(p).x, On_Page(p).y); }

    void Add_Polygon(std::span<const Point> corners) {
        cairo_new_sub_path(cairo_);
        for (const Point& p : corners) Line_To(p);
        cairo_close_path(cairo_);
    }

    // A path that is closed where it begins is a dot with round ends: a few bytes a marker.
    void Add_Dot(Point at) {
        cairo_new_sub_path(cairo_);
        Line_To(at);
        cairo_close_path(cairo_);
    }

    // The pen of dots takes the shape of the glyph's box.
    void Paint_Markers(const Marker_Style& style, bool dots) {
        Use(style.colour);
        if (!dots) return cairo_fill(cairo_);
        cairo_save(cairo_);
        cairo_scale(cairo_, std::max(style.width, 1e-3), std::max(style.height, 1e-3));
        cairo_set_line_width(cairo_, 1);
        cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
        cairo_set_dash(cairo_, nullptr, 0, 0);
        cairo_stroke(cairo_);
        cairo_restore(cairo_);
    }

    void Fill_Box(double left, double top, double width, double height, Colour colour) {
        Use(colour);
        cairo_rectangle(cairo_, left, top, width, height);
        cairo_fill(cairo_);
    }

    void Use(Colour c) { cairo_set_source_rgb(cairo_, Red(c) / 255.0, Green(c) / 255.0, Blue(c) / 255.0); }

    // `travelled`: length of the line before the path, which its dashes go on from.
    void Stroke(const Pen& pen, double travelled = 0) {
        Use(pen.colour);
        cairo_set_line_width(cairo_, pen.width * Unit());
        std::vector<double> dashes;
        for (const double length : Dash_Pattern(pen.style)) dashes.push_back(length * Unit());
        cairo_set_dash(cairo_, dashes.data(), static_cast<int>(dashes.size()), travelled);
        cairo_stroke(cairo_);
    }

    std::string file_;
    std::string text_;       // of the file
    int longest_path_ = 0;   // points
    bool end_mark_ = false;  // of the file
    cairo_surface_t* surface_ = nullptr;
    cairo_t* cairo_ = nullptr;
};

}  // namespace

std::unique_ptr<Vector_Device> Open_Vector_Device(Vector_Format format, const std::string& file, double width, double height,
                                                  const Hardcopy_Options& options) {
    return std::make_unique<Cairo_Device>(format, file, width, height, options);
}

}  // namespace vntl
