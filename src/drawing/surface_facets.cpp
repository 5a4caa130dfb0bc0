#include "drawing/surface_facets.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "drawing/cells_of_axis.hpp"
#include "drawing/mixed_colour.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_lattice_lines = 60;  // along an axis: more would hide the surface
constexpr double closest_lattice_lines = 1.8;   // device units: where they are seen nearer to each other, those inside are left out
constexpr int shades = 64;
constexpr double relief = 0.25;  // by which slopes are multiplied for their shade: the flanks of reflections are all but upright
constexpr double darkest = 0.4, brightness_range = 0.75;
constexpr Space_Point light = {-0.64, -0.48, 0.6};  // across, away, upward as seen; of length 1

// Darker below a brightness of 1, nearer to white above.
Colour Shaded(Colour colour, double brightness) {
    return brightness < 1 ? Mixed(0, colour, brightness) : Mixed(colour, WRGB(255, 255, 255), std::min(1.0, brightness - 1));
}

Cells_Of_Axis Cells_Between(const std::vector<Mesh_Line>& lines, double eye) {
    return {lines.size(), eye, [&lines](std::size_t line) { return lines[line].at; }};
}

// Which lines of the mesh carry a line of the lattice.
std::size_t Lattice_Step(std::size_t lines) { return (lines + most_lattice_lines - 1) / most_lattice_lines; }

class Surface_Cutter {
public:
    Surface_Cutter(const Surface_Mesh& mesh, const Surface_Look& look, const Projection& view, const Fitted_View& page)
        : mesh_(mesh),
          look_(look),
          page_(page),
          eye_(view.Eye()),
          across_(Cells_Between(mesh.Across(), eye_[1])),
          away_(Cells_Between(mesh.Away(), eye_[0])),
          step_across_(Lattice_Step(mesh.Across().size())),
          step_away_(Lattice_Step(mesh.Away().size())) {
        // The light as the cube, which has been turned, has it.
        const Point side = Turned(view);
        light_ = {-light[0] * side.y + light[1] * side.x, light[0] * side.x + light[1] * side.y, light[2]};
        for (int band = 0; band < surface_levels; ++band)
            bands_[static_cast<std::size_t>(band)] = Mixed(look.least, look.most, static_cast<double>(band) / (surface_levels - 1));
    }

    Surface_Facets Cut() {
        for (std::size_t j = 0; j < mesh_.Away().size(); ++j)
            for (std::size_t i = 0; i < mesh_.Across().size(); ++i)
                cut_.places.push_back(std::isfinite(mesh_.Height(i, j)) ? page_.See(mesh_.At(i, j)) : Point{0, 0});
        cut_.facets.reserve(cut_.places.size());
        const std::vector<std::size_t> columns = across_.Far_To_Near();
        for (const std::size_t j : away_.Far_To_Near()) {
            for (const std::size_t i : columns) {
                if (!mesh_.Has_Cell(i, j)) continue;
                Cell(i, j);
                if (look_.lattice) Lattice(i, j);
            }
        }
        return std::move(cut_);
    }

private:
    struct Corner {
        Space_Point at;
        std::uint32_t place;
    };
    using Triangle = std::array<Corner, 3>;

    // The sine and the cosine of the rotation, from where the eye has gone.
    static Point Turned(const Projection& view) {
        const Space_Point eye = view.Eye();
        const double x = 0.5 - eye[0], y = 0.5 - eye[1], distance = std::hypot(x, y);
        return {x / distance, y / distance};
    }

    static int Band(double height) { return std::min(static_cast<int>(height * surface_levels), surface_levels - 1); }

    Corner Corner_At(std::size_t i, std::size_t j) const { return {mesh_.At(i, j), static_cast<std::uint32_t>(mesh_.Number(i, j))}; }

    void Cell(std::size_t i, std::size_t j) {
        const std::array<Corner, 4> c = {Corner_At(i, j), Corner_At(i + 1, j), Corner_At(i + 1, j + 1), Corner_At(i, j + 1)};
        const auto height = [&](std::size_t k) { return c[k].at[2]; };
        const std::size_t start = std::fabs(height(0) - height(2)) <= std::fabs(height(1) - height(3)) ? 0 : 1;  // of the diagonal
        const Corner &p = c[start], &q = c[start + 1], &r = c[start + 2], &s = c[(start + 3) % 4];
        const double brightness = look_.shaded ? Brightness(i, j) : 1;
        const auto [lowest, highest] = std::minmax({height(0), height(1), height(2), height(3)});
        if (!look_.banded || Band(lowest) == Band(highest)) {
            const double mean = 0.25 * (height(0) + height(1) + height(2) + height(3));
            const Colour colour = look_.banded      ? bands_[static_cast<std::size_t>(Band(lowest))]
                                  : look_.graduated ? Mixed(look_.least, look_.most, mean)
                                                    : look_.least;
            Add({p.place, q.place, r.place, s.place}, 4, Lit(colour, brightness));
            return;
        }
        const bool eye_beside_q = Side(p, r, eye_) * Side(p, r, q.at) > 0;
        Bands({p, r, eye_beside_q ? s : q}, brightness);
        Bands({p, r, eye_beside_q ? q : s}, brightness);
    }

    static double Side(const Corner& from, const Corner& to, const Space_Point& point) {
        return (to.at[0] - from.at[0]) * (point[1] - from.at[1]) - (to.at[1] - from.at[1]) * (point[0] - from.at[0]);
    }

