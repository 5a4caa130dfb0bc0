// Polar plots: a circle in the plot box with rings at the ticks of the radius and spokes at whole angles.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "base/page.hpp"
#include "base/text.hpp"
#include "drawing/font_table.hpp"
#include "drawing/mixed_colour.hpp"
#include "drawing/presentation.hpp"
#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr int spoke_angle = 30, angle_tick = 10;  // degrees from one to the next
constexpr double lightness = 0.78;                // of rings and spokes, on the way from the colour of the axes to white
constexpr double radius_number_gap = 4;           // page units from a number to the spoke and to its ring
constexpr double radians = std::numbers::pi / 180;

}  // namespace

double Presentation::Polar_Rim() const {
    const Rect box = Box();
    return 0.5 * std::min(box.x2 - box.x1, box.y2 - box.y1);
}

void Presentation::IPgUnitsPolar(float radius) {
    polar_radius_ = std::isfinite(radius) && radius > 0 ? static_cast<double>(radius) : 1;
    const Rect box = Box();
    const double a_unit = polar_radius_ / Polar_Rim();  // plot units a device unit
    px2_ = 0.5 * (box.x2 - box.x1) * a_unit, px1_ = -px2_;
    py2_ = 0.5 * (box.y2 - box.y1) * a_unit, py1_ = -py2_;
}

void Presentation::IPgPolarPairs(std::span<const float> angles, std::span<const float> radii) {
    constexpr double rounding = 1e-6;
    const std::size_t n = std::min(angles.size(), radii.size());
    std::vector<float> x, y;
    x.reserve(n), y.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double radius = radii[i], angle = radians * std::remainder(static_cast<double>(angles[i]), 360.0);
        if (!(std::fabs(radius) <= polar_radius_ * (1 + rounding)) || !std::isfinite(angle)) continue;
        x.push_back(static_cast<float>(radius * std::cos(angle)));
        y.push_back(static_cast<float>(radius * std::sin(angle)));
    }
    const bool clipped = clip_sets_;
    clip_sets_ = false;  // a marker at the rim shows whole
    Draw_Set(x, y, true);
    clip_sets_ = clipped;
}

void Presentation::IPgPolarAxes(std::string_view radius_flags, std::string_view angle_flags) {
    const Axis_Ticks rings = Ticks_Of_Axis(0, static_cast<float>(polar_radius_));
    Spokes_And_Rings(rings);
    Numbers_Of_Radius(rings, radius_flags);
    Numbers_Of_Angle(angle_flags);
}

void Presentation::Spokes_And_Rings(const Axis_Ticks& rings) {
    constexpr double beside_rim = 2;  // page units between the last ring and the rim
    const Point centre = Plot_To_Device(0, 0);
    const double rim = Polar_Rim(), unit = Target().Height() / page_height;
    const Colour colour = graphics_->Current_Colour();
    const Pen light{Mixed(colour, WRGB(255, 255, 255), lightness), 1, Line_Style::solid};
    for (const float value : rings.values) {
        const double radius = value * X_Scale();
        if (radius > 0 && radius < rim - beside_rim * unit) Target().Ellipse(centre, radius, radius, false, light);
    }
    for (int angle = 0; angle < 360; angle += spoke_angle) {
        const Point end{centre.x + rim * std::cos(angle * radians), centre.y + rim * std::sin(angle * radians)};
        Target().Polyline(std::array<Point, 2>{{centre, end}}, light);
    }
    Target().Polyline(std::array<Point, 2>{{centre, {centre.x + rim, centre.y}}}, {colour, 1, Line_Style::solid});
    Target().Ellipse(centre, rim, rim, false, {colour, 1, Line_Style::solid});
}

// Each stands under the spoke to the right, left of its ring, where no line crosses it.
void Presentation::Numbers_Of_Radius(const Axis_Ticks& rings, std::string_view flags) {
    const Point centre = Plot_To_Device(0, 0);
    const double unit_x = Target().Width() / page_width, unit_y = Target().Height() / page_height;
    const double tick = 0.5 * x_tick_length_ * (Box().x2 - Box().x1) / ticks_a_zone, gap = radius_number_gap * unit_x;
    Text_Style style = graphics_->Current_Text();
    style.justify = Justify::right;
    style.angle = 0;
    const double high = cap_height * Em_Of_Cell(style.width, style.height), under = radius_number_gap * unit_y + high;
    const auto text_of = [&](float value) { return Tick_Text(value, rings.exponent, decimals_); };
    double widest = 0;
    for (const float value : rings.values) widest = std::max(widest, Target().Text_Width(text_of(value), style));
    const int every = Numbered_Every(rings.step * X_Scale(), widest + 3 * gap);
    for (const float value : rings.values) {
        const double x = centre.x + value * X_Scale();
        if (Contains(flags, "T"))
            Target().Polyline(std::array<Point, 2>{{{x, centre.y}, {x, centre.y - tick}}},
                              {graphics_->Current_Colour(), 1, Line_Style::solid});
        const double left = x - gap - Target().Text_Width(text_of(value), style);
        const bool above_next_spoke = (left - centre.x) * std::tan(spoke_angle * radians) > under;
        if (Contains(flags, "N") && above_next_spoke && Has_Number(value, rings.step, every))
            Target().Text({x - gap, centre.y - under}, text_of(value), style);
    }
}

void Presentation::Numbers_Of_Angle(std::string_view flags) {
    const Point centre = Plot_To_Device(0, 0);
    const double tick = y_tick_length_ * (Box().x2 - Box().x1) / ticks_a_zone, rim = Polar_Rim();
    const double outward = y_ticks_inward_ ? 0 : tick;
    Text_Style style = graphics_->Current_Text();
    style.justify = Justify::centre;
    style.angle = 0;
    const double gap = number_gap * Target().Height() / page_height, from_rim = rim + outward + gap;
    style = Fitted(Target(), "180\xC2\xB0", style, std::min(centre.x - Area().x1, Area().x2 - centre.x) - from_rim);
    const double room = std::min(centre.y - Area().y1, Area().y2 - centre.y) - from_rim;
    const double em = std::min(Em_Of_Cell(style.width, style.height), room / cap_height), half_high = 0.5 * cap_height * em;
    const bool numbers = Contains(flags, "N") && em > 0;
    if (numbers) {
        const double scale = em / Em_Of_Cell(style.width, style.height);
        style.width *= scale, style.height *= scale;
    }
    for (int angle = 0; angle < 360; angle += angle_tick) {
        const double c = std::cos(angle * radians), s = std::sin(angle * radians), end = y_ticks_inward_ ? rim - tick : rim + tick;
        if (Contains(flags, "T"))
            Target().Polyline(std::array<Point, 2>{{{centre.x + rim * c, centre.y + rim * s}, {centre.x + end * c, centre.y + end * s}}},
                              {graphics_->Current_Colour(), 1, Line_Style::solid});
        if (angle % spoke_angle != 0 || !numbers) continue;
        const std::string text = std::to_string(angle) + "\xC2\xB0";
        const double half_long = 0.5 * Target().Text_Width(text, style);
        const double out = from_rim + half_long * std::fabs(c) + half_high * std::fabs(s);
        Target().Text({centre.x + out * c, centre.y + out * s - half_high}, text, style);
    }
}

}  // namespace vntl
