// Powder CIF: any bytes give a pattern or a message, in bounded memory.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/cif_pattern.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    vntl::Diffraction_Pattern_Type pattern;
    const vntl::Status status = vntl::Read_Cif_Pattern(text, pattern);
    const auto points = static_cast<std::size_t>(pattern.npts);
    if (status.ok() && (pattern.npts < 1 || pattern.x.size() != points || pattern.sigma.size() != points || pattern.bgr.size() != points))
        std::abort();
    return 0;
}
