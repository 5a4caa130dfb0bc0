// Shapes as the lines, polygons and objects of a metafile.
#include "pictures/metafile_device.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/write_file.hpp"
#include "drawing/font_table.hpp"
#include "pictures/cell_merge.hpp"
#include "pictures/cut_shapes.hpp"
#include "pictures/dashes.hpp"
#include "pictures/little_endian.hpp"
#include "pictures/text_extent.hpp"

namespace vntl {

namespace {

constexpr int points_an_inch = 72;
constexpr int finest_units = 1440;            // an inch
constexpr std::size_t most_corners = 16'000;  // of a record: what every reader takes
constexpr int most_halvings = 12;             // of a polygon with more corners
constexpr double thin = 1.5;                  // line units: dashes are longer than such a line is wide
constexpr std::uint32_t bitmap_header_size = 40;
constexpr std::size_t bytes_a_pixel = 3;

int Units_For(double width, double height, Metafile_Range range) {
    if (range == Metafile_Range::bits_32) return finest_units;
    const double most = std::numeric_limits<std::int16_t>::max() * points_an_inch / std::max({width, height, 1.0});
    return static_cast<int>(std::clamp(most, 1.0, static_cast<double>(finest_units)));
}

std::size_t Row_Size(int columns) { return (static_cast<std::size_t>(columns) * bytes_a_pixel + 3) / 4 * 4; }

// Rectangles of an image in which every cell has a colour.
Cell_Rectangles Coloured_Blocks(int columns, int rows, std::span<const Colour> colours) {
    std::vector<Colour> any(colours.size());
    std::transform(colours.begin(), colours.end(), any.begin(), [](Colour c) { return c == no_colour ? no_colour : Colour{}; });
    return Merge_Cells(columns, rows, any, any.size());
}

}  // namespace

Metafile_Device::Metafile_Device(std::string file, double width, double height, Metafile_Range range, bool round_ends)
    : Shape_Device(width, height),
      file_(std::move(file)),
      round_ends_(round_ends),
      units_an_inch_(Units_For(width, height, range)),
      units_a_point_(static_cast<double>(units_an_inch_) / points_an_inch) {
    page_width_ = std::max(1, Units(width));
    page_height_ = std::max(1, Units(height));
    selected_.fill(-1);
}

Status Metafile_Device::Close() {
    if (closed_) return Status::Done();
    closed_ = true;
    Finish();
    // Totals of the header have 32 bits.
    const bool written = bytes_.size() <= std::numeric_limits<std::uint32_t>::max() && Replace_File(file_, bytes_);
    bytes_ = {};
    return written ? Status::Done() : Status::Fail_File("The picture cannot be written: " + file_);
}

int Metafile_Device::Units(double points) const { return static_cast<int>(std::lround(points * units_a_point_)); }

Metafile_Device::Place Metafile_Device::Place_Of(Point p) const {
    const auto whole = [this](double points, int most) {
        return static_cast<int>(std::clamp(points * units_a_point_, 0.0, static_cast<double>(most)) + 0.5);
    };
    return {whole(p.x, page_width_), whole(Height() - p.y, page_height_)};
}

std::span<const Metafile_Device::Place> Metafile_Device::Places_Of(std::span<const Point> points) {
    places_.clear();
    for (const Point& p : points) places_.push_back(Place_Of(p));
    return places_;
}

Metafile_Device::Box Metafile_Device::Around(std::span<const Place> places, int reach) const {
    Box box{page_width_, page_height_, 0, 0};
    for (const Place& p : places)
        box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y)};
    return {std::max(0, box.left - reach), std::max(0, box.top - reach), std::min(page_width_, box.right + reach),
            std::min(page_height_, box.bottom + reach)};
}

// --- objects -------------------------------------------------------------------------------------------------------------------------

// A slot that holds the object. Where none is free, the object that was not needed for the longest time goes.
int Metafile_Device::Slot_For(const Drawing_Object& object) {
    std::size_t free = slots, oldest = slots;
    for (std::size_t k = 0; k < slots; ++k) {
        const Slot& slot = slots_[k];
        if (slot.made && slot.object == object) return static_cast<int>(k);
        if (!slot.made && free == slots) free = k;
        const bool in_use = std::find(selected_.begin(), selected_.end(), static_cast<int>(k)) != selected_.end();
        if (slot.made && !in_use && (oldest == slots || slot.used < slots_[oldest].used)) oldest = k;
    }
    if (free == slots) {
        Delete(static_cast<int>(oldest));
        free = oldest;
    }
    const int made = static_cast<int>(free);
    slots_[free] = {true, object, 0};
    most_slots_ = std::max(most_slots_, made + 1);
    Make(made, object);
    return made;
}

