// Texts with raised pieces: the exponents of powers of ten and of units.
//
//   10^5   2.5·10^-3   Å^{-1}   Å-1   Å⁻¹
//
// Raised is what follows "^" (a sign and digits, or what stands in braces), a sign and digits behind "Å", and what is written with raised
// digits. The pieces are letters of the same font, smaller and higher, so that they show on every device, whatever glyphs its fonts have.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

struct Text_Piece {
    std::string text;
    bool raised = false;
    bool operator==(const Text_Piece&) const = default;
};
std::vector<Text_Piece> Pieces_Of(std::string_view text);

inline constexpr double raised_scale = 0.7, raised_lift = 0.36;  // of the size of the letters, and em above the base line

// As `Device::Text` and `Device::Text_Width` do it for a text of one piece.
double Raised_Text_Width(const Device&, std::string_view text, const Text_Style&);
void Draw_Raised_Text(Device&, Point at, std::string_view text, const Text_Style&);

// From the base line to the top of a raised digit, em.
double Raised_Top();

}  // namespace vntl
