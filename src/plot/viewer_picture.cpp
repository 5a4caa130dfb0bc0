#include "plot/viewer_picture.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "drawing/presentation.hpp"
#include "plot/axis_limits.hpp"
#include "plot/curve_style.hpp"
#include "plot/frame_texts.hpp"
#include "plot/grid_map.hpp"
#include "plot/rubber.hpp"
#include "plot/text_style.hpp"

namespace vntl {

namespace {

constexpr Colour window_ground = WRGB(192, 192, 192), blue = WRGB(0, 0, 255), white = WRGB(255, 255, 255);
constexpr int text_font = 102;
constexpr float line_width = 2;  // of what the hand draws

// --- the line of a section ---------------------------------------------------------------------------------------------------------

// From now on nothing is drawn outside of the plot box; page units stay in force.
void Clip_To_Box(const Plot_Zone& zone, Graphics& g) {
    g.IGrArea(zone.x1, zone.y1, zone.x2, zone.y2);
    g.IGrUnits(zone.x1 * page_width, zone.y1 * page_height, zone.x2 * page_width, zone.y2 * page_height);
}

// It runs from the filled end to the open one.
void Draw_Section(const Viewer2D& viewer, Graphics& g) {
    constexpr float radius = 6;  // page units
    if (!viewer.plot.units.Drawable()) return;
    const auto at = [&](std::size_t end) { return viewer.plot.Page_At({viewer.section_x[end], viewer.section_y[end]}); };
    const std::array<float, 2> x = {static_cast<float>(at(0).x), static_cast<float>(at(1).x)};
    const std::array<float, 2> y = {static_cast<float>(at(0).y), static_cast<float>(at(1).y)};
    const Device& page = g.device();
    const auto round = static_cast<float>(page.Width() / page_width * page_height / page.Height());  // in every shape of the window
    Clip_To_Box(viewer.plot.zone, g);
    Draw_On_Dark_Seam(g, line_width, [&] {
        g.IGrMoveTo(x[0], y[0]);
        g.IGrLineTo(x[1], y[1]);
        g.IGrFillPattern(fill_outline);
        g.IGrEllipse(x[0], y[0], radius, round);
        g.IGrEllipse(x[1], y[1], radius, round);
    });
    g.IGrFillPattern(fill_solid);
    g.IGrEllipse(x[0], y[0], radius, round);
    Page_Units(g);
}

// --- small windows -----------------------------------------------------------------------------------------------------------------

struct Letters {
    float width, height;  // fractions of the page
};
constexpr Letters title_letters{0.0133f, 0.0266f}, other_letters{0.009f, 0.018f};

// As told, or larger where those could not be read.
void Select_Legible(Graphics& g, Letters letters) {
    const float scale = Legible_Scale(g, letters.width, letters.height);
    g.WGrTextFont(text_font, 0, scale * letters.width, scale * letters.height);
}

struct Line_Picture {
    const Line_Plot& line;
    std::string_view title, x_title;
    std::string_view without_points;  // what to do for some
    Plot_Zone zone;
    bool of_frames = false;  // each point has been measured by itself
};

// Some room above and below the curve; of intensities none below 0.
Extremes Limits_Up(Extremes y) {
    constexpr double share = 0.05;
    const double room = share * (static_cast<double>(y.high) - static_cast<double>(y.low));
    const double low = static_cast<double>(y.low) - room;
    return With_Extent({Limit(y.low >= 0 ? std::max(low, 0.0) : low), Limit(static_cast<double>(y.high) + room)});
}

class Small_Plot {
public:
    Small_Plot(const Line_Picture& picture, const Preferences& prefs, Device& device)
        : picture_(picture), slot_(prefs.Style_Of_Row(1)), zone_(picture.zone), g_(device), p_(g_) {}

    void Draw() {
        Page_Units(g_);
        g_.IGrPaletteBack(white);
        g_.IGrClear();
        g_.IGrColour("Black");
        const Extremes x = Finite_Extremes(picture_.line.x), y = Finite_Extremes(picture_.line.y);
        if (picture_.line.x.empty()) return Tell(picture_.without_points);
        if (!x.Found() || !y.Found()) return Tell("There is no point to draw");
        const float beside = picture_.of_frames ? 0.5f : 0;
        const Extremes across = With_Extent({x.low - beside, x.high + beside}), up = Limits_Up(y);
        units_ = {across.low, across.high, up.low, up.high};
        Lay_Out();
        Draw_Curve();
        Draw_Frame(p_);
        Write_Texts();
    }

private:
    void Tell(std::string_view text) {
        const float scale = Legible_Scale(g_, other_letters.width, other_letters.height);
        Write_In_Middle(g_, text_font, scale * other_letters.width, scale * other_letters.height, text);
    }

