// Numbers as the header and data lines of instrument files tell them.
#pragma once

#include <cmath>
#include <cstddef>
#include <string_view>

#include "base/free_form.hpp"
#include "base/text.hpp"

namespace vntl {

// The line from a column (counted from 1, a character each) on.
inline std::string_view From_Column(std::string_view line, std::size_t column) {
    line.remove_prefix(Cut(line, column - 1).size());
    return line;
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

}  // namespace vntl
