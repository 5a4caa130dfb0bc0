// One complete 2D graph: background, a curve with markers for each shown row, title, scales, labels, frame and legend.
//
// The order of the steps is the order in which things cover one another: a row's line lies over its markers, its excluded stretches
// over both, the frame and the legend over all rows.
#include <algorithm>
#include <cmath>
#include <memory>
#include <thread>
#include <vector>

#include "plot/curve_style.hpp"
#include "plot/excluded.hpp"
#include "plot/frame_texts.hpp"
#include "plot/plot.hpp"
#include "plot/prf_overlay.hpp"
#include "plot/text_style.hpp"

namespace vntl {

namespace {

constexpr int line_plot = 6, marker_plot = 7;
constexpr int marker_font = 101;

using Values = std::span<const float>;

void Page_Units(Graphics& g) {
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
}

void Draw_Page(const Session& session, Graphics& g) {
    const Plot_State& plot = session.plot;
    const Graph2D_Prefs& prefs = session.prefs.graph2d;
    Page_Units(g);
    g.IPgArea(plot.zone_x1, plot.zone_y1, plot.zone_x2, plot.zone_y2);
    g.IGrPaletteBack(prefs.frame_background);
    g.IGrClear();
    g.IGrFillPattern(fill_solid);
    g.IGrColourN(prefs.frame_foreground);
    g.IGrRectangle(plot.zone_x1 * page_width, plot.zone_y1 * page_height, plot.zone_x2 * page_width, plot.zone_y2 * page_height);
}

void Draw_Markers(Graphics& g, Values x, Values y, const Curve_Style& style) {
    g.IPgNewPlot(marker_plot, 1, static_cast<int>(x.size()));
    g.IPgStyle(1, style.Of_Markers());
    g.IGrLineWidth(1);
    g.IPgXYPairs(x, y);
}

void Draw_Line(Graphics& g, Values x, Values y, const Curve_Style& style) {
    g.IPgNewPlot(line_plot, 1, static_cast<int>(x.size()));
    g.IPgStyle(1, style.Of_Line());
    g.IGrLineWidth(style.Width());
    g.IPgXYPairs(x, y);
}

// Draws one row. The arrays of its pattern are looked at in place; only logarithms and differences need arrays of their own.
class Row_Drawing {
public:
    Row_Drawing(const Session& session, Graphics& g, int row, const Plot_Window& window, bool log)
        : session_(session),
          g_(g),
          pattern_(session.store.Pattern(row)),
          info_(session.store.Info(row)),
          window_(window),
          log_(log),
          style_(Style_Of(session.prefs.Style_Of_Row(row))),
          points_(std::min({pattern_.x.size(), pattern_.y.size(), static_cast<std::size_t>(std::max(pattern_.npts, 0))})) {
        const int size = session.prefs.Style_Of_Row(row).marker_size;
        g_.WGrTextFont(marker_font, 0, Char_Width(size), Char_Height(size));
    }

    bool Empty() const { return points_ == 0; }

    void Draw_Observed() {
        std::vector<float> logarithms;
        const Values y = Scaled(pattern_.y, logarithms);
        Draw_Markers(g_, X(), y, style_);
        if (Mono())
            Draw_Error_Bars();
        else if (style_.Has_Line())
            Draw_Line(g_, X(), y, style_);
    }

    void Draw_Calculated() { Draw_Array(pattern_.ycalc, Ycalc_Style(session_.prefs.prf)); }
    void Draw_Background() { Draw_Array(pattern_.bgr, Ydif_Style(session_.prefs.prf)); }

    void Draw_Difference() {
        if (pattern_.ycalc.size() < points_) return;
        std::vector<float> difference(points_);
        for (std::size_t i = 0; i < points_; ++i) difference[i] = pattern_.y[i] - pattern_.ycalc[i];
        Draw_Line(g_, X(), difference, Ydif_Style(session_.prefs.prf));
    }

    // In the linear intensity, in the logarithmic form too.
    void Draw_Excluded() {
        const Curve_Style style = style_.In_Colour(session_.prefs.prf.excl_colour);
        for (const Excluded_Stretch& stretch : Excluded_Stretches(info_, X(), window_)) {
            const Values x = X().subspan(stretch.first, stretch.count);
            const Values y = Values(pattern_.y).subspan(stretch.first, stretch.count);
            Draw_Markers(g_, x, y, style);
            if (style.Has_Line() && !Mono()) Draw_Line(g_, x, y, style);
        }
    }

private:
    Values X() const { return Values(pattern_.x).first(points_); }
    bool Mono() const { return info_.kind == "MONO"; }

