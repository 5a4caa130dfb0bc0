#include "pictures/shape_device.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

#include "base/text.hpp"
#include "drawing/cell_raster.hpp"
#include "drawing/font_table.hpp"
#include "pictures/cut_shapes.hpp"
#include "pictures/text_extent.hpp"
#include "pictures/thinner.hpp"

namespace vntl {

namespace {

constexpr double points_a_line_unit = 0.72;
constexpr double image_pixel = 0.5;      // line units: about the size of a pixel of an image of cells
constexpr double largest_image = 16000;  // pixels of a side
constexpr double seam = 0.15;            // points by which a facet reaches over its sides, so that no ground shows between neighbours
constexpr long long many_points = 1000;  // what so many hide of each other is worth looking for

// The box about points `first` to `last` of a data set, widened on both axes; of those that are numbers.
Rect Box_Of(const Series& s, std::size_t first, std::size_t last, double dx, double dy) {
    Rect box{1e300, 1e300, -1e300, -1e300};
    for (std::size_t i = first; i <= last; ++i) {
        const Point p = s.At(i);
        box = {std::min(box.x1, p.x), std::min(box.y1, p.y), std::max(box.x2, p.x), std::max(box.y2, p.y)};
    }
    return {box.x1 - dx, box.y1 - dy, box.x2 + dx, box.y2 + dy};
}

// One axis of an image of cells: the part of it that shows.
struct Image_Axis {
    double from = 0, pixel = 0;  // points
    int pixels = 0;              // 0 where nothing shows
    double Pixel(double at) const { return (at - from) / pixel; }
};

// Cells that lie between two places. Where all show, a cell takes a whole number of pixels, so that its edges are where they should be, and
// several of them where it is large: a viewer that smooths an image then blurs no more than the edge. Cells finer than a pixel share one.
Image_Axis Axis_Of_Image(double low, double high, int cells, double shown_from, double shown_to, double unit) {
    const double cell = (high - low) / cells;
    const double from = std::max(low, shown_from), to = std::min(high, shown_to);
    if (!(from < to)) return {};
    const double about = std::max(image_pixel * unit, (to - from) / largest_image);
    const double wanted = cell >= about ? cell / std::round(cell / about) : about;
    const double pixels = std::max(1.0, std::round((to - from) / wanted));
    return {from, (to - from) / pixels, static_cast<int>(pixels)};
}

int Fine_Cells(double length, double unit) {
    return std::max(1, static_cast<int>(length / std::max(image_pixel * unit, length / largest_image)));
}

// Without control characters.
std::string Plain_Text(std::string_view text) {
    std::string plain = To_Utf8(text);
    for (char& c : plain)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') c = ' ';
    return plain;
}

// Places between the letters of a text, as bytes.
std::vector<std::size_t> Between_Letters(std::string_view text) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i <= text.size(); ++i)
        if (i == text.size() || (static_cast<unsigned char>(text[i]) & 0xc0) != 0x80) places.push_back(i);
    return places;
}

}  // namespace

Shape_Device::Shape_Device(double width, double height)
    : width_(width),
      height_(height),
      unit_(points_a_line_unit * Line_Unit(width / points_a_line_unit, height / points_a_line_unit)),
      clip_{0, 0, width, height} {}

void Shape_Device::Set_Clip(const Rect& rect) {
    clip_ = {std::max(0.0, rect.x1), std::max(0.0, rect.y1), std::min(width_, rect.x2), std::min(height_, rect.y2)};
    if (cover_) cover_->Set_Window(clip_);
}

void Shape_Device::Clear(Colour colour) {
    if (!Refuses()) Write_Clear(colour);
}

void Shape_Device::Put_Line(std::span<const Point> line, const Pen& pen) {
    if (line.size() < 2) return;
    if (!backwards_)
        Write_Line(line, pen);
    else
        Keep({Kept::line, pen, {}, 0, 0}, line);
}

