// What a user can choose of a picture in a file.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "drawing/device.hpp"

namespace vntl {

enum class Hardcopy_Driver { postscript = 2, svg = 3, pdf = 4, bit_image = 6, dxf = 8, cgm = 9, printer = 10, metafile = 11 };

// What becomes of the colours of a picture.
enum class Colour_Change { none = 1, exchange, greys, black };  // black and white exchanged; shades of grey; black lines on white
// What keeps its colour; the rest is drawn in shades of grey.
enum class Colour_Use { all = 1, lines, areas };  // texts and markers count as lines

// Of a bit image: 24 bits a pixel, or a palette.
enum class Image_Colours { true_colour = 1, palette_256, palette_16, black_white };
enum class Image_Format { bmp = 1, pcx, png, jpeg };

// Of a drawing for CAD programs.
enum class Dxf_Colours { true_colour = 1, index, black };
inline constexpr int dxf_solid = 5;  // fill density: 1 to 4 lines 20, 12, 7 or 4 line units apart, 5 solid

inline constexpr double pixels_an_inch = 96, points_a_pixel = 72 / pixels_an_inch;

struct Hardcopy_Options {
    // Pixels of a bit image, 1/96 inch of the page of a drawing.
    double width = 1200, height = 800;
    Colour_Change colours = Colour_Change::none;

    // PostScript
    int stroke_frequency = 500;  // points of a path after which it is stroked: printers have a limit
    Colour_Use use_colour = Colour_Use::all;
    bool end_mark = false;                     // a Ctrl/D at the end, as serial printers want it
    double paper_width = 0, paper_height = 0;  // points of the sheet in whose middle the page stands, 0: none but the page

    // bit images
    Image_Format format = Image_Format::png;  // of a file whose name does not tell it
    Image_Colours image_colours = Image_Colours::true_colour;
    int dots_per_inch = 96;
    int quality = 92;  // of JPEG, 1 to 100

    // DXF: place of the lower left corner, in the units of the drawing, which are millimetres
    double x_pos = 0, y_pos = 0;
    int fill_density = dxf_solid;
    Dxf_Colours dxf_colours = Dxf_Colours::true_colour;

    // CGM: names of the four fonts, in their order
    std::array<std::string, 4> font_names = {"Courier", "Helvetica", "Times", "Symbol"};

    // metafiles
    bool old_metafile = false;  // a WMF of 16 bits in place of an EMF
    bool old_systems = false;   // only what Windows 9x and Me draw
};

using Draw_Routine = std::function<void(Device&)>;

}  // namespace vntl
