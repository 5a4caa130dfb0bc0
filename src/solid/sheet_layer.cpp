#include "solid/sheet_layer.hpp"

#include "drawing/cells_of_axis.hpp"
#include "solid/sheet_grid.hpp"

namespace vntl {

namespace {

class Sheet_Layer {
public:
    Sheet_Layer(const W3d& solid, const W3d_Sheet& sheet, const W3d_View& view, Facet_Pile& pile)
        : grid_(solid, sheet),
          view_(view),
          pile_(pile),
          material_(solid.Material(sheet.material)),
          first_(pile.Next()),
          columns_(Cells(grid_.Columns(), 0, [this](std::size_t column) { return grid_.At(column, 0)[0]; })),
          rows_(Cells(grid_.Rows(), 2, [this](std::size_t row) { return grid_.At(0, row)[2]; })),
          column_lines_(grid_.Columns()),
          row_lines_(grid_.Rows()) {
        for (std::size_t k = 0; k < grid_.Rows(); ++k) {
            for (std::size_t i = 0; i < grid_.Columns(); ++i) {
                const Vec3& at = grid_.At(i, k);
                pile_.Place(Finite(at) ? at : Vec3{});
                if (view.mode >= Render_Mode::gouraud) shares_.push_back(Lit_On_Both(grid_.Normal(i, k), at));
            }
        }
    }

    void Lay() {
        const std::vector<std::size_t> order = columns_.Far_To_Near();
        for (const std::size_t k : rows_.Far_To_Near())
            for (const std::size_t i : order)
                if (grid_.Has_Facet(i, k)) Lay_Cell(i, k);
    }

private:
    using Number = Facet_Pile::Number;

    // Of the light that the upper side shows, and the lower one.
    struct Both_Sides {
        float upper, lower;
    };

    template <class At>
    Cells_Of_Axis Cells(std::size_t lines, std::size_t axis, const At& at) const {
        const float sign = at(lines - 1) < at(0) ? -1.0f : 1.0f;
        return {lines, sign * view_.eye[axis], [&](std::size_t line) { return sign * at(line); }};
    }

    // Both triangles of a cell show the same side, and hide nothing of the lines around it: these come after it, in their whole width.
    // Where one shows its upper side and the other the lower one, the farther triangle is laid first, and before it the lines behind both.
    void Lay_Cell(std::size_t i, std::size_t k) {
        const std::array<std::size_t, 4> corners = grid_.Corners(i, k);
        const auto [a, b, c, d] = corners;
        const bool one_from_above = From_Above(a, b, c), other_from_above = From_Above(a, c, d);
        const bool folded = one_from_above != other_from_above;
        if (folded) Lay_Edges(i, k, true);
        if (!folded) {
            Lay_Facet(corners, one_from_above);
        } else if (Beside(grid_.At(a), grid_.At(c), view_.eye) == Beside(grid_.At(a), grid_.At(c), grid_.At(b))) {
            Lay_Facet(std::array{a, c, d}, other_from_above);
            Lay_Facet(std::array{a, b, c}, one_from_above);
        } else {
            Lay_Facet(std::array{a, b, c}, one_from_above);
            Lay_Facet(std::array{a, c, d}, other_from_above);
        }
        if (!folded) Lay_Edges(i, k, true);
        Lay_Edges(i, k, false);
    }

    template <std::size_t count>
    void Lay_Facet(const std::array<std::size_t, count>& corners, bool from_above) {
        if (view_.mode == Render_Mode::wireframe) return;
        Facet_Pile::Corners places{};
        for (std::size_t k = 0; k < count; ++k) places[k] = Place(corners[k]);
        pile_.Lay(places, count, Facet_Colour(corners, from_above));
    }

    bool From_Above(std::size_t a, std::size_t b, std::size_t c) const {
        return Dot(Facing(grid_.At(a), grid_.At(b), grid_.At(c)), Minus(view_.eye, grid_.At(a))) > 0;
    }
    // On which side of an upright plane a place lies.
    static bool Beside(const Vec3& from, const Vec3& to, const Vec3& place) {
        return (to[0] - from[0]) * (place[2] - from[2]) > (to[2] - from[2]) * (place[0] - from[0]);
    }
    Number Place(std::size_t number) const { return first_ + static_cast<Number>(number); }

    Both_Sides Lit_On_Both(const Vec3& upward, const Vec3& at) const {
        return {Lit(upward, at, view_.light), Lit(Opposite(upward), at, view_.light)};
    }

    template <std::size_t count>
    Colour Facet_Colour(const std::array<std::size_t, count>& corners, bool from_above) const {
        if (view_.mode <= Render_Mode::unlit) return view_.mode == Render_Mode::unlit ? material_ : view_.background;
        const auto share = [from_above](const Both_Sides& lit) { return from_above ? lit.upper : lit.lower; };
        if (view_.mode == Render_Mode::flat) {
            const auto at = [&](std::size_t k) -> const Vec3& { return grid_.At(corners[k]); };
            const Vec3 upward = Cross(Minus(at(2), at(0)), Minus(at(1), at(count == 4 ? 3 : 0)));  // the sum over both triangles
            return Lit_Colour(material_, share(Lit_On_Both(upward, at(0))));
        }
        float sum = 0;
        for (const std::size_t corner : corners) sum += share(shares_[corner]);
        return Lit_Colour(material_, sum / count);
    }

    // The lines on the far sides of a cell, or those on its near sides, which are left to the next cell if there is one.
    void Lay_Edges(std::size_t i, std::size_t k, bool far) {
        if (view_.mode > Render_Mode::unlit) return;
        const auto line = [&](bool is_far, bool has_next, std::size_t from, std::size_t to) {
            if (is_far == far && (is_far || !has_next)) pile_.Lay({Place(from), Place(to)}, 2, view_.edge_colour);
        };
        const std::size_t here = grid_.Number(i, k), right = here + 1, beyond = grid_.Number(i, k + 1), across = beyond + 1;
        if (column_lines_.Has(i)) line(columns_.Last_Is_Farther(i), i > 0 && grid_.Has_Facet(i - 1, k), here, beyond);
        if (column_lines_.Has(i + 1)) line(columns_.Next_Is_Farther(i), grid_.Has_Facet(i + 1, k), right, across);
        if (row_lines_.Has(k)) line(rows_.Last_Is_Farther(k), k > 0 && grid_.Has_Facet(i, k - 1), here, right);
        if (row_lines_.Has(k + 1)) line(rows_.Next_Is_Farther(k), grid_.Has_Facet(i, k + 1), beyond, across);
    }

    const Sheet_Grid grid_;
    const W3d_View& view_;
    Facet_Pile& pile_;
    const Colour material_;
    const Number first_;  // place of the sheet's first vertex
    const Cells_Of_Axis columns_, rows_;
    const Edge_Lines column_lines_, row_lines_;
    std::vector<Both_Sides> shares_;  // at the vertices, in the smooth modes
};

}  // namespace

void Lay_Sheet(const W3d& solid, const W3d_Sheet& sheet, const W3d_View& view, Facet_Pile& pile) {
    Sheet_Layer(solid, sheet, view, pile).Lay();
}

}  // namespace vntl