void Metafile_Device::Use(const Drawing_Object& object) {
    int& selected = selected_[object.kind];
    if (selected >= 0 && slots_[static_cast<std::size_t>(selected)].object == object) return;
    selected = Slot_For(object);
    slots_[static_cast<std::size_t>(selected)].used = ++uses_;
    Select(selected);
}

void Metafile_Device::Delete_Objects() {
    for (std::size_t k = 0; k < slots; ++k)
        if (std::exchange(slots_[k].made, false)) Delete(static_cast<int>(k));
}

void Metafile_Device::Use_Pen(const Pen& pen) {
    Use({.kind = Drawing_Object::pen, .colour = pen.colour, .size = std::max(1, Units(pen.width * Unit()))});
}

void Metafile_Device::Use_Fill(Colour colour) {
    Use({.kind = Drawing_Object::pen});
    Use({.kind = Drawing_Object::brush, .colour = colour});
}

int Metafile_Device::Line_Reach() const {
    const int pen = selected_[Drawing_Object::pen];
    return pen < 0 ? 0 : (slots_[static_cast<std::size_t>(pen)].object.size + 1) / 2;
}

// --- shapes --------------------------------------------------------------------------------------------------------------------------

void Metafile_Device::Write_Clear(Colour colour) {
    Write_Area(std::array<Point, 4>{{{0, 0}, {Width(), 0}, {Width(), Height()}, {0, Height()}}}, colour);
}

void Metafile_Device::Write_Line(std::span<const Point> line, const Pen& pen) {
    if (Dash_Pattern(pen.style).empty()) {
        Use_Pen(pen);
        Solid_Line(line);
    } else if (round_ends_ && pen.width > thin) {
        Dash_As_Areas(line, pen);
    } else {
        Dashed_Line(line, pen);
    }
}

// Long ones in several records, each beginning with the last segment of the one before, so that the corner between is drawn.
void Metafile_Device::Solid_Line(std::span<const Point> line) {
    const std::span<const Place> places = Places_Of(line);
    if (places.size() > 3 && places.size() <= most_corners && places.front() == places.back()) {
        Use({.kind = Drawing_Object::brush});
        return Put_Polygon(places.first(places.size() - 1));
    }
    for (std::size_t from = 0;; from += most_corners - 2) {
        const std::size_t count = std::min(most_corners, places.size() - from);
        Put_Line(places.subspan(from, count));
        if (from + count == places.size()) return;
    }
}

void Metafile_Device::Dashed_Line(std::span<const Point> line, const Pen& pen) {
    std::vector<double> pattern;
    for (const double length : Dash_Pattern(pen.style)) pattern.push_back(length * Unit());
    Use_Pen(pen);
    Lines dashes;
    For_Each_Dash(line, pattern, round_ends_ ? 0.5 * pen.width * Unit() : 0, 1 / units_a_point_, [&](std::span<const Point> dash) {
        if (dashes.places.size() + dash.size() > most_corners && !dashes.counts.empty()) {
            Put_Lines(dashes);
            dashes = {};
        }
        if (dash.size() > most_corners) return Solid_Line(dash);
        const std::span<const Place> places = Places_Of(dash);
        dashes.places.insert(dashes.places.end(), places.begin(), places.end());
        dashes.counts.push_back(places.size());
    });
    if (!dashes.counts.empty()) Put_Lines(dashes);
}

// The round ends of a wide pen would close the gaps.
void Metafile_Device::Dash_As_Areas(std::span<const Point> line, const Pen& pen) {
    std::vector<double> pattern;
    for (const double length : Dash_Pattern(pen.style)) pattern.push_back(length * Unit());
    const double half = 0.5 * pen.width * Unit();
    For_Each_Dash(line, pattern, 0, 0, [&](std::span<const Point> dash) {
        for (std::size_t i = 0; i + 1 < dash.size(); ++i) {
            const Point a = dash[i], b = dash[i + 1];
            const double length = std::hypot(b.x - a.x, b.y - a.y);
            if (length == 0) continue;
            const double x = half * (a.y - b.y) / length, y = half * (b.x - a.x) / length;
            Write_Area(std::array<Point, 4>{{{a.x + x, a.y + y}, {b.x + x, b.y + y}, {b.x - x, b.y - y}, {a.x - x, a.y - y}}}, pen.colour);
        }
    });
}