    // The margins are as wide as told, or as the numbers need.
    void Lay_Out() {
        constexpr float beside_number = 4;  // page units
        p_.IPgUnits(units_.x1, units_.y1, units_.x2, units_.y2);
        Select_Legible(g_, other_letters);
        zone_.x1 = std::clamp(p_.Margin_Of_Y_Numbers(), zone_.x1, 0.5f);
        zone_.y1 = std::clamp(p_.Margin_Of_X_Texts(), zone_.y1, 0.5f);
        const float last_number = 0.5f * Widest_X_Number() + beside_number;
        zone_.x2 = std::clamp(1 - last_number / page_width, 0.6f, zone_.x2);
        p_.IPgArea(zone_.x1, zone_.y1, zone_.x2, zone_.y2);
    }

    float Widest_X_Number() const {
        const Axis_Ticks axis = Ticks_Of_Axis(units_.x1, units_.x2);
        float widest = 0;
        for (const float value : axis.values) widest = std::max(widest, g_.Text_Width(Tick_Text(value, axis.exponent)));
        return widest;
    }

    void Draw_Curve() {
        constexpr float marker = 10;  // page units
        constexpr int circle = 2;
        const std::size_t points = std::min(picture_.line.x.size(), picture_.line.y.size());
        const auto x = std::span(picture_.line.x).first(points), y = std::span(picture_.line.y).first(points);
        const Curve_Style style{0, 1, slot_.line_colour, slot_.line_colour, circle};
        Draw_Line(p_, x, y, style);
        const bool apart = static_cast<float>(points) * 2 * marker < (zone_.x2 - zone_.x1) * page_width;
        if (points > 1 && !(picture_.of_frames && apart)) return;
        const auto side = static_cast<float>(marker / page_height * std::min(g_.device().Width(), g_.device().Height()));
        g_.WGrTextFont(marker_font, 0, side / static_cast<float>(g_.device().Width()), side / static_cast<float>(g_.device().Height()));
        Draw_Markers(p_, x, y, style);
    }

    void Write_Texts() {
        g_.IGrColour("Black");
        Select_Legible(g_, title_letters);
        p_.IPgTitle(Fit_Text(g_, picture_.title, Room_Along_X(zone_, 'C')), 'C');
        Select_Legible(g_, other_letters);
        p_.IPgYScale("TN", units_.x1);
        p_.IPgXScale("TN", units_.y1);
        p_.IPgXLabel(picture_.x_title, 'C');
        p_.IPgYLabelLeft("Intensity", Stands_Upright("Intensity") ? "CV" : "C9");
    }

    // The word beside the numbers can be read; else it is turned.
    bool Stands_Upright(std::string_view word) const {
        const float scale = Legible_Scale(g_, other_letters.width, other_letters.height);
        const float fits = std::min(1.0f, p_.Width_Of_Upright_Y_Label() * page_width / std::max(g_.Text_Width(word), 1.0f));
        constexpr float nearly = 1.01f;
        return Legible_Scale(g_, fits * scale * other_letters.width, fits * scale * other_letters.height) < nearly;
    }

    const Line_Picture& picture_;
    const ProfileStyle& slot_;
    Plot_Zone zone_;
    View units_;
    Graphics g_;
    Presentation p_;
};

}  // namespace

Drawn Draw_Viewer(const Viewer2D& viewer, const Preferences& prefs, const Configuration& config, Device& device) {
    Graphics g(device);
    const Plot_State& plot = viewer.plot;
    if (!viewer.Holds_Run()) {
        Plot_Welcome(window_ground, blue, config, g);
        return {plot.drawn, plot.units, viewer.y_label};
    }
    const bool log = viewer.intensity_scale == Intensity_Scale::logarithm;
    const std::string title = viewer.title + (log ? " (Log-Scale)" : "");
    const View units = Draw_Grid_Map({plot.grid, plot.zone, title, viewer.x_label, viewer.y_label, viewer.bitmap}, prefs, g);
    return {plot.Shown_View(), units, viewer.y_label};
}

void Draw_Viewer_Marks(const Viewer2D& viewer, Device& device) {
    Graphics g(device);
    Page_Units(g);
    g.IGrLineType(0);
    if (viewer.section_known && viewer.side_plot == side_section) Draw_Section(viewer, g);
    if (viewer.plot.rubber.active) Draw_Rubber_Shape(viewer.plot.rubber, viewer.plot.zone, line_width, g);
}

void Draw_Cross_Section(const Line_Plot& section, const Preferences& prefs, Device& device) {
    Small_Plot({section, "Cross Section", "Pixels", "Draw a line in the picture", {}}, prefs, device).Draw();
}

void Draw_Omega_Scan(const Line_Plot& scan, const Preferences& prefs, Device& device) {
    constexpr Plot_Zone zone{0.15f, 0.15f, 0.9f, 0.9f};
    Small_Plot({scan, "Omega Scan", "Frames", "Read runs to see their frames", zone, true}, prefs, device).Draw();
}

}  // namespace vntl
