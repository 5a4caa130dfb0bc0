// The present picture, its marks included, as a file.
#pragma once

#include <string>

#include "base/ask.hpp"
#include "base/status.hpp"

namespace vntl {

struct Session;

// Draws the present picture to `file`; its ending chooses the format: .png .bmp .jpg in pixels, .svg .pdf .ps as drawing on a page of
// `width` x `height` pixels of 1/96 inch. Fails, with the name in the message, on another ending, a size out of range, and a file
// that cannot be written; the file is then as it was.
Status Export_Picture(Session&, const std::string& file, int width, int height);

// "Save Graphic into file...": the user chooses the name; the picture has the size of the window.
Status Export_Plot(Session&, Ask&);

}  // namespace vntl
