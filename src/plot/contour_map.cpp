// A grid as a map: contour lines, colours between two, or bands of a palette; or cell by cell.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "drawing/mixed_colour.hpp"
#include "drawing/presentation.hpp"
#include "drawing/value_cells.hpp"
#include "plot/colour_bar.hpp"
#include "plot/fitted_frame.hpp"
#include "plot/frame_texts.hpp"
#include "plot/grid_map.hpp"
#include "plot/plot.hpp"
#include "plot/text_style.hpp"

namespace vntl {

namespace {

constexpr int grid_plot = 8;
constexpr int line_sets = 10;
constexpr float key_foot = 6, key_height = 9, key_gap = 4;  // page units above the plot box: the colours, and their labels above them

Grid_Data Data_Of(const PlotGrid& grid) { return {grid.grid_x, grid.grid_y, grid.grid_z}; }

View Units_Of(const PlotGrid& grid) {
    const auto [left, right] = std::minmax_element(grid.grid_x.begin(), grid.grid_x.end());
    const auto [low, high] = std::minmax_element(grid.grid_y.begin(), grid.grid_y.end());
    return {*left, *right, *low, *high};
}

unsigned Option_Of(int contour_type) {
    return contour_type == 2 || contour_type == 4 ? option_contoured | option_smooth : option_contoured;
}

void New_Plot(const PlotGrid& grid, Presentation& p, int sets, unsigned option) {
    p.IPgNewPlot(grid_plot, sets, static_cast<int>(grid.grid_x.size()), static_cast<int>(grid.grid_y.size()), option);
}

void Set_Colours_Of_Range(const Contour_Prefs& prefs, Presentation& p) {
    p.IPgStyle(1, {.line_colour = prefs.contour_min_colour});
    p.IPgStyle(2, {.line_colour = prefs.contour_max_colour});
}

// 4, 8, 12, 16 or 20.
int Bands_Of(const Contour_Prefs& prefs) { return std::clamp(prefs.contour_levels, 4, contour_colours) / 4 * 4; }

std::string Band_Label(int band, int bands) {
    const std::string number = std::to_string(band);
    return band == 1 ? number + " Min" : band == bands ? number + " Max" : number;
}

// The colours side by side over the whole plot box, each under its label.
void Draw_Key(const Plot_Zone& zone, const Preferences& all_prefs, Graphics& g, int bands) {
    const Graph2D_Prefs& prefs = all_prefs.graph2d;
    const float left = zone.x1 * page_width, step = (zone.x2 - zone.x1) * page_width / static_cast<float>(bands);
    const float foot = zone.y2 * page_height + key_foot;
    float width = 0.8f * Char_Width(prefs.yscale.size), height = 0.8f * Char_Height(prefs.yscale.size);
    const auto select = [&] { g.WGrTextFont(Font_Number(prefs.yscale.font), Style_Bits(prefs.yscale.style), width, height); };
    select();
    const float widest = std::max(g.Text_Width(Band_Label(1, bands)), g.Text_Width(Band_Label(bands, bands)));
    if (const float room = 0.94f * step; widest > room) width *= room / widest, height *= room / widest, select();
    g.IGrCharJustify(1);
    g.IGrFillPattern(fill_solid);
    for (int band = 1; band <= bands; ++band) {
        const float x = left + step * static_cast<float>(band - 1);
        g.IGrColourN(all_prefs.contour.contour_palette[static_cast<std::size_t>(band - 1)]);
        g.IGrRectangle(x, foot, x + step, foot + key_height);
        g.IGrColourN(prefs.yscale.colour);
        g.IGrCharOut(x + 0.5f * step, foot + key_height + key_gap, Band_Label(band, bands));
    }
    g.IGrCharJustify(0);
}

void Draw_Bands(const Grid_Map& map, const Preferences& all_prefs, Presentation& p) {
    const Contour_Prefs& prefs = all_prefs.contour;
    const PlotGrid& grid = map.grid;
    const int bands = Bands_Of(prefs);
    New_Plot(grid, p, bands, option_contoured);
    std::vector<float> levels;
    for (int band = 1; band <= bands; ++band) {
        p.IPgStyle(band, {.fill = fill_solid, .line_colour = prefs.contour_palette[static_cast<std::size_t>(band - 1)]});
        levels.push_back(static_cast<float>(band) * (grid.z_max - grid.z_min) / static_cast<float>(bands) + grid.z_min);
    }
    p.IPgConFill2(Data_Of(grid), levels, std::clamp(prefs.contour_granularity, 3, 50));
    if (map.look == nullptr) Draw_Key(map.zone, all_prefs, p.graphics(), bands);
}

void Draw_Contours(const Grid_Map& map, const Preferences& all_prefs, Presentation& p) {
    const Contour_Prefs& prefs = all_prefs.contour;
    const PlotGrid& grid = map.grid;
    switch (prefs.contour_type) {
        case 1:
        case 2:
            New_Plot(grid, p, line_sets, Option_Of(prefs.contour_type));
            Set_Colours_Of_Range(prefs, p);
            p.IPgContour2(Data_Of(grid));
            break;
        case 3:
        case 4:
            New_Plot(grid, p, 2, Option_Of(prefs.contour_type));
            Set_Colours_Of_Range(prefs, p);
            p.IPgConGrad2(Data_Of(grid));
            break;
        default:
            Draw_Bands(map, all_prefs, p);
    }
}

// --- cell by cell ------------------------------------------------------------------------------------------------------------------

View Units_Of_Cells(const PlotGrid& grid) {
    const auto half = [](const std::vector<float>& axis) {
        return axis.size() > 1 ? 0.5f * (axis.back() - axis.front()) / static_cast<float>(axis.size() - 1) : 0.5f;
    };
    const View points = Units_Of(grid);
    const float across = half(grid.grid_x), up = half(grid.grid_y);
    return {points.x1 - across, points.x2 + across, points.y1 - up, points.y2 + up};
}

// They fill the plot box.
void Draw_Cells(const Grid_Map& map, const Contour_Prefs& prefs, Graphics& g) {
    const PlotGrid& grid = map.grid;
    const Point from = g.To_Device(map.zone.x1 * page_width, map.zone.y1 * page_height);
    const Point to = g.To_Device(map.zone.x2 * page_width, map.zone.y2 * page_height);
    const Value_Cells seen = Seen_Cells(g.device(), {from.x, from.y, to.x, to.y}, static_cast<int>(grid.grid_x.size()),
                                        static_cast<int>(grid.grid_y.size()), grid.grid_z);
    const double least = grid.z_min, range = grid.z_max - least, per_value = range > 0 ? 1 / range : 0;
    std::vector<Colour> colours;
    colours.reserve(seen.values.size());
    for (const float z : seen.values)
        colours.push_back(std::isfinite(z) ? Mixed(prefs.contour_min_colour, prefs.contour_max_colour,
                                                   std::clamp((static_cast<double>(z) - least) * per_value, 0.0, 1.0))
                                           : no_colour);
    g.device().Cells({seen.rect, seen.columns, seen.rows, colours});
}

// --- the frame of a look -------------------------------------------------------------------------------------------------------------

bool Draws_Cells(const Grid_Map& map) { return map.cells || !Data_Of(map.grid).Whole(); }

View Units_Of_Map(const Grid_Map& map) {
    if (map.grid.grid_z.empty()) return {};
    return Draws_Cells(map) ? Units_Of_Cells(map.grid) : Units_Of(map.grid);
}

Colour_Bar Bar_Of(const Grid_Map& map, const Contour_Prefs& prefs) {
    constexpr int steps = 64;
    const bool counts = map.logarithms && map.look->count_ticks;
    Colour_Bar bar;
    bar.title = counts || !map.logarithms ? "Intensity" : "Log(Intensity)";
    bar.first = map.grid.z_min, bar.last = map.grid.z_max;
    if (counts) bar.scale = Axis_Scale::logarithm;
    const bool bands = prefs.contour_type == 5 && !Draws_Cells(map);
    if (bands) bar.colours.assign(prefs.contour_palette.begin(), prefs.contour_palette.begin() + Bands_Of(prefs));
    for (int step = 0; step < steps && !bands; ++step)
        bar.colours.push_back(Mixed(prefs.contour_min_colour, prefs.contour_max_colour, (step + 0.5) / steps));
    return bar;
}

Text_Style Text_Of_Bar(const Grid_Map& map, const Preferences& prefs, const Device& device) {
    return Text_Of(*map.look, prefs.graph2d.yscale, prefs.contour.contour_background, device);
}

Fitted_Frame Frame_Of(const Grid_Map& map, const Preferences& prefs, Device& device) {
    Frame_Content content{map.title, map.x_label, map.y_label, Units_Of_Map(map)};
    if (!map.grid.grid_z.empty())
        content.beside = Width_Of_Bar(Bar_Of(map, prefs.contour), *map.look, Text_Of_Bar(map, prefs, device), device);
    return {std::move(content), *map.look, prefs.graph2d, prefs.contour.contour_background, device};
}

void Write_Fitted(const Grid_Map& map, const Preferences& prefs, Presentation& p) {
    Device& device = p.graphics().device();
    const Fitted_Frame frame = Frame_Of(map, prefs, device);
    frame.Write_Title(map.zone);
    frame.Write_Labels(map.zone);
    frame.Write_Scales(map.zone);
    const double w = device.Width(), h = device.Height();
    Draw_Bar(Bar_Of(map, prefs.contour), *map.look, Text_Of_Bar(map, prefs, device),
             {map.zone.x1 * w, map.zone.y1 * h, map.zone.x2 * w, map.zone.y2 * h}, device);
}

Grid_Map Map_Of(const Scene& scene) {
    const Plot_State& plot = scene.plot;
    const bool log = plot.plot_type == Plot_Form::contour_log;
    const Look* look = Lays_Out(scene.look) ? &scene.look : nullptr;
    const bool counts = look != nullptr && look->count_ticks;
    std::string title = std::string(Trim(scene.prefs.contour.contour_title)) + (log && !counts ? " (Log-Scale)" : "");
    return {plot.grid, scene.zone, std::move(title), plot.xlabel_text, plot.grid.Of_Temperatures() ? "Temperature" : "Pattern", false,
            look,      log};
}

}  // namespace

Plot_Zone Zone_Of_Map(const Scene& scene, Graphics& g) { return Frame_Of(Map_Of(scene), scene.prefs, g.device()).Zone(); }

View Draw_Grid_Map(const Grid_Map& map, const Preferences& prefs, Graphics& g) {
    const PlotGrid& grid = map.grid;
    Presentation p(g);
    Draw_Page(map.zone, p, prefs.contour.contour_background, prefs.contour.contour_foreground);
    if (grid.grid_z.empty()) return {};
    const bool cells = Draws_Cells(map);
    const View units = Units_Of_Map(map);
    p.IPgUnitsXYZ(units.x1, units.x2, units.y1, units.y2, grid.z_min, grid.z_max);
    cells ? Draw_Cells(map, prefs.contour, g) : Draw_Contours(map, prefs, p);
    g.IGrLineWidth(1);
    if (map.look != nullptr) {
        Write_Fitted(map, prefs, p);
        Draw_Frame(p, *map.look);
        return units;
    }
    Write_Title(prefs.graph2d.title, map.zone, p, map.title);
    Write_Y_Label(prefs.graph2d.ylabel, p, map.y_label);
    Write_X_Label(prefs.graph2d.xlabel, map.zone, p, map.x_label);
    Write_Y_Scale(prefs.graph2d.yscale, p, units);
    Write_X_Scale(prefs.graph2d.xscale, p, units);
    Page_Units(g);
    Draw_Frame(p);
    return units;
}

Drawn Plot_Contour(const Scene& scene, Graphics& g, float x1, float x2, int first, int last) {
    const View units = Draw_Grid_Map(Map_Of(scene), scene.prefs, g);
    return {{x1, x2, static_cast<float>(first), static_cast<float>(last)}, units, scene.plot.ylabel_text};
}

}  // namespace vntl
