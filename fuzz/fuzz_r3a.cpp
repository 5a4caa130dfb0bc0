// R3A in both forms: any bytes give a pattern or a message, in bounded memory. The first byte chooses the form; the newer one may have no
// points.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/r3a.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const bool old = (data[0] & 1) != 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    vntl::Diffraction_Pattern_Type p;
    const vntl::Status status = old ? vntl::Read_R3a_Old(text, p) : vntl::Read_R3a(text, p);
    const auto points = static_cast<std::size_t>(p.npts);
    const int least = old ? 1 : 0;
    if (status.ok() && (p.npts < least || p.x.size() != points || p.y.size() != points || p.sigma.size() != points)) std::abort();
    return 0;
}
