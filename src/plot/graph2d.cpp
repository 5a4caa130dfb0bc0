// One complete 2D graph: background, a curve with markers for each shown row, title, scales, labels, frame and legend.
//
// The order of the steps is the order in which things cover one another: a row's line lies over its markers, its excluded stretches
// over both, the frame and the legend over all rows. A row of a waterfall is drawn raised; where it hides what lies behind, the lowest row
// is the front one.
#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

#include "plot/curve_style.hpp"
#include "plot/excluded.hpp"
#include "plot/frame_texts.hpp"
#include "plot/marker_room.hpp"
#include "plot/plot.hpp"
#include "plot/prf_overlay.hpp"
#include "plot/text_style.hpp"
#include "session/desk/row_styles.hpp"
#include "session/desk/waterfall.hpp"

namespace vntl {

namespace {

using Values = std::span<const float>;

std::size_t Points_Of(const Diffraction_Pattern_Type& p) {
    return std::min({p.x.size(), p.y.size(), static_cast<std::size_t>(std::max(p.npts, 0))});
}

// What the rows of a picture have in common.
struct Rows_Picture {
    const Scene& scene;
    const View& window;
    Y_Scale scale;
    Row_Styles styles{scene.store, scene.prefs, scene.look, scene.desk.series_by_temperature};
    Row_Offsets offsets{scene.store, scene.plot};
    bool hidden_lines = scene.plot.waterfall.hidden_lines && offsets.Any();
};

// Draws one row. The arrays of its pattern are looked at in place; only logarithms, roots and differences need arrays of their own.
class Row_Drawing {
public:
    // `blocks`: of the observed points as they are drawn, null where they are not known.
    Row_Drawing(const Rows_Picture& rows, Presentation& p, int row, const Series_Blocks* blocks)
        : Row_Drawing(rows, p, row, rows.styles.Of(row), blocks) {}

    bool Empty() const { return points_ == 0; }

    // The ground that hides, markers, line, what was calculated and excluded, each over the ones before. `backwards` from the last to the
    // first.
    void Draw(bool backwards) {
        using Layer = void (Row_Drawing::*)();
        std::array<Layer, 7> layers = {&Row_Drawing::Draw_Ground,     &Row_Drawing::Draw_Observed_Markers, &Row_Drawing::Draw_Observed_Line,
                                       &Row_Drawing::Draw_Calculated, &Row_Drawing::Draw_Background,       &Row_Drawing::Draw_Difference,
                                       &Row_Drawing::Draw_Excluded};
        p_.IPgRaise(rows_.offsets.Of(row_));
        if (backwards) std::reverse(layers.begin(), layers.end());
        backwards_ = backwards;
        for (const Layer layer : layers) (this->*layer)();
        p_.IPgRaise(0);
    }

private:
    Row_Drawing(const Rows_Picture& rows, Presentation& p, int row, const ProfileStyle& style, const Series_Blocks* blocks)
        : rows_(rows),
          scene_(rows.scene),
          p_(p),
          row_(row),
          pattern_(scene_.store.Pattern(row)),
          info_(scene_.store.Info(row)),
          window_(rows.window),
          scale_(rows.scale),
          style_(Style_Of(style)),
          points_(Points_Of(pattern_)),
          blocks_(blocks) {
        const Device& device = p_.graphics().device();
        const float share = Marker_Share(scene_, row, style, window_, device.Width() / page_width / device.Pixel());
        has_markers_ = share > 0;
        p_.graphics().WGrTextFont(marker_font, 0, share * Char_Width(style.marker_size), share * Char_Height(style.marker_size));
    }

    Values X() const { return Values(pattern_.x).first(points_); }
    bool Roots() const { return scale_ == Y_Scale::root; }
    bool Mono() const { return info_.kind == Row_Kind::mono; }
    bool Shows(const std::bitset<max_profiles>& flags) const { return flags[static_cast<std::size_t>(row_ - 1)]; }

    Values Y() {
        const Values values = Values(pattern_.y).first(points_);
        if (scale_ == Y_Scale::linear) return values;
        if (scaled_.empty()) scaled_ = Copy_On_Scale(scale_, values);
        return scaled_;
    }

    // What lies behind is hidden down to where a pattern begins, and nothing of it lies lower.
    void Draw_Ground() {
        if (!rows_.hidden_lines) return;
        const float foot = On_Scale(scale_, scene_.plot.y_all_min);
        p_.IPgUnderLine(X(), Y(), foot, scene_.prefs.graph2d.frame_foreground, blocks_);
    }

