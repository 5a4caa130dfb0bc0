// A rod or a text lies beside, above or below a sheet: a plane stands between both, and the one on the side of the eye is laid later. Of
// rods and texts the farther one is laid first.
#include "solid/w3d_draw.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "solid/facet_pile.hpp"
#include "solid/sheet_grid.hpp"
#include "solid/sheet_layer.hpp"
#include "solid/w3d_mesh.hpp"

namespace vntl {

namespace {

constexpr float beside_tolerance = 1e-3f;  // of a sheet's extent: what reaches no farther into it lies beside it

struct Box {
    Vec3 least, most;

    explicit Box(const Vec3& at) : least(at), most(at) {}
    void Hold(const Vec3& at) {
        for (std::size_t k = 0; k < 3; ++k) least[k] = std::min(least[k], at[k]), most[k] = std::max(most[k], at[k]);
    }
    Vec3 Middle() const { return Moved(least, 0.5f, Minus(most, least)); }
};

struct Placed_Sheet {
    const W3d_Sheet* sheet;
    Box box;
    float distance;  // on the floor, from below the eye to its middle
};

Placed_Sheet Placed(const W3d& solid, const W3d_Sheet& sheet, const Vec3& eye) {
    const Sheet_Grid grid(solid, sheet);
    Box box({grid.At(0, 0)[0], std::numeric_limits<float>::infinity(), grid.At(0, 0)[2]});
    box.most[1] = -box.least[1];
    for (std::size_t number = 0; number < grid.Columns() * grid.Rows(); ++number)
        if (Finite(grid.At(number))) box.Hold(grid.At(number));
    const Vec3 middle = box.Middle();
    return {&sheet, box, std::hypot(middle[0] - eye[0], middle[2] - eye[2])};
}

template <class Thing>
void Sort_Far_To_Near(std::vector<Thing>& things) {
    std::stable_sort(things.begin(), things.end(), [](const Thing& a, const Thing& b) { return a.distance > b.distance; });
}

// Whether nothing of the sheet can hide the body from the eye. One that a plane does not part from the sheet is shown.
bool Before(const Box& body, const Box& sheet, const Vec3& eye) {
    bool parted = false;
    for (std::size_t k = 0; k < 3; ++k) {
        const float tolerance = beside_tolerance * (sheet.most[k] - sheet.least[k]);
        const bool below = body.most[k] <= sheet.least[k] + tolerance, above = body.least[k] >= sheet.most[k] - tolerance;
        if ((below && eye[k] <= sheet.least[k]) || (above && eye[k] >= sheet.most[k])) return true;
        parted = parted || below || above;
    }
    return !parted;
}

// A rod or a text, by its triangles alone.
struct Body {
    W3d_Mesh mesh;
    Box box;
    Vec3 face{};  // a side of it whose triangles lie before all others that are seen from there
    float distance = 0;
};

// The thickness of a rod, which may stand at the border of a sheet, has no part in its box.
Body Body_Of(const W3d_Rod& rod, const W3d& solid) {
    W3d one;
    one.materials = solid.materials;
    one.rods = {rod};
    Body body{Mesh_Of(one), Box(rod.from)};
    body.box.Hold(rod.to);
    return body;
}

Body Body_Of(const W3d_Text& text, const W3d& solid) {
    W3d one;
    one.materials = solid.materials;
    one.texts = {text};
    Body body{Mesh_Of(one), Box(text.at), Cross(text.along, text.upward)};
    for (const W3d_Vertex& vertex : body.mesh.vertices) body.box.Hold(vertex.at);
    return body;
}

class Solid_Painter {
public:
    Solid_Painter(const W3d& solid, const W3d_View& view, Device& device)
        : solid_(solid), view_(view), device_(device), camera_(view.eye, device.Width(), device.Height()) {}

    void Paint() {
        const std::vector<Body> bodies = Bodies();
        std::vector<Placed_Sheet> sheets;
        for (const W3d_Sheet& sheet : solid_.sheets)
            if (sheet.Facets() > 0) sheets.push_back(Placed(solid_, sheet, view_.eye));
        Sort_Far_To_Near(sheets);
        std::vector<std::vector<const Body*>> after(sheets.size() + 1);  // each body after the last sheet that it may hide
        for (const Body& body : bodies) {
            std::size_t sheet = sheets.size();
            while (sheet > 0 && !Before(body.box, sheets[sheet - 1].box, view_.eye)) --sheet;
            after[sheet].push_back(&body);
        }
        for (std::size_t k = 0; k <= sheets.size(); ++k) {
            if (k > 0) Lay_Sheet(solid_, *sheets[k - 1].sheet, view_, pile_);
            for (const Body* body : after[k]) Lay_Body(*body);
        }
        device_.Clear(view_.background);
        pile_.Draw(device_);
    }

private:
    std::vector<Body> Bodies() const {
        std::vector<Body> bodies;
        for (const W3d_Rod& rod : solid_.rods) bodies.push_back(Body_Of(rod, solid_));
        for (const W3d_Text& text : solid_.texts) bodies.push_back(Body_Of(text, solid_));
        for (Body& body : bodies) body.distance = Length(Minus(body.box.Middle(), view_.eye));
        Sort_Far_To_Near(bodies);
        return bodies;
    }

    // Triangles that face the eye, the farthest first.
    void Lay_Body(const Body& body) {
        struct Shown {
            float distance;
            std::size_t first;
        };
        std::vector<Shown> shown;
        const auto corner = [&](std::size_t k) -> const W3d_Vertex& { return body.mesh.vertices[body.mesh.triangles[k]]; };
        for (std::size_t t = 0; t < body.mesh.triangles.size(); t += 3) {
            const Vec3 &a = corner(t).at, &b = corner(t + 1).at, &c = corner(t + 2).at;
            if (Dot(Facing(a, b, c), Minus(view_.eye, a)) <= 0) continue;
            const Vec3 middle = Moved(Moved(a, 1 / 3.0f, Minus(b, a)), 1 / 3.0f, Minus(c, a));
            const bool on_face = std::fabs(Dot(corner(t).normal, body.face)) > 0.5f;
            shown.push_back({on_face ? 0 : Length(Minus(middle, view_.eye)), t});
        }
        Sort_Far_To_Near(shown);
        const Facet_Pile::Number first = pile_.Next();
        for (const W3d_Vertex& vertex : body.mesh.vertices) pile_.Place(vertex.at);
        for (const Shown& triangle : shown) {
            float share = 1;
            if (view_.mode >= Render_Mode::flat) {
                share = 0;
                for (std::size_t k = 0; k < 3; ++k) {
                    const W3d_Vertex& vertex = corner(triangle.first + k);
                    share += Lit(vertex.normal, vertex.at, view_.light) / 3;
                }
            }
            const std::uint32_t* const numbers = body.mesh.triangles.data() + triangle.first;
            pile_.Lay({first + numbers[0], first + numbers[1], first + numbers[2]}, 3, Lit_Colour(corner(triangle.first).colour, share));
        }
    }

    const W3d& solid_;
    const W3d_View& view_;
    Device& device_;
    W3d_Camera camera_;
    Facet_Pile pile_{camera_};
};

}  // namespace

void Draw_W3d(const W3d& solid, const W3d_View& view, Device& device) {
    if (solid.Facets() > max_drawn_facets)
        Solid_Painter(Thinned(solid, max_drawn_facets), view, device).Paint();
    else
        Solid_Painter(solid, view, device).Paint();
}

}  // namespace vntl
