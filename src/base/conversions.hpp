// Numbers to texts and back, for fields of dialogs and for lines that hold numbers.
//
//   IRealToString(1.54056f, "(f8.5)")   " 1.54056"
//   IRealToString(0.1f)                 "0.1"
//   IStringToReal("1.5D-3", value)      true, 0.0015
//
// A format is one edit descriptor in parentheses (see edit_format.hpp); an empty one is free form. Whatever fails leaves the value.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vntl {

// Of the width of the format, stars when it does not fit; free form: as short as reads back the same. Empty when the format is bad, or not
// one for such a number.
std::string IntegerToString(int value, std::string_view format = {});
std::string IRealToString(float value, std::string_view format = {});

// Free form: the whole text, outer blanks aside, is one number; a real may have an exponent as Fortran writes it ("1.5D+03"). By a format:
// the columns of its field count and no others, a blank field is 0, and a real without a point has it before its last d digits, so
// that what a user typed is read in free form. Only finite reals are read.
bool IStringToInteger(std::string_view text, int& value, std::string_view format = {});
bool IStringToReal(std::string_view text, float& value, std::string_view format = {});

// Takes the next real of a line from `position` (a byte, from 0) on and moves that behind it. Numbers are separated by blanks, TABs and
// commas, any number of them. False at the end of the text, with `position` there, and at an item that is no finite number, with
// `position` at its start.
bool INextReal(std::string_view text, std::size_t& position, float& value);

}  // namespace vntl