void Shape_Device::Put_Area(std::span<const Point> polygon, Colour colour) {
    if (polygon.size() < 3) return;
    if (!backwards_)
        Write_Area(polygon, colour);
    else
        Keep({Kept::area, {.colour = colour}, {}, 0, 0}, polygon);
}

void Shape_Device::Put_Markers(std::span<const Point> places, const Marker_Style& style) {
    if (places.empty()) return;
    if (!backwards_)
        Write_Markers(places, style);
    else
        Keep({Kept::markers, {}, style, 0, 0}, places);
}

void Shape_Device::Keep(Kept item, std::span<const Point> places) {
    item.first = places_.size();
    places_.insert(places_.end(), places.begin(), places.end());
    item.end = places_.size();
    kept_.push_back(item);
}

bool Shape_Device::Start_Backwards(long long points) {
    if (points < many_points) return false;
    refused_ = false;
    backwards_ = true;
    cover_ = std::make_unique<Page_Cover>(width_, height_);
    cover_->Set_Window(clip_);
    return true;
}

bool Shape_Device::End_Backwards() {
    backwards_ = false;
    cover_.reset();
    const std::vector<Kept> items = std::exchange(kept_, {});
    const std::vector<Point> places = std::exchange(places_, {});
    if (std::exchange(refused_, false)) return false;
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        const auto of_item = std::span(places).subspan(item->first, item->end - item->first);
        if (item->kind == Kept::line)
            Write_Line(of_item, item->pen);
        else if (item->kind == Kept::area)
            Write_Area(of_item, item->pen.colour);
        else
            Write_Markers(of_item, item->style);
    }
    return true;
}

void Shape_Device::Polyline(std::span<const Point> points, const Pen& pen) {
    if (pen.style == Line_Style::none) return;
    std::vector<Point> part;
    Line_Cutter cutter(clip_, part, [&](std::span<const Point> line) { Put_Line(line, pen); });
    for (const Point& p : points)
        if (Finite(p)) cutter.Add(p);
    cutter.End();
}

bool Shape_Device::Hides_Box(const Page_Cover& cover, const Rect& box) const {
    const Rect shown{std::max(box.x1, clip_.x1), std::max(box.y1, clip_.y1), std::min(box.x2, clip_.x2), std::min(box.y2, clip_.y2)};
    return shown.x1 > shown.x2 || shown.y1 > shown.y2 || cover.Hides_Box(shown);
}

// The dashes of a line go on behind what hides them: only a solid one is cut there. A block of points reaches to the first one of the next,
// so that each segment lies in one.
void Shape_Device::Curve(const Series& s, const Pen& pen) {
    if (pen.style == Line_Style::none) return;
    const Page_Cover* const cover = pen.style == Line_Style::solid ? cover_.get() : nullptr;
    const double width = pen.width * unit_;
    std::vector<Point> part;
    Line_Cutter cutter(clip_, part, [&](std::span<const Point> line) { Put_Line(line, pen); });
    const auto hidden = [&](Point p) {
        Point a = cutter.last(), b = p;
        return cover != nullptr && cutter.begun() && Clip_Segment(a, b, clip_) && cover->Hides_Line(a, b, width);
    };
    Thinner thinner([&](Point p) { cutter.Add(p, hidden(p)); });
    const auto end_part = [&] {
        thinner.Flush();
        cutter.End();
    };
    for (std::size_t first = 0; first < s.x.size(); first += Series_Blocks::points) {
        const std::size_t last = std::min(first + Series_Blocks::points, s.x.size() - 1);
        if (cover != nullptr && Hides_Box(*cover, Box_Of(s, first, last, width, width))) {
            if (first > 0) thinner.Add(s.At(first));
            end_part();
            continue;
        }
        for (std::size_t i = first; i < std::min(first + Series_Blocks::points, s.x.size()); ++i) {
            const Point p = s.At(i);
            Finite(p) ? thinner.Add(p) : end_part();
        }
    }
    end_part();
}

