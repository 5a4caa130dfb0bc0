// The tabulated settings of the space groups, and how a text names one.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "crystal/close_group.hpp"

namespace vntl {

struct Setting {
    int number;
    std::string_view choice;  // of axes and origin: "b1", "2cab", "H"; empty where there is one
    std::string_view hm;      // Hermann-Mauguin symbol in capitals, ":1" ":2" ":R" ":H" at its end
    std::string_view hall;

    bool Has_Choice() const { return hm.find(':') != std::string_view::npos; }
    std::string_view Plain_Symbol() const { return hm.substr(0, hm.find(':')); }
};

std::span<const Setting> Settings();

// The operators of a setting, from its Hall symbol.
Closed_Group Group_Of(const Setting& setting);

// The setting of a number, with its choice ("" for the usual one: second origin, hexagonal axes); null when there is none.
const Setting* Find_Number(int number, std::string_view choice);

// The choice that a letter behind a symbol means: 1 and S the first origin, 2 and Z the second, H and R axes; empty for any other.
std::string_view Choice_Of(char letter);

// The setting of a Hermann-Mauguin symbol in any form of the tables, old or new, short or full ("P n m a", "Pnma", "P 21/n 21/m 21/a",
// "F m 3 m", "C m c e"), in capitals. Null when there is none.
const Setting* Find_Symbol(std::string_view symbol, std::string_view choice);

const Setting* Find_Hall(std::string_view symbol);  // in capitals

// The first setting whose operators are just these; null when there is none.
const Setting* Find_Operators(const Closed_Group& group);

}  // namespace vntl
