#include "toolkit/presentation_3d.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/page.hpp"
#include "base/text.hpp"
#include "toolkit/axis.hpp"
#include "toolkit/font_table.hpp"

namespace vntl {

namespace {

constexpr double eye_distance = 4;                                      // from the middle of the box, in its sides
constexpr double reach = 0.5 * std::numbers::sqrt3;                     // of a corner from the middle
constexpr double room = eye_distance / (eye_distance - reach) * reach;  // of the nearest corner, in perspective
constexpr double tick_length = 8, number_gap = 5;                       // page units

double Share(float value, float from, float to) { return (static_cast<double>(value) - from) / (static_cast<double>(to) - from); }

// The corner of a number of three bits, one an axis.
struct Corner {
    double u, v, w;
};
Corner Corner_Of(unsigned bits) {
    return {static_cast<double>(bits & 1), static_cast<double>(bits >> 1 & 1), static_cast<double>(bits >> 2 & 1)};
}

}  // namespace

Projection::Projection(double rotation, double elevation) {
    if (!(std::fabs(rotation) < 360)) rotation = 0;
    constexpr double radian = std::numbers::pi / 180;
    elevation = std::clamp(elevation, 0.0, 45.0);
    cos_rotation_ = std::cos(rotation * radian), sin_rotation_ = std::sin(rotation * radian);
    cos_elevation_ = std::cos(elevation * radian), sin_elevation_ = std::sin(elevation * radian);
}

Projected Projection::operator()(double u, double v, double w) const {
    const double away = u - 0.5, right = v - 0.5, up = w - 0.5;
    const double turned_right = right * cos_rotation_ - away * sin_rotation_, turned_away = right * sin_rotation_ + away * cos_rotation_;
    const double seen_up = up * cos_elevation_ + turned_away * sin_elevation_, depth = turned_away * cos_elevation_ - up * sin_elevation_;
    const double shrinks = eye_distance / (eye_distance + depth) / room;
    return {turned_right * shrinks, seen_up * shrinks, depth};
}

void Presentation_3D::IPgArea(float x1, float y1, float x2, float y2) { bx1_ = x1, by1_ = y1, bx2_ = x2, by2_ = y2; }

void Presentation_3D::IPgUnitsXYZ(float x1, float x2, float y1, float y2, float z1, float z2) {
    x1_ = x1, x2_ = x2, y1_ = y1, y2_ = y2, z1_ = z1, z2_ = z2;
}

void Presentation_3D::IPgRotation(float degrees) { rotation_ = degrees; }
void Presentation_3D::IPgElevation(float degrees) { elevation_ = degrees; }

Projected Presentation_3D::At(float x, float y, float z) const {
    return Projection(rotation_, elevation_)(Share(x, x1_, x2_), Share(y, y1_, y2_), Share(z, z1_, z2_));
}

Point Presentation_3D::On_Device(const Projected& place) const {
    const Rect& area = graphics_->Area();
    const double wide = area.x2 - area.x1, high = area.y2 - area.y1;
    return {area.x1 + wide * (0.5 * (bx1_ + bx2_) + 0.5 * (bx2_ - bx1_) * place.x),
            area.y1 + high * (0.5 * (by1_ + by2_) + 0.5 * (by2_ - by1_) * place.y)};
}

Point Presentation_3D::To_Device(float x, float y, float z) const { return On_Device(At(x, y, z)); }
double Presentation_3D::Depth(float x, float y, float z) const { return At(x, y, z).depth; }

void Presentation_3D::IPgFrame() const {
    const Projection project(rotation_, elevation_);
    struct Edge {
        Projected from, to;
        double Depth() const { return from.depth + to.depth; }
    };
    std::vector<Edge> edges;
    for (unsigned corner = 0; corner < 8; ++corner)
        for (const unsigned axis : {1u, 2u, 4u}) {
            if ((corner & axis) != 0) continue;
            const Corner a = Corner_Of(corner), b = Corner_Of(corner | axis);
            edges.push_back({project(a.u, a.v, a.w), project(b.u, b.v, b.w)});
        }
    std::stable_sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.Depth() > b.Depth(); });
    const Pen pen{graphics_->Current_Colour(), graphics_->Line_Width(), Line_Style::solid};
    for (const Edge& edge : edges) graphics_->device().Polyline(std::array{On_Device(edge.from), On_Device(edge.to)}, pen);
}

void Presentation_3D::IPgZScale(std::string_view flags) const {
    const Projection project(rotation_, elevation_);
    Corner left{};
    for (unsigned corner = 0; corner < 4; ++corner)
        if (const Corner c = Corner_Of(corner); project(c.u, c.v, 0).x < project(left.u, left.v, 0).x) left = c;
    const auto place = [&](float z) { return On_Device(project(left.u, left.v, Share(z, z1_, z2_))); };
    Device& device = graphics_->device();
    const double unit = device.Width() / page_width;
    const Pen pen{graphics_->Current_Colour(), 1, Line_Style::solid};
    device.Polyline(std::array{place(z1_), place(z2_)}, pen);
    Text_Style style = graphics_->Current_Text();
    style.justify = Justify::right;
    const double em = Em_Of_Cell(style.width, style.height);
    const Axis_Ticks ticks = Ticks_Of_Axis(z1_, z2_, true);
    for (const float value : ticks.values) {
        const Point at = place(value);
        const double end = at.x - tick_length * unit;
        if (Contains(flags, "T")) device.Polyline(std::array{at, Point{end, at.y}}, pen);
        if (Contains(flags, "N"))
            device.Text({end - number_gap * unit, at.y - 0.5 * cap_height * em}, Tick_Text(value, ticks.exponent), style);
    }
}

}  // namespace vntl
