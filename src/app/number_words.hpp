// Words of the command line that hold several numbers.
#pragma once

#include <span>
#include <string>

namespace vntl {

// Reads a text of numbers parted by blanks; false where it holds more or fewer than `numbers`, or one that is no finite number.
bool Read_Numbers(const std::string& text, std::span<float> numbers);

}  // namespace vntl
