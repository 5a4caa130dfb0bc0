// Plays metafiles record by record, for tests: what a viewer would show, with the state of objects, units and text that it would keep. What
// is wrong in a file (sizes, totals, objects, bounds) is a failure of the test.
#pragma once

#include <string>
#include <vector>

#include "toolkit/device.hpp"

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

Drawing Play_Emf(const std::string& bytes);
// Of the letters of the font Symbol it knows a handful.
Drawing Play_Wmf(const std::string& bytes);

}  // namespace vntl
