// Plots of any columns on a white page: what stands around the curves is that of the 2D graph, with a key at the right.
#include "plot/generic_plot.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "base/extremes.hpp"
#include "base/text.hpp"
#include "drawing/axis.hpp"
#include "drawing/font_table.hpp"
#include "drawing/mixed_colour.hpp"
#include "drawing/presentation.hpp"
#include "plot/axis_limits.hpp"
#include "plot/curve_style.hpp"
#include "plot/frame_texts.hpp"
#include "plot/text_style.hpp"

namespace vntl {

namespace {

using Values = std::span<const float>;

constexpr int bar_plot = 1, pie_plot = 3, line_plot = 6, marker_plot = 7;
constexpr Colour page_colour = WRGB(255, 255, 255), black = WRGB(0, 0, 0);
constexpr int no_line_style = -1;
constexpr Plot_Zone graph_box, polar_box{0.1f, 0.1f, 0.8f, 0.8f}, pie_box{0.2f, 0.2f, 0.8f, 0.8f};
constexpr Plot_Zone key_box{0.865f, 0.15f, 0.99f, 0.85f}, polar_key_box{0.865f, 0.05f, 0.99f, 0.85f},
    pie_key_box{0.78f, 0.05f, 0.99f, 0.85f};
constexpr float beside_polar = 0.075f, beside_pie = 0.1f;  // room between a circle and its key for numbers, share of the width

Extremes Of_Both(Extremes a, Extremes b) { return {std::min(a.low, b.low), std::max(a.high, b.high)}; }

// From dark to light, the colour itself in between.
Colour Step_Of_Lightness(Colour colour, std::size_t step, std::size_t steps) {
    constexpr double darkest = 0.35, lightest = 0.8, own = 0.3;  // shares of black and of white; where between the ends the colour lies
    if (steps < 2) return colour;
    const double share = static_cast<double>(step) / static_cast<double>(steps - 1);
    if (share < own) return Mixed(colour, black, darkest * (1 - share / own));
    return Mixed(colour, WRGB(255, 255, 255), lightest * (share - own) / (1 - own));
}

std::string Percentage(double share) {
    constexpr double least = 0.0005;
    if (share > 0 && share < least) return "<0.1 %";
    return Tick_Text(static_cast<float>(100 * share), 0, 1) + " %";
}

class Generic_Picture {
public:
    Generic_Picture(const Generic_Plots& plots, const Preferences& prefs, Device& device)
        : plots_(plots), prefs_(prefs), graph_(prefs.graph2d), g_(device), p_(g_) {}

    void Draw() {
        Page_Units(g_);
        g_.IGrPaletteBack(page_colour);
        g_.IGrClear();
        switch (plots_.plot_kind) {
            case Plot_Kind::histogram:
                return Plot_Histogram();
            case Plot_Kind::polar:
                return Plot_Polar();
            case Plot_Kind::pie:
                return Plot_Pie();
            default:
                return Plot_Lines();
        }
    }

private:
    Curve_Style Slot(std::size_t curve) const { return Style_Of(prefs_.Style_Of_Row(static_cast<int>(curve) + 1)); }

    static std::size_t Points(const Generic_Curve& curve) { return std::min(curve.x.size(), curve.y.size()); }
    static Values X(const Generic_Curve& curve) { return Values(curve.x).first(Points(curve)); }
    static Values Y(const Generic_Curve& curve) { return Values(curve.y).first(Points(curve)); }
    static Values Sigma(const Generic_Curve& curve) { return Values(curve.sigma).first(std::min(Points(curve), curve.sigma.size())); }

    Extremes Limits_Of(Values (*values)(const Generic_Curve&)) const {
        Extremes limits;
        for (const Generic_Curve& curve : plots_.curves) limits = Of_Both(limits, Finite_Extremes(values(curve)));
        return limits;
    }

    // --- what stands around --------------------------------------------------------------------------------------------------------

    void Begin(const Plot_Zone& box) {
        p_.IPgArea(box.x1, box.y1, box.x2, box.y2);
        p_.IPgClipRectangle(0);  // the limits are those of the data: nothing lies beyond them but the halves of markers
        Write_Title(graph_.title, box, p_, Trim(plots_.title));
    }

