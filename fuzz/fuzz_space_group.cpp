// Symbols of space groups in every mode. A group that is made has as many operators as it says.
#include <cstdlib>

#include "crystal/space_group.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const std::string_view mode : {"", "HMS", "HAL", "ITC"}) {
        vntl::Space_Group_Type group;
        if (vntl::Set_SpaceGroup(text, group, {}, mode).failed) continue;
        if (group.operators.size() != static_cast<std::size_t>(group.Multip)) std::abort();
        if (vntl::List_Space_Group(group, true).empty()) std::abort();
    }
    return 0;
}
