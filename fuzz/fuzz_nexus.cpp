// What tells of a NeXus file: any bytes give patterns with arrays of one length or a message, in bounded memory.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "patterns/nexus/nexus.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view stream(reinterpret_cast<const char*>(data), size);
    std::vector<vntl::Diffraction_Pattern_Type> patterns;
    vntl::Read_Notes notes;
    const vntl::Status status = vntl::Read_Nexus_Stream(stream, patterns, notes);
    if (status.ok() == patterns.empty() || (status.failed && status.message.empty())) std::abort();
    for (const auto& pattern : patterns) {
        const auto points = static_cast<std::size_t>(pattern.npts);
        if (points < 1 || pattern.x.size() != points || pattern.y.size() != points || pattern.sigma.size() != points) std::abort();
    }
    return 0;
}