    void Draw_Frame_And_Scales(const View& units) {
        Write_X_Label(graph_.xlabel, graph_box, p_, plots_.legend_x);
        Write_Y_Label(graph_.ylabel, p_, plots_.legend_y);
        Draw_Frame(p_);
        Select_Text(g_, graph_.xscale);
        p_.IPgXScale("NT", units.y1);
        Select_Text(g_, graph_.yscale);
        p_.IPgYScale("NT", units.x1);
    }

    void Select_Legend_Font() {
        Select_Font(g_, graph_.legend);
        const float scale = Legible_Scale(g_, Char_Width(graph_.legend.size), Char_Height(graph_.legend.size));
        g_.WGrTextFont(0, 0, scale * Char_Width(graph_.legend.size), scale * Char_Height(graph_.legend.size));
        g_.IGrColourN(black);
    }

    bool Has_Key() const {
        return std::any_of(plots_.curves.begin(), plots_.curves.end(), [](const Generic_Curve& curve) { return curve.has_legend; });
    }

    // A circle in a wide page leaves more room for its key.
    Plot_Zone Key_Beside_Circle(const Plot_Zone& box, float beside, Plot_Zone key) const {
        const Device& device = g_.device();
        const auto shape = static_cast<float>(device.Height() / device.Width());
        const float rim = 0.5f * std::min(box.x2 - box.x1, (box.y2 - box.y1) * shape);  // share of the width
        key.x1 = std::min(key.x1, 0.5f * (box.x1 + box.x2) + rim + beside);
        return key;
    }

    // The styles of the sets are those of the curves.
    void Draw_Key(const Plot_Zone& box) {
        if (!Has_Key()) return;
        std::vector<Set_Text> entries;
        for (std::size_t i = 0; i < plots_.curves.size(); ++i)
            if (const std::string_view name = Trim(plots_.curves[i].legend); !name.empty())
                entries.push_back({static_cast<int>(i) + 1, std::string(name), {}});
        Select_Legend_Font();
        p_.IPgKeys(box.x1, box.y1, box.x2, box.y2, entries);
    }

    void Tell(std::string_view text) {
        const Text_Prefs& font = graph_.xscale;
        Write_In_Middle(g_, Font_Number(font.font), Char_Width(font.size), Char_Height(font.size), text);
    }

    // --- the four plots ------------------------------------------------------------------------------------------------------------

    bool Lineless(const Generic_Curve& curve) const { return curve.no_line || plots_.plot_kind == Plot_Kind::scatter; }
    bool Has_Markers(const Generic_Curve& curve) const { return curve.has_marker || Lineless(curve) || Points(curve) == 1; }

    void Plot_Lines() {
        Begin(graph_box);
        Extremes y = Limits_Of(Y);
        const Extremes x = Limits_Of(X);
        if (!x.Found() || !y.Found()) return Tell("There is no point to draw");
        if (std::any_of(plots_.curves.begin(), plots_.curves.end(), [](const Generic_Curve& curve) { return curve.has_errbar; })) {
            double longest = 0;
            for (const Generic_Curve& curve : plots_.curves) longest = std::max(longest, Largest(Sigma(curve)));
            y = {Limit(y.low - longest), Limit(y.high + longest)};
        }
        const Extremes across = With_Extent(x), up = With_Extent(y);
        const View units{across.low, across.high, up.low, up.high};
        p_.IPgUnits(units.x1, units.y1, units.x2, units.y2);
        Draw_Frame_And_Scales(units);
        for (std::size_t i = 0; i < plots_.curves.size(); ++i) Draw_Curve(i);
        p_.IPgNewPlot(line_plot, static_cast<int>(plots_.curves.size()), 0);
        for (std::size_t i = 0; i < plots_.curves.size(); ++i) p_.IPgStyle(static_cast<int>(i) + 1, Style_In_Key(i));
        g_.IGrLineWidth(1);
        Draw_Key(key_box);
    }

    Set_Style Style_In_Key(std::size_t i) const {
        const Generic_Curve& curve = plots_.curves[i];
        const Curve_Style slot = Slot(i);
        Set_Style style = slot.Of_Markers();
        if (Lineless(curve)) style.line_style = no_line_style;
        if (!Has_Markers(curve)) style.marker = 0;
        return style;
    }

