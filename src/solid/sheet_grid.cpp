#include "solid/sheet_grid.hpp"

#include <utility>

namespace vntl {

Sheet_Grid::Sheet_Grid(const W3d& solid, const W3d_Sheet& sheet)
    : places_(solid.vertices.data() + sheet.first),
      columns_(static_cast<std::size_t>(sheet.columns)),
      rows_(static_cast<std::size_t>(sheet.rows)),
      mirrored_(sheet.Facets() > 0 && (At(1, 0)[0] < At(0, 0)[0]) != (At(0, 1)[2] < At(0, 0)[2])) {}

bool Sheet_Grid::Has_Facet(std::size_t column, std::size_t row) const {
    return column + 1 < columns_ && row + 1 < rows_ && Finite(At(column, row)) && Finite(At(column + 1, row)) &&
           Finite(At(column + 1, row + 1)) && Finite(At(column, row + 1));
}

std::array<std::size_t, 4> Sheet_Grid::Corners(std::size_t column, std::size_t row) const {
    const std::size_t a = Number(column, row), b = a + 1, d = a + columns_, c = d + 1;
    const auto apart = [this](std::size_t one, std::size_t other) { return std::fabs(At(one)[1] - At(other)[1]); };
    std::array<std::size_t, 4> corners = apart(b, d) < apart(a, c) ? std::array{b, c, d, a} : std::array{a, b, c, d};
    if (mirrored_) std::swap(corners[1], corners[3]);
    return corners;
}

Vec3 Sheet_Grid::Normal(std::size_t column, std::size_t row) const {
    const std::size_t number = Number(column, row);
    const Vec3& at = At(number);
    const Vec3* const here = places_ + number;
    const Vec3 across = Slope(at, column > 0 ? here - 1 : nullptr, column + 1 < columns_ ? here + 1 : nullptr, {1, 0, 0});
    const Vec3 away = Slope(at, row > 0 ? here - columns_ : nullptr, row + 1 < rows_ ? here + columns_ : nullptr, {0, 0, 1});
    const Vec3 normal = Unit(Cross(away, across), {0, 1, 0});
    return normal[1] < 0 ? Opposite(normal) : normal;
}

// Between the neighbours, or to the one that there is.
Vec3 Sheet_Grid::Slope(const Vec3& at, const Vec3* before, const Vec3* behind, const Vec3& level) const {
    const Vec3& from = before != nullptr && Finite(*before) ? *before : at;
    const Vec3& to = behind != nullptr && Finite(*behind) ? *behind : at;
    return &from == &to ? level : Minus(to, from);
}

}  // namespace vntl
