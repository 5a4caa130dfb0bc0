#include "toolkit/qt/solid_area.hpp"

#include <QOpenGLBuffer>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLVertexArrayObject>
#include <QVector3D>
#include <QVector4D>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "drawing/device.hpp"
#include "solid/w3d_draw.hpp"
#include "solid/w3d_mesh.hpp"

namespace vntl {

namespace {

// What a mode shows of the sheets. Rods and texts show their material in every mode, lit or not as the sheets are.
struct Look {
    bool faces;
    bool hidden;  // the faces are of the background's colour
    Shading shading;
    bool edges;
};

constexpr std::array<Look, 6> looks = {{
    {false, false, Shading::none, true},
    {true, true, Shading::none, true},
    {true, false, Shading::none, true},
    {true, false, Shading::plane, false},
    {true, false, Shading::corners, false},
    {true, false, Shading::pixels, false},
}};

QVector4D Paint(Colour c, float thickness) {
    return {static_cast<float>(Red(c)) / 255, static_cast<float>(Green(c)) / 255, static_cast<float>(Blue(c)) / 255, thickness};
}

QOpenGLExtraFunctions& GL() { return *QOpenGLContext::currentContext()->extraFunctions(); }

// The triangles and lines of a solid on the graphics card.
class Card_Mesh {
public:
    // False: the card has no room for them.
    bool Put(const W3d_Mesh& mesh) {
        faces_ = mesh.triangles.size(), sheet_faces_ = mesh.sheet_triangles, edges_ = mesh.edges.size();
        for (int flags = 0; flags < 8 && GL().glGetError() != GL_NO_ERROR; ++flags) continue;  // of former calls
        array_.create();
        array_.bind();
        Put_Corners(mesh.vertices);
        Put_Numbers(mesh);
        array_.release();
        return GL().glGetError() != GL_OUT_OF_MEMORY;
    }

    void Bind() { array_.bind(); }
    void Release() { array_.release(); }
    void Sheet_Faces() const { Draw(GL_TRIANGLES, 0, sheet_faces_); }
    void Other_Faces() const { Draw(GL_TRIANGLES, sheet_faces_, faces_ - sheet_faces_); }
    void Edges() const { Draw(GL_LINES, faces_, edges_); }

private:
    void Put_Corners(const std::vector<W3d_Vertex>& corners) {
        constexpr int stride = sizeof(W3d_Vertex);
        const auto from = [](std::size_t offset) { return reinterpret_cast<const void*>(offset); };
        corners_.create();
        corners_.bind();
        GL().glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(corners.size() * stride), corners.data(), GL_STATIC_DRAW);
        GL().glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride, from(offsetof(W3d_Vertex, at)));
        GL().glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, stride, from(offsetof(W3d_Vertex, normal)));
        GL().glVertexAttribIPointer(2, 1, GL_UNSIGNED_INT, stride, from(offsetof(W3d_Vertex, colour)));
        for (const GLuint attribute : {0u, 1u, 2u}) GL().glEnableVertexAttribArray(attribute);
    }

    // Those of the lines behind those of the triangles.
    void Put_Numbers(const W3d_Mesh& mesh) {
        const auto faces = static_cast<GLsizeiptr>(Bytes(faces_)), edges = static_cast<GLsizeiptr>(Bytes(edges_));
        numbers_.create();
        numbers_.bind();
        GL().glBufferData(GL_ELEMENT_ARRAY_BUFFER, faces + edges, nullptr, GL_STATIC_DRAW);
        GL().glBufferSubData(GL_ELEMENT_ARRAY_BUFFER, 0, faces, mesh.triangles.data());
        GL().glBufferSubData(GL_ELEMENT_ARRAY_BUFFER, faces, edges, mesh.edges.data());
    }

    static void Draw(GLenum kind, std::size_t first, std::size_t count) {
        if (count > 0) GL().glDrawElements(kind, static_cast<GLsizei>(count), GL_UNSIGNED_INT, reinterpret_cast<const void*>(Bytes(first)));
    }

    static std::size_t Bytes(std::size_t numbers) { return numbers * sizeof(std::uint32_t); }

    QOpenGLVertexArrayObject array_;
    QOpenGLBuffer corners_{QOpenGLBuffer::VertexBuffer}, numbers_{QOpenGLBuffer::IndexBuffer};
    std::size_t faces_ = 0, sheet_faces_ = 0, edges_ = 0;  // numbers of corners
};

}  // namespace