    void Select_Marker_Size(std::size_t curve) {
        const int size = prefs_.Style_Of_Row(static_cast<int>(curve) + 1).marker_size;
        g_.WGrTextFont(marker_font, 0, Char_Width(size), Char_Height(size));
    }

    // Bars below the markers, which tell the value.
    void Draw_Curve(std::size_t i) {
        const Generic_Curve& curve = plots_.curves[i];
        const Curve_Style slot = Slot(i);
        Select_Marker_Size(i);
        if (!Lineless(curve)) Draw_Line(p_, X(curve), Y(curve), slot);
        if (curve.has_errbar) {
            p_.IPgNewPlot(line_plot, 1, static_cast<int>(Points(curve)));
            p_.IPgStyle(1, slot.In_Colour(Lineless(curve) ? slot.marker_colour : slot.line_colour).Of_Line());
            g_.IGrLineWidth(1);
            p_.IPgErrorBars(X(curve), Y(curve), Sigma(curve));
        }
        if (Has_Markers(curve)) Draw_Markers(p_, X(curve), Y(curve), slot);
    }

    // Room of a group of bars: the least distance of two places in a curve. Where that is far less than an even distance would be, groups
    // overlap, since bars must be seen.
    float Slot_Of_Bars(const Extremes& x) const {
        constexpr double least_share = 0.25, share_of_one = 0.3;  // of an even distance; of the axis, where there is one place alone
        double least = std::numeric_limits<double>::infinity(), even = least;
        for (const Generic_Curve& curve : plots_.curves) {
            std::vector<float> places;
            std::copy_if(curve.x.begin(), curve.x.end(), std::back_inserter(places), [](float value) { return std::isfinite(value); });
            std::sort(places.begin(), places.end());
            places.erase(std::unique(places.begin(), places.end()), places.end());
            for (std::size_t k = 1; k < places.size(); ++k) least = std::min(least, static_cast<double>(places[k]) - places[k - 1]);
            if (places.size() > 1) even = std::min(even, (static_cast<double>(x.high) - x.low) / static_cast<double>(places.size() - 1));
        }
        if (std::isfinite(least)) return Limit(std::max(least, least_share * even));
        const Extremes about = With_Extent(x);
        return Limit(share_of_one * (static_cast<double>(about.high) - about.low));
    }

    void Plot_Histogram() {
        Begin(graph_box);
        const Extremes x = Limits_Of(X), y = Limits_Of(Y);
        if (!x.Found() || !y.Found()) return Tell("There is no bar to draw");
        const float slot = Slot_Of_Bars(x), high = std::max(y.high, 0.0f), low = std::min(y.low, 0.0f);
        const Extremes across = Of_Both(With_Extent(x), {Limit(x.low - 0.5 * slot), Limit(x.high + 0.5 * slot)});
        const View units{across.low, across.high, low, low < high ? high : 1};
        p_.IPgUnits(units.x1, units.y1, units.x2, units.y2);
        p_.IPgNewPlot(bar_plot, static_cast<int>(plots_.curves.size()), 0);
        for (std::size_t i = 0; i < plots_.curves.size(); ++i) p_.IPgStyle(static_cast<int>(i) + 1, Slot(i).Of_Line());
        for (const Generic_Curve& curve : plots_.curves) p_.IPgBars(X(curve), Y(curve), slot);
        Draw_Frame_And_Scales(units);
        if (low < 0) Draw_Zero_Line(units);
        Draw_Key(key_box);
    }

    void Draw_Zero_Line(const View& units) {
        const std::array<float, 2> ends = {units.x1, units.x2}, zero = {0, 0};
        Presentation line = p_;
        line.IPgNewPlot(line_plot, 1, 2);
        line.IPgStyle(1, {0, fill_outline, black, black, 0});
        line.IPgXYLine(ends, zero);
    }

