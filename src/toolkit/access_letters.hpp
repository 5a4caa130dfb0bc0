// Mnemonic letters of menus, told by '&' before them; "&&" is the sign itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/window.hpp"

namespace vntl {

// Each entry that has none gets a letter that no other entry of its menu has: the first one of a word if it can be, else any, as long as
// there are letters.
void Give_Access_Letters(std::vector<Menu_Entry>& entries);

char Letter_Of(std::string_view label);                       // in lower case, 0 for none
std::string With_Letter(std::string_view text, char letter);  // a plain text as a label with that letter, where it occurs

}  // namespace vntl
