// XYSIGMA and .gr: any bytes give a pattern or a message, in bounded memory.
// The first byte chooses the kind of file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/xysigma.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const bool gr = (data[0] & 1) != 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    vntl::Diffraction_Pattern_Type pattern;
    const vntl::Status status = vntl::Read_Xysigma(text, gr, pattern);
    const auto points = static_cast<std::size_t>(pattern.npts);
    if (status.ok() && (pattern.npts < 1 || pattern.x.size() != points || pattern.y.size() != points || pattern.sigma.size() != points))
        std::abort();
    return 0;
}
