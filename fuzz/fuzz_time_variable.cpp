// Variable time: any bytes give a pattern or a message, in bounded memory.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "patterns/time_variable.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vntl::Diffraction_Pattern_Type p;
    const vntl::Status status = vntl::Read_Time_Variable({reinterpret_cast<const char*>(data), size}, p);
    const auto points = static_cast<std::size_t>(p.npts);
    if (status.ok() && (p.npts < 1 || p.x.size() != points || p.y.size() != points || p.sigma.size() != points)) std::abort();
    return 0;
}
