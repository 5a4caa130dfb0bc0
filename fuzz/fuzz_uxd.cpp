// UXD: any bytes give patterns or a message, in bounded memory, and the first range alone is the first of all.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/uxd.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    vntl::Diffraction_Pattern_Type first;
    const vntl::Status one = vntl::Read_Uxd(text, first);
    std::vector<vntl::Diffraction_Pattern_Type> ranges;
    const vntl::Status all = vntl::Read_Uxd_Ranges(text, ranges);
    if (all.ok() == ranges.empty() || (one.ok() && (all.failed || ranges.front().npts != first.npts))) std::abort();
    for (const auto& range : ranges) {
        const auto points = static_cast<std::size_t>(range.npts);
        if (range.npts < 1 || range.x.size() != points || range.y.size() != points || range.nd.size() != points) std::abort();
    }
    return 0;
}
