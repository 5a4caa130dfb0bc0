#include "drawing/contour_lines.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace vntl {

namespace {

constexpr double one_place = 1e-4;  // device units: points nearer than this are one
constexpr double straight = 0.02;   // device units: how far a point may be from the line that is drawn without it

bool Near(Point a, Point b) { return std::fabs(a.x - b.x) < one_place && std::fabs(a.y - b.y) < one_place; }

double Distance_From_Line(Point p, Point a, Point b) {
    const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
    const double t = square > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / square, 0.0, 1.0) : 0;
    return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

// Leaves out points that are as good as on the line between two that stay. No more are left out in a row than can be looked at again
// for each point that follows.
void Straighten(std::vector<Point>& line) {
    constexpr std::size_t most_left_out = 32;
    if (line.size() < 3) return;
    Point last = line.front();
    std::size_t kept = 1, after_last = 1;
    for (std::size_t i = 2; i < line.size(); ++i) {
        bool fits = i - after_last <= most_left_out;
        for (std::size_t k = after_last; k < i && fits; ++k) fits = Distance_From_Line(line[k], last, line[i]) <= straight;
        if (fits) continue;
        last = line[i - 1];
        after_last = i;
        line[kept++] = last;
    }
    line[kept++] = line.back();
    line.resize(kept);
}

// Follows the lines of one level after another.
//
// Corners and edges of a cell are numbered counter-clockwise from the first row and column on:
//
//      3 --2-- 2
//      |       |
//      3       1
//      |       |
//      0 --0-- 1
class Tracer {
public:
    explicit Tracer(const Node_Grid& grid)
        : grid_(grid), columns_(grid.x.size()), rows_(grid.y.size()), followed_((columns_ - 1) * (rows_ - 1)) {}

    // Cells that each of the levels crosses, found in one pass. No lists at all where they would hold more than `most`.
    std::vector<std::vector<std::uint32_t>> Crossed_Cells(std::span<const double> levels, std::size_t most) const;
    template <class Take>
    void Trace(double level, std::span<const std::uint32_t> cells, const Take& take);

private:
    struct Cell {
        std::size_t column, row;
    };
    static constexpr int no_edge = -1;

    std::size_t Number(Cell cell) const { return cell.row * (columns_ - 1) + cell.column; }
    float Corner(Cell cell, int corner) const {
        return grid_.z[(cell.row + (corner >= 2)) * columns_ + cell.column + (corner == 1 || corner == 2)];
    }
    bool Crosses(Cell cell, int edge) const { return (Corner(cell, edge) >= level_) != (Corner(cell, (edge + 1) % 4) >= level_); }
    int Way_Out(Cell cell, int edge) const;
    Point Crossing(Cell cell, int edge) const;
    bool Step(Cell& cell, int& edge) const;
    bool Follow(Cell cell, int edge, std::vector<Point>& line);

