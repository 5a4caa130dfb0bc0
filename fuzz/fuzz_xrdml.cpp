// XRDML: any bytes give patterns or a message, in bounded memory, and the first pattern alone is the first of all.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/xrdml/xrdml.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static_cast<void>(vntl::Is_Xrdml(text));
    vntl::Diffraction_Pattern_Type first;
    const vntl::Status one = vntl::Read_Xrdml(text, first);
    std::vector<vntl::Diffraction_Pattern_Type> patterns;
    vntl::Read_Notes notes;
    const vntl::Status all = vntl::Read_Xrdml_Scans(text, patterns, notes);
    if (all.ok() == patterns.empty() || one.ok() != all.ok() || (one.ok() && first.npts != patterns.front().npts)) std::abort();
    for (const auto& pattern : patterns) {
        const auto points = static_cast<std::size_t>(pattern.npts);
        if (pattern.npts < 1 || pattern.x.size() != points || pattern.y.size() != points || pattern.sigma.size() != points) std::abort();
    }
    return 0;
}
