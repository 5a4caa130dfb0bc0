// What runs on the graphics card to draw a solid.
#pragma once

#include <QOpenGLShaderProgram>
#include <QSurfaceFormat>

namespace vntl {

// How a face gets its colour from that of its material: as it is, or lit as one plane, at its corners, at every pixel.
enum class Shading { none, plane, corners, pixels };

// What draws: a graphics card, or the processor in its place, which takes many times as long.
enum class OpenGL_Kind { none, processor, card };

OpenGL_Kind Find_OpenGL();  // on this display; one that does not take the program is none

// OpenGL 3.3, core profile, with depth and, by a card, four samples a pixel.
QSurfaceFormat Solid_Format(OpenGL_Kind kind);

// Attributes of a corner: 0 its place, 1 its normal, 2 the colour of its material, a whole number. Uniforms: `camera`, `light` and
// `ambient` as in solid/w3d_view, `shading`, and `paint`, a colour laid over all, as thick as its fourth component says.
bool Link_Solid_Program(QOpenGLShaderProgram& program);

}  // namespace vntl