// The markers of a data set that can be seen, in their order. Markers of one colour hide each other in whatever order they are drawn: at
// first those that stand a point apart are laid, then those between, so that of a crowd the ones at its border are left.
std::vector<std::size_t> Shape_Device::Seen_Markers(const Series& s, const Marker_Style& style, Page_Cover& cover,
                                                    const Rect& touched) const {
    constexpr std::size_t finer = 4, block = 8;  // points: few, so that their box is hardly larger than they are
    const Cover_Stamp stamp = cover.Stamp_Of(style);
    const std::size_t count = s.x.size();
    const auto end_of = [count](std::size_t first) { return std::min(first + block, count); };
    const auto hides_block = [&](std::size_t first) {
        return Hides_Box(cover, Box_Of(s, first, end_of(first) - 1, 0.5 * style.width, 0.5 * style.height));
    };
    std::vector<std::size_t> blocks;
    for (std::size_t first = 0; first < count; first += block)
        if (!hides_block(first)) blocks.push_back(first);
    std::vector<std::size_t> seen;
    std::size_t step = 1, coarser = 0;
    while (static_cast<double>(count) > static_cast<double>(step) * (touched.x2 - touched.x1)) step *= finer;
    for (; step > 0; coarser = step, step /= finer)
        for (const std::size_t first : blocks) {
            if (first % step >= block || (coarser != 0 && step < block && hides_block(first))) continue;
            for (std::size_t i = first; i < end_of(first); i += step) {
                const Point p = s.At(i);
                if ((coarser != 0 && i % coarser == 0) || !Inside(p, touched) || cover.Hides(stamp, p)) continue;
                cover.Lay(stamp, p);
                seen.push_back(i);
            }
        }
    std::sort(seen.begin(), seen.end());
    return seen;
}

void Shape_Device::Markers(const Series& s, const Marker_Style& style) {
    if (Marker_Outline(style.glyph).points.empty() || !(style.width >= 0 && style.height >= 0)) return;
    const double a = 0.5 * style.width, b = 0.5 * style.height;
    const Rect touched{clip_.x1 - a, clip_.y1 - b, clip_.x2 + a, clip_.y2 + b},
        whole{clip_.x1 + a, clip_.y1 + b, clip_.x2 - a, clip_.y2 - b};
    std::vector<Point> places;
    const auto put = [&](Point p) { Inside(p, whole) ? places.push_back(p) : Cut_Marker(p, style); };
    if (!cover_ && std::ssize(s.x) <= many_points) {
        for (std::size_t i = 0; i < s.x.size(); ++i)
            if (Inside(s.At(i), touched)) put(s.At(i));
    } else {
        std::optional<Page_Cover> own;
        if (!cover_) own.emplace(width_, height_).Set_Window(clip_);
        for (const std::size_t i : Seen_Markers(s, style, own ? *own : *cover_, touched)) put(s.At(i));
    }
    Put_Markers(places, style);
}

void Shape_Device::Cut_Marker(Point at, const Marker_Style& style) {
    Glyph_Outline glyph = Marker_Outline(style.glyph);
    for (Point& p : glyph.points) p = {at.x + p.x * style.width, at.y + p.y * style.height};
    if (style.filled && !glyph.strokes) return Put_Area(Polygon_Inside(glyph.points, clip_), style.colour);
    if (!glyph.strokes) glyph.points.push_back(glyph.points.front());
    const std::size_t count = glyph.strokes ? 2 : glyph.points.size();
    for (std::size_t i = 0; i + count <= glyph.points.size(); i += count)
        for (const auto& part : Line_Inside(std::span(glyph.points).subspan(i, count), clip_)) Put_Line(part, {.colour = style.colour});
}

