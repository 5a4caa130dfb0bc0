// What runs on the graphics card to draw a solid.
#pragma once

#include <QOpenGLShaderProgram>
#include <QSurfaceFormat>

namespace vntl {

// How a face gets its colour from that of its material: as it is, or lit as one plane, at its corners, at every pixel.
enum class Shading { none, plane, corners, pixels };

QSurfaceFormat Solid_Format();  // OpenGL 3.3, core profile, with depth and four samples a pixel

// Attributes of a corner: 0 its place, 1 its normal, 2 the colour of its material, a whole number. Uniforms: `camera`, `light` and
// `ambient` as in solid/w3d_view, `shading`, and `paint`, a colour laid over all, as thick as its fourth component says.
bool Link_Solid_Program(QOpenGLShaderProgram& program);

bool OpenGL_Works();  // on this display, and takes the program

}  // namespace vntl
