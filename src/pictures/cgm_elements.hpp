// The elements of a Computer Graphics Metafile in the binary encoding (ISO 8632-3), one after another in a text.
//
//   header       class (4 bits), number in the class (7), octets of the parameters (5)
//   parameters   big-endian; an odd number of octets is followed by one of 0
//
// Parameters of more than 30 octets have 31 in the header and follow in parts, each behind a word with its length (15 bits) and a bit that
// tells whether another part follows.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/colour.hpp"

namespace vntl {

struct Cgm_Element {
    int of_class, number;
};

// Octets of parameters that need no parts: not every reader puts parts together.
inline constexpr int cgm_longest_part = 32766;

class Cgm_Elements {
public:
    // Whether places take 32 bits in place of 16.
    explicit Cgm_Elements(bool wide_places) : wide_(wide_places) {}

    // --- parameters of the element that is written next
    Cgm_Elements& Octet(unsigned value);
    Cgm_Elements& Integer(int value);  // 16 bits: an index, one of an enumeration
    Cgm_Elements& Real(float value);   // 32 bits (IEEE 754)
    Cgm_Elements& Length(int value);   // of the picture
    Cgm_Elements& Place(int x, int y) { return Length(x).Length(y); }
    Cgm_Elements& Rgb(Colour colour);
    Cgm_Elements& String(std::string_view octets);
    Cgm_Elements& Even();  // up to a whole word

    void Put(Cgm_Element element);
    // An attribute (class 5): only where it is not in force yet.
    void Set(Cgm_Element attribute);

    int Octets_Of_Place() const { return wide_ ? 8 : 4; }
    const std::string& text() const { return text_; }

private:
    template <int octets>
    Cgm_Elements& Append(unsigned value);

    bool wide_;
    std::string text_, parameters_;
    std::array<std::string, 32> in_force_;  // parameters of the attributes, by their number
};

}  // namespace vntl
