// A sheet of a solid by its columns and rows, which count from 0.
#pragma once

#include <array>

#include "solid/vec3.hpp"
#include "solid/w3d.hpp"

namespace vntl {

// Which columns, or rows, of a sheet are drawn as lines in its edge colour: every n-th one and the last, for more than a hundred would hide
// what lies between them. A line follows every vertex that stands on it.
class Edge_Lines {
public:
    explicit Edge_Lines(std::size_t lines) : last_(lines - 1), step_((lines + most - 1) / most) {}
    bool Has(std::size_t line) const { return line % step_ == 0 || line == last_; }

private:
    static constexpr std::size_t most = 100;
    std::size_t last_, step_;
};

class Sheet_Grid {
public:
    Sheet_Grid(const W3d& solid, const W3d_Sheet& sheet);

    std::size_t Columns() const { return columns_; }
    std::size_t Rows() const { return rows_; }
    std::size_t Number(std::size_t column, std::size_t row) const { return row * columns_ + column; }  // of a vertex, in the sheet
    const Vec3& At(std::size_t number) const { return places_[number]; }
    const Vec3& At(std::size_t column, std::size_t row) const { return places_[Number(column, row)]; }

    bool Has_Facet(std::size_t column, std::size_t row) const;  // false beyond the sheet, and where a corner is a gap

    // Numbers of the corners, counter-clockwise as seen from above. The first and the third are the ends of the diagonal that cuts the
    // facet into triangles: of both the one whose ends differ less in height, so that ridges run smoothly.
    std::array<std::size_t, 4> Corners(std::size_t column, std::size_t row) const;

    // Upward, of length 1, from the differences of the neighbours in column and row.
    Vec3 Normal(std::size_t column, std::size_t row) const;

private:
    Vec3 Slope(const Vec3& at, const Vec3* before, const Vec3* behind, const Vec3& level) const;

    const Vec3* places_;
    std::size_t columns_, rows_;
    bool mirrored_;  // either the columns or the rows run the other way
};

}  // namespace vntl