    void Plot_Polar() {
        Begin(polar_box);
        const Extremes radii = Limits_Of(X);
        if (!radii.Found() || !Limits_Of(Y).Found()) return Tell("There is no point to draw");
        p_.IPgUnitsPolar(std::max(std::fabs(radii.low), std::fabs(radii.high)));
        Select_Text(g_, graph_.xscale);
        p_.IPgPolarAxes("NT", "NT");
        p_.IPgNewPlot(marker_plot, static_cast<int>(plots_.curves.size()), 0);
        for (std::size_t i = 0; i < plots_.curves.size(); ++i) {
            Set_Style style = Slot(i).Of_Markers();
            style.line_style = no_line_style;
            p_.IPgStyle(static_cast<int>(i) + 1, style);
        }
        for (std::size_t i = 0; i < plots_.curves.size(); ++i) {
            Select_Marker_Size(i);
            p_.IPgPolarPairs(Y(plots_.curves[i]), X(plots_.curves[i]));
        }
        Draw_Key(Key_Beside_Circle(polar_box, beside_polar, polar_key_box));
    }

    // Why the values make no pie; empty when they do.
    static std::string Refusal(Values values) {
        if (values.size() > static_cast<std::size_t>(max_slices))
            return "A pie shows at most " + std::to_string(max_slices) + " slices, and there are " + std::to_string(values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            if (values[i] < 0) return "A pie shows no negative value, and that of slice " + std::to_string(i + 1) + " is one";
        const Extremes found = Finite_Extremes(values);
        return found.Found() && found.high > 0 ? std::string() : "A pie shows parts of a whole, and the sum of the values is zero";
    }

    void Plot_Pie() {
        Begin(pie_box);
        const Values values = plots_.curves.empty() ? Values() : Values(plots_.curves.front().y);
        if (const std::string why = Refusal(values); !why.empty()) return Tell(why);
        const Colour colour = Slot(0).line_colour;
        p_.IPgNewPlot(pie_plot, static_cast<int>(values.size()), 1);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Colour shade = Step_Of_Lightness(colour, i, values.size());
            p_.IPgStyle(static_cast<int>(i) + 1, {no_line_style, fill_solid, shade, shade, 0});
        }
        Select_Legend_Font();
        g_.IGrLineWidth(1);
        const std::vector<Set_Text> names = Names_Of_Slices(values);
        if (!plots_.curves.front().has_legend) return p_.IPgPie(values, 90, names, 0.99f);
        std::vector<Set_Text> figures = names;
        for (Set_Text& text : figures) text.name.clear();
        const Plot_Zone key = Key_Beside_Circle(pie_box, beside_pie, pie_key_box);
        p_.IPgPie(values, 90, figures, key.x1);
        p_.IPgKeys(key.x1, key.y1, key.x2, key.y2, names);
    }

    std::vector<Set_Text> Names_Of_Slices(Values values) const {
        double sum = 0;
        for (const float value : values) sum += std::isfinite(value) ? static_cast<double>(value) : 0;
        std::vector<Set_Text> names;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::string name = i < plots_.slices.size() ? std::string(Trim(plots_.slices[i])) : std::string();
            names.push_back({static_cast<int>(i) + 1, name, std::isfinite(values[i]) ? Percentage(values[i] / sum) : std::string()});
        }
        return names;
    }

    const Generic_Plots& plots_;
    const Preferences& prefs_;
    const Graph2D_Prefs& graph_;
    Graphics g_;
    Presentation p_;
};

}  // namespace

void Draw_Generic_Plot(const Generic_Plots& plots, const Preferences& prefs, Device& device) {
    Generic_Picture(plots, prefs, device).Draw();
}

void Draw_Generic_Welcome(const Configuration& config, Device& device) {
    constexpr int bold = style_bold, bold_italic = style_bold | style_italic;
    Graphics g(device);
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, 1, 1);
    g.IGrPaletteBack(page_colour);
    g.IGrClear();
    g.IGrColour("Blue");
    g.IGrCharJustify(1);
    g.WGrTextFont(font_courier, bold, 0.05f, 0.07f);
    g.IGrCharOut(0.5f, 0.6f, config.program_name);
    g.WGrTextFont(font_courier, bold_italic, 0.02f, 0.04f);
    g.IGrCharOut(0.5f, 0.5f, "Generic Graphics Mode");
    g.WGrTextFont(font_courier, bold, 0.015f, 0.03f);
    g.IGrCharOut(0.5f, 0.2f, config.program_version + "  " + config.program_date);
}

}  // namespace vntl
