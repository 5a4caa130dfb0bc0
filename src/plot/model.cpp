#include "plot/model.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/conversions.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

constexpr float half_width = 1.5f, height = 2.5f, half_depth = 1, floor_at = -height / 3;
constexpr std::array<Colour, w3d_materials - 1> fixed_materials = {WRGB(192, 212, 30), WRGB(178, 34, 34), WRGB(46, 125, 50),
                                                                   WRGB(245, 245, 245), WRGB(24, 32, 96)};

// Place of number i of n that stand evenly from -half to half.
float Evenly(std::size_t i, std::size_t n, float half) {
    const double step = n > 1 ? 2.0 * half / static_cast<double>(n - 1) : 0;
    return static_cast<float>(static_cast<double>(i) * step - half);
}

// The lowest intensity lies on the floor, and so does a series without differences. A gap stays one.
void Add_Surface(const PlotGrid& grid, W3d& solid) {
    const std::size_t nx = grid.grid_x.size(), ny = grid.grid_y.size();
    const double least = grid.z_min, range = grid.z_max - least, rise = range > 0 ? height / range : 0;
    solid.vertices.reserve(nx * ny);
    for (std::size_t k = 0; k < ny; ++k)
        for (std::size_t i = 0; i < nx; ++i) {
            const double up = (grid.grid_z[k * nx + i] - least) * rise + floor_at;
            solid.vertices.push_back({Evenly(i, nx, half_width), static_cast<float>(up), Evenly(k, ny, half_depth)});
        }
    solid.sheets.push_back({.first = 0, .columns = static_cast<int>(nx), .rows = static_cast<int>(ny)});
}

// --- axes ------------------------------------------------------------------------------------------------------------------------

// An edge of the floor with its texts. They lie on a slope that falls away from it by 45 degrees: so they can be read from above and
// from the front, and hide nothing.
struct Edge {
    Vec3 from, to;
    Vec3 along, outward;  // of length 1

    // As far below the floor as beside the edge.
    Vec3 At(float fraction, float beside) const {
        Vec3 at;
        for (std::size_t k = 0; k < 3; ++k) at[k] = from[k] + fraction * (to[k] - from[k]) + beside * outward[k];
        at[1] -= beside;
        return at;
    }
    Vec3 Upward() const {
        constexpr float cosine = std::numbers::sqrt2_v<float> / 2;
        return {-cosine * outward[0], cosine, -cosine * outward[2]};
    }
};

constexpr Edge front_edge = {{-half_width, floor_at, -half_depth}, {half_width, floor_at, -half_depth}, {1, 0, 0}, {0, 0, -1}};
constexpr Edge side_edge = {{half_width, floor_at, -half_depth}, {half_width, floor_at, half_depth}, {0, 0, 1}, {1, 0, 0}};

// The measured value there, between two columns or patterns in proportion.
float Value_At(const std::vector<float>& values, float fraction) {
    const double place = fraction * static_cast<double>(values.size() - 1);
    const auto before = static_cast<std::size_t>(place), behind = std::min(before + 1, values.size() - 1);
    return static_cast<float>(
        std::lerp(static_cast<double>(values[before]), static_cast<double>(values[behind]), place - static_cast<double>(before)));
}

// Letters of a width that the text has room for, and as thin as paper: seen from aside, thick ones run into one another.
void Add_Text(const Edge& edge, float fraction, float beside, std::string_view text, float width, float letter, float room, W3d& solid) {
    if (text.empty()) return;
    width = std::min(width, room / static_cast<float>(Characters(text)));
    solid.texts.push_back({.text = std::string(text),
                           .at = edge.At(fraction, beside),
                           .along = edge.along,
                           .upward = edge.Upward(),
                           .width = width,
                           .height = letter,
                           .depth = 0.01f});
}

void Add_Axis(const Edge& edge, const std::vector<float>& values, std::string_view title, W3d& solid) {
    constexpr float numbers_beside = 0.25f, title_beside = 0.4f;
    constexpr float number_room = 0.3f, title_room = 1.9f;
    solid.rods.push_back({.from = edge.from, .to = edge.to, .radius_from = 0.025f, .radius_to = 0.005f});
    for (const float fraction : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f}) {
        const std::string number = IRealToString(Value_At(values, fraction), "(f20.1)");
        Add_Text(edge, fraction, numbers_beside, Trim(number), 0.05f, 0.12f, number_room, solid);
    }
    Add_Text(edge, 0.5f, title_beside, Trim(title), 0.1f, 0.15f, title_room, solid);
}

}  // namespace

W3d Build_Model(const PlotGrid& grid, std::string_view x_title, Colour model_colour) {
    W3d solid;
    solid.materials.front() = model_colour;
    std::copy(fixed_materials.begin(), fixed_materials.end(), solid.materials.begin() + 1);
    if (grid.grid_z.empty()) return solid;
    Add_Surface(grid, solid);
    Add_Axis(front_edge, grid.grid_x, x_title, solid);
    Add_Axis(side_edge, grid.grid_y, grid.grid_y_label, solid);
    return solid;
}

}  // namespace vntl
