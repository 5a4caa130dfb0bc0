// The classic picture of a Rietveld refinement: the calculated line through the observed points, and under the data, from above, a row
// of ticks for each phase and the difference curve on a base line of its own.
#include "plot/prf_overlay.hpp"

#include <algorithm>
#include <array>

#include "base/text.hpp"
#include "plot/curve_style.hpp"
#include "plot/frame_texts.hpp"
#include "plot/text_style.hpp"
#include "session/bragg_rows.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/desk/waterfall.hpp"

namespace vntl {

namespace {

constexpr Colour nuclear_and_magnetic = WRGB(0, 0, 255), magnetic = WRGB(255, 0, 0);

// Colours of the pairs of atoms of a pair distribution, as blue, green, red.
constexpr std::array<Colour, 20> pair_colours = {0x000000, 0x0000FF, 0xFF0000, 0x00FFFF, 0xFF00FF, 0xFFFF00, 0x000000,
                                                 0xB8831F, 0xBF0000, 0x00EAEA, 0x3E3EFF, 0x0000FF, 0x0957F9, 0x0056CE,
                                                 0x43D11C, 0x0015B3, 0x01B207, 0x008229, 0x0A2E4B, 0x015AF6};

Colour Colour_Of_Pair(int pair) {
    const int entry = pair % static_cast<int>(pair_colours.size());
    return pair_colours[static_cast<std::size_t>(std::max(entry, 1) - 1)];
}

class Overlay {
public:
    Overlay(const Scene& scene, Presentation& p, const View& window, Y_Scale scale)
        : scene_(scene),
          prefs_(scene.prefs.prf),
          pattern_(scene.store.Pattern(scene.store.ProfilePRFactive)),
          info_(scene.store.Info(scene.store.ProfilePRFactive)),
          p_(p),
          g_(p.graphics()),
          window_(window),
          scale_(scale),
          place_(Place_Of_Overlay(scene.store, scene.plot, scene.look)),
          points_(std::min(pattern_.x.size(), pattern_.y.size())) {}

    void Draw_Calculated() {
        if (pattern_.ycalc.size() < points_) return;
        const std::vector<float> y = Scaled(pattern_.ycalc);
        if (Mono())
            Draw_Markers(y, Ycalc_Style(prefs_), prefs_.ycalc_marker_size);
        else
            Draw_Line(p_, X(), y, Ycalc_Style(prefs_));
    }

    // An excluded stretch took no part in the refinement: the curve lies flat there.
    void Draw_Difference() {
        if (pattern_.ycalc.size() < points_) return;
        const Y_Scale scale = place_.pinned ? Y_Scale::linear : scale_;
        std::vector<float> difference(points_);
        for (std::size_t i = 0; i < points_; ++i)
            difference[i] = place_.per_count * (On_Scale(scale, pattern_.y[i]) - On_Scale(scale, pattern_.ycalc[i]));
        if (!Mono()) Flatten_Excluded(difference);
        for (float& d : difference) d += place_.base;
        if (Mono())
            Draw_Markers(difference, Ydif_Style(prefs_), prefs_.ydif_marker_size);
        else
            Draw_Line(p_, X(), difference, Ydif_Style(prefs_));
    }

    void Draw_Background() {
        if (pattern_.bgr.size() >= points_) Draw_Markers(Scaled(pattern_.bgr), Ydif_Style(prefs_), prefs_.ydif_marker_size);
    }

    void Draw_Reflections() {
        if (info_.nphases < 1) return;
        const std::size_t count = std::min(info_.refl_position.size(), info_.refl_code.size());
        const bool magnetic_labels = std::any_of(info_.refl_label.begin(), info_.refl_label.end(), Is_Magnetic);
        const bool pairs = pattern_.scat_var == "Distance" && !Contains(pattern_.legend_x, "ixel");
        for (std::size_t j = 0; j < count; ++j) {
            const float x = info_.refl_position[j];
            if (!(x >= window_.x1 && x <= window_.x2)) continue;
            g_.IGrColourN(pairs ? Colour_Of_Pair(info_.refl_phase[j]) : magnetic_labels ? Colour_Of_Label(j) : prefs_.refl_colour);
            const Bragg_Row row = Bragg_Row_Of(place_.band, info_.nphases, info_.refl_code[j]);
            g_.IGrMoveTo(x, place_.base + row.top);
            g_.IGrLineTo(x, place_.base + row.bottom);
        }
    }

