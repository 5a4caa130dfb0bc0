// Titles of a picture in space and of its axes.
//
// As the cube turns, the room beside its edges changes. So a title has many places to choose from, and takes the free one that costs
// least: out from the edge past the numbers of the scale, or farther along it, or with smaller letters.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/page.hpp"
#include "base/text.hpp"
#include "drawing/font_table.hpp"
#include "drawing/presentation_3d.hpp"
#include "drawing/rects.hpp"
#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr double apart = 8;                     // page units between a title and anything else
constexpr double farthest_out = 150, step = 3;  // page units
constexpr double along_step = 0.03;             // of the axis
constexpr int farthest_along = 15;              // steps
constexpr double cost_along = 3;                // of a way along the axis beside the same way out from it
constexpr double shrink = 0.93, smallest = 0.15;
constexpr double cost_of_shrinking = 20;  // beside a way of so many page units

Rect Around(Point middle, Point half) { return {middle.x - half.x, middle.y - half.y, middle.x + half.x, middle.y + half.y}; }

// Whether a line through two of the corners has all of them on one side, and the rectangle on the other.
bool Apart_From_Hull(const Rect& rect, std::span<const Point> corners) {
    const std::array<Point, 4> ends = {{{rect.x1, rect.y1}, {rect.x2, rect.y1}, {rect.x1, rect.y2}, {rect.x2, rect.y2}}};
    for (const Point& a : corners) {
        for (const Point& b : corners) {
            const double dx = b.x - a.x, dy = b.y - a.y, length = std::hypot(dx, dy);
            if (length < 1e-6) continue;
            const auto beyond = [&](const Point& p) { return ((p.x - a.x) * dy - (p.y - a.y) * dx) / length; };
            if (std::all_of(ends.begin(), ends.end(), [&](const Point& p) { return beyond(p) > 0; }) &&
                std::all_of(corners.begin(), corners.end(), [&](const Point& p) { return beyond(p) < 1e-6; }))
                return true;
        }
    }
    const auto [left, right] = std::minmax_element(corners.begin(), corners.end(), [](Point a, Point b) { return a.x < b.x; });
    const auto [low, high] = std::minmax_element(corners.begin(), corners.end(), [](Point a, Point b) { return a.y < b.y; });
    return rect.x2 < left->x || rect.x1 > right->x || rect.y2 < low->y || rect.y1 > high->y;
}

}  // namespace

void Presentation_3D::IPgLabelPos(int axis, float along) {
    if (axis >= 1 && axis <= 3) label_at_[static_cast<std::size_t>(axis - 1)] = std::clamp(static_cast<double>(along), 0.0, 1.0);
}

void Presentation_3D::Forget_Texts() {
    for (std::vector<Rect>& scale : scales_) scale.clear();
    titles_.clear();
}

void Presentation_3D::IPgTitle(std::string_view text) {
    if (text.empty()) return;
    Device& device = graphics_->device();
    const Rect& area = graphics_->Area();
    const Rect box = Box();
    Text_Style style = Fitted(device, text, graphics_->Current_Text(), widest_title * (area.x2 - area.x1));
    style.justify = Justify::centre;
    style.angle = 0;
    const double em = Em_Of_Cell(style.width, style.height), half = 0.5 * device.Text_Width(text, style);
    const Point at{0.5 * (area.x1 + area.x2), box.y2 + title_share * (area.y2 - box.y2)};
    device.Text(at, text, style);
    titles_.push_back({at.x - half, at.y - descent * em, at.x + half, at.y + cap_height * em});
}

// Past the numbers of the scale, and to both sides along the edge. `half` the extent of the text.
std::vector<Presentation_3D::Label_Place> Presentation_3D::Places_Beside(const Edge& edge, double along, Point half) const {
    const double unit_x = graphics_->device().Width() / page_width, unit_y = graphics_->device().Height() / page_height;
    const Point way = In_Page_Units(On_Page(edge.from), On_Page(edge.to));
    const double length = std::hypot(way.x, way.y);
    std::vector<Label_Place> places;
    for (int turn = 0; turn <= 2 * farthest_along; ++turn) {  // nearest to the wanted place first
        const double shift = (turn % 2 == 0 ? 1 : -1) * along_step * ((turn + 1) / 2), share = along + shift;
        if (share < 0 || share > 1) continue;
        Space_Point on_edge;
        for (std::size_t k = 0; k < 3; ++k) on_edge[k] = edge.from[k] + share * (edge.to[k] - edge.from[k]);
        const Point at = On_Page(on_edge), direction = Tick_Direction(edge, on_edge);
        const double touches = half.x / unit_x * std::fabs(direction.x) + half.y / unit_y * std::fabs(direction.y);
        for (double out = 0; out <= farthest_out; out += step) {
            const double by = touches + out;
            places.push_back(
                {{at.x + direction.x * by * unit_x, at.y + direction.y * by * unit_y}, out + cost_along * std::fabs(shift) * length});
        }
    }
    return places;
}

