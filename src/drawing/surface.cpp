// What stands in the cube: walls, lines and surfaces.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

#include "drawing/presentation_3d.hpp"
#include "drawing/surface_facets.hpp"

namespace vntl {

namespace {

constexpr double cell_size = 1.75;         // device units: a finer mesh shows no more
constexpr double shade_size = 7;           // device units: by such steps a smooth shade may change
constexpr std::size_t most_lines = 2000;   // of a mesh along an axis
constexpr std::size_t fewest_lines = 64;   // of a mesh along an axis that is seen end on
constexpr std::size_t many_facets = 5000;  // for which a second thread pays
constexpr double lattice_width = 1;        // line units
constexpr double rounding = 1e-9;          // of the cube
constexpr float end_on = 1e-3f;            // device units: by so little rounding may turn back a line that is seen along itself
constexpr float gap = std::numeric_limits<float>::quiet_NaN();

Surface_Look Look_Of(const Presentation_3D::Surface_Style& style) {
    const auto has = [&](unsigned option) { return (style.option & option) != 0; };
    Surface_Look look{};
    look.banded = has(option_contoured);
    look.graduated = has(option_graduated);
    look.shaded = look.banded && has(option_smooth);
    look.lattice = has(option_uniform) || (look.banded && !look.shaded);
    look.least = style.least, look.most = style.most, look.lattice_colour = style.lattice;
    return look;
}

// By a thread for each part of a device that can be cut.
void Draw_Facets(const Graphics& g, const Facet_List& list) {
    const auto bands = list.facets.size() < many_facets ? std::vector<std::unique_ptr<Device>>() : g.device().Bands();
    std::vector<std::jthread> threads;
    for (const auto& band : bands) {
        band->Set_Clip(g.Area());
        threads.emplace_back([&band, &list] { band->Facets(list); });
    }
    if (bands.empty() && !list.facets.empty()) g.device().Facets(list);
}

// The part of the way from a to b in the cube, as shares of it. False where there is none.
bool Part_In_Cube(const Space_Point& a, const Space_Point& b, double& from, double& to) {
    from = 0, to = 1;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double step = b[axis] - a[axis];
        const double enters = ((step > 0 ? 0.0 : 1.0) - a[axis]) / step, leaves = ((step > 0 ? 1.0 : 0.0) - a[axis]) / step;
        if (step == 0 && (a[axis] < 0 || a[axis] > 1)) return false;
        if (step == 0) continue;
        from = std::max(from, enters);
        to = std::min(to, leaves);
    }
    return from < to;
}

Space_Point Along(const Space_Point& a, const Space_Point& b, double share) {
    return {a[0] + share * (b[0] - a[0]), a[1] + share * (b[1] - a[1]), a[2] + share * (b[2] - a[2])};
}

// A line in space on the page, as arrays for a curve.
class Line_On_Page {
public:
    Line_On_Page(const Fitted_View& page, std::size_t points) : page_(page) {
        x_.reserve(points);
        y_.reserve(points);
    }

    // The next points. From one to the next the line is cut off at the sides of the cube.
    void Next(std::span<const Space_Point> points) {
        if (after_point_ && inside_ && std::all_of(points.begin(), points.end(), In_Cube))
            Add_All(points);
        else
            for (const Space_Point& point : points) Next(point);
    }

    // From left to right, where the line goes one way across the page.
    Series On_Page() {
        if (!x_.empty() && x_.front() > x_.back()) {
            std::reverse(x_.begin(), x_.end());
            std::reverse(y_.begin(), y_.end());
        }
        for (std::size_t i = 1; i < x_.size(); ++i) {
            const float before = x_[i - 1], here = x_[i];
            x_[i] = here < before && here > before - end_on ? before : here;
        }
        return {x_, y_};
    }

private:
    // A comparison with what is no number is false.
    static bool In_Cube(const Space_Point& p) {
        constexpr double low = -rounding, high = 1 + rounding;
        return (p[0] >= low) && (p[0] <= high) && (p[1] >= low) && (p[1] <= high) && (p[2] >= low) && (p[2] <= high);
    }
    void Next(const Space_Point& point) {
        const bool finite = std::isfinite(point[0] + point[1] + point[2]), inside = finite && In_Cube(point);
        if (!finite)
            Gap();
        else if (inside && (inside_ || !after_point_))
            Add(point);
        else if (after_point_)
            Cut(point);
        last_ = point;
        after_point_ = finite;
        inside_ = inside;
    }
    void Add(const Space_Point& in_cube) {
        const Point at = page_.See(in_cube);
        x_.push_back(static_cast<float>(at.x));
        y_.push_back(static_cast<float>(at.y));
    }
    void Add_All(std::span<const Space_Point> points) {
        const std::size_t from = x_.size();
        x_.resize(from + points.size());
        y_.resize(from + points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Point at = page_.See(points[i]);
            x_[from + i] = static_cast<float>(at.x);
            y_[from + i] = static_cast<float>(at.y);
        }
        last_ = points.back();
    }
    void Gap() {
        if (x_.empty()) return;
        x_.push_back(x_.back());
        y_.push_back(gap);
    }
    void Cut(const Space_Point& point) {
        double from, to;
        const bool shows = Part_In_Cube(last_, point, from, to);
        if (!inside_) Gap();
        if (!inside_ && shows) Add(Along(last_, point, from));
        if (shows) Add(Along(last_, point, to));
    }

