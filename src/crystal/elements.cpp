#include "crystal/elements.hpp"

#include <algorithm>
#include <cctype>
#include <string>

#include "base/text.hpp"

namespace vntl {

namespace {

// By atomic number, a period a line; deuterium stands behind hydrogen.
constexpr std::string_view elements =
    " H D He "
    "Li Be B C N O F Ne "
    "Na Mg Al Si P S Cl Ar "
    "K Ca Sc Ti V Cr Mn Fe Co Ni Cu Zn Ga Ge As Se Br Kr "
    "Rb Sr Y Zr Nb Mo Tc Ru Rh Pd Ag Cd In Sn Sb Te I Xe "
    "Cs Ba La Ce Pr Nd Pm Sm Eu Gd Tb Dy Ho Er Tm Yb Lu Hf Ta W Re Os Ir Pt Au Hg Tl Pb Bi Po At Rn "
    "Fr Ra Ac Th Pa U Np Pu Am Cm Bk Cf Es Fm Md No Lr Rf Db Sg Bh Hs Mt Ds Rg Cn Nh Fl Mc Lv Ts Og ";

constexpr std::size_t longest = 2;
constexpr std::string_view water = "Wat";  // as databases of minerals label its oxygen; no tungsten

bool Is_Letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool Is_Capital(char c) { return c >= 'A' && c <= 'Z'; }

std::string With_Capital(std::string_view letters) {
    std::string symbol = Lower(letters);
    if (!symbol.empty()) symbol.replace(0, 1, Upper(symbol.substr(0, 1)));
    return symbol;
}

// In either case; "D" for deuterium counts.
bool Is_Element(std::string_view symbol) {
    if (symbol.empty() || symbol.size() > longest || !std::all_of(symbol.begin(), symbol.end(), Is_Letter)) return false;
    return elements.find(" " + With_Capital(symbol) + " ") != std::string_view::npos;
}

}  // namespace

std::string Element_Of(std::string_view text) {
    text = Trim(text);
    const auto end = std::find_if_not(text.begin(), text.end(), Is_Letter);
    const std::string_view letters = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    if (Equal_No_Case(letters, water)) return "O";
    if (letters.size() <= longest && Is_Element(letters)) return With_Capital(letters);
    // A capital behind the first letter begins a name of its own, as in "OW" or "OHa", unless all letters are capitals.
    const bool two = letters.size() > longest && (!Is_Capital(letters[1]) || std::all_of(letters.begin(), letters.end(), Is_Capital));
    if (two && Is_Element(letters.substr(0, longest))) return With_Capital(letters.substr(0, longest));
    if (Is_Element(letters.substr(0, 1))) return With_Capital(letters.substr(0, 1));
    return With_Capital(letters.substr(0, longest));
}

}  // namespace vntl
