// A window's picture, its marks included, as a file.
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"
#include "toolkit/hardcopy.hpp"

namespace vntl {

struct Session;

inline constexpr double mm_an_inch = 25.4;

// The size of a picture: pixels, which are 1/96 inch of a drawing, or millimetres, of which a bit image makes pixels by its dots an inch.
struct Picture_Size {
    double width = 1200, height = 800;
    bool millimetres = false;
    int dots_per_inch = 96;  // of a bit image

    void Put(Hardcopy_Driver driver, Hardcopy_Options& options) const;
};

Picture_Size Size_Of_Window();  // of the picture in the window selected last

// Fails, with the name in the message, where its ending is that of no picture.
Status Check_Picture_Name(const std::string& file);

// Has `draw` draw to `file`; its ending chooses the format: .png .bmp .jpg .pcx in pixels, .svg .pdf .ps .dxf .cgm .emf .wmf as drawing on
// a page of that size. Fails, with the name in the message, on another ending, a size out of range, and a file that cannot be written; the
// file is then as it was.
Status Export_Picture(const Draw_Routine& draw, const std::string& file, const Picture_Size& size);

// The picture of the window in front, in its size.
Status Export_Window(const std::string& file);

// The picture of the main window in a style, blank for the one that is on the screen. Fails, and leaves `draw`, on a style that cannot be
// read. The session must outlive what is drawn.
Status Picture_In_Style(const Session&, std::string_view style, Draw_Routine& draw);

}  // namespace vntl