void Shape_Device::Write_Markers(std::span<const Point> places, const Marker_Style& style) {
    const Glyph_Outline glyph = Marker_Outline(style.glyph);
    const Pen pen{.colour = style.colour};
    std::vector<Point> corners(glyph.points.size());
    for (const Point& at : places) {
        if (style.glyph == circle_glyph) {
            Write_Ellipse(at, 0.5 * style.width, 0.5 * style.height, style.filled, pen);
            continue;
        }
        for (std::size_t k = 0; k < glyph.points.size(); ++k)
            corners[k] = {at.x + glyph.points[k].x * style.width, at.y + glyph.points[k].y * style.height};
        if (glyph.strokes) {
            for (std::size_t k = 0; k + 2 <= corners.size(); k += 2) Write_Line(std::span(corners).subspan(k, 2), pen);
        } else if (style.filled) {
            Write_Area(corners, style.colour);
        } else {
            corners.push_back(corners.front());
            Write_Line(corners, pen);
            corners.pop_back();
        }
    }
}

void Shape_Device::Fill(std::span<const Point> polygon, Colour colour) {
    if (!Refuses()) Put_Area(Polygon_Inside(polygon, clip_), colour);
}

// It hides what lies behind, and is no rest of a drawing made backwards.
void Shape_Device::Under_Curve(const Series& series, double foot, Colour colour) {
    if (!std::isfinite(foot)) return;
    for (const std::vector<Point>& area : Areas_Under(series, foot, 0.5 * Pixel())) {
        Put_Area(Polygon_Inside(area, clip_), colour);
        if (cover_) cover_->Lay_Under(std::span(area).first(area.size() - 2), foot);
    }
}

void Shape_Device::Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) {
    if (!(rx > 0 && ry > 0) || !Finite(centre) || Refuses()) return;
    if (Inside({centre.x - rx, centre.y - ry}, clip_) && Inside({centre.x + rx, centre.y + ry}, clip_))
        return Write_Ellipse(centre, rx, ry, filled, pen);
    std::vector<Point> corners = Ellipse_Corners(centre, rx, ry);
    if (filled) return Put_Area(Polygon_Inside(corners, clip_), pen.colour);
    corners.push_back(corners.front());
    Polyline(corners, pen);
}

// The image holds what shows, as fine as print: neither the number of cells nor the size of their rectangle counts.
void Shape_Device::Cells(const Cell_Image& image) {
    if (!image.Shows() || Refuses()) return;
    const Image_Axis across = Axis_Of_Image(image.rect.x1, image.rect.x2, image.columns, clip_.x1, clip_.x2, unit_);
    const Image_Axis down =
        Axis_Of_Image(height_ - image.rect.y2, height_ - image.rect.y1, image.rows, height_ - clip_.y2, height_ - clip_.y1, unit_);
    if (across.pixels == 0 || down.pixels == 0) return;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(across.pixels) * static_cast<std::size_t>(down.pixels));
    const Pixel_Buffer buffer{pixels.data(), across.pixels, down.pixels, across.pixels};
    Paint_Cells(buffer, {0, 0, across.pixels, down.pixels},
                {across.Pixel(image.rect.x1), down.Pixel(height_ - image.rect.y2), across.Pixel(image.rect.x2),
                 down.Pixel(height_ - image.rect.y1)},
                image);
    const double bottom = height_ - (down.from + down.pixel * down.pixels);
    Write_Cells({across.from, bottom, across.from + across.pixel * across.pixels, height_ - down.from}, across.pixels, down.pixels,
                Colours_Of_Pixels(buffer));
}

Finest_Cells Shape_Device::Finest(const Rect& rect) const {
    const Rect seen{std::max(rect.x1, 0.0), std::max(rect.y1, 0.0), std::min(rect.x2, width_), std::min(rect.y2, height_)};
    if (!(seen.x1 < seen.x2 && seen.y1 < seen.y2)) return {};
    return {seen, Fine_Cells(seen.x2 - seen.x1, unit_), Fine_Cells(seen.y2 - seen.y1, unit_)};
}

