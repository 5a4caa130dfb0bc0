// Maps of a grid: lines of equal height, gradients of colour and bands of colour in the plot box.
//
// Gradients and bands are computed for the cells that the device shows one by one, whatever their number in the grid, and drawn as one
// image.
#include <algorithm>
#include <cmath>
#include <thread>

#include "base/page.hpp"
#include "drawing/contour_lines.hpp"
#include "drawing/map_values.hpp"
#include "drawing/mixed_colour.hpp"
#include "drawing/presentation.hpp"

namespace vntl {

namespace {

// Page units, or device units where those are smaller: closer points of a grid are one for its lines. Reflections are narrow along x and
// run along y: much of their height is lost in a mean over a few points, and nothing but noise in one over a few patterns.
constexpr double finest_x = 0.25, finest_y = 1;
constexpr std::size_t most_cells = 300'000;  // that lines go through

Rect Common(const Rect& a, const Rect& b) {
    return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}

// A grid in device units.
struct Placed_Grid {
    const Grid_Data& grid;
    std::vector<double> x, y;  // places of the columns and rows; both are empty where nothing can be drawn

    Placed_Grid(const Grid_Data& data, Point zero, double x_scale, double y_scale) : grid(data) {
        if (!grid.Whole()) return;
        x = Places_Of_Axis(grid.x, zero.x, x_scale);
        y = Places_Of_Axis(grid.y, zero.y, y_scale);
        if (x.empty() || y.empty()) x.clear(), y.clear();
    }
    bool Empty() const { return x.empty(); }
    Rect Extent() const {
        const auto [x1, x2] = std::minmax(x.front(), x.back());
        const auto [y1, y2] = std::minmax(y.front(), y.back());
        return {x1, y1, x2, y2};
    }
};

// In pixels of an image.
std::vector<double> In_Pixels(std::vector<double> places, double from, double to, int pixels) {
    for (double& place : places) place = (place - from) / (to - from) * pixels;
    return places;
}

struct Map_Look {
    Pixel_Axis::Edges edges = Pixel_Axis::Edges::sharp;
    int parts = 0;  // of a cell, along each axis; 0 is without end
    Cell_Surface surface = Cell_Surface::bilinear;
};

// An image of what a grid has in the box, in the colours of its values. Of many pixels a thread computes each half.
template <class Colour_Of>
void Draw_Map(Device& device, const Rect& box, const Placed_Grid& placed, const Map_Look& look, const Colour_Of& colour_of) {
    constexpr int threads = 2;
    constexpr std::size_t many = 100'000;  // values or pixels
    const Finest_Cells cells = device.Finest(Common(placed.Extent(), box));
    if (cells.columns <= 0 || cells.rows <= 0) return;
    const Rect& r = cells.rect;
    const Pixel_Axis across(In_Pixels(placed.x, r.x1, r.x2, cells.columns), cells.columns, look.edges, look.parts);
    const Pixel_Axis up(In_Pixels(placed.y, r.y1, r.y2, cells.rows), cells.rows, look.edges, look.parts);
    std::vector<Colour> colours(static_cast<std::size_t>(cells.columns) * static_cast<std::size_t>(cells.rows));
    const auto compute = [&](int first, int end) {
        Map_Values values(placed.grid, across, up, look.surface);
        Colour* to = colours.data() + static_cast<std::size_t>(first) * static_cast<std::size_t>(cells.columns);
        for (int row = first; row < end; ++row)
            for (const float value : values.Row(row)) *to++ = std::isfinite(value) ? colour_of(value) : no_colour;
    };
    if (std::max(colours.size(), placed.grid.z.size()) < many) {
        compute(0, cells.rows);
    } else {
        std::vector<std::jthread> running;
        for (int thread = 0; thread < threads; ++thread)
            running.emplace_back(compute, cells.rows * thread / threads, cells.rows * (thread + 1) / threads);
    }
    const bool shows = std::any_of(colours.begin(), colours.end(), [](Colour colour) { return colour != no_colour; });
    if (shows) device.Cells({r, cells.columns, cells.rows, colours});
}

}  // namespace

void Presentation::IPgContour2(const Grid_Data& grid) {
    const Placed_Grid placed(grid, Plot_To_Device(0, 0), X_Scale(), Y_Scale());
    const double z1 = static_cast<double>(z1_), range = static_cast<double>(z2_) - z1;
    if (placed.Empty() || styles_.empty() || !std::isfinite(range) || range <= 0) return;
    const auto sets = static_cast<double>(styles_.size());
    std::vector<double> levels;
    for (double k = 1; k <= sets; ++k) levels.push_back(z1 + k * range / (sets + 1));
    const Colour least = Style_Of_Set(1).line_colour, most = Style_Of_Set(2).line_colour;
    const double width = (option_ & option_smooth) != 0 ? 2 : 1;
    const auto draw = [&](std::size_t level, std::span<const Point> line) {
        const double share = sets > 1 ? static_cast<double>(level) / (sets - 1) : 0;
        Target().Polyline(line, {Mixed(least, most, share), width, Line_Style::solid});
    };
    const Rect box = Box();
    const double unit = std::min({Target().Width() / page_width, Target().Height() / page_height, 1.0});
    double x_step = finest_x * unit, y_step = finest_y * unit;
    Clip_Sets();
    while (!Trace_Contours(Thinned(grid, Gather(placed.x, box.x1, box.x2, x_step), Gather(placed.y, box.y1, box.y2, y_step)), levels,
                           most_cells, draw))
        x_step *= 2, y_step *= 2;
    graphics_->Clip_To_Area();
}

void Presentation::IPgConGrad2(const Grid_Data& grid) {
    const Placed_Grid placed(grid, Plot_To_Device(0, 0), X_Scale(), Y_Scale());
    const double z1 = static_cast<double>(z1_), range = static_cast<double>(z2_) - z1;
    if (placed.Empty() || !std::isfinite(range)) return;
    const Colour least = Style_Of_Set(1).line_colour, most = Style_Of_Set(2).line_colour;
    const bool smooth = (option_ & option_smooth) != 0;
    const Map_Look look{smooth ? Pixel_Axis::Edges::blended : Pixel_Axis::Edges::sharp, smooth ? 0 : 1, Cell_Surface::bilinear};
    const double per_value = range != 0 ? 1 / range : 0;
    Clip_Sets();
    Draw_Map(Target(), Box(), placed, look,
             [&](float z) { return Mixed(least, most, std::clamp((static_cast<double>(z) - z1) * per_value, 0.0, 1.0)); });
    graphics_->Clip_To_Area();
}

void Presentation::IPgConFill2(const Grid_Data& grid, std::span<const float> levels, int granularity) {
    const Placed_Grid placed(grid, Plot_To_Device(0, 0), X_Scale(), Y_Scale());
    const bool rise = std::is_sorted(levels.begin(), levels.end()) &&
                      std::all_of(levels.begin(), levels.end(), [](float level) { return std::isfinite(level); });
    if (placed.Empty() || styles_.empty() || levels.empty() || !rise) return;
    std::vector<Colour> colours;  // of the bands
    for (std::size_t band = 0; band < levels.size(); ++band) colours.push_back(styles_[std::min(band, styles_.size() - 1)].line_colour);
    const bool triangles = granularity <= 1;
    const Map_Look look{Pixel_Axis::Edges::sharp, triangles ? 0 : granularity,
                        triangles ? Cell_Surface::triangles : Cell_Surface::bilinear};
    Clip_Sets();
    Draw_Map(Target(), Box(), placed, look, [&](float z) {
        const auto band = static_cast<std::size_t>(std::upper_bound(levels.begin(), levels.end(), z) - levels.begin());
        return colours[std::min(band, colours.size() - 1)];
    });
    graphics_->Clip_To_Area();
}

}  // namespace vntl