// All that lies on the graphics card. It is made, used and freed while the context is current.
class Solid_Area::Card {
public:
    bool Link() { return Link_Solid_Program(program_); }
    void Forget_Solid() {
        whole_.reset();
        thinned_.reset();
    }

    // False: the card has no room for the solid.
    bool Draw(const W3d& solid, const W3d_View& view, std::size_t most, QSize pixels) {
        const bool thin = solid.Facets() > most;
        std::optional<Card_Mesh>& mesh = thin ? thinned_ : whole_;
        if (!mesh && !mesh.emplace().Put(thin ? Mesh_Of(Thinned(solid, most)) : Mesh_Of(solid))) return false;
        program_.bind();
        mesh->Bind();
        Set_View(view, pixels);
        Draw(*mesh, view, looks[static_cast<std::size_t>(view.mode)]);
        mesh->Release();
        program_.release();
        return true;
    }

private:
    void Set_View(const W3d_View& view, QSize pixels) {
        const W3d_Camera camera(view.eye, pixels.width(), pixels.height());
        GL().glUniformMatrix4fv(program_.uniformLocation("camera"), 1, GL_FALSE, camera.Matrix().data());
        program_.setUniformValue("light", QVector3D(view.light[0], view.light[1], view.light[2]));
        program_.setUniformValue("ambient", ambient_light);
        GL().glLineWidth(static_cast<float>(Line_Unit(pixels.width(), pixels.height())));
    }

    void Draw(const Card_Mesh& mesh, const W3d_View& view, const Look& look) {
        QOpenGLExtraFunctions& gl = GL();
        gl.glEnable(GL_DEPTH_TEST);
        gl.glDepthFunc(GL_LEQUAL);
        // Under lines faces give way a little; without lines that would let the far side of a ridge show before the near one.
        gl.glPolygonOffset(1, 1);
        look.edges ? gl.glEnable(GL_POLYGON_OFFSET_FILL) : gl.glDisable(GL_POLYGON_OFFSET_FILL);
        program_.setUniformValue("shading", static_cast<int>(look.shading));
        program_.setUniformValue("paint", Paint(0, 0));
        mesh.Other_Faces();
        if (look.hidden) program_.setUniformValue("paint", Paint(view.background, 1));
        if (look.faces) mesh.Sheet_Faces();
        gl.glDisable(GL_POLYGON_OFFSET_FILL);
        program_.setUniformValue("paint", Paint(view.edge_colour, 1));
        if (look.edges) mesh.Edges();
    }

    QOpenGLShaderProgram program_;
    std::optional<Card_Mesh> whole_, thinned_;
};

Solid_Area::Solid_Area(int window, OpenGL_Kind kind, std::function<void()> failed)
    : messages_(*this, window, 1), failed_(std::move(failed)), most_turning_(kind == OpenGL_Kind::card ? 1'000'000 : max_drawn_facets) {
    setFormat(Solid_Format(kind));
    setAccessibleName("Model");
}

Solid_Area::~Solid_Area() {
    if (context() != nullptr) context()->disconnect(this);
    Free_Card();
}

void Solid_Area::Put(std::shared_ptr<const W3d> solid) {
    solid_ = std::move(solid);
    if (card_ != nullptr) {
        makeCurrent();
        card_->Forget_Solid();
        doneCurrent();
    }
    update();
}

void Solid_Area::Show(const W3d_View& view, bool turning) {
    view_ = view;
    turning_ = turning;
    update();
}

bool Solid_Area::event(QEvent* event) {
    if (messages_.Tell(*event)) return true;
    const bool served = QOpenGLWidget::event(event);
    if (event->type() == QEvent::Paint && !isValid()) Fail();
    return served;
}

// Comes again, with a new context, whenever the old one has gone.
void Solid_Area::initializeGL() {
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { Free_Card(); });
    card_ = std::make_unique<Card>();
    if (!card_->Link()) Fail();
}

void Solid_Area::paintGL() {
    const QVector4D background = Paint(view_.background, 1);
    GL().glClearColor(background.x(), background.y(), background.z(), 1);
    GL().glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (solid_ == nullptr || has_failed_) return;
    if (!card_->Draw(*solid_, view_, turning_ ? most_turning_ : solid_->Facets(), Pixels_Of(*this))) Fail();
}

void Solid_Area::Free_Card() {
    if (card_ == nullptr) return;
    makeCurrent();
    card_.reset();
    doneCurrent();
}

void Solid_Area::Fail() {
    if (!std::exchange(has_failed_, true)) failed_();
}

}  // namespace vntl