    // Piece by piece from the lowest band to the highest one. A piece goes up along the side from the lowest corner to the highest one,
    // and down along the two others, past the corner between them if that is in its band.
    void Bands(Triangle t, double brightness) {
        std::sort(t.begin(), t.end(), [](const Corner& a, const Corner& b) { return a.at[2] < b.at[2]; });
        const int lowest = Band(t[0].at[2]), middle = Band(t[1].at[2]), highest = Band(t[2].at[2]);
        std::uint32_t up = t[0].place, down = t[0].place;  // where both ways reach the lower level of the band
        for (int band = lowest; band <= highest; ++band) {
            const double level = static_cast<double>(band + 1) / surface_levels;
            const std::uint32_t next_up = band == highest ? t[2].place : Cut_At(level, t[0], t[2]);
            const std::uint32_t next_down = band == highest       ? t[2].place
                                            : level <= t[1].at[2] ? Cut_At(level, t[0], t[1])
                                                                  : Cut_At(level, t[1], t[2]);
            std::array<std::uint32_t, 5> piece = {};
            std::uint32_t count = 0;
            piece[count++] = up;
            piece[count++] = next_up;
            if (next_down != next_up) piece[count++] = next_down;
            if (band == middle) piece[count++] = t[1].place;
            if (down != up) piece[count++] = down;
            const Colour colour = Lit(bands_[static_cast<std::size_t>(band)], brightness);
            Add({piece[0], piece[1], piece[2], piece[3]}, std::min(count, 4u), colour);
            if (count == 5) Add({piece[0], piece[3], piece[4]}, 3, colour);
            up = next_up, down = next_down;
        }
    }

    // Where a side, from its lower end to its higher one, reaches a level.
    std::uint32_t Cut_At(double level, const Corner& low, const Corner& high) {
        const double rise = high.at[2] - low.at[2], share = rise > 0 ? (level - low.at[2]) / rise : 1;
        Space_Point at;
        for (std::size_t k = 0; k < 3; ++k) at[k] = low.at[k] + share * (high.at[k] - low.at[k]);
        cut_.places.push_back(page_.See(at));
        return static_cast<std::uint32_t>(cut_.places.size() - 1);
    }

    // Of the mean slope at the corners of a cell.
    double Brightness(std::size_t i, std::size_t j) const {
        double across = 0, away = 0;
        for (const std::size_t k : {mesh_.Number(i, j), mesh_.Number(i + 1, j), mesh_.Number(i, j + 1), mesh_.Number(i + 1, j + 1)}) {
            across += 0.25 * relief * mesh_.Slope_At(k).across;
            away += 0.25 * relief * mesh_.Slope_At(k).away;
        }
        const double toward_light = (light_[2] - across * light_[1] - away * light_[0]) / std::sqrt(1 + across * across + away * away);
        return darkest + brightness_range * std::round(0.5 * (1 + toward_light) * shades) / shades;
    }
    Colour Lit(Colour colour, double brightness) const { return look_.shaded ? Shaded(colour, brightness) : colour; }

    void Lattice(std::size_t i, std::size_t j) {
        const bool before_i = across_.Last_Is_Farther(i) || i == 0 || !mesh_.Has_Cell(i - 1, j);
        const bool behind_i = across_.Next_Is_Farther(i) || !mesh_.Has_Cell(i + 1, j);
        const bool before_j = away_.Last_Is_Farther(j) || j == 0 || !mesh_.Has_Cell(i, j - 1);
        const bool behind_j = away_.Next_Is_Farther(j) || !mesh_.Has_Cell(i, j + 1);
        if (before_i) Line_Away(i, j);
        if (behind_i) Line_Away(i + 1, j);
        if (before_j) Line_Across(i, j);
        if (behind_j) Line_Across(i, j + 1);
    }
    void Line_Away(std::size_t i, std::size_t j) {
        const std::size_t next = i + step_across_;
        if (i % step_across_ == 0 || i + 1 == mesh_.Across().size())
            Line({i, j}, {i, j + 1}, {next, j}, i == 0 || next >= mesh_.Across().size());
    }
    void Line_Across(std::size_t i, std::size_t j) {
        const std::size_t next = j + step_away_;
        if (j % step_away_ == 0 || j + 1 == mesh_.Away().size()) Line({i, j}, {i + 1, j}, {i, next}, j == 0 || next >= mesh_.Away().size());
    }

    // `beside` is the place of the next line of the lattice, if this is not one at a border.
    struct Node {
        std::size_t i, j;
    };
    void Line(Node from, Node to, Node beside, bool border) {
        const std::size_t a = mesh_.Number(from.i, from.j), b = mesh_.Number(to.i, to.j);
        if (!border && std::isfinite(mesh_.Height(beside.i, beside.j))) {
            const Point &p = cut_.places[a], &q = cut_.places[b], &r = cut_.places[mesh_.Number(beside.i, beside.j)];
            const double x = q.x - p.x, y = q.y - p.y, apart = std::fabs(x * (r.y - p.y) - y * (r.x - p.x));
            if (apart < closest_lattice_lines * std::sqrt(x * x + y * y)) return;
        }
        Add({static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b)}, 2, look_.lattice_colour);
    }
    void Add(const std::array<std::uint32_t, 4>& corners, std::uint32_t count, Colour colour) {
        cut_.facets.push_back({corners, count, colour});
    }

    const Surface_Mesh& mesh_;
    const Surface_Look& look_;
    const Fitted_View& page_;
    Space_Point eye_, light_;  // the light in the order of the cube's axes
    Cells_Of_Axis across_, away_;
    std::size_t step_across_, step_away_;
    std::array<Colour, surface_levels> bands_;
    Surface_Facets cut_;
};

}  // namespace

Surface_Facets Facets_Of(const Surface_Mesh& mesh, const Surface_Look& look, const Projection& view, const Fitted_View& page) {
    if (!mesh.Shows()) return {};
    return Surface_Cutter(mesh, look, view, page).Cut();
}

}  // namespace vntl
