// Paper, and what prints on it.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/status.hpp"
#include "drawing/device.hpp"
#include "toolkit/hardcopy.hpp"

namespace vntl {

struct Paper {
    const char* name;
    double width, height;  // mm, upright
};
std::span<const Paper> Papers();
std::size_t Usual_Paper();  // its place in `Papers`: A4, or Letter where the system has the measures of the United States

struct Page_Setup {
    std::string printer;  // its name; empty: the page goes into `file`, as a PDF
    std::string file;
    std::size_t paper = 0;  // place in `Papers`
    bool landscape = true;
    double left = 10, right = 10, top = 10, bottom = 10;  // margins, mm
    bool centre = true;                                   // between the margins; else in the upper left corner
    double scale = 100;                                   // per cent of the largest picture that fits between the margins
    int copies = 1;
};

// Places on the sheet, mm from its upper left corner, y downward: between the margins, where alone is printed, and the picture, which may
// be larger. `aspect`: width of the picture over its height. Empty between margins that leave nothing.
Rect Inside_Margins(const Page_Setup& setup);
Rect Picture_On_Sheet(const Page_Setup& setup, double aspect);

std::vector<std::string> Printer_Names();  // the usual one first; none where the system knows no printer

// Fails, with the name of printer or file in the message; a file is then as it was.
Status Print_Page(const Page_Setup& setup, double aspect, const Draw_Routine& draw);

}  // namespace vntl
