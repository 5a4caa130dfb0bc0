// Numbers in the columns that an edit descriptor tells.
#pragma once

#include <string>

#include "base/edit_descriptor.hpp"

namespace vntl {

// One line without its end.
template <class... Values>
std::string Written(const char* descriptor, const Values&... values) {
    std::string text;
    const Edit_Format format(descriptor);
    if (Write_Record(text, format, values...).failed) return {};
    text.pop_back();
    return text;
}

// A number right-aligned behind at least one blank, with as many of the decimals as there is room for: stars could not be read back.
std::string Column(float value, int width, int decimals);

}  // namespace vntl
