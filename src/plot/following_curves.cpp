#include "plot/following_curves.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "drawing/mixed_colour.hpp"
#include "plot/curve_style.hpp"
#include "plot/frame_texts.hpp"
#include "session/desk/row_styles.hpp"
#include "session/desk/waterfall.hpp"

namespace vntl {

namespace {

// Collects the points of a stretch, column by column.
class Thinner_Of_Columns {
public:
    explicit Thinner_Of_Columns(std::vector<Thin_Line>& lines) : lines_(lines) {}

    void Add(double column, float x, float y) {
        if (count_ > 0 && column != column_) Flush();
        column_ = column;
        const Point_In_View point{count_++, x, y};
        if (point.number == 0) first_ = lowest_ = highest_ = point;
        if (y < lowest_.y) lowest_ = point;
        if (y > highest_.y) highest_ = point;
        last_ = point;
    }
    void Gap() {
        Flush();
        if (!line_.x.empty()) lines_.push_back(std::move(line_));
        line_ = {};
    }

private:
    struct Point_In_View {
        long long number = 0;
        float x = 0, y = 0;
    };

    void Flush() {
        if (count_ == 0) return;
        std::array<Point_In_View, 4> points = {first_, lowest_, highest_, last_};
        if (lowest_.number > highest_.number) std::swap(points[1], points[2]);
        long long behind = -1;
        for (const Point_In_View& point : points) {
            if (point.number <= behind) continue;
            behind = point.number;
            line_.x.push_back(point.x);
            line_.y.push_back(point.y);
        }
        count_ = 0;
    }

    std::vector<Thin_Line>& lines_;
    Thin_Line line_;
    double column_ = 0;
    long long count_ = 0;  // points of the column so far
    Point_In_View first_, lowest_, highest_, last_;
};

class Curves {
public:
    Curves(const Scene& scene, Graphics& g)
        : scene_(scene),
          g_(g),
          styles_(scene.store, scene.prefs, scene.look, scene.desk.series_by_temperature),
          offsets_(scene.store, scene.plot) {
        const View& units = scene.plot.units;
        g_.IGrArea(scene.zone.x1, scene.zone.y1, scene.zone.x2, scene.zone.y2);
        g_.IGrUnits(units.x1, units.y1, units.x2, units.y2);
        g_.IGrLineType(0);
        columns_ = std::max(1, static_cast<int>(std::lround(g_.Area().x2 - g_.Area().x1)));
    }
    ~Curves() { Page_Units(g_); }
    Curves(const Curves&) = delete;
    Curves& operator=(const Curves&) = delete;

    void Draw_Ghost(const Row_Ghost& ghost) {
        constexpr double half = 0.5;
        if (!Shown(ghost.row)) return;
        Stroke(Lines_Of(ghost), Mixed(Colour_Of(ghost.row), Ground(), half), 1.5f);
    }

    void Draw_Pointed(int row) {
        constexpr float thicker = 2, rim = 2;  // line units
        if (!Shown(row)) return;
        const std::vector<Thin_Line> lines = Lines_Of({.row = row});
        const float width = Style_Of(styles_.Of(row)).Width() + thicker;
        Stroke(lines, Ground(), width + rim);
        Stroke(lines, Colour_Of(row), width);
    }

private:
    bool Shown(int row) const { return row >= 1 && row <= scene_.store.nperfiles() && scene_.store.shown(row); }
    Colour Ground() const { return scene_.prefs.graph2d.frame_foreground; }
    std::vector<Thin_Line> Lines_Of(const Row_Ghost& row) const {
        const Diffraction_Pattern_Type& pattern = scene_.store.Pattern(row.row);
        return Thin_Lines_Of(scene_.plot, pattern.x, pattern.y, row, offsets_.Of(row.row), columns_);
    }

    // Of a row without a line that of its markers.
    Colour Colour_Of(int row) const {
        const Curve_Style style = Style_Of(styles_.Of(row));
        return style.Has_Line() ? style.line_colour : style.marker_colour;
    }

    void Stroke(const std::vector<Thin_Line>& lines, Colour colour, float width) {
        g_.IGrColourN(colour);
        g_.IGrLineWidth(width);
        for (const Thin_Line& line : lines) g_.IGrPolyLine(line.x, line.y);
    }

    const Scene& scene_;
    Graphics& g_;
    Row_Styles styles_;
    Row_Offsets offsets_;
    int columns_ = 1;
};

}  // namespace

std::vector<Thin_Line> Thin_Lines_Of(const Plot_State& plot, std::span<const float> x, std::span<const float> y, const Row_Ghost& way,
                                     float offset, int columns) {
    const View& units = plot.units;
    const Y_Scale scale = plot.Scale();
    const auto points = std::ssize(x);
    // What was inside the view before it moved, and a point on either side.
    const float one = (units.x1 - way.bx) / way.ax, other = (units.x2 - way.bx) / way.ax;
    std::ptrdiff_t first = 0, end = points;
    if (std::isfinite(one) && std::isfinite(other)) {
        first = std::lower_bound(x.begin(), x.end(), std::min(one, other)) - x.begin();
        end = std::upper_bound(x.begin(), x.end(), std::max(one, other)) - x.begin();
    }
    first = std::max<std::ptrdiff_t>(first - 1, 0);
    end = std::min(end + 1, std::min(points, std::ssize(y)));

    std::vector<Thin_Line> lines;
    Thinner_Of_Columns thinner(lines);
    const double per_unit = columns / (static_cast<double>(units.x2) - units.x1);
    for (auto i = static_cast<std::size_t>(first); i < static_cast<std::size_t>(std::max(end, first)); ++i) {
        const float at = way.ax * x[i] + way.bx, value = On_Scale(scale, way.ay * y[i] + way.by) + offset;
        if (std::isfinite(at) && std::isfinite(value))
            thinner.Add(std::floor((at - units.x1) * per_unit), at, value);
        else
            thinner.Gap();
    }
    thinner.Gap();
    return lines;
}

void Draw_Following_Curves(const Scene& scene, Graphics& g, const std::vector<Row_Ghost>& told) {
    const Plot_State& plot = scene.plot;
    if (!plot.Is_2D() || !plot.units.Drawable()) return;
    std::vector<Row_Ghost> ghosts = Ghosts_In_Hand(scene.store, plot);
    if (ghosts.empty()) ghosts = told;
    if (ghosts.empty() && plot.pointed_row == 0) return;
    Curves curves(scene, g);
    for (const Row_Ghost& ghost : ghosts) curves.Draw_Ghost(ghost);
    if (plot.pointed_row != 0) curves.Draw_Pointed(plot.pointed_row);
}

}  // namespace vntl
