// Powder CIF: any bytes give patterns or a message, in bounded memory.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/cif/cif_pattern.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<vntl::Diffraction_Pattern_Type> patterns;
    vntl::Read_Notes notes;
    const vntl::Status status = vntl::Read_Cif_Patterns(text, patterns, notes);
    if (status.ok() == patterns.empty()) std::abort();
    for (const auto& pattern : patterns) {
        const auto points = static_cast<std::size_t>(pattern.npts);
        const auto may_be = [points](std::size_t n) { return n == points || n == 0; };
        if (points < 1 || points > size || pattern.x.size() != points || pattern.y.size() != points || pattern.sigma.size() != points)
            std::abort();
        if (!may_be(pattern.ycalc.size()) || !may_be(pattern.bgr.size()) || !may_be(pattern.istat.size())) std::abort();
    }
    return 0;
}
