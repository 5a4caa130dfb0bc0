// A window's picture, its marks included, as a file.
#pragma once

#include <string>

#include "base/status.hpp"
#include "toolkit/hardcopy.hpp"

namespace vntl {

// Has `draw` draw to `file`; its ending chooses the format: .png .bmp .jpg .pcx in pixels, .svg .pdf .ps .dxf .cgm .emf .wmf as drawing on
// a page of `width` x `height` pixels of 1/96 inch. Fails, with the name in the message, on another ending, a size out of range, and a file
// that cannot be written; the file is then as it was.
Status Export_Picture(const Draw_Routine& draw, const std::string& file, int width, int height);

// The picture of the window in front, in its size.
Status Export_Window(const std::string& file);

}  // namespace vntl
