#include "solid/w3d_mesh.hpp"

#include <numbers>

#include "solid/letters.hpp"
#include "solid/sheet_grid.hpp"
#include "solid/w3d_view.hpp"

namespace vntl {

namespace {

constexpr float wall_share = 0.5f;  // of its colour that a wall of a letter has: without light, too, letters stand out from their sides

class Mesh_Builder {
public:
    explicit Mesh_Builder(const W3d& solid) : solid_(solid) {}

    W3d_Mesh Build() {
        for (const W3d_Sheet& sheet : solid_.sheets)
            if (sheet.Facets() > 0) Sheet(sheet);
        mesh_.sheet_triangles = mesh_.triangles.size();
        for (const W3d_Rod& rod : solid_.rods) Rod(rod);
        for (const W3d_Text& text : solid_.texts) Text(text);
        return std::move(mesh_);
    }

private:
    using Number = std::uint32_t;

    void Sheet(const W3d_Sheet& sheet) {
        const Sheet_Grid grid(solid_, sheet);
        const Number first = Next();
        const Colour colour = solid_.Material(sheet.material);
        mesh_.vertices.reserve(mesh_.vertices.size() + grid.Columns() * grid.Rows());
        for (std::size_t k = 0; k < grid.Rows(); ++k)
            for (std::size_t i = 0; i < grid.Columns(); ++i)
                mesh_.vertices.push_back(Finite(grid.At(i, k)) ? W3d_Vertex{grid.At(i, k), grid.Normal(i, k), colour} : W3d_Vertex{});
        mesh_.triangles.reserve(mesh_.triangles.size() + 6 * sheet.Facets());
        for (std::size_t k = 0; k + 1 < grid.Rows(); ++k) {
            for (std::size_t i = 0; i + 1 < grid.Columns(); ++i) {
                if (!grid.Has_Facet(i, k)) continue;
                const auto corners = grid.Corners(i, k);
                for (const std::size_t corner : {0, 1, 2, 0, 2, 3}) mesh_.triangles.push_back(first + static_cast<Number>(corners[corner]));
            }
        }
        Edges(grid, first);
    }

    // A line stands where there is a facet on either side of it.
    void Edges(const Sheet_Grid& grid, Number first) {
        const Edge_Lines columns(grid.Columns()), rows(grid.Rows());
        const auto line = [&](std::size_t from, std::size_t to) {
            mesh_.edges.push_back(first + static_cast<Number>(from));
            mesh_.edges.push_back(first + static_cast<Number>(to));
        };
        for (std::size_t k = 0; k < grid.Rows(); ++k) {
            for (std::size_t i = 0; i < grid.Columns(); ++i) {
                const bool here = grid.Has_Facet(i, k);
                if (rows.Has(k) && (here || (k > 0 && grid.Has_Facet(i, k - 1)))) line(grid.Number(i, k), grid.Number(i + 1, k));
                if (columns.Has(i) && (here || (i > 0 && grid.Has_Facet(i - 1, k)))) line(grid.Number(i, k), grid.Number(i, k + 1));
            }
        }
    }

    // Rings around the line between its ends, and a disc at each end.
    void Rod(const W3d_Rod& rod) {
        const Vec3 way = Minus(rod.to, rod.from), axis = Unit(way, {0, 1, 0});
        const Vec3 beside = std::fabs(axis[1]) < 0.9f ? Vec3{0, 1, 0} : Vec3{1, 0, 0};
        const Vec3 u = Unit(Cross(axis, beside), {1, 0, 0}), v = Cross(axis, u);
        const float length = Length(way), slant = length > 0 ? (rod.radius_from - rod.radius_to) / length : 0;
        const auto outward = [&](int side) {
            const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(side) / static_cast<float>(rod.sides);
            return Moved(Moved({}, std::cos(angle), u), std::sin(angle), v);
        };
        const auto ring = [&](float share, const auto& normal) {
            const Vec3 middle = Moved(rod.from, share, way);
            const float radius = rod.radius_from + share * (rod.radius_to - rod.radius_from);
            for (int side = 0; side < rod.sides; ++side) Vertex(Moved(middle, radius, outward(side)), normal(outward(side)), rod.material);
        };
        const Number first = Next(), sides = static_cast<Number>(rod.sides), sections = static_cast<Number>(rod.sections);
        for (int section = 0; section <= rod.sections; ++section)
            ring(static_cast<float>(section) / static_cast<float>(rod.sections),
                 [&](const Vec3& out) { return Unit(Moved(out, slant, axis), out); });
        for (Number section = 0; section < sections; ++section)
            for (Number side = 0; side < sides; ++side) {
                const Number here = first + section * sides, beyond = here + sides, next = (side + 1) % sides;
                Quad(here + side, here + next, beyond + next, beyond + side);
            }
        for (const float end : {0.0f, 1.0f}) {
            const Number disc = Next();
            ring(end, [&](const Vec3&) { return end == 0 ? Opposite(axis) : axis; });
            for (Number side = 1; side + 1 < sides; ++side) Triangle(disc, disc + side, disc + side + 1);
        }
    }

