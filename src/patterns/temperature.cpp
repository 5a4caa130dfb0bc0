#include "patterns/temperature.hpp"

#include <string>

#include "base/text.hpp"

namespace vntl {

double In_Kelvin(double value, std::string_view unit) {
    constexpr double ice = 273.15, hottest = 5000;
    constexpr std::string_view degrees =
        "\xB0"
        "c";  // as Latin-1 and UTF-8 end
    const std::string small = Lower(Trim(unit));
    const bool celsius = small == "c" || Contains(small, "celsius") || small.ends_with("degc") || small.ends_with(degrees);
    if (!celsius && small != "k" && !Contains(small, "kelvin")) return 0;
    const double kelvin = celsius ? value + ice : value;
    return kelvin > 0 && kelvin < hottest ? kelvin : 0;
}

}  // namespace vntl