    void Draw_Observed_Markers() {
        if (has_markers_) Draw_Markers(p_, X(), Y(), style_, blocks_);
    }

    void Draw_Observed_Line() {
        if (Mono())
            Draw_Error_Bars();
        else if (style_.Has_Line())
            Draw_Line(p_, X(), Y(), style_, blocks_);
    }

    void Draw_Calculated() {
        if (Shows(scene_.store.show_ycalc_of)) Draw_Array(pattern_.ycalc, Ycalc_Style(scene_.prefs.prf));
    }
    void Draw_Background() {
        if (Shows(scene_.store.show_bgr_of)) Draw_Array(pattern_.bgr, Ydif_Style(scene_.prefs.prf));
    }

    // Of counts, in the logarithmic form too; of roots among roots.
    void Draw_Difference() {
        if (!Shows(scene_.store.show_ycalc_of) || pattern_.ycalc.size() < points_) return;
        std::vector<float> difference(points_);
        const auto place = [roots = Roots()](float y) { return roots ? On_Scale(Y_Scale::root, y) : y; };
        for (std::size_t i = 0; i < points_; ++i) difference[i] = place(pattern_.y[i]) - place(pattern_.ycalc[i]);
        Draw_Line(p_, X(), difference, Ydif_Style(scene_.prefs.prf));
    }

    // In the linear intensity, in the logarithmic form too; in roots among roots.
    void Draw_Excluded() {
        if (!scene_.prefs.prf.excl_show) return;
        const Curve_Style style = style_.In_Colour(scene_.prefs.prf.excl_colour);
        std::vector<Excluded_Stretch> stretches = Excluded_Stretches(info_, X(), window_);
        if (backwards_) std::reverse(stretches.begin(), stretches.end());
        for (const Excluded_Stretch& stretch : stretches) {
            const Values x = X().subspan(stretch.first, stretch.count);
            const Values y = (Roots() ? Y() : Values(pattern_.y)).subspan(stretch.first, stretch.count);
            const bool line = style.Has_Line() && !Mono();
            if (line && backwards_) Draw_Line(p_, x, y, style);
            if (has_markers_) Draw_Markers(p_, x, y, style);
            if (line && !backwards_) Draw_Line(p_, x, y, style);
        }
    }

    void Draw_Array(const std::vector<float>& array, const Curve_Style& style) {
        if (array.size() < points_) return;
        const Values values = Values(array).first(points_);
        if (scale_ == Y_Scale::linear) return Draw_Line(p_, X(), values, style);
        Draw_Line(p_, X(), Copy_On_Scale(scale_, values), style);
    }

    // Among roots a bar goes from root to root, no longer even about its point.
    void Draw_Error_Bars() {
        if (pattern_.sigma.size() < points_) return;
        std::vector<float> deviation(pattern_.sigma.begin(), pattern_.sigma.begin() + static_cast<std::ptrdiff_t>(points_));
        if (pattern_.sigma_is_variance)
            for (float& s : deviation) s = std::sqrt(std::max(s, 0.0f));
        p_.graphics().IGrColourN(style_.line_colour);
        const Values y = Values(pattern_.y).first(points_);
        if (!Roots()) return p_.IPgErrorBars(X(), y, deviation);
        std::vector<float> middle(points_);
        for (std::size_t i = 0; i < points_; ++i) {
            const float low = On_Scale(scale_, y[i] - deviation[i]), high = On_Scale(scale_, y[i] + deviation[i]);
            middle[i] = 0.5f * (low + high);
            deviation[i] = 0.5f * (high - low);
        }
        p_.IPgErrorBars(X(), middle, deviation);
    }

    const Rows_Picture& rows_;
    const Scene& scene_;
    Presentation& p_;
    int row_;
    const Diffraction_Pattern_Type& pattern_;
    const PRF_Info_Add_Type& info_;
    const View& window_;
    Y_Scale scale_;
    bool backwards_ = false;
    Curve_Style style_;
    std::size_t points_;
    const Series_Blocks* blocks_;
    bool has_markers_ = true;    // points so close that their markers would be a band say no more than the line
    std::vector<float> scaled_;  // y, once it was asked for
};

void Draw_Row(const Rows_Picture& rows, Presentation& p, int row, const Series_Blocks* blocks, bool backwards) {
    if (!rows.scene.store.shown(row)) return;
    Row_Drawing drawing(rows, p, row, blocks);
    if (!drawing.Empty()) drawing.Draw(backwards);
}

// From the back one to the front one: the last row is the front one, but where they hide one another it is the lowest.
std::vector<int> Order_Of_Rows(const Rows_Picture& rows, int n) {
    std::vector<int> order(static_cast<std::size_t>(n));
    std::iota(order.begin(), order.end(), 1);
    if (rows.hidden_lines)
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return rows.offsets.Of(a) > rows.offsets.Of(b); });
    return order;
}

