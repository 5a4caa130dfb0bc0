// The reflections that a cell and a space group allow, laid over the first pattern: the state of the tool, and one generation of its list.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/status.hpp"
#include "calc/x_conversion.hpp"
#include "crystal/cell_ties.hpp"
#include "crystal/space_group.hpp"
#include "session/x_space.hpp"

namespace vntl {

struct Session;

// Divisors of a slider's place: a whole step of it is 0.5 %, or when fine 0.01 % of a length and 0.05 % of an angle.
inline constexpr float coarse_scale = 200, fine_scale_of_length = 10000, fine_scale_of_angle = 2000;
constexpr float Fine_Scale(std::size_t parameter) { return parameter < cell_alpha ? fine_scale_of_length : fine_scale_of_angle; }

inline constexpr std::size_t hkl_symbol_width = 30;

struct Hkl_Gen_State {
    std::string hkl_symbol = "P b m n";
    std::string hkl_system;  // of the group
    Space_Group_Type group;  // of the symbol, made once
    Cell_Ties ties;
    Cell_Values cell = {5, 5, 5, 90, 90, 90};
    Cell_Values base = cell;                                                                                   // at the zero of the sliders
    Cell_Values scale = {coarse_scale, coarse_scale, coarse_scale, coarse_scale, coarse_scale, coarse_scale};  // of the sliders
    bool running = false;                                                                                      // the sliders are in use
    bool hkl_open = false;  // the dialog is on the screen

    float At_Place(std::size_t parameter, int place) const;  // to 6 decimals: what the multiplication adds behind them is noise
    bool Fine(std::size_t parameter) const { return scale[parameter] != coarse_scale; }
};

// The group of a symbol becomes that of the tool. On failure nothing changes, and `why` tells what is wrong with the symbol.
Status Choose_Hkl_Group(Hkl_Gen_State&, std::string_view symbol, std::string& why);

// Can reflections be placed in this space?
bool Holds_Reflections(X_Space space);

// Fails where the constants of a pattern, a wavelength or dtt1 and dtt2, place nothing in the space. Spacings need none.
Status Check_Hkl_Constants(X_Space space, const X_Constants& conv);

// Window limits as sin(theta)/lambda, and the place of a reflection at s = sin(theta)/lambda.
//
//   2theta  s = sin(theta)/lambda      TOF  t = dtt1 d + dtt2 d^2, d = 1/(2 s)      d = 1/(2 s)      Q = 4 pi s      s-space 2 s
//
// In spaces that fall with s the lower limit s1 comes from x2, the upper end of the window.
Status Hkl_Limits(X_Space space, const X_Constants& conv, float x1, float x2, float& s1, float& s2);
float X_Of_Reflection(X_Space space, const X_Constants& conv, float s);

// Generates the list of the visible window for the tool's group, which has been chosen, and a cell of which the free parameters are read.
// More than `most_hkl_marks` reflections are refused and not tried. On failure the list of the last success stays.
inline constexpr std::size_t most_hkl_marks = 200'000;
Status Hkl_Gen_Run(Session&, const Cell_Values& cell);

}  // namespace vntl
