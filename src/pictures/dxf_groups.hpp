// The text of a DXF file: pairs of lines, a group code and what it tells.
//
//   0            a record begins
//   CIRCLE
//   10           x of a place, 20 its y, 30 its z
//   12.5
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

// A place in thousandths of a millimetre, as it is written.
struct Dxf_Place {
    std::int64_t x, y;
    bool operator==(const Dxf_Place&) const = default;
};

Dxf_Place Rounded_Place(Point mm);

class Dxf_Groups {
public:
    void Word(int code, std::string_view value);
    void Whole(int code, int value);
    void Handle(int code, std::uint32_t value);          // hexadecimal
    void Length(int code, double mm);                    // three decimals
    void Ratio(int code, double value);                  // six decimals
    void Place(int code, Dxf_Place place);               // with a z of 0
    void Vertices(std::span<const Dxf_Place> vertices);  // codes 10 and 20
    void Append(std::string_view groups) { text_ += groups; }

    const std::string& text() const { return text_; }
    void clear() { text_.clear(); }

private:
    void Number(int value);  // a line of its own: a group code, or what a code tells

    std::string text_;
};

// UTF-8 as the words of a drawing's text, where every character reads as itself: "%%" begins a sign of its own (%%d is a degree), "^" a
// control character, and a letter outside ASCII is \U+ with its UTF-16 in four hexadecimal digits.
std::string Dxf_Words(std::string_view text);

}  // namespace vntl