// Blocks of the shown rows, each found by one of `threads`.
std::vector<Series_Blocks> Blocks_Of_Rows(const Profile_Store& store, int n, int threads) {
    std::vector<Series_Blocks> blocks(static_cast<std::size_t>(n));
    std::vector<std::jthread> running;
    for (int thread = 1; thread <= threads; ++thread)
        running.emplace_back([&store, &blocks, n, thread, threads] {
            for (int row = thread; row <= n; row += threads) {
                const Diffraction_Pattern_Type& p = store.Pattern(row);
                const std::size_t points = Points_Of(p);
                if (store.shown(row)) blocks[static_cast<std::size_t>(row - 1)] = {Values(p.x).first(points), Values(p.y).first(points)};
            }
        });
    running.clear();  // waits for them
    return blocks;
}

// The rows one after another. A plot of many points is drawn from the front row to the back one where all its parts can be drawn so, for
// most of the points lie behind others, and by a thread for each half of a picture that can be cut. It comes out the same.
void Draw_Rows(const Scene& scene, Presentation& p, int n, const View& window, Y_Scale scale) {
    constexpr long long many_points = 200'000;
    long long points = 0;
    for (int row = 1; row <= n; ++row) points += scene.store.Pattern(row).npts;
    const auto bands = points < many_points ? std::vector<std::unique_ptr<Device>>() : p.graphics().device().Bands();
    std::vector<Series_Blocks> blocks;
    if (!bands.empty() && scale == Y_Scale::linear) blocks = Blocks_Of_Rows(scene.store, n, static_cast<int>(bands.size()));
    const Rows_Picture rows{scene, window, scale};
    const std::vector<int> order = Order_Of_Rows(rows, n);
    const auto draw_row = [&](Presentation& part, int row, bool backwards) {
        Draw_Row(rows, part, row, blocks.empty() ? nullptr : &blocks[static_cast<std::size_t>(row - 1)], backwards);
    };
    const auto draw = [&draw_row, &order, points](Presentation& part) {
        Device& device = part.graphics().device();
        if (device.Start_Backwards(points)) {
            for (auto row = order.rbegin(); row != order.rend(); ++row) draw_row(part, *row, true);
            if (device.End_Backwards()) return;
        }
        for (const int row : order) draw_row(part, row, false);
    };
    std::vector<std::jthread> threads;
    for (const auto& band : bands)
        threads.emplace_back([&draw, &p, g = p.graphics().On(*band)]() mutable {
            Presentation part = p.On(g);
            draw(part);
        });
    if (bands.empty()) draw(p);
}

}  // namespace

Drawn plot_graph2d(const Scene& scene, Graphics& g, int n, const View& window, Y_Scale scale) {
    const Profile_Store& store = scene.store;
    n = std::clamp(n, 0, store.nperfiles());
    Presentation p(g);
    Draw_Page(scene.zone, p, scene.prefs.graph2d.frame_background, scene.prefs.graph2d.frame_foreground);
    if (window.Drawable()) {
        p.IPgUnits(window.x1, window.y1, window.x2, window.y2);
        Draw_Rows(scene, p, n, window, scale);
    }
    Draw_Title(scene, p, n);
    if (window.Drawable()) Draw_Scales(scene, p, window);
    std::string y_title = Y_Title(scene);
    Draw_Axis_Labels(scene, p, window, y_title, scale == Y_Scale::logarithm);
    const bool refined = store.prf_loaded && store.ProfilePRFactive >= 1 && store.ProfilePRFactive <= n;
    if (refined && window.Drawable()) Draw_PRF_Overlay(scene, p, window, scale);
    Page_Units(g);
    if (scene.plot.show_target) Draw_Target(scene.zone, scene.look, g);
    Draw_Frame(p, scene.look);
    Draw_Legend(scene, p, window, n);
    return {window, window, std::move(y_title)};
}

}  // namespace vntl
