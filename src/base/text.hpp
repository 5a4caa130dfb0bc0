// Small text operations, all on ASCII case and blanks alone, whatever the desktop's locale.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vntl {

std::string_view Trim(std::string_view text);        // blanks and TABs cut at both ends
std::string_view Trim_Right(std::string_view text);  // what a fixed-width, blank-padded text would show
std::string_view Trim_Left(std::string_view text);   // the text shifted left
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);
bool Contains(std::string_view text, std::string_view part);
bool Equal_No_Case(std::string_view a, std::string_view b);
std::string Replace_All(std::string_view text, std::string_view from, std::string_view to);

// Number of characters (UTF-8 code points) of the text.
std::size_t Characters(std::string_view text);

// At most `width` characters (UTF-8 code points) of the text.
std::string_view Cut(std::string_view text, std::size_t width);

// Bytes as UTF-8: unchanged when they are valid UTF-8, else each byte taken as Latin-1.
std::string To_Utf8(std::string_view bytes);

// `text` shortened in its middle with an ellipsis to at most `width` characters.
std::string Elide_Middle(std::string_view text, std::size_t width);

// The whole of `text` (outer blanks ignored) as a number in the C locale, or nothing.
bool Parse_Integer(std::string_view text, int& value);
bool Parse_Real(std::string_view text, double& value);

}  // namespace vntl