    Values Scaled(const std::vector<float>& array, std::vector<float>& logarithms) const {
        const Values values = Values(array).first(points_);
        if (!log_) return values;
        logarithms = Log_Copy(values);
        return logarithms;
    }

    void Draw_Array(const std::vector<float>& array, const Curve_Style& style) {
        if (array.size() < points_) return;
        std::vector<float> logarithms;
        Draw_Line(g_, X(), Scaled(array, logarithms), style);
    }

    void Draw_Error_Bars() {
        if (pattern_.sigma.size() < points_) return;
        std::vector<float> deviation(pattern_.sigma.begin(), pattern_.sigma.begin() + static_cast<std::ptrdiff_t>(points_));
        if (pattern_.sigma_is_variance)
            for (float& s : deviation) s = std::sqrt(std::max(s, 0.0f));
        g_.IGrColourN(style_.line_colour);
        g_.IPgErrorBars(X(), Values(pattern_.y).first(points_), deviation);
    }

    const Session& session_;
    Graphics& g_;
    const Diffraction_Pattern_Type& pattern_;
    const PRF_Info_Add_Type& info_;
    const Plot_Window& window_;
    bool log_;
    Curve_Style style_;
    std::size_t points_;
};

void Draw_Row(const Session& session, Graphics& g, int row, const Plot_Window& window, bool log) {
    const Profile_Store& store = session.store;
    const auto flag = static_cast<std::size_t>(row - 1);
    Row_Drawing drawing(session, g, row, window, log);
    if (drawing.Empty()) return;
    drawing.Draw_Observed();
    if (store.show_ycalc_of[flag]) drawing.Draw_Calculated();
    if (store.show_bgr_of[flag]) drawing.Draw_Background();
    if (store.show_ycalc_of[flag]) drawing.Draw_Difference();
    if (session.prefs.prf.excl_show) drawing.Draw_Excluded();
}

// The rows one after another. A plot of many points is drawn by a thread for each half of the picture, which comes out the same.
void Draw_Rows(const Session& session, Graphics& g, int n, const Plot_Window& window, bool log) {
    constexpr long long many_points = 200'000;
    long long points = 0;
    for (int row = 1; row <= n; ++row) points += session.store.Pattern(row).npts;
    const auto draw = [&session, &window, n, log](Graphics& part) {
        for (int row = 1; row <= n; ++row)
            if (session.store.shown(row)) Draw_Row(session, part, row, window, log);
    };
    const auto bands = points < many_points ? std::vector<std::unique_ptr<Device>>() : g.device().Bands();
    if (bands.empty()) return draw(g);
    std::vector<std::jthread> threads;
    for (const auto& band : bands) threads.emplace_back([&draw, part = g.On(*band)]() mutable { draw(part); });
}

}  // namespace

void plot_graph2d(Session& session, Graphics& g, int n, float x1, float x2, float y1, float y2, std::string_view mode) {
    Plot_State& plot = session.plot;
    const Plot_Window window{x1, x2, y1, y2};
    n = std::clamp(n, 0, session.store.nperfiles());
    plot.drawn_x1 = x1;
    plot.drawn_x2 = x2;
    plot.drawn_y1 = y1;
    plot.drawn_y2 = y2;

    Draw_Page(session, g);
    if (window.Drawable()) {
        g.IPgUnits(x1, y1, x2, y2);
        Draw_Rows(session, g, n, window, mode == "log");
    }
    Draw_Title(session, g, n);
    if (window.Drawable()) Draw_Scales(session, g, window);
    Draw_Axis_Labels(session, g);
    const bool refined = session.store.prf_loaded && session.store.ProfilePRFactive >= 1 && session.store.ProfilePRFactive <= n;
    if (refined && window.Drawable()) Draw_PRF_Overlay(session, g, window, mode == "log");
    Page_Units(g);
    if (plot.show_target) Draw_Target(plot, g);
    Draw_Frame(g);
    Draw_Legend(session, g, n);
}

}  // namespace vntl