void Metafile_Device::Write_Area(std::span<const Point> corners, Colour colour) {
    Use_Fill(colour);
    Area(corners, 0);
}

// A polygon of many corners in two halves. Where halves do not help, for the corners are all in one place, every so many are taken.
void Metafile_Device::Area(std::span<const Point> corners, int halvings) {
    if (corners.size() <= most_corners) return Put_Polygon(Places_Of(corners));
    if (halvings == most_halvings) {
        std::vector<Point> fewer;
        for (std::size_t i = 0; i < corners.size(); i += corners.size() / most_corners + 1) fewer.push_back(corners[i]);
        return Put_Polygon(Places_Of(fewer));
    }
    Rect all{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Point& p : corners) all = {std::min(all.x1, p.x), std::min(all.y1, p.y), std::max(all.x2, p.x), std::max(all.y2, p.y)};
    Rect first = all, second = all;
    if (all.x2 - all.x1 > all.y2 - all.y1)
        first.x2 = second.x1 = 0.5 * (all.x1 + all.x2);
    else
        first.y2 = second.y1 = 0.5 * (all.y1 + all.y2);
    for (const Rect& half : {first, second})
        if (const std::vector<Point> part = Polygon_Inside(corners, half); !part.empty()) Area(part, halvings + 1);
}

void Metafile_Device::Write_Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) {
    if (filled) {
        Use_Fill(pen.colour);
    } else {
        Use_Pen(pen);
        Use({.kind = Drawing_Object::brush});
    }
    const Place one = Place_Of({centre.x - rx, centre.y + ry}), other = Place_Of({centre.x + rx, centre.y - ry});
    Put_Ellipse({one.x, one.y, std::max(other.x, one.x + 1), std::max(other.y, one.y + 1)});
}

// Strokes of markers stand together in records; areas would not stay apart there.
void Metafile_Device::Write_Markers(std::span<const Point> places, const Marker_Style& style) {
    const Glyph_Outline glyph = Marker_Outline(style.glyph);
    if (!glyph.strokes) return Shape_Device::Write_Markers(places, style);
    Use_Pen({.colour = style.colour});
    Lines strokes;
    for (const Point& at : places) {
        for (const Point& p : glyph.points) strokes.places.push_back(Place_Of({at.x + p.x * style.width, at.y + p.y * style.height}));
        strokes.counts.insert(strokes.counts.end(), glyph.points.size() / 2, 2);
        if (strokes.places.size() + glyph.points.size() <= most_corners) continue;
        Put_Lines(strokes);
        strokes.places.clear();
        strokes.counts.clear();
    }
    if (!strokes.counts.empty()) Put_Lines(strokes);
}

// --- images --------------------------------------------------------------------------------------------------------------------------

// An image has no gaps: several of them lie round those of the cells.
void Metafile_Device::Write_Cells(const Rect& rect, int columns, int rows, std::span<const Colour> colours) {
    std::vector<Colour> cells;
    const Cell_Rectangles blocks = Coloured_Blocks(columns, rows, colours);
    for (const Merged_Cells& block : blocks.rectangles) {
        cells.clear();
        for (int row = block.row1; row < block.row2; ++row) {
            const auto first = colours.begin() + static_cast<std::ptrdiff_t>(row) * columns;
            cells.insert(cells.end(), first + block.column1, first + block.column2);
        }
        const Rect place = Rect_Of_Cells(blocks, block, rect);
        const Place one = Place_Of({place.x1, place.y2}), other = Place_Of({place.x2, place.y1});
        Put_Image({one.x, one.y, other.x, other.y}, block.column2 - block.column1, block.row2 - block.row1, cells);
    }
}

