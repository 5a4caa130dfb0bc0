// Observed points with their line, the calculated curve over them; below them a row of ticks for each phase and the difference curve. The
// ticks hang between the foot of the intensities and the base of the difference curve, a tenth of that way for each phase.
#include "plot/quick_view_picture.hpp"

#include <algorithm>
#include <vector>

#include "base/text.hpp"
#include "plot/curve_style.hpp"
#include "plot/frame_texts.hpp"
#include "plot/text_style.hpp"

namespace vntl {

namespace {

constexpr std::string_view welcome_text = "Select the directory to view";
constexpr float welcome_width = 0.02f, welcome_height = 0.05f;  // of letters, fractions of the page
constexpr float text_width = 0.013333f, text_height = 0.04f;
constexpr float marker_size = 0.01f;
constexpr int circle = 2;  // marker type
constexpr Colour difference_colour = WRGB(0, 0, 255), tick_colour = WRGB(0, 128, 0);
constexpr float first_tick = 0.3f, next_tick = 0.1f, tick_length = 0.085f;  // shares of the way from the foot to the base

struct Axis_Titles {
    std::string_view scat_var, x, y;
};
constexpr Axis_Titles axis_titles[] = {{"2theta", "2Theta", "Intensity (arb. units)"},
                                       {"TOF", "TOF (usec)", "Intensity (arb. units)"},
                                       {"mono", "Intensity (arb. units)", "Fcalc. - Fobs."}};

Axis_Titles Titles_Of(std::string_view scat_var) {
    for (const Axis_Titles& row : axis_titles)
        if (row.scat_var == scat_var) return row;
    return {};
}

class Profile_Drawing {
public:
    Profile_Drawing(const Quick_View& quick, const Preferences& prefs, Presentation& p)
        : quick_(quick),
          prefs_(prefs),
          pattern_(quick.pattern),
          view_(quick.plot.Shown_View()),
          p_(p),
          g_(p.graphics()),
          points_(std::min(pattern_.x.size(), pattern_.y.size())) {
        p_.IPgUnits(view_.x1, view_.y1, view_.x2, view_.y2);
    }

    void Draw_Observed() {
        const ProfileStyle& slot = prefs_.Style_Of_Row(1);
        const Curve_Style style{0, 1, slot.line_colour, slot.marker_colour, circle};
        Draw_Points(Values(pattern_.y), style);
        if (!Mono()) Draw_Line(p_, X(), Values(pattern_.y), style);
    }

    void Draw_Calculated() {
        if (!Has_Calculated()) return;
        const Colour colour = prefs_.prf.ycalc_colour;
        Draw_Curve(Values(pattern_.ycalc), {prefs_.prf.ycalc_style, 2, colour, colour, circle});
    }

    void Draw_Difference() {
        if (!Has_Calculated()) return;
        std::vector<float> y(points_);
        for (std::size_t i = 0; i < points_; ++i) y[i] = quick_.plot.diff_base + pattern_.y[i] - pattern_.ycalc[i];
        const Colour colour = Mono() ? prefs_.prf.ydif_colour : difference_colour;
        Draw_Curve(y, {0, 2, colour, colour, circle});
    }

    // The foot of the ticks is zero; intensities over a high background have theirs at the lowest of them.
    void Draw_Ticks() {
        const float base = quick_.plot.diff_base, foot = base < 0 ? 0 : pattern_.ymin;
        const PRF_Info_Add_Type& info = quick_.info;
        const std::size_t count = std::min(info.refl_position.size(), info.refl_phase.size());
        g_.IGrColourN(tick_colour);
        g_.IGrLineType(0);
        g_.IGrLineWidth(2);  // they are short
        for (std::size_t j = 0; j < count; ++j) {
            const float x = info.refl_position[j];
            const float t = first_tick + next_tick * static_cast<float>(info.refl_phase[j] - 1);
            const float top = foot + t * (base - foot), bottom = foot + (t + tick_length) * (base - foot);
            if (!(view_.x1 < x && x < view_.x2 && top > view_.y1)) continue;
            g_.IGrMoveTo(x, top);
            g_.IGrLineTo(x, std::max(bottom, view_.y1));
        }
    }

