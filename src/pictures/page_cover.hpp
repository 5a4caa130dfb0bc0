// Which places of a page are hidden by what was laid over them, for drawings that are made from the front to the back: what nobody can see
// need not stand in a file.
//
// The page is a lattice of places 1/20 point apart (wider on a very large page). A shape is hidden when each of its places is covered, so
// that what is left out by mistake is thinner than the distance of two places. Squares of 8 x 8 places that are covered as a whole are
// known too, and asked first.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

inline constexpr int circle_glyph = 221;
inline constexpr double finest_in_print = 1.0 / 20;  // points: nobody sees what is smaller

// Rows of bits that are looked at and set by stretches.
class Bit_Rows {
public:
    Bit_Rows(int columns, int rows);
    bool All(int row, int first, int end) const {
        if (first >= end) return true;
        const std::uint64_t* const words = &bits_[Index(row, 0)];
        const int from = first / word_bits, to = (end - 1) / word_bits;
        const std::uint64_t low = ~std::uint64_t{0} << (first % word_bits);
        const std::uint64_t high = ~std::uint64_t{0} >> (word_bits - 1 - (end - 1) % word_bits);
        if (from == to) return (~words[from] & low & high) == 0;
        std::uint64_t open = (~words[from] & low) | (~words[to] & high);
        for (int word = from + 1; word < to; ++word) open |= ~words[word];
        return open == 0;
    }
    void Set(int row, int first, int end);
    std::uint64_t Word(int row, int word) const { return bits_[Index(row, word)]; }
    void Set_Byte(int row, int byte, std::uint8_t bits) { bits_[Index(row, byte / 8)] |= std::uint64_t{bits} << (8 * (byte % 8)); }

    static constexpr int word_bits = 64;

private:
    std::size_t Index(int row, int word) const { return static_cast<std::size_t>(row) * words_ + static_cast<std::size_t>(word); }

    std::size_t words_;  // of a row
    std::vector<std::uint64_t> bits_;
};

// A shape as places of the lattice about its middle.
struct Cover_Stamp {
    struct Row {
        int first, end;
    };
    int lowest = 0;
    std::vector<Row> rows;  // from the lowest one
    // The rows that lie together in a row of squares, as far as one of them reaches, for each place of the lowest one in its square.
    std::array<std::vector<Row>, 8> together;
    bool covers = false;  // it is filled, and hides what lies below
};

class Page_Cover {
public:
    Page_Cover(double width, double height);  // points

    Cover_Stamp Stamp_Of(const Marker_Style& style) const;

    // What lies outside `window` counts as hidden.
    void Set_Window(const Rect& window);

    // All places are finite, and not far from the page.
    bool Hides(const Cover_Stamp& stamp, Point at) const;
    void Lay(const Cover_Stamp& stamp, Point at);
    // What lies under a line of places whose x rise, down to a level: the squares that are covered as a whole.
    void Lay_Under(std::span<const Point> line, double foot);
    bool Hides_Line(Point a, Point b, double line_width) const;
    bool Hides_Box(const Rect& box) const;  // for certain: false may be wrong

private:
    // Places from (x1, y1) up to (x2, y2).
    struct Places {
        int x1, y1, x2, y2;
    };

    int Place(double at) const;
    Places In_Window(const Places& all) const;
    bool Hides_Squares(const Places& box) const;
    void Find_Squares(const Places& box);

    double places_a_point_;
    int columns_, rows_;
    Bit_Rows places_, squares_;
    Places window_;
};

}  // namespace vntl