    // Letters have a front, a back, and walls between both. They fill the height of their cell, and its width as letters do. Half of their
    // depth lies on either side of their plane.
    void Text(const W3d_Text& text) {
        const Text_Style style{.font = text.font, .width = 1, .height = 1};  // both in em
        const double along = Em_Of_Cell(text.width, 1e9), upward = text.height;
        const double start = -0.5 * Extent_Of_Text(text.text, style);
        const Vec3 back = Cross(text.along, text.upward), front = Opposite(back);
        const auto flat = [&](double x, double y) {
            return Moved(Moved({}, static_cast<float>(along * x), text.along), static_cast<float>(upward * y), text.upward);
        };
        const auto place = [&](const Point& at, float depth) { return Moved(Moved(text.at, 1, flat(start + at.x, at.y)), depth, back); };
        for (Outline& shape : Outlines_Of_Text(text.text, style)) {
            const Outline letter = Directed(std::move(shape));
            const std::vector<Flat_Triangle> triangles = Triangles_Of(letter);
            for (const float side : {-1.0f, 1.0f})
                for (const Flat_Triangle& triangle : triangles) {
                    const Number first = Next();
                    for (const Point& corner : triangle)
                        Vertex(place(corner, 0.5f * side * text.depth), side < 0 ? front : back, text.material);
                    Triangle(first, first + 1, first + 2);
                }
            for (const std::vector<Point>& contour : letter)
                for (std::size_t i = 0; i < contour.size(); ++i) {
                    const Point &from = contour[i], &to = contour[(i + 1) % contour.size()];
                    const Vec3 outward = Unit(Cross(flat(to.x - from.x, to.y - from.y), back), text.upward);
                    const Number first = Next();
                    for (const auto& [at, side] : {std::pair(&from, -0.5f), {&to, -0.5f}, {&to, 0.5f}, {&from, 0.5f}})
                        Vertex(place(*at, side * text.depth), outward, text.material, wall_share);
                    Quad(first, first + 1, first + 2, first + 3);
                }
        }
    }

    Number Next() const { return static_cast<Number>(mesh_.vertices.size()); }
    void Vertex(const Vec3& at, const Vec3& normal, int material, float share = 1) {
        mesh_.vertices.push_back({at, normal, Lit_Colour(solid_.Material(material), share)});
    }
    void Quad(Number a, Number b, Number c, Number d) {
        Triangle(a, b, c);
        Triangle(a, c, d);
    }
    // Turned so that it faces to where its normals point.
    void Triangle(Number a, Number b, Number c) {
        const W3d_Vertex &p = mesh_.vertices[a], &q = mesh_.vertices[b], &r = mesh_.vertices[c];
        const Vec3 facing = Facing(p.at, q.at, r.at);
        const bool outward = Dot(facing, p.normal) + Dot(facing, q.normal) + Dot(facing, r.normal) >= 0;
        mesh_.triangles.insert(mesh_.triangles.end(), {a, outward ? b : c, outward ? c : b});
    }

    const W3d& solid_;
    W3d_Mesh mesh_;
};

}  // namespace

W3d_Mesh Mesh_Of(const W3d& solid) { return Mesh_Builder(solid).Build(); }

}  // namespace vntl
