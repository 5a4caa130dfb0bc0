#include "plot/rubber.hpp"

#include <cmath>
#include <numbers>
#include <utility>

#include "calc/x_conversion.hpp"

namespace vntl {

namespace {

constexpr Colour yellow = WRGB(255, 255, 0), magenta = WRGB(255, 0, 255), green = WRGB(0, 128, 0), cyan = WRGB(0, 255, 255);
constexpr double l_alpha_of_tungsten = 1.4763;  // angstrom

// A bright line on a dark seam shows on light and on dark ground.
template <class Draw>
void On_Dark_Seam(Graphics& g, Colour colour, float width, Draw draw) {
    for (const auto& [pen, pen_width] : {std::pair{WRGB(90, 90, 0), width + 2}, std::pair{colour, width}}) {
        g.IGrColourN(pen);
        g.IGrLineWidth(pen_width);
        draw();
    }
}

void Segment(Graphics& g, double x0, double y0, double x1, double y1) {
    g.IGrMoveTo(static_cast<float>(x0), static_cast<float>(y0));
    g.IGrLineTo(static_cast<float>(x1), static_cast<float>(y1));
}

void Upright(const Plot_State& plot, Graphics& g, double x) { Segment(g, x, plot.zone.y1 * page_height, x, plot.zone.y2 * page_height); }
void Level(const Plot_State& plot, Graphics& g, double y) { Segment(g, plot.zone.x1 * page_width, y, plot.zone.x2 * page_width, y); }

void Draw_Pivot(const Plot_State& plot, Colour ink, Graphics& g) {
    g.IGrColourN(ink);
    g.IGrLineWidth(2);
    if (plot.MoveMode == Move_Mode::scale_x)
        Upright(plot, g, plot.Pivot_Place());
    else
        Level(plot, g, plot.Pivot_Place());
}

void Draw_Spectral_Lines(const Plot_State& plot, const Profile_Store& store, Graphics& g) {
    const X_Constants& conv = store.Pattern(1).conv;
    const std::pair<Colour, double> lines[] = {{yellow, conv[0]}, {magenta, conv[1]}, {green, conv[3]}, {cyan, l_alpha_of_tungsten}};
    for (std::size_t i = 0; i < std::size(lines); ++i) {
        const auto& [colour, wavelength] = lines[i];
        if (!plot.spectral.line[i] || !(conv[0] > 0)) continue;
        const std::optional<float> angle = Spectral_Angle(plot.spectral.at, wavelength / conv[0]);
        if (!angle || *angle < plot.drawn.x1 || *angle > plot.drawn.x2) continue;
        On_Dark_Seam(g, colour, 1, [&] { Upright(plot, g, plot.Page_At({*angle, 0}).x); });
    }
}

}  // namespace

std::optional<float> Spectral_Angle(float two_theta, double ratio) {
    const double half = std::numbers::pi / 360, sine = ratio * std::sin(two_theta * half);
    if (!(std::fabs(sine) <= 1)) return {};
    return static_cast<float>(std::asin(sine) / half);
}

void Draw_On_Dark_Seam(Graphics& g, float line_width, const std::function<void()>& draw) { On_Dark_Seam(g, yellow, line_width, draw); }

void Draw_Rubber_Shape(const Rubber_Shape& r, const Plot_Zone& zone, float line_width, Graphics& g) {
    const auto rectangle = [&g](double x0, double y0, double x1, double y1) {
        g.IGrRectangle(static_cast<float>(x0), static_cast<float>(y0), static_cast<float>(x1), static_cast<float>(y1));
    };
    g.IGrFillPattern(fill_outline);
    switch (r.kind) {
        case Rubber_Kind::rectangle:
            On_Dark_Seam(g, yellow, line_width, [&] { rectangle(r.x0, r.y0, r.x1, r.y1); });
            break;
        case Rubber_Kind::band: {
            const double foot = zone.y1 * page_height, top = zone.y2 * page_height;
            On_Dark_Seam(g, yellow, line_width, [&] { rectangle(r.x0, foot, r.x1, top); });
            g.IGrFillPattern(fill_hatched);
            rectangle(r.x0, foot, r.x1, top);
            g.IGrFillPattern(fill_outline);
            break;
        }
        case Rubber_Kind::line:
            On_Dark_Seam(g, yellow, line_width, [&] { Segment(g, r.x0, r.y0, r.x1, r.y1); });
            break;
    }
}

void Draw_Rubber(const Plot_State& plot, const Profile_Store& store, Graphics& g, Colour ink) {
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
    g.IGrLineType(0);
    if (plot.rubber.active) Draw_Rubber_Shape(plot.rubber, plot.zone, plot.rubber.kind == Rubber_Kind::line ? 2 : 1, g);
    if (plot.row_move.has_pivot) Draw_Pivot(plot, ink, g);
    if (plot.spectral.shown && store.nperfiles() > 0) Draw_Spectral_Lines(plot, store, g);
}

}  // namespace vntl
