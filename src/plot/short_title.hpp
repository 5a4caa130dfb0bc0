// Titles that are too long for their room.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vntl {

// The text, or as many whole words of its two ends, around an ellipsis, as `room` holds; a number stays with the unit behind it. Words that
// are too long are cut. `width` is that of a text.
std::string Shortened_At_Words(std::string_view text, double room, const std::function<double(std::string_view)>& width);

}  // namespace vntl