// Above the upper end of an upright edge, and to the outer side of it.
std::vector<Presentation_3D::Label_Place> Presentation_3D::Places_At_Top(const Edge& edge, Point half) const {
    const double unit_x = graphics_->device().Width() / page_width, unit_y = graphics_->device().Height() / page_height;
    const Point top = On_Page(edge.to);
    std::vector<Label_Place> places;
    for (double aside = 0; aside <= half.x / unit_x + farthest_out; aside += 2 * step)
        for (double up = 0; up <= farthest_out; up += step)
            places.push_back({{top.x + edge.side * aside * unit_x, top.y + half.y + up * unit_y}, up + 0.5 * aside});
    return places;
}

// What a title keeps apart from: titles, and the scales, as they are or as they would be with letters of this style.
std::vector<Rect> Presentation_3D::Taken(const Text_Style& style) const {
    std::vector<Rect> taken = titles_;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::vector<Rect>& drawn = scales_[axis];
        taken.insert(taken.end(), drawn.begin(), drawn.end());
        if (!drawn.empty()) continue;
        for (const Tick& tick : Ticks(axis, axis == 2 ? Upright_Edge() : Floor_Edge(axis), style)) taken.push_back(tick.room);
    }
    return taken;
}

bool Presentation_3D::Is_Free(const Rect& room, const std::vector<Rect>& taken, std::span<const Point> corners) const {
    const Device& device = graphics_->device();
    const Rect& area = graphics_->Area();
    const Rect grown = Grown(room, apart * device.Width() / page_width, apart * device.Height() / page_height);
    return grown.x1 >= area.x1 && grown.y1 >= area.y1 && grown.x2 <= area.x2 && grown.y2 <= area.y2 &&
           std::none_of(taken.begin(), taken.end(), [&](const Rect& other) { return Touch(grown, other); }) &&
           Apart_From_Hull(grown, corners);
}

void Presentation_3D::Draw_Label(std::size_t axis, std::string_view text, std::string_view letters) {
    if (text.empty()) return;
    Device& device = graphics_->device();
    Text_Style style = graphics_->Current_Text();
    style.justify = Justify::centre;
    const bool upright = Contains(letters, "V"), at_top = Contains(letters, "T");
    style.angle = upright ? 90 : 0;
    const Edge edge = axis == 2 ? Upright_Edge() : Floor_Edge(axis);
    const std::vector<Rect> taken = Taken(graphics_->Current_Text());
    const Fitted_View page(View(), Box());
    std::vector<Point> corners;
    for (unsigned k = 0; k < 8; ++k)
        corners.push_back(page.See({static_cast<double>(k & 1), static_cast<double>(k >> 1 & 1), static_cast<double>(k >> 2)}));

    struct Label {
        Text_Style style;
        Point middle, half;
        double cost = std::numeric_limits<double>::infinity();
    } best;
    double size = 1, shrinking = 0;  // and what it costs
    for (; size >= smallest && shrinking < best.cost; size *= shrink, shrinking += cost_of_shrinking) {
        Text_Style letter = style;
        letter.width *= size, letter.height *= size;
        const double half_long = 0.5 * device.Text_Width(text, letter);
        const double half_high = 0.5 * (cap_height + descent) * Em_Of_Cell(letter.width, letter.height);
        const Point half = upright ? Point{half_high, half_long} : Point{half_long, half_high};
        for (const Label_Place& place : at_top ? Places_At_Top(edge, half) : Places_Beside(edge, label_at_[axis], half)) {
            const double cost = place.cost + shrinking;
            if (cost < best.cost && Is_Free(Around(place.middle, half), taken, corners)) best = {letter, place.middle, half, cost};
        }
    }
    if (!std::isfinite(best.cost)) return;
    const double base =
        0.5 * (cap_height - descent) * Em_Of_Cell(best.style.width, best.style.height);  // of the base line below the middle
    device.Text(upright ? Point{best.middle.x + base, best.middle.y} : Point{best.middle.x, best.middle.y - base}, text, best.style);
    titles_.push_back(Around(best.middle, best.half));
}

}  // namespace vntl