void Metafile_Device::Put_Font(const Drawing_Object& font, unsigned letters, unsigned pitch_and_family) {
    constexpr int normal = 400, bold = 700;
    constexpr unsigned true_type = 4;
    const int weight = (font.style & style_bold) != 0 ? bold : normal;
    // A negative height: of the letters, without the room between lines.
    for (const int value : {-font.size, 0, font.tenth_degrees, font.tenth_degrees, weight}) Put_Number(value);
    const unsigned italic = (font.style & style_italic) != 0, underline = (font.style & style_underline) != 0;
    for (const unsigned byte : {italic, underline, 0u, letters, true_type, 0u, 0u, pitch_and_family}) bytes_ += static_cast<char>(byte);
}

std::size_t Metafile_Device::Bitmap_Size(int columns, int rows) { return Row_Size(columns) * static_cast<std::size_t>(rows); }

void Metafile_Device::Put_Bitmap(int columns, int rows, std::span<const Colour> colours) {
    Put_32(bytes_, bitmap_header_size);
    Put_32(bytes_, static_cast<std::uint32_t>(columns));
    Put_32(bytes_, static_cast<std::uint32_t>(rows));  // the lowest one first
    Put_16(bytes_, 1);                                 // plane
    Put_16(bytes_, 8 * bytes_a_pixel);
    Put_32(bytes_, 0);  // not compressed
    Put_32(bytes_, static_cast<std::uint32_t>(Bitmap_Size(columns, rows)));
    for (int k = 0; k < 4; ++k) Put_32(bytes_, 0);  // resolution, palette
    const auto width = static_cast<std::size_t>(columns);
    for (std::size_t from = 0; from + width <= colours.size(); from += width) {
        for (const Colour colour : colours.subspan(from, width))
            for (const unsigned part : {Blue(colour), Green(colour), Red(colour)}) bytes_ += static_cast<char>(part);
        bytes_.append(Row_Size(columns) - width * bytes_a_pixel, '\0');
    }
}

// --- texts ---------------------------------------------------------------------------------------------------------------------------

// The advances add up to the width, so that the ends stay where they are in a viewer with letters of another width.
std::vector<Metafile_Device::Letter> Metafile_Device::Letters_Of(const std::string& text, double width, const Text_Style& style) {
    std::vector<Letter> letters;
    std::vector<double> ends;
    double sum = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t from = i;
        const char32_t code = Next_Letter(text, i);
        const auto [found, fresh] =
            advances_.try_emplace({code, static_cast<std::uint32_t>(style.font), static_cast<std::uint32_t>(style.style)}, 0);
        if (fresh)
            found->second =
                Extent_Of_Text(text.substr(from, i - from), {.font = style.font, .style = style.style, .width = 1, .height = 1});
        sum += found->second;
        letters.push_back({code, 0});
        ends.push_back(sum);
    }
    int before = 0;
    for (std::size_t k = 0; k < letters.size(); ++k) {
        const int end = sum > 0 ? Units(width * ends[k] / sum) : 0;
        letters[k].advance = end - std::exchange(before, end);
    }
    return letters;
}

void Metafile_Device::Write_Text(Point at, const std::string& text, double width, const Text_Style& style) {
    const double em = Em_Of_Cell(style.width, style.height);
    if ((style.style & style_opaque) != 0) Write_Area(Room_Of_Text(at, width, style, 0.1 * em), Box_Behind(style.colour));
    if (std::exchange(text_colour_, style.colour) != style.colour) Put_Text_Colour(style.colour);
    Put_Text(at, Letters_Of(text, width, style), width, style);
}

void Metafile_Device::Use_Font(int face, const Text_Style& style) {
    Use({.kind = Drawing_Object::font,
         .size = std::max(1, Units(Em_Of_Cell(style.width, style.height))),
         .face = Family_Of(face).font,
         .style = style.style & (style_bold | style_italic | style_underline),
         .tenth_degrees = static_cast<int>(std::lround(10 * style.angle))});
}

void Metafile_Device::Align_Text(Text_Align align) {
    const auto value = static_cast<std::uint32_t>(align);
    if (std::exchange(align_, value) != value) Put_Align(align);
}

std::unique_ptr<Vector_Device> Open_Metafile(const std::string& file, double width, double height, const Hardcopy_Options& options) {
    return options.old_metafile ? Open_Wmf(file, width, height) : Open_Emf(file, width, height, options.old_systems);
}

}  // namespace vntl