    // Ground and a thin line on its top; what is drawn next is cut by it. Ends with `Leave_Band`.
    void Enter_Band() {
        const Plot_Zone& zone = scene_.zone;
        const float top = zone.y1 + Part_Of_Band(scene_.store, scene_.plot, scene_.look) * (zone.y2 - zone.y1);
        Page_Units(g_);
        g_.IGrColourN(scene_.prefs.graph2d.frame_foreground);
        g_.IGrFillPattern(fill_solid);
        g_.IGrRectangle(zone.x1 * page_width, zone.y1 * page_height, zone.x2 * page_width, top * page_height);
        g_.IGrColourN(scene_.look.ink);
        g_.IGrLineType(0);
        g_.IGrLineWidth(1);
        g_.IGrMoveTo(zone.x1 * page_width, top * page_height);
        g_.IGrLineTo(zone.x2 * page_width, top * page_height);
        Set_Box(top, Foot_Of_Data(scene_.store, scene_.plot, scene_.look));
    }
    void Leave_Band() { Set_Box(scene_.zone.y2, window_.y2); }

private:
    // The lower part of the plot box, up to a fraction of the page and a y of the window.
    void Set_Box(float top, float y) {
        const Plot_Zone& zone = scene_.zone;
        Page_Units(g_);
        p_.IPgArea(zone.x1, zone.y1, zone.x2, top);
        p_.IPgUnits(window_.x1, window_.y1, window_.x2, y);
    }

    static bool Is_Magnetic(const std::string& label) { return Contains(label, "Mag."); }

    Colour Colour_Of_Label(std::size_t j) const {
        if (j >= info_.refl_label.size() || !Is_Magnetic(info_.refl_label[j])) return prefs_.refl_colour;
        return Contains(info_.refl_label[j], "Nuc.+Mag.") ? nuclear_and_magnetic : magnetic;
    }

    bool Mono() const { return info_.kind == Row_Kind::mono; }
    std::span<const float> X() const { return std::span(pattern_.x).first(points_); }

    std::vector<float> Scaled(const std::vector<float>& array) const {
        const auto values = std::span(array).first(points_);
        return Copy_On_Scale(scale_, values);
    }

    void Flatten_Excluded(std::vector<float>& difference) const {
        const auto regions = static_cast<std::size_t>(std::clamp(info_.nexcl, 0, max_excluded_regions));
        for (std::size_t j = 0; j < regions; ++j) {
            const auto first = std::lower_bound(X().begin(), X().end(), info_.excl_min[j]) - X().begin();
            const auto behind = std::upper_bound(X().begin(), X().end(), info_.excl_max[j]) - X().begin();
            if (first < behind) std::fill(difference.begin() + first, difference.begin() + behind, 0.0f);
        }
    }

    void Draw_Markers(const std::vector<float>& y, const Curve_Style& style, int size) {
        g_.WGrTextFont(marker_font, 0, Char_Width(size), Char_Height(size));
        vntl::Draw_Markers(p_, X(), y, style);
    }

    const Scene& scene_;
    const PRF_Prefs& prefs_;
    const Diffraction_Pattern_Type& pattern_;
    const PRF_Info_Add_Type& info_;
    Presentation& p_;
    Graphics& g_;
    const View& window_;
    Y_Scale scale_;
    Overlay_Place place_;
    std::size_t points_;
};

}  // namespace

void Draw_PRF_Overlay(const Scene& scene, Presentation& p, const View& window, Y_Scale scale) {
    Graphics& g = p.graphics();
    const Profile_Store& store = scene.store;
    Overlay overlay(scene, p, window, scale);
    const float raise = Offset_Of_Row(store, scene.plot, store.ProfilePRFactive);  // of what belongs to the observed curve
    const auto draw_background = [&] {
        p.IPgRaise(raise);
        overlay.Draw_Background();
        p.IPgRaise(0);
    };
    p.IPgRaise(raise);
    if (store.show_ycalc) overlay.Draw_Calculated();
    p.IPgRaise(0);
    const bool pinned = Part_Of_Band(store, scene.plot, scene.look) > 0;
    if (store.show_background && pinned) draw_background();
    if (pinned) overlay.Enter_Band();
    if (store.show_difference) overlay.Draw_Difference();
    if (pinned) overlay.Leave_Band();
    if (store.show_background && !pinned) draw_background();

    const Plot_Zone& zone = scene.zone;
    g.IGrArea(zone.x1, zone.y1, zone.x2, zone.y2);
    g.IGrUnits(window.x1, window.y1, window.x2, window.y2);
    g.IGrLineType(0);
    g.IGrLineWidth(static_cast<float>(std::clamp(scene.prefs.prf.refl_pitch, 1, 5)));
    if (store.show_reflections) overlay.Draw_Reflections();
}

}  // namespace vntl
