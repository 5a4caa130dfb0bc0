// A series of patterns in space: lines one behind another, or a surface.
#include <algorithm>
#include <cmath>
#include <memory>
#include <thread>
#include <vector>

#include "base/text.hpp"
#include "drawing/mixed_colour.hpp"
#include "drawing/presentation_3d.hpp"
#include "plot/fitted_frame.hpp"
#include "plot/frame_texts.hpp"
#include "plot/plot.hpp"
#include "plot/text_style.hpp"
#include "session/desk/row_styles.hpp"

namespace vntl {

namespace {

constexpr std::string_view intensity_title = "Intensity (arb. units)";
constexpr int text_font = 101, title_font = 103;

constexpr int no_label = 1;  // place of a y label

// A y label that stands at the top, in the middle or at the bottom of a graph has the same place along an axis that leads into the depth.
float Along_Axis(int ylabel_pos) { return ylabel_pos <= 4 ? 0.9f : ylabel_pos <= 7 ? 0.5f : 0.1f; }

// Equal intensities stand in the middle of an axis.
void Set_Units(Presentation_3D& p, float first, float last, float x1, float x2, float low, float high) {
    if (!(low < high)) {
        const float half = 0.5f * std::max(1.0f, std::fabs(low));
        low -= half, high += half;
    }
    p.IPgUnitsXYZ(first, last, x1, x2, low, high);
}

// Looks have the letters of the graph's title, and one ink.
bool Has_Look(const Scene& scene) { return scene.look.fitted_margins; }

Colour Colour_Of_Numbers(const Scene& scene, Colour ground) {
    return Readable_Text(scene.look, Has_Look(scene) ? scene.look.ink : WRGB(0, 0, 255), ground);
}

void Paint_Walls(const Scene& scene, const Presentation_3D& p, Colour ground) {
    constexpr Colour floor_grey = WRGB(128, 128, 128), left_grey = WRGB(160, 160, 160), right_grey = WRGB(192, 192, 192);
    if (!Has_Look(scene)) return p.IPgWalls(floor_grey, left_grey, right_grey);
    const auto tone = [&](double part_of_ink) { return Mixed(ground, scene.look.ink, part_of_ink); };
    p.IPgWalls(tone(0.16), tone(0.1), tone(0.05));
}

void Select(const Scene& scene, Graphics& g, int font, Text_Cell letters) {
    if (Has_Look(scene)) font = Font_Number(scene.prefs.graph2d.title.font);
    letters = Enlarged(scene.look, letters, g.device());
    g.WGrTextFont(font, 0, letters.width, letters.height);
}

// The page, and a box of data as the view turns it.
Presentation_3D Page_In_Space(const Scene& scene, Graphics& g, Colour background, float rotation, float elevation) {
    const Plot_Zone& zone = scene.zone;
    Page_Units(g);
    g.IGrPaletteBack(background);
    g.IGrClear();
    g.IGrLineWidth(1);
    Presentation_3D p(g);
    p.IPgArea(zone.x1, zone.y1, zone.x2, zone.y2);
    p.IPgRotation(rotation);
    p.IPgElevation(elevation);
    return p;
}

unsigned Option_Of(int surface_type) {
    switch (surface_type) {
        case 1:
            return option_smooth | option_contoured | option_filled;
        case 2:
            return option_uniform | option_filled;
        case 3:
            return option_graduated | option_filled;
        default:
            return option_contoured | option_filled;
    }
}

// The rows, the farthest first.
void Draw_Rows(const Scene& scene, const Row_Styles& styles, const Presentation_3D& p, int n, bool first_is_nearest) {
    Graphics& g = p.graphics();
    std::vector<float> place;
    for (int i = 1; i <= n; ++i) {
        const int row = first_is_nearest ? n + 1 - i : i;
        const Diffraction_Pattern_Type& pattern = scene.store.Pattern(row);
        place.assign(pattern.x.size(), static_cast<float>(row - 1));
        g.IGrColourN(styles.Of(row).line_colour);
        p.IPgXYZLine(place, pattern.x, pattern.y);
    }
}

// Many points are worth a thread for each half of the picture.
void Draw_Lines(const Scene& scene, const Presentation_3D& p, int n, const View& window) {
    constexpr long long many_points = 200'000;
    const float middle = 0.5f * (window.x1 + window.x2), foot = window.y1;
    const bool first_is_nearest = p.Depth(0, middle, foot) < p.Depth(n - 1, middle, foot);
    const Row_Styles styles(scene.store, scene.prefs, scene.look, scene.desk.series_by_temperature);
    long long points = 0;
    for (int row = 1; row <= n; ++row) points += scene.store.Pattern(row).npts;
    const auto bands = points < many_points ? std::vector<std::unique_ptr<Device>>() : p.graphics().device().Bands();
    if (bands.empty()) return Draw_Rows(scene, styles, p, n, first_is_nearest);
    std::vector<std::jthread> threads;
    for (const auto& band : bands)
        threads.emplace_back([&, g = p.graphics().On(*band)]() mutable { Draw_Rows(scene, styles, p.On(g), n, first_is_nearest); });
}

}  // namespace

Drawn Plot_3D_Lines(const Scene& scene, Graphics& g, int n, const View& window, float rotation, float elevation) {
    n = std::clamp(n, 0, scene.store.nperfiles());
    Presentation_3D p = Page_In_Space(scene, g, scene.prefs.graph3d.graph3d_background, rotation, elevation);
    Set_Units(p, 0, static_cast<float>(std::max(n - 1, 1)), window.x1, window.x2, window.y1, window.y2);
    g.IGrColourN(scene.look.ink);
    Select(scene, g, text_font, {0.013333f, 0.04f});
    p.IPgTitle(Trim(scene.prefs.graph3d.graph3d_title));
    p.IPgFrame();
    Select(scene, g, text_font, {0.012f, 0.024f});
    p.IPgYScale("NT");
    p.IPgZScale("NT");
    Select(scene, g, text_font, {0.015f, 0.03f});
    p.IPgLabelPos(1, 0.6f);
    p.IPgXLabel("Patterns", "C");
    p.IPgLabelPos(2, 0.6f);
    p.IPgYLabel(Trim(scene.plot.xlabel_text), "C");
    p.IPgLabelPos(3, 0.8f);
    p.IPgZLabel(intensity_title, "CV");
    Draw_Lines(scene, p, n, window);
    return {window, {}, scene.plot.ylabel_text};
}

Drawn Plot_3D_Surface(const Scene& scene, Graphics& g, float rotation, float elevation) {
    const Surface_Prefs& prefs = scene.prefs.surface;
    const PlotGrid& grid = scene.plot.grid;
    Presentation_3D p = Page_In_Space(scene, g, prefs.surface_background, rotation, elevation);
    const View window{scene.plot.x_view_min, scene.plot.x_view_max, grid.z_min, grid.z_max};
    if (grid.grid_z.empty()) return {window, {}, scene.plot.ylabel_text};
    const auto [left, right] = std::minmax_element(grid.grid_x.begin(), grid.grid_x.end());
    const auto [first, last] = std::minmax_element(grid.grid_y.begin(), grid.grid_y.end());
    Set_Units(p, *first, *last, *left, *right, grid.z_min, grid.z_max);
    Paint_Walls(scene, p, prefs.surface_background);
    g.IGrColourN(scene.look.ink);
    p.IPgFrame(Presentation_3D::Edges::back);
    p.IPgSurf3Data({grid.grid_x, grid.grid_y, grid.grid_z}, {.option = Option_Of(prefs.surface_type),
                                                             .lattice = prefs.surface_lattice,
                                                             .least = prefs.surface_min_colour,
                                                             .most = prefs.surface_max_colour});
    p.IPgFrame(Presentation_3D::Edges::front);
    g.IGrColourN(Colour_Of_Numbers(scene, prefs.surface_background));
    Select(scene, g, title_font, {0.02f, 0.04f});
    p.IPgTitle(Trim(prefs.surface_title));
    Select(scene, g, text_font, {0.015f, 0.03f});
    p.IPgXScale("TN");
    p.IPgYScale("TN");
    p.IPgZScale("TN");
    g.IGrColourN(scene.look.ink);
    Select(scene, g, text_font, {0.02f, 0.04f});
    if (const int pos = scene.prefs.graph2d.ylabel.pos; pos != no_label) {
        p.IPgLabelPos(1, Along_Axis(pos));
        p.IPgXLabel(grid.grid_y_label, "C");
    }
    p.IPgYLabel(Trim(scene.plot.xlabel_text), "C");
    p.IPgZLabel(intensity_title, "T");
    return {window, {}, scene.plot.ylabel_text};
}

}  // namespace vntl