    const Node_Grid& grid_;
    std::size_t columns_, rows_;
    std::vector<std::uint8_t> followed_;  // edges of each cell by which a line has entered or left it, as bits
    double level_ = 0;
    std::vector<Point> line_, back_;
};

std::vector<std::vector<std::uint32_t>> Tracer::Crossed_Cells(std::span<const double> levels, std::size_t most) const {
    constexpr int gap = -1;
    std::size_t found = 0;
    std::vector<std::vector<std::uint32_t>> cells(levels.size());
    std::vector<int> below(columns_), above(columns_);  // how many levels a node has reached, for two rows of them
    const auto reached = [&](std::size_t row, std::vector<int>& counts) {
        for (std::size_t i = 0; i < columns_; ++i) {
            const float z = grid_.z[row * columns_ + i];
            counts[i] = std::isfinite(z) ? static_cast<int>(std::upper_bound(levels.begin(), levels.end(), z) - levels.begin()) : gap;
        }
    };
    reached(0, above);
    for (std::size_t row = 0; row + 1 < rows_; ++row) {
        std::swap(below, above);
        reached(row + 1, above);
        for (std::size_t i = 0; i + 1 < columns_; ++i) {
            const int least = std::min(std::min(below[i], below[i + 1]), std::min(above[i], above[i + 1]));
            const int greatest = std::max(std::max(below[i], below[i + 1]), std::max(above[i], above[i + 1]));
            if (least == gap || least == greatest) continue;
            found += static_cast<std::size_t>(greatest - least);
            if (found > most) return {};
            for (int level = least; level < greatest; ++level)
                cells[static_cast<std::size_t>(level)].push_back(static_cast<std::uint32_t>(Number({i, row})));
        }
    }
    return cells;
}

// The edge by which the line that enters a cell by an edge leaves it; none where the cell has a gap.
int Tracer::Way_Out(Cell cell, int edge) const {
    double z[4];
    int crossings = 0, other = no_edge;
    for (int corner = 0; corner < 4; ++corner) z[corner] = static_cast<double>(Corner(cell, corner));
    for (int e = 0; e < 4; ++e) {
        if (!std::isfinite(z[e])) return no_edge;
        if ((z[e] >= level_) == (z[(e + 1) % 4] >= level_)) continue;
        ++crossings;
        if (e != edge) other = e;
    }
    if (crossings < 4) return other;
    const double saddle = (z[0] * z[2] - z[1] * z[3]) / (z[0] + z[2] - z[1] - z[3]);
    // The line goes around a corner that is on the other side of the level than the saddle, by the two edges that meet there.
    const bool around_first = (z[edge] >= level_) != (saddle >= level_);
    return around_first ? (edge + 3) % 4 : (edge + 1) % 4;
}

// Always from the lower column or row, so that both cells of an edge find the same point.
Point Tracer::Crossing(Cell cell, int edge) const {
    const std::size_t column = cell.column + (edge == 1), row = cell.row + (edge == 2);
    const bool level_edge = edge == 0 || edge == 2;
    const double z1 = static_cast<double>(grid_.z[row * columns_ + column]);
    const double z2 = static_cast<double>(level_edge ? grid_.z[row * columns_ + column + 1] : grid_.z[(row + 1) * columns_ + column]);
    const double t = (level_ - z1) / (z2 - z1);
    const double x = grid_.x[column], y = grid_.y[row];
    if (level_edge) return {x + t * (grid_.x[column + 1] - x), y};
    return {x, y + t * (grid_.y[row + 1] - y)};
}

// To the cell on the other side of an edge, which has another number there. False at the border.
bool Tracer::Step(Cell& cell, int& edge) const {
    constexpr std::array<int, 4> to_column = {0, 1, 0, -1}, to_row = {-1, 0, 1, 0};
    const auto side = static_cast<std::size_t>(edge);
    cell.column += static_cast<std::size_t>(to_column[side]);
    cell.row += static_cast<std::size_t>(to_row[side]);
    edge = (edge + 2) % 4;
    return cell.column < columns_ - 1 && cell.row < rows_ - 1;  // one before the first is a large number
}

// Goes on into a cell by an edge and adds a point for each edge that the line leaves by. True when it comes where it has been.
bool Tracer::Follow(Cell cell, int edge, std::vector<Point>& line) {
    while (true) {
        const int out = Way_Out(cell, edge);
        if (out == no_edge) return false;
        std::uint8_t& followed = followed_[Number(cell)];
        if ((followed & 1 << edge) != 0) return true;
        followed = static_cast<std::uint8_t>(followed | 1 << edge | 1 << out);
        const Point point = Crossing(cell, out);
        if (!Near(line.back(), point)) line.push_back(point);
        edge = out;
        if (!Step(cell, edge)) return false;
    }
}

template <class Take>
void Tracer::Trace(double level, std::span<const std::uint32_t> cells, const Take& take) {
    level_ = level;
    for (const std::uint32_t number : cells) {
        const Cell start{number % (columns_ - 1), number / (columns_ - 1)};
        for (int edge = 0; edge < 4; ++edge) {
            if (!Crosses(start, edge) || (followed_[number] & 1 << edge) != 0) continue;
            line_.assign(1, Crossing(start, edge));
            if (Follow(start, edge, line_)) {
                while (line_.size() > 1 && Near(line_.back(), line_.front())) line_.pop_back();
                if (line_.size() > 1) line_.push_back(line_.front());
            } else {
                Cell before = start;
                int into = edge;
                back_.assign(1, line_.front());
                if (Step(before, into)) Follow(before, into, back_);
                line_.insert(line_.begin(), back_.rbegin(), back_.rend() - 1);
            }
            Straighten(line_);
            const bool a_place = line_.size() < 2 || (line_.size() == 2 && Near(line_.front(), line_.back()));
            if (!a_place) take(line_);
        }
    }
    for (const std::uint32_t number : cells) followed_[number] = 0;
}

}  // namespace

