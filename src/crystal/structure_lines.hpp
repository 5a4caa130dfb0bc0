// Lines and words of the structure files that are read line by line. Private to this room.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "crystal/cell.hpp"

namespace vntl {

struct Structure_Line {
    std::string_view text;
    int number = 0;  // in the file, from 1
};

using Line_Words = std::span<const std::string_view>;

std::vector<std::string_view> Words_Of(std::string_view line);  // blanks and TABs separate
std::string_view First_Word(std::string_view line);
std::string_view Without_Comment(std::string_view line);  // up to the first "!", outer blanks cut

// One word as a number an atom can have, with or without its standard uncertainty. Fails as Read_Line_Of_Numbers does.
Status Read_Number(std::string_view word, double& value);
Status Read_Number(std::string_view word, float& value);

// The words from `first` on as numbers, one a place. Fails with "Blank line" where there are too few words.
Status Read_Numbers(Line_Words words, std::size_t first, std::span<double> values);

// a, b, c, alpha, beta and gamma in one line.
Status Read_Cell_Line(std::string_view line, Crystal_Cell_Type& cell);

// The reason with the line in question, as much of it as can be shown.
Status Refused(std::string_view reason, const Structure_Line& line);

}  // namespace vntl
