// Which places of a page are hidden by what was laid over them, for drawings that are made from the front to the back: what nobody can see
// need not stand in a file.
//
// The page is a lattice of places 1/20 point apart (wider on a very large page). A shape is hidden when each of its places is covered, so
// that what is left out by mistake is thinner than the distance of two places.
#pragma once

#include <cstdint>
#include <vector>

#include "toolkit/device.hpp"

namespace vntl {

inline constexpr double finest_in_print = 1.0 / 20;  // points: nobody sees what is smaller

// A shape as places of the lattice about its middle: rows from the lowest one, each from `first` up to `end`.
struct Cover_Stamp {
    struct Row {
        int first, end;
    };
    int lowest = 0;
    std::vector<Row> rows;
    bool covers = false;  // it is filled, and hides what lies below
};

class Page_Cover {
public:
    Page_Cover(double width, double height);  // points

    Cover_Stamp Stamp_Of(const Marker_Style& style) const;

    // What lies outside `window` counts as hidden.
    void Set_Window(const Rect& window);

    bool Hides(const Cover_Stamp& stamp, Point at) const;
    void Lay(const Cover_Stamp& stamp, Point at);
    bool Hides_Line(Point a, Point b, double line_width) const;

private:
    using Word = std::uint64_t;
    static constexpr int word_bits = 64;
    static constexpr int tile = 64;  // places of a side

    int Place(double at) const { return static_cast<int>(std::lround(at * places_a_point_)); }
    bool Hides_Row(int y, int first, int end) const;
    void Lay_Row(int y, int first, int end);
    bool Hides_Tiles(int x1, int x2, int y1, int y2) const;

    double places_a_point_;
    int columns_, rows_;
    std::size_t words_;  // of a row
    std::vector<Word> bits_;
    std::vector<std::uint8_t> full_words_;   // of each tile, so many of its 64
    int x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;  // of the window
};

}  // namespace vntl