std::vector<double> Places_Of_Axis(std::span<const float> values, double zero, double scale) {
    std::vector<double> places;
    places.reserve(values.size());
    for (const float value : values) places.push_back(zero + scale * static_cast<double>(value));
    const bool finite = std::all_of(places.begin(), places.end(), [](double place) { return std::isfinite(place); });
    if (!finite || !(std::is_sorted(places.begin(), places.end()) || std::is_sorted(places.rbegin(), places.rend()))) places.clear();
    return places;
}

Node_Axis Gather(std::span<const double> places, double low, double high, double step) {
    Node_Axis axis;
    const std::size_t n = places.size();
    if (n < 2) return axis;
    const bool falls = places.front() > places.back();
    const auto before = [&](double place) { return falls ? place >= high : place <= low; };
    const auto shows = [&](double place) { return falls ? place > low : place < high; };
    auto first = static_cast<std::size_t>(std::partition_point(places.begin(), places.end(), before) - places.begin());
    auto end = static_cast<std::size_t>(std::partition_point(places.begin(), places.end(), shows) - places.begin());
    first -= first > 0;
    end += end < n;
    for (std::size_t i = first, next; i < end; i = next) {
        next = i + 1;
        const bool outermost = i == first;
        while (!outermost && next + 1 < end && std::fabs(places[next] - places[i]) < step) ++next;
        double sum = 0;
        for (std::size_t k = i; k < next; ++k) sum += places[k] - places[i];
        axis.places.push_back(places[i] + sum / static_cast<double>(next - i));
        axis.first.push_back(static_cast<std::uint32_t>(i));
    }
    axis.first.push_back(static_cast<std::uint32_t>(end));
    return axis;
}

Node_Grid Thinned(const Grid_Data& grid, const Node_Axis& across, const Node_Axis& up) {
    const std::size_t columns = across.places.size(), rows = up.places.size();
    Node_Grid nodes{across.places, up.places, {}};
    nodes.z.reserve(columns * rows);
    std::vector<double> sums(columns);
    std::vector<std::uint32_t> counts(columns);
    for (std::size_t row = 0; row < rows; ++row) {
        std::fill(sums.begin(), sums.end(), 0.0);
        std::fill(counts.begin(), counts.end(), 0u);
        for (std::size_t k = up.first[row]; k < up.first[row + 1]; ++k) {
            const float* const z = grid.z.data() + k * grid.x.size();
            for (std::size_t column = 0; column < columns; ++column) {
                for (std::size_t i = across.first[column]; i < across.first[column + 1]; ++i) {
                    const bool counts_here = std::isfinite(z[i]);
                    sums[column] += counts_here ? static_cast<double>(z[i]) : 0.0;
                    counts[column] += counts_here;
                }
            }
        }
        for (std::size_t column = 0; column < columns; ++column) nodes.z.push_back(static_cast<float>(sums[column] / counts[column]));
    }
    return nodes;
}

bool Trace_Contours(const Node_Grid& grid, std::span<const double> rising_levels, std::size_t most_cells,
                    const std::function<void(std::size_t, std::span<const Point>)>& take) {
    if (grid.x.size() < 2 || grid.y.size() < 2 || rising_levels.empty()) return true;
    Tracer tracer(grid);
    const auto cells = tracer.Crossed_Cells(rising_levels, most_cells);
    for (std::size_t level = 0; level < cells.size(); ++level)
        tracer.Trace(rising_levels[level], cells[level], [&](std::span<const Point> line) { take(level, line); });
    return !cells.empty();
}

}  // namespace vntl
