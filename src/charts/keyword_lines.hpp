// Lines of keyword files: a keyword stands anywhere in a line, in any case, and its value behind the word that holds it.
//
//   N_PLOTS 3
//   Legend_x: Temperature (K)
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/status.hpp"
#include "base/text_file.hpp"

namespace vntl {

// Opens a file of at most 256 MB; a failure, as all of these files, has the file's name on its second line.
Status Open_Keyword_File(const std::string& file, Text_File& text);

// The failure with what it concerns on a second line, which ends with the file's name.
Status Fail_In_File(std::string_view message, std::string_view where, const std::string& file);

// The value of a keyword in small letters, without outer blanks; nothing where the line does not hold it.
std::optional<std::string_view> Value_Of(std::string_view line, std::string_view keyword);

// The whole number that a value begins with; nothing for another text.
std::optional<int> Whole_Number(std::string_view value);

// The first word of a text, and what it stands in front of.
std::string_view Leading_Word(std::string_view text);

}  // namespace vntl
