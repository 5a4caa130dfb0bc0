#include "solid/w3d.hpp"

#include <algorithm>

namespace vntl {

namespace {

// Those kept of so many lines: no more than `cells` cells between them, all but the last of one width.
class Kept_Lines {
public:
    Kept_Lines(int lines, std::size_t cells)
        : last_(static_cast<std::size_t>(lines) - 1), step_(std::max<std::size_t>(1, (last_ + cells - 1) / cells)) {}

    std::size_t Cells() const { return (last_ + step_ - 1) / step_; }
    std::size_t Line(std::size_t kept) const { return std::min(kept * step_, last_); }

private:
    std::size_t last_, step_;
};

std::size_t Facets_Of(const W3d_Sheet& sheet, std::size_t cells) {
    return sheet.Facets() == 0 ? 0 : Kept_Lines(sheet.columns, cells).Cells() * Kept_Lines(sheet.rows, cells).Cells();
}

// Cells a side, as many as leave no more facets than that.
std::size_t Cells_A_Side(const W3d& solid, std::size_t facets) {
    std::size_t few = 1, many = 1 + facets;
    while (many - few > 1) {
        const std::size_t middle = few + (many - few) / 2;
        std::size_t sum = 0;
        for (const W3d_Sheet& sheet : solid.sheets) sum += Facets_Of(sheet, middle);
        (sum <= facets ? few : many) = middle;
    }
    return few;
}

}  // namespace

std::size_t W3d::Facets() const {
    std::size_t facets = 0;
    for (const W3d_Sheet& sheet : sheets) facets += sheet.Facets();
    return facets;
}

W3d Scaled(const W3d& solid, float x, float y, float z) {
    W3d scaled = solid;
    const auto move = [&](Vec3& at) { at = {at[0] * x, at[1] * y, at[2] * z}; };
    for (Vec3& vertex : scaled.vertices) move(vertex);
    for (W3d_Rod& rod : scaled.rods) move(rod.from), move(rod.to);
    for (W3d_Text& text : scaled.texts) move(text.at);
    return scaled;
}

W3d Thinned(const W3d& solid, std::size_t facets) {
    W3d thinned;
    thinned.rods = solid.rods;
    thinned.texts = solid.texts;
    thinned.materials = solid.materials;
    const std::size_t cells = Cells_A_Side(solid, facets);
    for (const W3d_Sheet& sheet : solid.sheets) {
        if (sheet.Facets() == 0) continue;
        const Kept_Lines columns(sheet.columns, cells), rows(sheet.rows, cells);
        thinned.sheets.push_back(
            {thinned.vertices.size(), static_cast<int>(columns.Cells()) + 1, static_cast<int>(rows.Cells()) + 1, sheet.material});
        for (std::size_t row = 0; row <= rows.Cells(); ++row)
            for (std::size_t column = 0; column <= columns.Cells(); ++column)
                thinned.vertices.push_back(
                    solid.vertices[sheet.first + rows.Line(row) * static_cast<std::size_t>(sheet.columns) + columns.Line(column)]);
    }
    return thinned;
}

}  // namespace vntl
