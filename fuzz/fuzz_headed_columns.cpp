// Columns under heads: any bytes give patterns with all their points or a message, in bounded time and memory.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/columns/headed_columns.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    vntl::Is_Headed_Columns(text);
    std::vector<vntl::Diffraction_Pattern_Type> patterns;
    vntl::Read_Notes notes;
    const vntl::Status status = vntl::Read_Headed_Columns(text, patterns, notes);
    if (status.ok() == patterns.empty()) std::abort();
    for (const auto& p : patterns) {
        const auto points = static_cast<std::size_t>(p.npts);
        if (points < 2 || p.x.size() != points || p.y.size() != points || p.sigma.size() != points) std::abort();
        if (!p.ycalc.empty() && p.ycalc.size() != points) std::abort();
        if (p.scat_var.empty() || p.legend_x.empty()) std::abort();
    }
    return 0;
}
