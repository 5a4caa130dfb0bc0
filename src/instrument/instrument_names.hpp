// The instruments of the institute, by group and type.
#pragma once

#include <span>
#include <string_view>

namespace vntl {

struct Instrument_Kind {
    std::string_view type;
    std::span<const std::string_view> names;
};
struct Instrument_Group {
    std::string_view name;
    std::span<const Instrument_Kind> types;
};
std::span<const Instrument_Group> Instrument_Groups();

// Whether a name, in letters of any case, is one of them.
bool Is_Known_Instrument(std::string_view name);

// Those of the dialog that opens runs by their numbers, in its order.
std::span<const std::string_view> Two_Axes_Instruments();

}  // namespace vntl
