#include "fit/written.hpp"

#include <algorithm>

namespace vntl {

std::string Column(float value, int width, int decimals) {
    const std::string columns = std::to_string(width) + ".";
    for (int digits = decimals; digits >= 0; --digits) {
        std::string text = Written(("(F" + columns + std::to_string(digits) + ")").c_str(), value);
        if (text.starts_with(' ')) return text;
    }
    return Written(("(E" + columns + std::to_string(std::max(1, width - 8)) + ")").c_str(), value);
}

}  // namespace vntl
