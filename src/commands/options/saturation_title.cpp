#include "commands/options/saturation_title.hpp"

#include "base/conversions.hpp"
#include "base/text.hpp"

namespace vntl {

std::string Saturation_Text(float value) {
    std::string text = IRealToString(value, "(f9.1)");
    if (Contains(text, "*")) text.clear();
    return text;
}

std::string Title_With_Saturation(std::string_view title, const Saturation& saturation) {
    const std::size_t at = title.find(saturation_mark);
    const bool told = at != std::string_view::npos;
    const std::string number = saturation.saturation_on ? Saturation_Text(saturation.saturation_value) : std::string();
    if (number.empty()) return std::string(told ? Trim_Right(title.substr(0, at)) : title);
    if (told) return std::string(title.substr(0, at + saturation_mark.size())) + ' ' + number;
    return std::string(Trim_Right(title)) + ' ' + std::string(saturation_mark) + number + " )";
}

}  // namespace vntl
