// Keywords that the comment and header lines of text patterns may carry, each with the rest of its line.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// What stands behind `word` in the line, shifted left; false when the line does not hold the word.
bool Behind_Word(std::string_view line, std::string_view word, std::string_view& rest);

// Takes "Legend_X", "Legend_Y", "Scattering variable:" and, when `title_word` is found, the title; true for a title.
bool Take_Header_Words(std::string_view line, Diffraction_Pattern_Type& pattern, std::string_view title_word);

// The number behind `word`, 0 when there is none.
float Number_Behind(std::string_view line, std::string_view word);

}  // namespace vntl
