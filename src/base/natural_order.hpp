// The order in which people expect names: "run9" before "run10", "T 1.25 K" before "T 1.5 K", whatever the case of their letters.
#pragma once

#include <compare>
#include <string_view>

namespace vntl {

// Numbers in the texts count by their value, decimals too; a group of digits with two points or more in it, as a date, is read group by
// group ("2.9.2004" before "2.10.2004"). Texts that differ only in case, or in zeros that lead or end a number, are equivalent.
std::weak_ordering Compare_Natural(std::string_view a, std::string_view b);

}  // namespace vntl
