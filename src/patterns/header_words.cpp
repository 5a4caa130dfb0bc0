#include "patterns/header_words.hpp"

#include <array>

#include "base/free_form.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

bool Behind_Word(std::string_view line, std::string_view word, std::string_view& rest) {
    const std::size_t at = line.find(word);
    if (at == std::string_view::npos) return false;
    rest = Trim(line.substr(at + word.size()));
    return true;
}

bool Take_Header_Words(std::string_view line, Diffraction_Pattern_Type& pattern, std::string_view title_word) {
    std::string_view rest;
    if (Behind_Word(line, "Legend_X", rest)) pattern.legend_x = Kept_Text(rest, legend_width);
    if (Behind_Word(line, "Legend_Y", rest)) pattern.legend_y = Kept_Text(rest, legend_width);
    if (Behind_Word(line, "Scattering variable:", rest)) pattern.scat_var = Kept_Text(rest, scat_var_width);
    if (!Behind_Word(line, title_word, rest)) return false;
    pattern.title = Kept_Text(rest, title_width);
    return true;
}

float Number_Behind(std::string_view line, std::string_view word) {
    std::string_view rest;
    std::array<float, 1> number{};
    return Behind_Word(line, word, rest) && Read_Free_Reals(rest, number) ? number[0] : 0.0f;
}

}  // namespace vntl
