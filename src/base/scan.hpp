// Cutting lines of text files into fields, words and numbers.
//
// Tables hold one record a line, its fields separated by blanks or TABs (Field_Reader); header lines hold words and numbers.
#pragma once

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "base/text_file.hpp"

namespace vntl {

// What one line held, a place for each letter of the template.
struct Fields {
    std::array<float, 10> real{};   // of the letters "f"
    std::array<int, 10> integer{};  // of the letters "i"
};

class Field_Reader {
public:
    static constexpr int end_of_file = -1;
    static constexpr int misfit = 1;

    explicit Field_Reader(const Line_Cursor& lines) : lines_(lines) {}

    // Takes the next line that is neither blank nor begins with "!" or "#" (leading blanks aside) and cuts it by a template of at most 10
    // letters: "f" a real field, "i" an integer field; a digit in front is a number of columns to skip first. A field that the line does
    // not reach is 0; what stands behind the last letter's field is ignored. Gives 0, end_of_file, or misfit when a field is no number
    // of its letter's kind.
    int Find_Fields(std::string_view letters, Fields& fields);

private:
    Line_Cursor lines_;
};

// Cuts a line into blank-separated words of at most `width` characters each. A word that begins with a double quote runs to the closing
// quote and is given without both; without one the cutting ends with "Non balanced quotes!". With more than `most` words it ends with
// "Dimension of DIRE exceeded". The words cut before are kept in either case.
Status Get_Words(std::string_view line, std::vector<std::string_view>& words, std::size_t most, std::size_t width);

// What stands behind the first `count` words of the line.
std::string_view Behind_Words(std::string_view line, std::size_t count);

// Turns a text of words into numbers, up to the first word that is no finite number; gives their count. `ints` holds the nearest
// integers, 0 where none fits.
int Get_Numbers(std::string_view text, std::vector<float>& reals, std::vector<int>& ints);

}  // namespace vntl