// A facet reaches a little over its sides: it is laid upon those behind it, and those before it are laid upon it.
void Shape_Device::Facets(const Facet_List& list) {
    if (Refuses()) return;
    std::array<Point, 4> corners;
    const auto area = [&](std::initializer_list<std::size_t> numbers, const Facet& facet) {
        Point middle{};
        for (const std::size_t k : numbers) {
            const Point& p = list.places[facet.corners[k]];
            middle = {middle.x + p.x / static_cast<double>(numbers.size()), middle.y + p.y / static_cast<double>(numbers.size())};
        }
        std::size_t count = 0;
        for (const std::size_t k : numbers) {
            const Point& p = list.places[facet.corners[k]];
            const double length = std::hypot(p.x - middle.x, p.y - middle.y), longer = length > 0 ? 1 + seam / length : 1;
            corners[count++] = {middle.x + longer * (p.x - middle.x), middle.y + longer * (p.y - middle.y)};
        }
        Put_Area(Polygon_Inside(std::span(corners).first(count), clip_), facet.colour);
    };
    const auto turn = [&](const Facet& facet, std::size_t i, std::size_t j, std::size_t k) {
        const Point &p = list.places[facet.corners[i]], &q = list.places[facet.corners[j]], &r = list.places[facet.corners[k]];
        return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
    };
    for (const Facet& facet : list.facets) {
        if (facet.count == 2) {
            Polyline(std::array{list.places[facet.corners[0]], list.places[facet.corners[1]]}, {facet.colour, list.line_width});
        } else if (facet.count == 3) {
            area({0, 1, 2}, facet);
        } else if ((turn(facet, 0, 1, 2) > 0) == (turn(facet, 0, 2, 3) > 0)) {
            area({0, 1, 2, 3}, facet);
        } else {
            area({0, 1, 2}, facet);
            area({0, 2, 3}, facet);
        }
    }
}

double Shape_Device::Text_Width(std::string_view text, const Text_Style& style) const { return Extent_Of_Text(Plain_Text(text), style); }

// Letters cannot be cut: those that do not lie inside the clip are left out, from either end.
void Shape_Device::Text(Point at, std::string_view text, const Text_Style& style) {
    const double em = Em_Of_Cell(style.width, style.height);
    if (em <= 0 || !Finite(at) || Refuses()) return;
    const std::string words = Plain_Text(text);
    const auto shows = [&](double from, double to) {
        constexpr double slack = 0.5;  // points: what touches the edge of the page is not beyond it
        const Rect room{clip_.x1 - slack, clip_.y1 - slack, clip_.x2 + slack, clip_.y2 + slack};
        const auto in_room = [&](double along, double up) { return Inside(Beside(at, along, up, style.angle), room); };
        return in_room(from, 0) && in_room(to, 0) && in_room(from, cap_height * em);
    };
    const double width = Extent_Of_Text(words, style);
    const double left = Start_Of_Text(style.justify, width);
    if (shows(left, left + width)) {
        if (!words.empty()) Write_Text(at, Written_Text(words, style.font), width, style);
        return;
    }
    const std::vector<std::size_t> places = Between_Letters(words);
    std::size_t first = 0, end = 0;
    double first_at = 0, end_at = 0, before = 0;
    for (std::size_t k = 0; k + 1 < places.size(); ++k) {
        const double after = Extent_Of_Text(std::string_view(words).substr(0, places[k + 1]), style);
        if (shows(left + before, left + after)) {
            if (end == 0) first = places[k], first_at = before;
            end = places[k + 1];
            end_at = after;
        }
        before = after;
    }
    if (end == 0) return;
    Text_Style cut = style;
    cut.justify = Justify::left;
    Write_Text(Beside(at, left + first_at, 0, style.angle), Written_Text(std::string_view(words).substr(first, end - first), style.font),
               end_at - first_at, cut);
}

}  // namespace vntl
