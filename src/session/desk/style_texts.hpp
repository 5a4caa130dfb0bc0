// The settings files of resources/styles, which stand in the program.
#pragma once

#include <span>
#include <string_view>

namespace vntl {

struct Style_Text {
    std::string_view name, text;
};

std::span<const Style_Text> Style_Texts();  // in the order of the menu

}  // namespace vntl
