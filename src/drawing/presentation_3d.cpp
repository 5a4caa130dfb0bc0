#include "drawing/presentation_3d.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/page.hpp"
#include "base/text.hpp"
#include "drawing/axis.hpp"
#include "drawing/font_table.hpp"

namespace vntl {

namespace {

constexpr double eye_distance = 4;  // edges of the cube: near enough for depth to be seen, far enough for the back to be read
constexpr double steepest = 45;     // degrees of elevation
constexpr double same_place = 1e-9;

// How far apart two texts of that size must be along a line for neither to touch the other.
double Room_Along(Point from, Point to, double width, double height) {
    const double dx = std::fabs(to.x - from.x), dy = std::fabs(to.y - from.y), length = std::hypot(dx, dy);
    return std::min(width * length / dx, height * length / dy);
}

}  // namespace

// --- units and view ----------------------------------------------------------------------------------------------------------

Presentation_3D Presentation_3D::On(Graphics& graphics) const {
    Presentation_3D other = *this;
    other.graphics_ = &graphics;
    return other;
}

void Presentation_3D::IPgArea(float x1, float y1, float x2, float y2) {
    bx1_ = x1, by1_ = y1, bx2_ = x2, by2_ = y2;
    Forget_Texts();
}

void Presentation_3D::IPgUnitsXYZ(float x1, float x2, float y1, float y2, float z1, float z2) {
    Forget_Texts();
    lower_ = {x1, y1, z1};
    upper_ = {x2, y2, z2};
}

void Presentation_3D::IPgRotation(float degrees) {
    const bool whole_turn = !(std::fabs(degrees) < 360);
    rotation_ = whole_turn ? 0 : degrees < 0 ? degrees + 360 : degrees;
    Forget_Texts();
}

void Presentation_3D::IPgElevation(float degrees) {
    elevation_ = std::clamp(static_cast<double>(degrees), 0.0, steepest);
    Forget_Texts();
}

Rect Presentation_3D::Box() const {
    const Rect& area = graphics_->Area();
    const double w = area.x2 - area.x1, h = area.y2 - area.y1;
    return {area.x1 + bx1_ * w, area.y1 + by1_ * h, area.x1 + bx2_ * w, area.y1 + by2_ * h};
}

Projection Presentation_3D::View() const { return {rotation_, elevation_, eye_distance}; }

Space_Point Presentation_3D::In_Cube(const Space_Point& units) const {
    Space_Point point;
    for (std::size_t axis = 0; axis < 3; ++axis) point[axis] = (units[axis] - lower_[axis]) / (upper_[axis] - lower_[axis]);
    return point;
}

Point Presentation_3D::On_Page(const Space_Point& in_cube) const { return Fitted_View(View(), Box()).See(in_cube); }

Point Presentation_3D::To_Device(double x, double y, double z) const { return On_Page(In_Cube({x, y, z})); }
double Presentation_3D::Depth(double x, double y, double z) const { return View().See(In_Cube({x, y, z})).depth; }

void Presentation_3D::IPgFrame(Edges which) const {
    const Projection view = View();
    const Space_Point eye = view.Eye();
    const auto faces_eye = [&](std::size_t axis, double end) { return end == 0 ? eye[axis] < 0 : eye[axis] > 1; };
    struct Side {
        Space_Point from, to;
        double depth;
    };
    std::vector<Side> sides;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const Space_Point from = {static_cast<double>(corner & 1), static_cast<double>(corner >> 1 & 1), static_cast<double>(corner >> 2)};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (from[axis] != 0) continue;
            const std::size_t one = (axis + 1) % 3, other = (axis + 2) % 3;
            const bool before_all = faces_eye(one, from[one]) && faces_eye(other, from[other]);
            if (which != Edges::all && before_all != (which == Edges::front)) continue;
            Space_Point to = from;
            to[axis] = 1;
            sides.push_back({from, to, view.See(from).depth + view.See(to).depth});
        }
    }
    std::stable_sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) { return a.depth > b.depth; });
    const Pen pen{graphics_->Current_Colour(), graphics_->Line_Width(), Line_Style::solid};
    for (const Side& side : sides) graphics_->device().Polyline(std::array<Point, 2>{{On_Page(side.from), On_Page(side.to)}}, pen);
}

// --- scales ------------------------------------------------------------------------------------------------------------------

// Of the two edges of the floor along an axis the nearer one; of equally near ones that at the right.
Presentation_3D::Edge Presentation_3D::Floor_Edge(std::size_t axis) const {
    const Projection view = View();
    const std::size_t other = 1 - axis;
    const auto middle = [&](double side) {
        Space_Point point = {0.5, 0.5, 0};
        point[other] = side;
        return view.See(point);
    };
    const double nearer = middle(0).depth - middle(1).depth;
    const bool second = std::fabs(nearer) < same_place ? middle(1).right > middle(0).right : nearer > 0;
    Edge edge;
    edge.to[axis] = 1;
    edge.from[other] = edge.to[other] = second ? 1 : 0;
    edge.outward[other] = second ? 1 : -1;
    return edge;
}

