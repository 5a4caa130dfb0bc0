// Numbers as the header and data lines of instrument files tell them.
#pragma once

#include <cmath>
#include <cstddef>
#include <string_view>

#include "base/free_form.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"

namespace vntl {

// The line from a column (counted from 1) on.
inline std::string_view From_Column(std::string_view line, std::size_t column) {
    return line.size() < column ? std::string_view{} : line.substr(column - 1);
}

// A position, step, wavelength or count that a measurement can have: sums and products of a few of them stay in range.
inline bool Is_Sound(double value) { return std::fabs(value) <= 1e12; }

// The first number of a header value. Nothing is told by a blank text or one that begins with "/": the value stays then. False, and the
// value unchanged, when no sound number stands there.
template <class Real>
bool Told_Real(std::string_view text, Real& value) {
    text = Trim(text);
    if (text.empty() || text.front() == '/') return true;
    Free_Form_Reader reader(text);
    Real read{};
    if (!reader.Read(read) || reader.given() != 1 || !Is_Sound(read)) return false;
    value = read;
    return true;
}

// The number at the front of [first, last), blanks aside, for the hot loops over data lines: gives where it ends, nullptr when there is
// none or something else than a blank, comma or slash follows.
inline const char* Real_At_Front(const char* first, const char* last, float& value) {
    while (first != last && (*first == ' ' || *first == '\t')) ++first;
    const char* const end = Parse_Float(first, last, value);
    const bool separated = end == last || *end == ' ' || *end == '\t' || *end == ',' || *end == '/';
    return end != first && separated ? end : nullptr;
}

}  // namespace vntl
