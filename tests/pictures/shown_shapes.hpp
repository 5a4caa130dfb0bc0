// What a viewer shows of a drawing, and what it should show of a recorded one.
#pragma once

#include <string>
#include <vector>

#include "drawing/recording.hpp"

namespace vntl {

// In points from the lower left corner of the page.
struct Shape {
    enum Kind { line, area, ellipse, text, image } kind = line;
    std::vector<Point> points;  // of an ellipse or an image two corners; of a text its start on the base line
    Colour colour = 0;
    double size = 0;  // of a pen, or an em
    std::u32string words = {};
    std::string face = {};
    double angle = 0, advance = 0;
    int columns = 0, rows = 0;
    std::vector<Colour> colours = {};  // the lowest row first
    int style = 0;                     // of a text: 1 bold, 2 italic, 4 underlined
};

struct Drawing {
    double width = 0, height = 0;
    std::vector<Shape> shapes;
    std::size_t most_corners = 0;
};

// What should be shown for the items of a recording, but for its texts and cells.
std::vector<Shape> Shapes_Of(const Recording_Device& device);
void Same_Shapes(const std::vector<Shape>& shown, const std::vector<Shape>& expected, double exact);

// Shapes of every kind, in more colours than a table of objects holds. Those of WRGB(5, 5, 5) do not show.
void Draw_Shapes(Device& d);

}  // namespace vntl