    // Excluded regions are covered.
    void Cover_Excluded() {
        if (!prefs_.quick_view.qv_excl_match) return;
        const PRF_Info_Add_Type& info = quick_.info;
        g_.IGrColourN(prefs_.quick_view.qv_foreground);
        g_.IGrFillPattern(fill_solid);
        const auto regions = static_cast<std::size_t>(std::clamp(info.nexcl, 0, max_excluded_regions));
        for (std::size_t j = 0; j < regions; ++j) {
            const float lo = std::max(info.excl_min[j], view_.x1), hi = std::min(info.excl_max[j], view_.x2);
            if (lo < hi) g_.IGrRectangle(lo, view_.y1, hi, view_.y2);
        }
    }

    void In_Units_Of_View() {
        const Plot_Zone& zone = quick_.plot.zone;
        g_.IGrArea(zone.x1, zone.y1, zone.x2, zone.y2);
        g_.IGrUnits(view_.x1, view_.y1, view_.x2, view_.y2);
    }

private:
    bool Mono() const { return quick_.info.kind == Row_Kind::mono; }
    bool Has_Calculated() const { return pattern_.ycalc.size() >= points_; }
    std::span<const float> Values(const std::vector<float>& array) const { return std::span(array).first(points_); }
    std::span<const float> X() const { return Values(pattern_.x); }

    void Draw_Points(std::span<const float> y, const Curve_Style& style) {
        const Device& page = g_.device();
        const auto side = static_cast<float>(marker_size * std::min(page.Width(), page.Height()));  // round in every shape of the window
        g_.WGrTextFont(marker_font, 0, side / static_cast<float>(page.Width()), side / static_cast<float>(page.Height()));
        Draw_Markers(p_, X(), y, style);
    }
    void Draw_Curve(std::span<const float> y, const Curve_Style& style) { Mono() ? Draw_Points(y, style) : Draw_Line(p_, X(), y, style); }

    const Quick_View& quick_;
    const Preferences& prefs_;
    const Diffraction_Pattern_Type& pattern_;
    const View view_;
    Presentation& p_;
    Graphics& g_;
    std::size_t points_;
};

void Draw_Profile(const Quick_View& quick, const Preferences& prefs, Presentation& p) {
    Profile_Drawing drawing(quick, prefs, p);
    drawing.Draw_Observed();
    drawing.Draw_Calculated();
    drawing.Draw_Difference();
    drawing.In_Units_Of_View();
    drawing.Draw_Ticks();
    drawing.Cover_Excluded();
    Page_Units(p.graphics());
}

void Select_Text(Graphics& g, Colour colour, const Text_Prefs& of_font) {
    g.IGrColourN(colour);
    const float scale = Legible_Scale(g, text_width, text_height);
    g.WGrTextFont(Font_Number(of_font.font), 0, scale * text_width, scale * text_height);
}

void Draw_Texts(const Quick_View& quick, const Preferences& prefs, Presentation& p) {
    Graphics& g = p.graphics();
    const Graph2D_Prefs& texts = prefs.graph2d;
    const View view = quick.plot.Shown_View();
    Select_Text(g, texts.title.colour, texts.title);
    p.IPgTitle(Fit_Text(g, Trim(quick.pattern.title), Room_Along_X(quick.plot.zone, 'C')), 'C');
    Select_Text(g, texts.xlabel.colour, texts.yscale);
    p.IPgYScale("TN", view.x1);
    Select_Text(g, texts.xlabel.colour, texts.xscale);
    p.IPgXScale("TN", view.y1);
    const Axis_Titles titles = Titles_Of(Trim(quick.pattern.scat_var));
    p.IPgXLabel(titles.x, 'R');
    p.IPgYLabelLeft(titles.y, "C9");
}

}  // namespace

void Plot_QuickView(const Quick_View& quick, const Preferences& prefs, Graphics& g) {
    Presentation p(g);
    Draw_Page(quick.plot.zone, p, prefs.quick_view.qv_background, prefs.quick_view.qv_foreground);
    const bool drawable = quick.Holds_Profile() && quick.plot.Shown_View().Drawable();
    if (drawable) Draw_Profile(quick, prefs, p);
    Draw_Frame(p);
    if (drawable) Draw_Texts(quick, prefs, p);
}

void QuickView_Welcome(const Preferences& prefs, Graphics& g) {
    Page_Units(g);
    g.IGrPaletteBack(prefs.quick_view.qv_background);
    g.IGrClear();
    Write_In_Middle(g, Font_Number(prefs.graph2d.title.font), welcome_width, welcome_height, welcome_text);
}

void Draw_Quick_View(const Quick_View& quick, const Preferences& prefs, Device& device) {
    Graphics g(device);
    quick.Count() > 0 ? Plot_QuickView(quick, prefs, g) : QuickView_Welcome(prefs, g);
}

}  // namespace vntl