// The upright edge at the left of the cube, or, where one of the other scales rises steeply from its foot, that at the right.
Presentation_3D::Edge Presentation_3D::Upright_Edge() const {
    const Projection view = View();
    const auto outermost = [&](double side) {
        constexpr std::array<Space_Point, 4> feet = {{{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {1, 1, 0}}};
        return *std::max_element(feet.begin(), feet.end(), [&](const Space_Point& a, const Space_Point& b) {
            const Seen_Point one = view.See(a), other = view.See(b);
            return std::fabs(one.right - other.right) < same_place ? one.depth > other.depth : side * one.right < side * other.right;
        });
    };
    const auto steep_from = [&](const Space_Point& foot) {
        for (const std::size_t axis : {0, 1}) {
            const Edge edge = Floor_Edge(axis);
            const Point along = In_Page_Units(On_Page(edge.from), On_Page(edge.to));
            if ((edge.from == foot || edge.to == foot) && std::fabs(along.y) > std::fabs(along.x)) return true;
        }
        return false;
    };
    Edge edge;
    edge.side = steep_from(outermost(-1)) ? 1 : -1;
    edge.from = edge.to = outermost(edge.side);
    edge.to[2] = 1;
    return edge;
}

Point Presentation_3D::In_Page_Units(Point from, Point to) const {
    const Device& device = graphics_->device();
    return {(to.x - from.x) * page_width / device.Width(), (to.y - from.y) * page_height / device.Height()};
}

// Where a tick points from a place on an edge: in page units, of length 1. Downward where it points at the viewer.
Point Presentation_3D::Tick_Direction(const Edge& edge, const Space_Point& at) const {
    constexpr double a_little = 1e-3;
    if (edge.side != 0) return {edge.side, 0};
    const Space_Point beyond = {at[0] + a_little * edge.outward[0], at[1] + a_little * edge.outward[1], at[2]};
    const Point across = In_Page_Units(On_Page(at), On_Page(beyond));
    const double length = std::hypot(across.x, across.y);
    return length > 0 ? Point{across.x / length, across.y / length} : Point{0, -1};
}

// A number lies so far out that its near side is the gap away from the tick.
Presentation_3D::Tick Presentation_3D::Tick_At(const Edge& edge, const Space_Point& in_cube, std::string number,
                                               const Text_Style& style) const {
    const Device& device = graphics_->device();
    const Rect box = Box();
    const double unit_x = device.Width() / page_width, unit_y = device.Height() / page_height;
    const double length = tick_length * (box.x2 - box.x1) / unit_x / ticks_a_zone;  // page units
    const Point at = On_Page(in_cube), direction = Tick_Direction(edge, in_cube);
    const auto outward = [&](double by) { return Point{at.x + direction.x * by * unit_x, at.y + direction.y * by * unit_y}; };
    const double half = 0.5 * device.Text_Width(number, style), half_high = 0.5 * cap_height * Em_Of_Cell(style.width, style.height);
    const Point near = outward(length + number_gap), middle = {near.x + direction.x * half, near.y + direction.y * half_high};
    return {at, outward(length), {middle.x - half, middle.y - half_high, middle.x + half, middle.y + half_high}, std::move(number)};
}

// Beside the foot of the z scale, where its lowest number stands.
bool Presentation_3D::At_Foot_Of_Z(const Rect& number, const Text_Style& style) const {
    const Edge upright = Upright_Edge();
    const Rect lowest = Tick_At(upright, upright.from, "0", style).room;
    const double apart = 0.1 * Em_Of_Cell(style.width, style.height);
    const bool beside = upright.side < 0 ? number.x1 < lowest.x2 + apart : number.x2 > lowest.x1 - apart;
    return beside && number.y2 > lowest.y1 - apart;
}

// The ticks of an axis along its edge, with the numbers for which there is room.
std::vector<Presentation_3D::Tick> Presentation_3D::Ticks(std::size_t axis, const Edge& edge, const Text_Style& style) const {
    const Axis_Ticks ticks = Ticks_Of_Axis(static_cast<float>(lower_[axis]), static_cast<float>(upper_[axis]), axis == 2);
    std::vector<Tick> placed;
    double widest = 0, spacing = std::numeric_limits<double>::infinity();
    for (const float value : ticks.values) {
        Space_Point in_cube = edge.from;
        in_cube[axis] = (static_cast<double>(value) - lower_[axis]) / (upper_[axis] - lower_[axis]);
        const Tick tick = Tick_At(edge, in_cube, Tick_Text(value, ticks.exponent), style);
        if (!placed.empty()) spacing = std::min(spacing, std::hypot(tick.at.x - placed.back().at.x, tick.at.y - placed.back().at.y));
        widest = std::max(widest, tick.room.x2 - tick.room.x1);
        placed.push_back(tick);
    }
    const double em = Em_Of_Cell(style.width, style.height);
    const int every = Numbered_Every(spacing, Room_Along(On_Page(edge.from), On_Page(edge.to), widest + 0.8 * em, 1.25 * em));
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const bool crowded = axis < 2 && At_Foot_Of_Z(placed[i].room, style);
        if (crowded || !Has_Number(ticks.values[i], ticks.step, every)) placed[i].number.clear();
    }
    return placed;
}

void Presentation_3D::Draw_Scale(std::size_t axis, std::string_view flags) {
    const Graphics& g = *graphics_;
    const Pen pen{g.Current_Colour(), 1, Line_Style::solid};
    Text_Style style = g.Current_Text();
    style.justify = Justify::left;
    const Edge edge = axis == 2 ? Upright_Edge() : Floor_Edge(axis);
    g.device().Polyline(std::array<Point, 2>{{On_Page(edge.from), On_Page(edge.to)}}, pen);
    scales_[axis].clear();
    for (const Tick& tick : Ticks(axis, edge, style)) {
        scales_[axis].push_back({std::min(tick.at.x, tick.end.x), std::min(tick.at.y, tick.end.y), std::max(tick.at.x, tick.end.x),
                                 std::max(tick.at.y, tick.end.y)});
        if (Contains(flags, "T")) g.device().Polyline(std::array<Point, 2>{{tick.at, tick.end}}, pen);
        if (!Contains(flags, "N") || tick.number.empty()) continue;
        g.device().Text({tick.room.x1, tick.room.y1}, tick.number, style);
        scales_[axis].push_back(tick.room);
    }
}

}  // namespace vntl
