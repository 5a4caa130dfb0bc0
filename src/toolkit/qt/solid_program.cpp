#include "toolkit/qt/solid_program.hpp"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <algorithm>
#include <iterator>
#include <memory>

namespace vntl {

namespace {

constexpr const char* version = "#version 330 core\n";

// The share of the light is the `Lit` of solid/w3d_view, word for word.
constexpr const char* lit = R"(
uniform vec3 light;
uniform float ambient;

float Lit(vec3 normal, vec3 at) {
    vec3 toward = normalize(light - at);
    float size = length(normal);
    float cosine = size > 0.0 ? dot(normal / size, toward) : 1.0;
    float turned = 0.5 * (1.0 + clamp(cosine, -1.0, 1.0));
    return ambient + (1.0 - ambient) * turned * turned;
}
)";

// A corner is lit for either side that may be seen of it.
constexpr const char* corner_stage = R"(
layout(location = 0) in vec3 corner;
layout(location = 1) in vec3 corner_normal;
layout(location = 2) in uint corner_colour;
uniform mat4 camera;
out vec3 at, normal, material;
out vec2 shares;

void main() {
    at = corner;
    normal = corner_normal;
    material = vec3(corner_colour & 255u, (corner_colour >> 8) & 255u, (corner_colour >> 16) & 255u) / 255.0;
    shares = vec2(Lit(normal, at), Lit(-normal, at));
    gl_Position = camera * vec4(corner, 1.0);
}
)";

// The plane of a face is that of the places of its pixels. Numbers of the shadings: those of `Shading`.
constexpr const char* pixel_stage = R"(
in vec3 at, normal, material;
in vec2 shares;
uniform int shading;
uniform vec4 paint;
out vec4 colour;

void main() {
    vec3 plane = cross(dFdy(at), dFdx(at));
    float share = 1.0;
    if (shading == 1) share = Lit(plane, at);
    if (shading == 2) share = gl_FrontFacing ? shares.x : shares.y;
    if (shading == 3) share = Lit(gl_FrontFacing ? normal : -normal, at);
    colour = vec4(mix(material * share, paint.rgb, paint.a), 1.0);
}
)";

bool Compile(QOpenGLShaderProgram& program, QOpenGLShader::ShaderType stage, const char* text) {
    return program.addShaderFromSourceCode(stage, QByteArray(version) + lit + text);
}

// As such implementations call themselves.
bool Draws_By_Processor(const QString& renderer) {
    constexpr const char* names[] = {"llvmpipe", "softpipe", "swiftshader", "software"};
    return std::any_of(std::begin(names), std::end(names), [&](const char* name) { return renderer.contains(name, Qt::CaseInsensitive); });
}

}  // namespace

QSurfaceFormat Solid_Format(OpenGL_Kind kind) {
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setOption(QSurfaceFormat::DeprecatedFunctions);  // lines of more than a pixel
    format.setDepthBufferSize(24);
    format.setSamples(kind == OpenGL_Kind::card ? 4 : 0);
    return format;
}

bool Link_Solid_Program(QOpenGLShaderProgram& program) {
    return Compile(program, QOpenGLShader::Vertex, corner_stage) && Compile(program, QOpenGLShader::Fragment, pixel_stage) &&
           program.link();
}

OpenGL_Kind Find_OpenGL() {
    if (QGuiApplication::platformName() == "offscreen") return OpenGL_Kind::none;  // nobody sees a window there
    QOpenGLContext context;
    context.setFormat(Solid_Format(OpenGL_Kind::processor));
    if (!context.create() || context.isOpenGLES() || context.format().version() < qMakePair(3, 3)) return OpenGL_Kind::none;
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface)) return OpenGL_Kind::none;
    if (!Link_Solid_Program(*std::make_unique<QOpenGLShaderProgram>())) return OpenGL_Kind::none;  // gone before its context
    const GLubyte* name = context.functions()->glGetString(GL_RENDERER);
    return Draws_By_Processor(name == nullptr ? "" : reinterpret_cast<const char*>(name)) ? OpenGL_Kind::processor : OpenGL_Kind::card;
}

}  // namespace vntl