    const Fitted_View page_;
    std::vector<float> x_, y_;
    Space_Point last_ = {0, 0, 0};
    bool after_point_ = false, inside_ = false;
};

}  // namespace

void Presentation_3D::IPgWalls(Colour floor, Colour left, Colour right) const {
    const Fitted_View page(View(), Box());
    const Space_Point eye = View().Eye();
    const auto fill = [&](std::size_t axis, double end, Colour colour) {
        const std::size_t one = (axis + 1) % 3, other = (axis + 2) % 3;
        std::array<Point, 4> corners;
        for (std::size_t k = 0; k < 4; ++k) {
            Space_Point corner;
            corner[axis] = end;
            corner[one] = k == 1 || k == 2 ? 1 : 0;
            corner[other] = k >= 2 ? 1 : 0;
            corners[k] = page.See(corner);
        }
        graphics_->device().Fill(corners, colour);
    };
    fill(2, 0, floor);
    for (const auto& [axis, colour] : {std::pair<std::size_t, Colour>{0, left}, {1, right}}) {
        if (eye[axis] > 0) fill(axis, 0, colour);
        if (eye[axis] < 1) fill(axis, 1, colour);
    }
}

void Presentation_3D::IPgXYZLine(std::span<const float> x, std::span<const float> y, std::span<const float> z) const {
    const std::size_t n = std::min({x.size(), y.size(), z.size()});
    Line_On_Page line(Fitted_View(View(), Box()), n);
    Space_Point per_unit;
    for (std::size_t axis = 0; axis < 3; ++axis) per_unit[axis] = 1 / (upper_[axis] - lower_[axis]);
    std::array<Space_Point, 256> points;  // so many at a time
    for (std::size_t first = 0; first < n; first += points.size()) {
        const std::size_t count = std::min(points.size(), n - first);
        for (std::size_t i = 0; i < count; ++i)
            points[i] = {(x[first + i] - lower_[0]) * per_unit[0], (y[first + i] - lower_[1]) * per_unit[1],
                         (z[first + i] - lower_[2]) * per_unit[2]};
        line.Next(std::span(points).first(count));
    }
    const Series series = line.On_Page();
    if (!series.x.empty()) graphics_->device().Curve(series, {graphics_->Current_Colour(), graphics_->Line_Width(), Line_Style::solid});
}

void Presentation_3D::IPgSurf3Data(const Grid_Data& grid, const Surface_Style& style) const {
    const Fitted_View page(View(), Box());
    // Of an axis where it is seen longest.
    const auto length = [&](std::size_t axis) {
        double longest = 0;
        for (const double side : {0.0, 1.0}) {
            Space_Point from = {side, side, 0};
            from[axis] = 0;
            Space_Point to = from;
            to[axis] = 1;
            const Point a = page.See(from), b = page.See(to);
            longest = std::max(longest, std::hypot(b.x - a.x, b.y - a.y));
        }
        return longest;
    };
    const auto lines = [&](std::size_t axis) {
        return std::clamp(static_cast<std::size_t>(length(axis) / cell_size), fewest_lines, most_lines);
    };
    const Surface_Look look = Look_Of(style);
    Surface_Mesh mesh(grid, {lower_, upper_, lines(1), lines(0)});
    if (look.shaded && mesh.Shows()) {
        mesh.Find_Slopes();
        mesh = mesh.Finer(length(1) / shade_size, length(0) / shade_size);
    }
    const Surface_Facets surface = Facets_Of(mesh, look, View(), page);
    Draw_Facets(*graphics_, {surface.places, surface.facets, lattice_width});
}

}  // namespace vntl
