#include "app/number_words.hpp"

#include <cmath>

#include "base/scan.hpp"
#include "base/text.hpp"

namespace vntl {

bool Read_Numbers(const std::string& text, std::span<float> numbers) {
    std::vector<std::string_view> words;
    bool good = !Get_Words(text, words, numbers.size() + 1, text.size()).failed && words.size() == numbers.size();
    for (std::size_t i = 0; good && i < numbers.size(); ++i) {
        double value = 0;
        good = Parse_Real(words[i], value);
        numbers[i] = static_cast<float>(value);
        good = good && std::isfinite(numbers[i]);
    }
    return good;
}

}  // namespace vntl
