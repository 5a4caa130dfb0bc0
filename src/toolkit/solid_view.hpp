// Solids in a window of kind `solid`: the graphics card draws them where there is OpenGL 3.3, else they are projected into its bitmap.
//
// The operations act on the window selected last.
#pragma once

#include <memory>

#include "solid/w3d_mesh.hpp"
#include "solid/w3d_view.hpp"

namespace vntl {

bool W3dOpenGL();  // the window is drawn by OpenGL; where it could not be had, or its context was lost for good, it is not

// The solid that the window shows from now on. It may be given again whenever it has changed.
void W3dPut(std::shared_ptr<const W3d> solid);

// Shows it. While the user turns it (`turning`), one of more than a million facets, or of `max_drawn_facets` where the processor draws,
// shows every n-th row and column.
void W3dShow(const W3d_View& view, bool turning = false);

}  // namespace vntl
