// What the reader, the writer and the updater of instrument files share: keywords, words and numbers of a line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/status.hpp"
#include "base/text_file.hpp"

namespace vntl {

// Widths of the text fields of an instrument in characters.
inline constexpr std::size_t info_width = 80, name_inst_width = 12, geom_width = 15, frame_width = 6, dist_units_width = 7,
                             angl_units_width = 4, motor_name_width = 12, alpha_file_width = 512, word_width = 80;

// A description with the efficiency of every pixel in it has some ten bytes for each of millions.
inline constexpr std::size_t largest_description = std::size_t{512} << 20;
Status Open_Description(const std::string& filename, Text_File& file);

// The first word of a line in upper case, and what follows it without outer blanks.
struct Keyword_Line {
    std::string word;
    std::string_view value;
};
Keyword_Line Split_Keyword(std::string_view line);

// Blank, or begins with "!" or "#".
bool Is_Passed_Over(std::string_view line);

// Whether the first word is meant as a number: no keyword begins as one. Stars, where a number did not fit, and "NaN" are meant so too.
bool Is_Number_Line(std::string_view line);

// Takes the first word, or quoted text, off a line, and a comma behind it. False for an empty line, or a quote without its end.
bool Take_Word(std::string_view& line, std::string& word);

// The word as Take_Word reads it, quoted where it must be.
std::string Word_Text(const std::string& word);

// The code of a geometry, by words of its text: 0 for an unknown one.
int Geometry_Code(std::string_view geom);

// As few digits as read back the same, to the right of `width` columns; a blank more than that where they fill the columns.
std::string Number_Column(float value, std::size_t width);

// `text` in one line: what ends a line becomes a blank.
std::string In_One_Line(std::string_view text);

}  // namespace vntl
